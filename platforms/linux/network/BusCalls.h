#pragma once

#include <sdbus-c++/sdbus-c++.h>

#include <chrono>
#include <map>
#include <memory>
#include <string>

namespace tarvik {

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

/// Calls to NetworkManager that have a time limit together. Each throws sdbus::Error.
class BusCalls {
public:
    explicit BusCalls(sdbus::IConnection& bus) : bus_(bus) {}

    /// The object on that path; a call to it may take what is left of the time.
    std::unique_ptr<sdbus::IProxy> object(const std::string& path);
    Properties propertiesOf(const std::string& path, const std::string& interface);

private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::seconds longest{2};

    sdbus::IConnection& bus_;
    Clock::time_point end_ = Clock::now() + longest;
};

} // namespace tarvik
