#include "linux/network/BusCalls.h"

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

std::unique_ptr<sdbus::IProxy> BusCalls::object(const std::string& path) {
    const auto left =
        std::chrono::duration_cast<std::chrono::microseconds>(end_ - Clock::now()).count();
    if (left <= 0) {
        throw sdbus::Error("org.freedesktop.DBus.Error.Timeout", "");
    }
    bus_.setMethodCallTimeout(static_cast<std::uint64_t>(left));
    return sdbus::createProxy(bus_, nm::service, path);
}

Properties BusCalls::propertiesOf(const std::string& path, const std::string& interface) {
    Properties properties;
    object(path)
        ->callMethod("GetAll")
        .onInterface("org.freedesktop.DBus.Properties")
        .withArguments(interface)
        .storeResultsTo(properties);
    return properties;
}

} // namespace tarvik
