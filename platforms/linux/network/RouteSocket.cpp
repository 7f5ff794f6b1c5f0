#include "linux/network/RouteSocket.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <sys/socket.h>

namespace tarvik {

namespace {

/// The kernel cuts its lists to pieces of half of that.
constexpr std::size_t room = 32768;

} // namespace

bool RouteSocket::ask(nlmsghdr& request, const std::function<void(const nlmsghdr&)>& take) {
    if (!send(request)) {
        return false;
    }
    RouteAnswer answer{RouteAnswer::Progress::goesOn, 0};
    while (answer.progress == RouteAnswer::Progress::goesOn) {
        answer = receive(request, take);
    }
    if (answer.progress == RouteAnswer::Progress::over) {
        return true;
    }
    if (answer.progress == RouteAnswer::Progress::failed) {
        socket_.close(); // what is still to come belongs to no later request
    }
    errno = answer.error;
    return false;
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

RouteAnswer RouteSocket::receive(const nlmsghdr& request,
                                 const std::function<void(const nlmsghdr&)>& take) {
    alignas(nlmsghdr) std::array<char, room> buffer; // NOLINT(*-member-init): the kernel fills it
    sockaddr_nl sender{};
    socklen_t size = sizeof sender;
    const ssize_t count = recvfrom(socket_.number(), buffer.data(), buffer.size(), MSG_TRUNC,
                                   reinterpret_cast<sockaddr*>(&sender), &size);
    if (count < 0) {
        return {RouteAnswer::Progress::failed, errno};
    }
    if (size != sizeof sender || sender.nl_pid != 0) {
        return {RouteAnswer::Progress::goesOn, 0}; // another program's: the kernel has no number
    }
    const auto length = static_cast<std::size_t>(count);
    if (length == 0 || length > room) {
        return {RouteAnswer::Progress::failed, EIO};
    }
    return readRouteMessages({buffer.data(), length}, request, take);
}

} // namespace tarvik
