#pragma once

#include "linux/network/LinkReading.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tarvik {

/// Reads an interface's counters from the kernel's folder of network interfaces; nothing when there
/// is no such interface.
std::optional<LinkReading> readLink(const std::string& interfacesFolder,
                                    const std::string& interface);

/// The same of all interfaces.
LinkReadings readLinks(const std::string& interfacesFolder);

/// What the device tells of its speed, in bits per second; 0 when it does not know, or when it is
/// a tunnel, whose speed is made up. Speeds of 2^32 and more are told as the most that a line's
/// record holds.
std::uint32_t bitRateOf(const std::string& interfacesFolder, const std::string& interface);

} // namespace tarvik
