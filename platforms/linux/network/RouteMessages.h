#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <span>

namespace tarvik {

/// What one datagram says of the answer that it is a part of.
struct RouteAnswer {
    /// Refused by the kernel: nothing more comes. Failed: more may come, of which nothing is known.
    enum class Progress { goesOn, over, refused, failed };

    Progress progress = Progress::failed;
    int error = 0; ///< what the kernel refused with, or EIO

    bool operator==(const RouteAnswer&) const = default;
};

/// Reads a datagram, which begins where a header may stand in memory, of the answer to that request
/// and hands over its messages, up to one that fails. A list is over when the kernel says so, any
/// other answer with its datagram. One that was interrupted by a change, belongs to another request
/// or is cut has failed.
RouteAnswer readRouteMessages(std::span<const char> datagram, const nlmsghdr& request,
                              const std::function<void(const nlmsghdr&)>& take);

/// The content of the message's first attribute of that kind, copied; false when there is none. The
/// message has a header of its own, of that many bytes. Shorter content fills `content` in part.
bool copyAttribute(const nlmsghdr& message, std::size_t header, std::uint16_t kind, void* content,
                   std::size_t size);

} // namespace tarvik
