#include "linux/network/LinkAge.h"

#include "linux/network/RouteSocket.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <linux/if_addr.h>
#include <sys/socket.h>

namespace tarvik {

namespace {

constexpr std::uint64_t stampsPerSecond = 100;
/// A list fails where an address comes or goes while it is made.
constexpr int mostTries = 3;

struct Request {
    nlmsghdr header{};
    ifaddrmsg message{};
};

/// The stamp of an address's making, in hundredths of a second since the machine's start; nothing
/// for an address of another interface.
std::optional<std::uint32_t> stampOf(const nlmsghdr& answer, std::uint32_t index) {
    ifaddrmsg message{};
    ifa_cacheinfo info{};
    if (answer.nlmsg_len < NLMSG_LENGTH(sizeof message) ||
        !copyAttribute(answer, sizeof message, IFA_CACHEINFO, &info, sizeof info)) {
        return std::nullopt;
    }
    std::memcpy(&message, NLMSG_DATA(&answer), sizeof message);
    return message.ifa_index == index ? std::optional(info.cstamp) : std::nullopt;
}

/// The stamp of the interface's oldest address; nothing where it has none, or where the kernel's
/// list stays incomplete: one that is left out may be the oldest.
std::optional<std::uint32_t> oldestStamp(std::uint32_t index) {
    for (int i = 0; i < mostTries; ++i) {
        Request request;
        request.header.nlmsg_len = sizeof request;
        request.header.nlmsg_type = RTM_GETADDR;
        request.header.nlmsg_flags = NLM_F_DUMP;
        request.message.ifa_family = AF_UNSPEC;
        std::optional<std::uint32_t> oldest;
        const bool whole = RouteSocket().ask(request.header, [&](const nlmsghdr& answer) {
            if (const auto stamp = stampOf(answer, index)) {
                oldest = std::min(oldest.value_or(*stamp), *stamp);
            }
        });
        if (whole) {
            return oldest;
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
    const auto oldest = oldestStamp(index);
    if (!oldest) {
        return std::nullopt;
    }
    const std::uint64_t made = std::uint64_t{*oldest} * 1000 / stampsPerSecond;
    const std::uint64_t now = millisecondsSinceStart();
    return now > made ? now - made : 0;
}

} // namespace tarvik
