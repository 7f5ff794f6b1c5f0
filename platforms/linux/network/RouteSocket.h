#pragma once

#include "linux/services/FileDescriptor.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>

namespace tarvik {

/// Asks the kernel about interfaces and addresses. It answers at once: nothing here ever waits.
class RouteSocket {
public:
    /// Sends a request, whose number it sets, and hands over the messages of the answer; those of
    /// one that came in part, too. False when the kernel refused it, errno telling why, or when no
    /// whole answer came: errno is then EIO, or what the system told.
    bool ask(nlmsghdr& request, const std::function<void(const nlmsghdr&)>& take);

private:
    enum class Progress { goesOn, over, failed };

    bool send(nlmsghdr& request);
    Progress receive(std::uint16_t flags, const std::function<void(const nlmsghdr&)>& take);

    FileDescriptor socket_;
    std::uint32_t asked_ = 0; ///< the number of the last request
};

/// The content of the message's first attribute of that kind, copied; false when there is none. The
/// message has a header of its own, of that many bytes. Shorter content fills `content` in part.
bool copyAttribute(const nlmsghdr& message, std::size_t header, std::uint16_t kind, void* content,
                   std::size_t size);

} // namespace tarvik
