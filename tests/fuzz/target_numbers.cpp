// Numbers: any text in any of the locales, and arithmetic on any values.
//
// Input: the locale's number as one byte, eight bytes each for two values, then a text.

#include "FuzzWorld.h"
#include "support/ErrorOf.h"
#include "types/Convert.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <optional>

namespace tarvik::fuzz {
namespace {

__extension__ using Wide = __int128;

constexpr int mismatch = 13;
constexpr int overflow = 6;

/// The plainest numbers once more: a minus, digits, the decimal separator, digits; times 10,000,
/// ties to even. Nothing for any other text.
std::optional<Wide> plainNumber(const std::string& text, const std::string& separator) {
    constexpr std::size_t mostDigits = 30;
    const bool negative = text.starts_with("-");
    const std::size_t first = negative ? 1 : 0;
    const std::size_t point = text.find(separator);
    std::string digits = text.substr(first, point == std::string::npos ? point : point - first);
    std::string decimals = point == std::string::npos ? "" : text.substr(point + separator.size());
    if (digits.empty() ||
        (digits + decimals).find_first_not_of("0123456789") != std::string::npos ||
        digits.size() + decimals.size() > mostDigits) {
        return std::nullopt;
    }
    decimals.resize(std::max<std::size_t>(decimals.size(), 4), '0');
    Wide value = 0;
    for (const char digit : digits + decimals.substr(0, 4)) {
        value = value * 10 + (digit - '0');
    }
    const std::string rest = decimals.substr(4);
    const bool half = rest.starts_with("5") && rest.find_first_not_of('0', 1) == std::string::npos;
    const bool up = half ? value % 2 != 0 : !rest.empty() && rest[0] >= '5';
    value += up ? 1 : 0;
    return negative ? -value : value;
}

bool fits(Wide value, std::int64_t least, std::int64_t most) {
    return value >= least && value <= most;
}

void checkText(const std::string& text, const LocaleData& locale) {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    Currency value;
    const int error = errorOf([&] { value = textToCurrency(text, locale); });
    require(error == 0 || error == mismatch || error == overflow, "a number is read or refused");
    require(error == overflow || isNumeric(text, locale) == (error == 0),
            "a number is what is read as one");
    require(error == 0 || value == Currency(0), "a refused text gives no number");
    const int padded = errorOf([&] {
        require(textToCurrency(" \t" + text + " ", locale) == value, "blanks around do not count");
    });
    require(padded == error, "blanks around change no error");
    if (const auto plain = plainNumber(text, locale.decimalSeparator)) {
        require(error == (fits(*plain, -most - 1, most) ? 0 : overflow), "plain numbers are read");
        require(error != 0 || value.scaled() == *plain, "a plain number is read to its last place");
    }
    Long whole;
    const int wholeError = errorOf([&] { whole = textToLong(text, locale); });
    require((wholeError == mismatch) == (error == mismatch), "both refuse the same texts");
    const std::int64_t fraction = std::abs(value.scaled() % Currency::scale);
    if (error == 0 && fraction != Currency::scale / 2) {
        const std::int64_t sign = value.scaled() < 0 ? -1 : 1;
        const std::int64_t nearest =
            value.integralPart() + (fraction > Currency::scale / 2 ? sign : 0);
        const bool fitsLong = nearest == static_cast<std::int32_t>(nearest);
        require(wholeError == (fitsLong ? 0 : overflow), "a whole number fits 32 bits or not");
        require(wholeError != 0 || whole.value() == nearest, "a whole number is the nearest one");
    }
}

void checkRoundTrip(Currency value, const LocaleData& locale) {
    const std::string text = toText(value, locale);
    require(textToCurrency(text, locale) == value, "a written number is read back");
    require(isNumeric(text, locale), "a written number is one");
    const std::int64_t whole = value.integralPart();
    if (std::abs(whole) < std::int64_t{1} << 53U) { // what a double holds
        const std::string grouped = formatGrouped(static_cast<double>(whole), 0, locale);
        require(textToCurrency(grouped, locale).integralPart() == whole,
                "a grouped number is read back");
    }
    if (std::abs(value.scaled()) < std::int64_t{1} << 50U) {
        require(Currency::fromDouble(value.toDouble()) == value,
                "a number survives as a floating-point number");
    }
}

void checkSum(std::int64_t a, std::int64_t b) {
    const auto left = Currency::fromScaled(a);
    const auto right = Currency::fromScaled(b);
    const auto same = [](Wide expected, const std::function<std::int64_t()>& calculate,
                         std::int64_t least, std::int64_t most) {
        std::int64_t result = 0;
        const int error = errorOf([&] { result = calculate(); });
        require(error == (fits(expected, least, most) ? 0 : overflow), "what is too large is told");
        require(error != 0 || result == expected, "sums are exact");
    };
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    same(
        Wide{a} + b, [&] { return (left + right).scaled(); }, -most - 1, most);
    same(
        Wide{a} - b, [&] { return (left - right).scaled(); }, -most - 1, most);
    same(
        Wide{a} * Currency::scale, [&] { return Currency::fromWhole(a).scaled(); }, -most - 1,
        most);
    constexpr std::int64_t mostLong = std::numeric_limits<std::int32_t>::max();
    const auto x = static_cast<std::int32_t>(a);
    const auto y = static_cast<std::int32_t>(b);
    same(
        Wide{x} * y, [&] { return (Long(x) * Long(y)).value(); }, -mostLong - 1, mostLong);
    same(
        Wide{x} - y, [&] { return (Long(x) - Long(y)).value(); }, -mostLong - 1, mostLong);
    if (y != 0) {
        same(
            Wide{x} / y, [&] { return (Long(x) / Long(y)).value(); }, -mostLong - 1, mostLong);
    }
}

/// Held against the standard library's text, which differs only in where exact halves go.
void checkGrouped(double value, int decimals) {
    std::array<char, 500> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.60f", std::fabs(value));
    std::string expansion = buffer.data();
    LocaleData plain;
    plain.thousandsSeparator.clear();
    const std::string text = formatGrouped(value, decimals, plain);
    if (!std::isfinite(value)) {
        return;
    }
    const std::size_t kept = expansion.find('.') + 1 + static_cast<std::size_t>(decimals);
    const bool half =
        expansion[kept] == '5' && expansion.find_first_not_of('0', kept + 1) == std::string::npos;
    // The library's and the program's digits end somewhere: a tail of nines may round either way.
    if (half || expansion.compare(kept, 12, "499999999999") == 0) {
        return;
    }
    std::snprintf(buffer.data(), buffer.size(), "%.*f", decimals, std::fabs(value));
    const std::string magnitude = buffer.data();
    const bool zero = magnitude.find_first_not_of("0.") == std::string::npos;
    require(text == (value < 0 && !zero ? "-" : "") + magnitude, "decimals are rounded");
}

/// A number in the middle between two that a Currency holds.
std::string betweenTwo(Currency value, const LocaleData& locale) {
    const std::int64_t fraction = std::abs(value.scaled() % Currency::scale);
    return wholeToText(value.integralPart()) + locale.decimalSeparator + zeroPadded(fraction, 4) +
           "5";
}

void play(Input input) {
    const LocaleData locale = localeOf(input.byte());
    const auto a = static_cast<std::int64_t>(input.wideNumber());
    const auto b = static_cast<std::int64_t>(input.wideNumber());
    checkRoundTrip(Currency::fromScaled(a), locale);
    checkSum(a, b);
    checkGrouped(std::bit_cast<double>(b), static_cast<int>(a & 7));
    checkGrouped(static_cast<double>(a) / 65536.0, static_cast<int>(b & 7));
    const int error = errorOf([&] { Currency::fromDouble(std::bit_cast<double>(a)); });
    require(error == 0 || error == overflow, "a floating-point number fits or not");
    checkText(input.everything(), locale);
    checkText(betweenTwo(Currency::fromScaled(a), locale), locale);
}

} // namespace
} // namespace tarvik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tarvik::fuzz::play({data, size});
    return 0;
}
