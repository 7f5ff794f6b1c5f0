#include "linux/network/RouteMessages.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace tarvik {

namespace {

constexpr int lastError = 4095;
constexpr RouteAnswer unreadable{RouteAnswer::Progress::failed, EIO};

RouteAnswer over() {
    return {RouteAnswer::Progress::over, 0};
}

/// The kernel's errors are negative; 0 is the acknowledgement of a request, or a list's good end.
RouteAnswer endingWith(int number) {
    if (number == 0) {
        return over();
    }
    return number < 0 && number >= -lastError ? RouteAnswer{RouteAnswer::Progress::refused, -number}
                                              : unreadable;
}

/// An error and the end of a list both begin with a number.
RouteAnswer endOf(const nlmsghdr& message) {
    int number = 0;
    if (message.nlmsg_len < NLMSG_LENGTH(sizeof number)) {
        return message.nlmsg_type == NLMSG_DONE ? over() : unreadable;
    }
    std::memcpy(&number, NLMSG_DATA(&message), sizeof number);
    return endingWith(number);
}

} // namespace

RouteAnswer readRouteMessages(std::span<const char> datagram, const nlmsghdr& request,
                              const std::function<void(const nlmsghdr&)>& take) {
    while (!datagram.empty()) {
        const auto* message = reinterpret_cast<const nlmsghdr*>(datagram.data());
        if (datagram.size() < sizeof *message || message->nlmsg_len < sizeof *message ||
            message->nlmsg_len > datagram.size()) {
            return unreadable;
        }
        if (message->nlmsg_seq != request.nlmsg_seq ||
            (message->nlmsg_flags & NLM_F_DUMP_INTR) != 0) {
            return unreadable;
        }
        if (message->nlmsg_type == NLMSG_ERROR || message->nlmsg_type == NLMSG_DONE) {
            return endOf(*message);
        }
        take(*message);
        // The last one need not be filled up to where another would begin.
        const std::size_t length = NLMSG_ALIGN(std::size_t{message->nlmsg_len});
        datagram = datagram.subspan(std::min(datagram.size(), length));
    }
    const bool isList = (request.nlmsg_flags & NLM_F_DUMP) == NLM_F_DUMP;
    return isList ? RouteAnswer{RouteAnswer::Progress::goesOn, 0} : over();
}

bool copyAttribute(const nlmsghdr& message, std::size_t header, std::uint16_t kind, void* content,
                   std::size_t size) {
    const std::size_t skipped = NLMSG_SPACE(header);
    if (message.nlmsg_len < skipped) {
        return false;
    }
    auto length = static_cast<int>(message.nlmsg_len - skipped);
    const auto* part =
        reinterpret_cast<const rtattr*>(reinterpret_cast<const char*>(&message) + skipped);
    for (; RTA_OK(part, length); part = RTA_NEXT(part, length)) {
        if (part->rta_type == kind) {
            std::memcpy(content, RTA_DATA(part), std::min<std::size_t>(RTA_PAYLOAD(part), size));
            return true;
        }
    }
    return false;
}

} // namespace tarvik
