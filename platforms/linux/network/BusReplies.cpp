#include "linux/network/BusReplies.h"

#include <algorithm>
#include <array>

namespace tarvik {

namespace {

template <std::size_t count>
bool endsWithOne(const std::string& name, const std::array<const char*, count>& ends) {
    return std::any_of(ends.begin(), ends.end(),
                       [&](const char* end) { return name.ends_with(end); });
}

} // namespace

bool isTimeOut(const sdbus::Error& error) {
    return endsWithOne(error.getName(), std::array{".NoReply", ".Timeout", ".TimedOut"});
}

/// These are the bus's own words: a service may use others that end alike.
bool isDisconnected(const sdbus::Error& error) {
    const std::string& name = error.getName();
    return name == dbus::disconnected || name == dbus::service + ".Error.ServiceUnknown" ||
           name == dbus::noOwner;
}

bool isNoAnswer(const sdbus::Error& error) {
    return isTimeOut(error) || isDisconnected(error);
}

bool isGone(const sdbus::Error& error) {
    return endsWithOne(error.getName(),
                       std::array{".UnknownObject", ".UnknownMethod", ".UnknownInterface",
                                  ".PermissionDenied", ".AccessDenied"});
}

} // namespace tarvik
