#pragma once

#include "linux/network/LinkReading.h"
#include "linux/network/RouteSocket.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tarvik {

/// Reads what the kernel counts for network interfaces: by one question, answered with figures of
/// one moment; where that is not allowed, from a file for each figure.
class LinkReader {
public:
    LinkReader() = default;
    /// From the files of that folder alone.
    explicit LinkReader(std::string interfacesFolder)
        : folder_(std::move(interfacesFolder)), asks_(false) {}

    /// Nothing when there is no such interface.
    std::optional<LinkReading> read(const std::string& interface);
    LinkReadings readAll();
    /// See `bitRateOf`.
    std::uint32_t bitRate(const std::string& interface) const;

private:
    std::string folder_ = "/sys/class/net";
    bool asks_ = true;
    RouteSocket socket_;
};

} // namespace tarvik
