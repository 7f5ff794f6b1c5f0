#include "linux/network/BusCalls.h"

namespace tarvik {

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

std::vector<sdbus::ObjectPath> BusCalls::profilePaths() {
    std::vector<sdbus::ObjectPath> paths;
    object(nm::settingsPath)
        ->callMethod("ListConnections")
        .onInterface(nm::settingsInterface)
        .storeResultsTo(paths);
    return paths;
}

ProfileSettings BusCalls::settingsOf(const std::string& profile) {
    ProfileSettings settings;
    object(profile)
        ->callMethod("GetSettings")
        .onInterface(nm::profileInterface)
        .storeResultsTo(settings);
    return settings;
}

} // namespace tarvik
