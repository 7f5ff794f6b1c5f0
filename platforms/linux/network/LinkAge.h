#pragma once

#include <cstdint>
#include <optional>

namespace tarvik {

/// How long the interface of that index has had its oldest address, milliseconds: the age of a link
/// that gets its address when it comes up. Nothing where it has none or the kernel does not tell.
/// Up to a second too long: the stamps are in the kernel's ticks, which began later than its clock.
std::optional<std::uint64_t> addressAge(std::uint32_t index);

} // namespace tarvik
