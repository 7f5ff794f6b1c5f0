#include "linux/services/BusGreeting.h"

#include <sdbus-c++/sdbus-c++.h>

#include <memory>

namespace tarvik {

namespace {

/// What the error says of something that does not greet: the toolkit sees at once that it is none.
bool saysThatNoneIsThere(const sdbus::Error& error) {
    const std::string& name = error.getName();
    return name == "org.freedesktop.DBus.Error.FileNotFound" ||
           name == "org.freedesktop.DBus.Error.AccessDenied" ||
           name == "org.freedesktop.DBus.Error.InvalidArgs" || name == "System.Error.ECONNREFUSED";
}

} // namespace

bool busGreets(const std::string& address, const BusQuestion& question) {
    if (!address.starts_with("unix:")) {
        return true;
    }
    std::unique_ptr<sdbus::IConnection> bus;
    try {
        bus = sdbus::createSessionBusConnectionWithAddress(address);
    } catch (const sdbus::Error& error) {
        return saysThatNoneIsThere(error);
    }
    try {
        if (question) {
            question(*bus);
        }
    } catch (const sdbus::Error&) {
        return true; // the toolkit will be told the same
    }
    return true;
}

void askBus(sdbus::IConnection& bus, int times) {
    const char* const name = "org.freedesktop.DBus";
    const auto daemon = sdbus::createProxy(bus, name, "/org/freedesktop/DBus");
    for (int i = 0; i < times; ++i) {
        bool is = false;
        daemon->callMethod("NameHasOwner").onInterface(name).withArguments(name).storeResultsTo(is);
    }
}

} // namespace tarvik
