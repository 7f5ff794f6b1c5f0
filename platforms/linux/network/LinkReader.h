#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

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

/// Reads an interface's counters from the kernel's folder of network interfaces; nothing when there
/// is no such interface.
std::optional<LinkReading> readLink(const std::string& interfacesFolder,
                                    const std::string& interface);

/// The interface of that index is there, and none of its byte counters is behind an earlier
/// reading.
bool countedOn(const std::optional<LinkReading>& now, std::uint32_t index,
               const LinkReading& earlier);

/// The readings of all interfaces, by their index.
using LinkReadings = std::map<std::uint32_t, LinkReading>;
LinkReadings readLinks(const std::string& interfacesFolder);

/// What the device tells of its speed, in bits per second; 0 when it does not know, or when it is
/// a tunnel, whose speed is made up. Speeds of 2^32 and more are told as the most that a line's
/// record holds.
std::uint32_t bitRateOf(const std::string& interfacesFolder, const std::string& interface);

} // namespace tarvik
