#include "types/Blanks.h"
#include "types/Convert.h"
#include "types/ExactDigits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace tarvik {

namespace {

constexpr bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Reads a text from its front, piece by piece.
class NumberReader {
public:
    NumberReader(std::string_view text, const LocaleData& locale) : rest_(text), locale_(locale) {}

    /// True when the whole text is one number.
    bool parse() {
        skipBlanks();
        const bool signBefore = takeSign();
        skipBlanks();
        readWholePart();
        readFraction();
        readExponent();
        skipBlanks();
        if (!signBefore) {
            takeSign();
        }
        skipBlanks();
        return !digits_.empty() && rest_.empty();
    }

    /// Beyond what a floating-point number can hold.
    bool tooLarge() const {
        constexpr std::int64_t largestExponent = 308;
        constexpr std::string_view largestDigits = "1797693134862315807";
        const std::size_t first = digits_.find_first_not_of('0');
        if (first == std::string::npos) {
            return false;
        }
        const std::int64_t exponent = wholeDigits_ - static_cast<std::int64_t>(first) - 1;
        return exponent > largestExponent ||
               (exponent == largestExponent &&
                std::string_view(digits_).substr(first, largestDigits.size()) > largestDigits);
    }

    /// The number times 10^decimals, rounded to the nearest whole number, ties to even.
    std::int64_t scaled(std::int64_t decimals) const {
        const std::size_t first = digits_.find_first_not_of('0');
        if (first == std::string::npos) {
            return 0;
        }
        const auto firstDigit = static_cast<std::int64_t>(first);
        const std::int64_t end = wholeDigits_ + decimals;
        constexpr std::int64_t mostDigits = 19;
        if (end - firstDigit > mostDigits) {
            raise(ErrorNumber::Overflow);
        }
        std::uint64_t value = 0;
        for (std::int64_t i = firstDigit; i < end; ++i) {
            value = value * 10 + static_cast<std::uint64_t>(digitAt(i) - '0');
        }
        return withSign(value + roundedUp(value, end));
    }

private:
    void skipBlanks() {
        while (const std::size_t blank = leadingBlank(rest_)) {
            rest_.remove_prefix(blank);
        }
    }

    bool take(std::string_view piece) {
        if (piece.empty() || !rest_.starts_with(piece)) {
            return false;
        }
        rest_.remove_prefix(piece.size());
        return true;
    }

    bool takeSign() {
        if (take("-")) {
            negative_ = true;
            return true;
        }
        return take("+");
    }

    bool takeDigit() {
        if (rest_.empty() || !isDigit(rest_.front())) {
            return false;
        }
        digits_ += rest_.front();
        rest_.remove_prefix(1);
        return true;
    }

    /// The bytes of a group separator at the front, 0 for none. Where groups are set apart by some
    /// blank, every blank is one.
    std::size_t leadingSeparator() const {
        const std::string_view separator = locale_.thousandsSeparator;
        if (separator.empty() || separator == locale_.decimalSeparator) {
            return 0;
        }
        if (leadingBlank(separator) == separator.size()) {
            return leadingBlank(rest_);
        }
        return rest_.starts_with(separator) ? separator.size() : 0;
    }

    /// A separator counts only between digits: a blank after the number is no part of it.
    bool takeGroupSeparator() {
        const std::size_t length = leadingSeparator();
        if (length == 0 || length >= rest_.size() || !isDigit(rest_[length])) {
            return false;
        }
        rest_.remove_prefix(length);
        return true;
    }

    void readWholePart() {
        while (takeDigit() || (!digits_.empty() && takeGroupSeparator())) {
        }
        wholeDigits_ = static_cast<std::int64_t>(digits_.size());
    }

    void readFraction() {
        if (take(locale_.decimalSeparator)) {
            while (takeDigit()) {
            }
        }
    }

    void readExponent() {
        const std::string_view before = rest_;
        if (digits_.empty() || !(take("E") || take("e"))) {
            return;
        }
        const bool down = take("-");
        if (!down) {
            take("+");
        }
        int exponent = 0;
        const auto [end, error] =
            std::from_chars(rest_.data(), rest_.data() + rest_.size(), exponent);
        if (end == rest_.data() || rest_.front() == '-') {
            rest_ = before;
            return;
        }
        constexpr int farEnough = 10'000;
        exponent = error == std::errc() ? std::min(exponent, farEnough) : farEnough;
        rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
        wholeDigits_ += down ? -exponent : exponent;
    }

    char digitAt(std::int64_t position) const {
        return position >= 0 && position < static_cast<std::int64_t>(digits_.size())
                   ? digits_[static_cast<std::size_t>(position)]
                   : '0';
    }

    std::uint64_t roundedUp(std::uint64_t value, std::int64_t end) const {
        const char next = digitAt(end);
        if (next != '5') {
            return next > '5' ? 1 : 0;
        }
        for (std::int64_t i = end + 1; i < static_cast<std::int64_t>(digits_.size()); ++i) {
            if (digitAt(i) != '0') {
                return 1;
            }
        }
        return value % 2;
    }

