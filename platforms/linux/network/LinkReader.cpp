#include "linux/network/LinkReader.h"

#include "linux/network/LinkFiles.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <linux/if_link.h>
#include <net/if.h>

namespace tarvik {

namespace {

/// A request for one interface, by its name.
struct NamedRequest {
    nlmsghdr header{};
    ifinfomsg message{};
    rtattr attribute{};
    std::array<char, IFNAMSIZ> name{};
};

/// A request for a kind of figures of all interfaces.
struct FiguresRequest {
    nlmsghdr header{};
    if_stats_msg message{};
};

LinkReading readingOf(std::uint32_t index, const rtnl_link_stats64& figures) {
    return {.index = index,
            .received = figures.rx_bytes,
            .sent = figures.tx_bytes,
            .packetsReceived = figures.rx_packets,
            .packetsSent = figures.tx_packets,
            .checksumErrors = figures.rx_crc_errors,
            .alignmentErrors = figures.rx_frame_errors,
            .lengthErrors = figures.rx_length_errors,
            .overrunErrors = overruns(figures.rx_over_errors, figures.rx_fifo_errors),
            .missed = figures.rx_missed_errors,
            .aborted = figures.tx_aborted_errors};
}

/// The reading in a message that begins with a header of that kind and has the figures in an
/// attribute of that kind.
template <class Header>
std::optional<LinkReading> readingIn(const nlmsghdr& message,
                                     std::uint32_t (*indexOf)(const Header&), std::uint16_t kind) {
    Header header{};
    rtnl_link_stats64 figures{};
    if (message.nlmsg_len < NLMSG_LENGTH(sizeof header) ||
        !copyAttribute(message, sizeof header, kind, &figures, sizeof figures)) {
        return std::nullopt;
    }
    std::memcpy(&header, NLMSG_DATA(&message), sizeof header);
    return readingOf(indexOf(header), figures);
}

std::uint32_t indexOfLink(const ifinfomsg& link) {
    return static_cast<std::uint32_t>(link.ifi_index);
}

std::uint32_t indexOfFigures(const if_stats_msg& figures) {
    return figures.ifindex;
}

} // namespace

std::optional<LinkReading> LinkReader::read(const std::string& interface) {
    if (!asks_ || interface.empty() || interface.size() >= IFNAMSIZ) {
        return readLink(folder_, interface);
    }
    NamedRequest request;
    request.header.nlmsg_len = sizeof request;
    request.header.nlmsg_type = RTM_GETLINK;
    request.attribute.rta_type = IFLA_IFNAME;
    request.attribute.rta_len = RTA_LENGTH(IFNAMSIZ);
    std::copy(interface.begin(), interface.end(), request.name.begin());
    std::optional<LinkReading> reading;
    const bool answered = socket_.ask(request.header, [&](const nlmsghdr& message) {
        reading = readingIn<ifinfomsg>(message, indexOfLink, IFLA_STATS64);
    });
    const bool notThere = !answered && errno == ENODEV;
    return reading || notThere ? reading : readLink(folder_, interface);
}

LinkReadings LinkReader::readAll() {
    if (!asks_) {
        return readLinks(folder_);
    }
    FiguresRequest request;
    request.header.nlmsg_len = sizeof request;
    request.header.nlmsg_type = RTM_GETSTATS;
    request.header.nlmsg_flags = NLM_F_DUMP;
    request.message.filter_mask = IFLA_STATS_FILTER_BIT(IFLA_STATS_LINK_64);
    LinkReadings readings;
    const bool answered = socket_.ask(request.header, [&](const nlmsghdr& message) {
        if (const auto one = readingIn<if_stats_msg>(message, indexOfFigures, IFLA_STATS_LINK_64)) {
            readings[one->index] = *one;
        }
    });
    return answered ? readings : readLinks(folder_);
}

std::uint32_t LinkReader::bitRate(const std::string& interface) const {
    return bitRateOf(folder_, interface);
}

} // namespace tarvik
