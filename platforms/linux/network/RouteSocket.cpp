#include "linux/network/RouteSocket.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <sys/socket.h>

namespace tarvik {

namespace {

/// The kernel cuts its lists to pieces of half of that.
constexpr std::size_t room = 32768;

/// The error that the kernel answers with; 0 for the acknowledgement of a request.
int errorOf(const nlmsghdr& message) {
    nlmsgerr error{};
    if (message.nlmsg_len < NLMSG_LENGTH(sizeof error)) {
        return EIO;
    }
    std::memcpy(&error, NLMSG_DATA(&message), sizeof error);
    return -error.error;
}

} // namespace

bool RouteSocket::ask(nlmsghdr& request, const std::function<void(const nlmsghdr&)>& take) {
    if (!send(request)) {
        return false;
    }
    Progress progress = Progress::goesOn;
    while (progress == Progress::goesOn) {
        progress = receive(request.nlmsg_flags, take);
    }
    return progress == Progress::over;
}

bool RouteSocket::send(nlmsghdr& request) {
    if (!socket_) {
        socket_ = FileDescriptor(
            socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE));
    }
    request.nlmsg_flags |= NLM_F_REQUEST;
    request.nlmsg_seq = ++asked_;
    const auto size = static_cast<ssize_t>(request.nlmsg_len);
    return socket_ && ::send(socket_.number(), &request, request.nlmsg_len, 0) == size;
}

RouteSocket::Progress RouteSocket::receive(std::uint16_t flags,
                                           const std::function<void(const nlmsghdr&)>& take) {
    alignas(nlmsghdr) std::array<char, room> buffer; // NOLINT(*-member-init): the kernel fills it
    const auto failed = [&](int error) {
        socket_.close(); // what is still to come belongs to no later request
        errno = error;
        return Progress::failed;
    };
    const ssize_t count = recv(socket_.number(), buffer.data(), buffer.size(), MSG_TRUNC);
    if (count <= 0 || count > static_cast<ssize_t>(room)) {
        return failed(count < 0 ? errno : EIO);
    }
    bool over = (flags & NLM_F_DUMP) != NLM_F_DUMP;
    auto length = static_cast<unsigned>(count);
    auto* message = reinterpret_cast<nlmsghdr*>(buffer.data());
    for (; NLMSG_OK(message, length); message = NLMSG_NEXT(message, length)) {
        if (message->nlmsg_seq != asked_ || (message->nlmsg_flags & NLM_F_DUMP_INTR) != 0) {
            return failed(EIO);
        }
        if (message->nlmsg_type == NLMSG_ERROR) {
            errno = errorOf(*message);
            return errno == 0 ? Progress::over : Progress::failed;
        }
        if (message->nlmsg_type == NLMSG_DONE) {
            over = true;
        } else {
            take(*message);
        }
    }
    return over ? Progress::over : Progress::goesOn;
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