    std::int64_t withSign(std::uint64_t value) const {
        constexpr auto largest = static_cast<std::uint64_t>(INT64_MAX);
        if (value > largest + (negative_ ? 1U : 0U)) {
            raise(ErrorNumber::Overflow);
        }
        return static_cast<std::int64_t>(negative_ ? 0 - value : value);
    }

    std::string_view rest_;
    const LocaleData& locale_;
    std::string digits_;
    std::int64_t wholeDigits_ = 0;
    bool negative_ = false;
};

/// The number that digits alone make, as most texts do; nothing for another text or so many digits
/// that the number might not fit.
std::optional<std::int64_t> plainNumber(std::string_view text) {
    constexpr std::size_t mostDigits = 14;
    const char* const end = text.data() + text.size();
    std::uint64_t number = 0;
    const bool plain = !text.empty() && text.size() <= mostDigits &&
                       std::from_chars(text.data(), end, number).ptr == end;
    return plain ? std::optional(static_cast<std::int64_t>(number)) : std::nullopt;
}

/// The number in the text times 10^decimals.
std::int64_t readScaled(std::string_view text, const LocaleData& locale, int decimals) {
    if (const auto number = plainNumber(text)) {
        return *number * (decimals == 0 ? 1 : Currency::scale);
    }
    NumberReader reader(text, locale);
    if (!reader.parse()) {
        raise(ErrorNumber::TypeMismatch);
    }
    return reader.scaled(decimals);
}

std::string grouped(std::string_view digits, const std::string& separator) {
    std::string result;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i != 0 && (digits.size() - i) % 3 == 0) {
            result += separator;
        }
        result += digits[i];
    }
    return result;
}

/// Adds one to a number written in digits, which may grow by a digit.
void increment(std::string& digits) {
    for (std::size_t i = digits.size(); i-- > 0;) {
        if (digits[i] != '9') {
            ++digits[i];
            return;
        }
        digits[i] = '0';
    }
    digits.insert(0, 1, '1');
}

/// The value times 10^decimals as digits, halves rounded up.
std::string roundedDigits(double magnitude, int decimals) {
    std::string digits = exactDigits(magnitude);
    const std::size_t kept = digits.size() - exactDecimals + static_cast<std::size_t>(decimals);
    const bool up = digits[kept] >= '5';
    digits.resize(kept);
    if (up) {
        increment(digits);
    }
    return digits;
}

} // namespace

std::string wholeToText(std::int64_t value) {
    return std::to_string(value);
}

std::string toText(Long value) {
    return wholeToText(value.value());
}

std::string toText(Currency value, const LocaleData& locale) {
    const bool negative = value.scaled() < 0;
    const auto bits = static_cast<std::uint64_t>(value.scaled());
    const std::uint64_t magnitude = negative ? 0 - bits : bits;
    constexpr auto scale = static_cast<std::uint64_t>(Currency::scale);
    std::string text = std::to_string(magnitude / scale);
    if (negative) {
        text.insert(0, 1, '-');
    }
    if (magnitude % scale != 0) { // bytes and milliseconds are whole
        text += locale.decimalSeparator;
        text += zeroPadded(static_cast<std::int64_t>(magnitude % scale), 4);
        text.erase(text.find_last_not_of('0') + 1);
    }
    return text;
}

bool isNumeric(std::string_view text, const LocaleData& locale) {
    NumberReader reader(text, locale);
    return reader.parse() && !reader.tooLarge();
}

Currency textToCurrency(std::string_view text, const LocaleData& locale) {
    return Currency::fromScaled(readScaled(text, locale, 4));
}

Long textToLong(std::string_view text, const LocaleData& locale) {
    return Long::narrow(readScaled(text, locale, 0));
}

std::string formatGrouped(double value, int decimals, const LocaleData& locale) {
    constexpr int mostDecimals = 20;
    decimals = std::clamp(decimals, 0, mostDecimals);
    if (!std::isfinite(value)) {
        return std::isnan(value) ? "NaN" : value < 0 ? "-Inf" : "Inf";
    }
    const std::string digits = roundedDigits(std::fabs(value), decimals);
    const std::size_t whole = digits.size() - static_cast<std::size_t>(decimals);
    const bool zero = digits.find_first_not_of('0') == std::string::npos;
    std::string text = value < 0 && !zero ? "-" : "";
    text += grouped(std::string_view(digits).substr(0, whole), locale.thousandsSeparator);
    if (decimals > 0) {
        text += locale.decimalSeparator + digits.substr(whole);
    }
    return text;
}

std::string zeroPadded(std::int64_t value, int digits) {
    std::string text = std::to_string(value);
    const std::size_t sign = value < 0 ? 1 : 0;
    const auto wanted = static_cast<std::size_t>(std::max(digits, 0)) + sign;
    if (text.size() < wanted) {
        text.insert(sign, wanted - text.size(), '0');
    }
    return text;
}

} // namespace tarvik
