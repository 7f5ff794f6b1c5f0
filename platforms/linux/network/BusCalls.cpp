#include "linux/network/BusCalls.h"

#include <poll.h>

namespace tarvik {

void BusCalls::requireTime() const {
    if (Clock::now() >= end_) {
        throw sdbus::Error(dbus::timedOut, "");
    }
}

/// Handles what has come, or else waits for something to come.
void BusCalls::handleNext() {
    if (throughBus([this] { return bus_.processPendingRequest(); })) {
        return;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end_ - Clock::now()).count();
    const auto data = bus_.getEventLoopPollData();
    pollfd descriptor{.fd = data.fd, .events = data.events, .revents = 0};
    poll(&descriptor, 1, left < 0 ? 0 : static_cast<int>(left));
}

std::string BusCalls::ownerOf(const std::string& name) {
    try {
        return std::get<0>(
            call<std::string>(dbus::service, dbus::path, dbus::service, "GetNameOwner", name));
    } catch (const sdbus::Error& error) {
        if (error.getName() != dbus::noOwner) {
            throw;
        }
        return {};
    }
}

Properties BusCalls::propertiesOf(const std::string& path, const std::string& interface) {
    return ask<Properties>(path, dbus::propertiesInterface, "GetAll", interface);
}

std::vector<sdbus::ObjectPath> BusCalls::profilePaths() {
    return ask<std::vector<sdbus::ObjectPath>>(nm::settingsPath, nm::settingsInterface,
                                               "ListConnections");
}

ProfileSettings BusCalls::settingsOf(const std::string& profile) {
    return ask<ProfileSettings>(profile, nm::profileInterface, "GetSettings");
}

} // namespace tarvik
