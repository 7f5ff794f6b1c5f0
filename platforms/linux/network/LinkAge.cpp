#include "linux/network/LinkAge.h"

#include "linux/services/FileDescriptor.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <ctime>
#include <linux/if_addr.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tarvik {

namespace {

constexpr std::uint64_t stampsPerSecond = 100;

struct Request {
    nlmsghdr header;
    ifaddrmsg message;
};

FileDescriptor askForAddresses() {
    FileDescriptor connection(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE));
    Request request{};
    request.header.nlmsg_len = sizeof request;
    request.header.nlmsg_type = RTM_GETADDR;
    request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    request.message.ifa_family = AF_UNSPEC;
    if (!connection || send(connection.number(), &request, sizeof request, 0) < 0) {
        connection.close();
    }
    return connection;
}

/// The stamp of an address's making, in hundredths of a second since the machine's start.
std::optional<std::uint32_t> stampOf(nlmsghdr* header, std::uint32_t index) {
    auto* message = static_cast<ifaddrmsg*>(NLMSG_DATA(header));
    if (message->ifa_index != index) {
        return std::nullopt;
    }
    auto length = static_cast<int>(IFA_PAYLOAD(header));
    for (rtattr* part = IFA_RTA(message); RTA_OK(part, length); part = RTA_NEXT(part, length)) {
        if (part->rta_type == IFA_CACHEINFO) {
            ifa_cacheinfo info{};
            std::memcpy(&info, RTA_DATA(part), sizeof info);
            return info.cstamp;
        }
    }
    return std::nullopt;
}

std::uint64_t millisecondsSinceStart() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint64_t>(now.tv_sec) * 1000 +
           static_cast<std::uint64_t>(now.tv_nsec) / 1'000'000;
}

} // namespace

std::optional<std::uint64_t> addressAge(std::uint32_t index) {
    const FileDescriptor connection = askForAddresses();
    std::optional<std::uint32_t> oldest;
    alignas(nlmsghdr) std::array<char, 16384> buffer{};
    for (bool done = !connection; !done;) {
        const ssize_t count = recv(connection.number(), buffer.data(), buffer.size(), 0);
        auto length = static_cast<unsigned>(std::max<ssize_t>(count, 0));
        done = count <= 0;
        auto* header = reinterpret_cast<nlmsghdr*>(buffer.data());
        for (; NLMSG_OK(header, length); header = NLMSG_NEXT(header, length)) {
            if (header->nlmsg_type == NLMSG_DONE || header->nlmsg_type == NLMSG_ERROR) {
                done = true;
            } else if (const auto stamp = stampOf(header, index)) {
                oldest = std::min(oldest.value_or(*stamp), *stamp);
            }
        }
    }
    if (!oldest) {
        return std::nullopt;
    }
    const std::uint64_t made = std::uint64_t{*oldest} * 1000 / stampsPerSecond;
    const std::uint64_t now = millisecondsSinceStart();
    return now > made ? now - made : 0;
}

} // namespace tarvik
