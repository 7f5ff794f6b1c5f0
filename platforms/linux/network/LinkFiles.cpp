#include "linux/network/LinkFiles.h"

#include "linux/services/FileDescriptor.h"

#include <array>
#include <charconv>
#include <fcntl.h>
#include <filesystem>
#include <limits>
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
                       .alignmentErrors = counter("rx_frame_errors"),
                       .lengthErrors = counter("rx_length_errors"),
                       .overrunErrors =
                           overruns(counter("rx_over_errors"), counter("rx_fifo_errors")),
                       .missed = counter("rx_missed_errors"),
                       .aborted = counter("tx_aborted_errors")};
}

LinkReadings readLinks(const std::string& interfacesFolder) {
    LinkReadings readings;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(interfacesFolder, ignored)) {
        if (const auto reading = readLink(interfacesFolder, entry.path().filename())) {
            readings[reading->index] = *reading;
        }
    }
    return readings;
}

std::uint32_t bitRateOf(const std::string& interfacesFolder, const std::string& interface) {
    constexpr std::uint64_t perMegabit = 1'000'000;
    constexpr std::uint64_t most = std::numeric_limits<std::uint32_t>::max();
    const std::string folder = interfacesFolder + "/" + interface;
    if (access((folder + "/tun_flags").c_str(), F_OK) == 0) {
        return 0;
    }
    // A device that does not know answers with -1, or with an error.
    const std::uint64_t megabits = readNumber(folder + "/speed").value_or(0);
    return static_cast<std::uint32_t>(megabits > most / perMegabit ? most : megabits * perMegabit);
}

} // namespace tarvik
