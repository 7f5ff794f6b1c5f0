#pragma once

#include "linux/network/RouteMessages.h"
#include "linux/services/FileDescriptor.h"

#include <cstdint>
#include <functional>

namespace tarvik {

/// Asks the kernel about interfaces and addresses. It answers at once: nothing here ever waits.
class RouteSocket {
public:
    /// Sends a request, whose number it sets, and hands over the messages of the answer; those of
    /// one that came in part, too. False when the kernel refused it, errno telling why, or when no
    /// whole answer came: errno is then EIO, or what the system told.
    bool ask(nlmsghdr& request, const std::function<void(const nlmsghdr&)>& take);

private:
    bool send(nlmsghdr& request);
    RouteAnswer receive(const nlmsghdr& request, const std::function<void(const nlmsghdr&)>& take);

    FileDescriptor socket_;
    std::uint32_t asked_ = 0; ///< the number of the last request
};

} // namespace tarvik
