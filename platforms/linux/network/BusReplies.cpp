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

bool isGone(const sdbus::Error& error) {
    return endsWithOne(error.getName(),
                       std::array{".UnknownObject", ".UnknownMethod", ".UnknownInterface",
                                  ".PermissionDenied", ".AccessDenied"});
}

} // namespace tarvik
