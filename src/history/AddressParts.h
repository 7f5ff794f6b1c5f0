#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tarvik {

/// How one address stands to another.
enum class AddressOrder : std::int16_t { After = 0, Before = 1, Equal = 2, NotComparable = 3 };

/// What stands between the dots of an address.
using AddressParts = std::array<std::string_view, 4>;

/// Nothing for a text that has not exactly four parts.
std::optional<AddressParts> partsOf(std::string_view address);

/// Not comparable where all parts are equal.
AddressOrder compareParts(const AddressParts& first, const AddressParts& second);

} // namespace tarvik
