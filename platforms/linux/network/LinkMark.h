#pragma once

#include "linux/network/LinkReading.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tarvik {

/// By what a later process knows a connection again and goes on with its counters.
struct LinkMark {
    std::string boot; ///< of the machine: indexes and clocks mean nothing in another one
    std::string uuid; ///< of the profile
    std::string path; ///< of the active connection
    std::uint64_t activeSince = 0; ///< milliseconds of the steady clock
    std::uint64_t readAt = 0;      ///< likewise, of the reading
    LinkReading last;              ///< as the kernel counted
    LinkReading total;             ///< as it counts for the connection

    friend bool operator==(const LinkMark&, const LinkMark&) = default;
};

std::string textOf(const LinkMark& mark);
/// Nothing for a text that is no mark.
std::optional<LinkMark> markOf(const std::string& text);

/// What tells this run of the machine from any other; empty where the kernel does not say.
std::string bootOfMachine();

} // namespace tarvik
