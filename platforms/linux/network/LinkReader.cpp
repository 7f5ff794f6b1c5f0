#include "linux/network/LinkReader.h"

#include "linux/services/FileDescriptor.h"

#include <array>
#include <charconv>
#include <fcntl.h>
#include <unistd.h>

namespace tarvik {

namespace {

std::optional<std::uint64_t> readNumber(const std::string& path) {
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    std::array<char, 32> text{};
    const ssize_t length = file ? read(file.number(), text.data(), text.size()) : -1;
    std::uint64_t number = 0;
    if (length <= 0 ||
        std::from_chars(text.data(), text.data() + length, number).ec != std::errc()) {
        return std::nullopt;
    }
    return number;
}

} // namespace

std::optional<LinkReading> readLink(const std::string& interfacesFolder,
                                    const std::string& interface) {
    const std::string folder = interfacesFolder + "/" + interface;
    const auto index = readNumber(folder + "/ifindex");
    if (!index) {
        return std::nullopt;
    }
    const auto counter = [&](const char* name) {
        return readNumber(folder + "/statistics/" + name).value_or(0);
    };
    return LinkReading{.index = static_cast<std::uint32_t>(*index),
                       .received = counter("rx_bytes"),
                       .sent = counter("tx_bytes"),
                       .packetsReceived = counter("rx_packets"),
                       .packetsSent = counter("tx_packets"),
                       .checksumErrors = counter("rx_crc_errors"),
                       .frameErrors = counter("rx_frame_errors"),
                       .overrunErrors = counter("rx_over_errors"),
                       .missed = counter("rx_missed_errors"),
                       .aborted = counter("tx_aborted_errors")};
}

} // namespace tarvik
