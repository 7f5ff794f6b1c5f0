#pragma once

#include <sdbus-c++/sdbus-c++.h>

#include <map>
#include <string>
#include <vector>

namespace tarvik {

/// The names of the bus itself.
namespace dbus {
inline const std::string service = "org.freedesktop.DBus";
inline const std::string path = "/org/freedesktop/DBus";
inline const std::string propertiesInterface = service + ".Properties";
} // namespace dbus

/// The names that NetworkManager has on the bus.
namespace nm {
inline const std::string service = "org.freedesktop.NetworkManager";
inline const std::string managerPath = "/org/freedesktop/NetworkManager";
inline const std::string settingsPath = managerPath + "/Settings";
inline const std::string lineInterface = service + ".Connection.Active";
inline const std::string deviceInterface = service + ".Device";
inline const std::string settingsInterface = service + ".Settings";
inline const std::string profileInterface = settingsInterface + ".Connection";
} // namespace nm

using Properties = std::map<std::string, sdbus::Variant>;
using ProfileSettings = std::map<std::string, Properties>;

/// A property by its name; the type's own default where there is none of that type.
template <class Value>
Value valueOf(const Properties& properties, const std::string& name) {
    const auto found = properties.find(name);
    return found != properties.end() && found->second.containsValueOfType<Value>()
               ? found->second.get<Value>()
               : Value();
}

/// Nobody answered in time.
bool isTimeOut(const sdbus::Error& error);

/// What was asked about is gone, or not for this user.
bool isGone(const sdbus::Error& error);

/// What NetworkManager answers. Each operation throws sdbus::Error.
class BusReplies {
public:
    virtual ~BusReplies() = default;

    /// The properties that the object on that path has under an interface.
    virtual Properties propertiesOf(const std::string& path, const std::string& interface) = 0;
    /// The paths of the saved profiles, and the settings of one.
    virtual std::vector<sdbus::ObjectPath> profilePaths() = 0;
    virtual ProfileSettings settingsOf(const std::string& profile) = 0;
};

} // namespace tarvik
