#pragma once

#include <string>

namespace tarvik {

/// What the bus itself is called on it.
namespace bus {
inline const std::string service = "org.freedesktop.DBus";
inline const std::string path = "/org/freedesktop/DBus";
inline const std::string properties = service + ".Properties";
} // namespace bus

/// What NetworkManager and its objects are called on the bus, said a second time: a slip of the
/// program's own names is to be noticed.
namespace network {
inline const std::string service = "org.freedesktop.NetworkManager";
inline const std::string managerPath = "/org/freedesktop/NetworkManager";
inline const std::string settingsPath = managerPath + "/Settings";
inline const std::string lineInterface = service + ".Connection.Active";
inline const std::string deviceInterface = service + ".Device";
inline const std::string settingsInterface = service + ".Settings";
} // namespace network

} // namespace tarvik
