#include "plan/DataSize.h"

#include "types/Text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace tarvik {

namespace {

constexpr std::uint64_t perUnit = 1000; ///< thousandths
constexpr std::size_t mostDecimals = 3;

struct UnitName {
    std::string_view name;
    std::uint64_t bytes;
};

/// In the order of the units.
constexpr std::array<UnitName, 6> units{{{"MB", 1'000'000},
                                         {"GB", 1'000'000'000},
                                         {"TB", 1'000'000'000'000},
                                         {"MiB", std::uint64_t{1} << 20U},
                                         {"GiB", std::uint64_t{1} << 30U},
                                         {"TiB", std::uint64_t{1} << 40U}}};

const UnitName& nameOf(SizeUnit unit) {
    return units[static_cast<std::size_t>(unit)];
}

/// A number without a sign that is the whole text.
std::optional<std::uint64_t> digitsOf(std::string_view text) {
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole ? std::optional(value) : std::nullopt;
}

std::optional<std::uint64_t> thousandthsOf(std::string_view number) {
    const std::size_t point = number.find('.');
    const auto whole = digitsOf(number.substr(0, point));
    std::string decimals(point == std::string_view::npos ? "0" : number.substr(point + 1));
    const bool fits = !decimals.empty() && decimals.size() <= mostDecimals;
    decimals.resize(mostDecimals, '0');
    const auto fraction = digitsOf(decimals);
    if (!whole || !fraction || !fits || *whole > DataSize::mostBytes / perUnit) {
        return std::nullopt;
    }
    return *whole * perUnit + *fraction;
}

} // namespace

std::uint64_t bytesIn(SizeUnit unit) {
    return nameOf(unit).bytes;
}

std::uint64_t DataSize::bytes() const {
    const std::uint64_t one = bytesIn(unit);
    if (thousandths / perUnit > mostBytes / one) {
        return mostBytes;
    }
    return std::min(thousandths / perUnit * one + thousandths % perUnit * one / perUnit, mostBytes);
}

std::string textOf(const DataSize& size) {
    std::string decimals = std::to_string(perUnit + size.thousandths % perUnit);
    decimals[0] = '.';
    decimals.resize(decimals.find_last_not_of('0') + 1);
    return std::to_string(size.thousandths / perUnit) + (decimals == "." ? "" : decimals) + " " +
           std::string(nameOf(size.unit).name);
}

std::optional<DataSize> readDataSize(std::string_view text) {
    text = trimSpaces(text);
    const std::size_t end = std::min(text.find_first_not_of("0123456789."), text.size());
    const std::string_view unit = trimSpaces(text.substr(end));
    const auto found = std::find_if(units.begin(), units.end(), [&](const UnitName& one) {
        return equalWithoutCase(one.name, unit);
    });
    const auto number = thousandthsOf(text.substr(0, end));
    if (found == units.end() || !number) {
        return std::nullopt;
    }
    const DataSize size{.thousandths = *number,
                        .unit = static_cast<SizeUnit>(found - units.begin())};
    const std::uint64_t most = DataSize::mostBytes / found->bytes;
    const bool fits =
        size.thousandths / perUnit < most || (size.thousandths / perUnit == most &&
                                              size.thousandths % perUnit * found->bytes / perUnit <=
                                                  DataSize::mostBytes - most * found->bytes);
    return fits ? std::optional(size) : std::nullopt;
}

} // namespace tarvik
