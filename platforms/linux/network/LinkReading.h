#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>

namespace tarvik {

/// What the kernel counts for a network interface since it was made.
struct LinkReading {
    std::uint32_t index = 0; ///< of the interface: another one is another interface of that name
    std::uint64_t received = 0;
    std::uint64_t sent = 0;
    std::uint64_t packetsReceived = 0;
    std::uint64_t packetsSent = 0;
    std::uint64_t checksumErrors = 0;
    std::uint64_t alignmentErrors = 0;
    std::uint64_t lengthErrors = 0;
    std::uint64_t overrunErrors = 0; ///< the device could not hand them on in time
    std::uint64_t missed = 0;        ///< arrived where there was no room
    std::uint64_t aborted = 0;       ///< could not be sent in time

    friend bool operator==(const LinkReading&, const LinkReading&) = default;
};

/// What overran, of the kernel's two counts of it: drivers use the one or the other, some both, for
/// the same packets.
inline std::uint64_t overruns(std::uint64_t over, std::uint64_t fifo) {
    return std::max(over, fifo);
}

/// Readings of several interfaces, by their index.
using LinkReadings = std::map<std::uint32_t, LinkReading>;

/// The interface of that index is there, and none of its byte counters is behind an earlier
/// reading.
inline bool countedOn(const std::optional<LinkReading>& now, std::uint32_t index,
                      const LinkReading& earlier) {
    return now && now->index == index && now->received >= earlier.received &&
           now->sent >= earlier.sent;
}

} // namespace tarvik
