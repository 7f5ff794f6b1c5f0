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
inline const std::string disconnected = service + ".Error.Disconnected";
inline const std::string inconsistent = service + ".Error.InconsistentMessage";
inline const std::string noOwner = service + ".Error.NameHasNoOwner";
inline const std::string timedOut = service + ".Error.Timeout";
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

/// A property by its name; the type's own default where there is none. Throws sdbus::Error where it
/// is of another type: that tells nothing, least of all that something has ended.
template <class Value>
Value valueOf(const Properties& properties, const std::string& name) {
    const auto found = properties.find(name);
    if (found == properties.end()) {
        return {};
    }
    if (!found->second.containsValueOfType<Value>()) {
        throw sdbus::Error(dbus::inconsistent, name);
    }
    return found->second.get<Value>();
}

/// Nobody answered in time.
bool isTimeOut(const sdbus::Error& error);

/// The bus, or who was asked, is not there any more.
bool isDisconnected(const sdbus::Error& error);

/// Either: what is asked next would not be answered. Any other error is about the one thing that
/// was asked about, or the answer cannot be read.
bool isNoAnswer(const sdbus::Error& error);

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
