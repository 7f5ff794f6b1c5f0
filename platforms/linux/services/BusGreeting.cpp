#include "linux/services/BusGreeting.h"

#include <sdbus-c++/sdbus-c++.h>

namespace tarvik {

bool busGreets(const std::string& address) {
    if (!address.starts_with("unix:")) {
        return true;
    }
    try {
        return sdbus::createSessionBusConnectionWithAddress(address) != nullptr;
    } catch (const sdbus::Error& error) {
        const std::string& name = error.getName();
        return name == "org.freedesktop.DBus.Error.FileNotFound" ||
               name == "org.freedesktop.DBus.Error.AccessDenied" ||
               name == "org.freedesktop.DBus.Error.InvalidArgs" ||
               name == "System.Error.ECONNREFUSED";
    }
}

} // namespace tarvik
