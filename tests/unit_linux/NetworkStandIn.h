#pragma once

#include "SystemBusStandIn.h"

#include <sdbus-c++/sdbus-c++.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace tarvik {

/// A stand-in for NetworkManager on a system bus of its own, as its clients see it. The test sets
/// what its objects say, tells of changes by the same signals, and sees what it is asked to do.
class NetworkStandIn {
public:
    using Paths = std::vector<sdbus::ObjectPath>;
    using Settings = std::map<std::string, std::map<std::string, sdbus::Variant>>;

    /// A device, or an active connection with its device; addresses are objects of their own.
    struct Device {
        std::string interface;
        std::string ipInterface;
        sdbus::ObjectPath ip4 = "/";
        sdbus::ObjectPath ip6 = "/";
        std::unique_ptr<sdbus::IObject> object;
    };
    struct Line {
        std::string uuid;
        std::string id;
        std::string type;
        std::uint32_t state = 2;
        Paths devices;
        sdbus::ObjectPath ip4 = "/";
        sdbus::ObjectPath ip6 = "/";
        std::unique_ptr<sdbus::IObject> object;
    };

    NetworkStandIn();
    ~NetworkStandIn();
    NetworkStandIn(const NetworkStandIn&) = delete;
    NetworkStandIn& operator=(const NetworkStandIn&) = delete;

    const SystemBusStandIn& bus() const { return bus_; }

    /// The service comes to the bus, or leaves it.
    void start();
    void stop();
    /// Calls are not answered any more, or are again.
    void setSilent(bool silent);

    /// A saved profile; its path. It has a uuid of the same name as its path.
    std::string addProfile(const std::string& name, const std::string& type,
                           const Settings& more = {});
    /// Each tells of it as the service does.
    void renameProfile(const std::string& path, const std::string& name);
    void removeProfile(const std::string& path);
    /// How long it takes to tell one profile's settings.
    void slowDown(std::chrono::milliseconds perProfile) { perProfile_ = perProfile; }
    /// Each time that the active connections are asked for, or told with a change, before they are
    /// told; on the stand-in's thread.
    std::function<void()> onLook;
    /// The profile is another user's: its settings are not told.
    void hideProfile(const std::string& path) { hidden_ = path; }
    std::string addDevice(const std::string& interface, const std::string& ip4 = "/",
                          const std::string& ip6 = "/");
    /// An active connection of a profile; its path.
    std::string addLine(const std::string& profile, std::uint32_t state, const Paths& devices,
                        const std::string& ip4 = "/", const std::string& ip6 = "/");
    /// Returns when the bus has handed on all that was told: whoever looks now sees it.
    void settle();
    /// Sets the state and tells it; a connection that is deactivated leaves the list.
    void setLineState(const std::string& path, std::uint32_t state, std::uint32_t reason);
    /// The object goes, but the list still names it.
    void loseLine(const std::string& path);
    /// Without a signal.
    void setAddresses(const std::string& path, const std::string& ip4);
    void failDevice(const std::string& path, std::uint32_t reason);
    void setPrimary(const std::string& path, const std::string& type);

    /// Tells everybody that asked for it, whatever it is.
    template <class... Values>
    void tell(const std::string& path, const std::string& interface, const std::string& member,
              const Values&... values) {
        const auto object = objectAt(path);
        sdbus::Signal signal = object->createSignal(interface, member);
        ((signal << values), ...);
        object->emitSignal(signal);
    }

    /// What `ActivateConnection` does, on the stand-in's thread; its answer is the path.
    std::function<std::string(const std::string& profile)> onActivate;
    /// An error's name that the next call to activate or deactivate answers with; empty for none.
    std::string failure;
    std::vector<std::string> deactivated() const;

private:
    void registerManager();
    void registerSettings();
    template <class Value>
    void property(sdbus::IObject& object, const std::string& interface, const std::string& name,
                  const Value& value);
    std::unique_ptr<sdbus::IObject> objectAt(const std::string& path);
    void registerProfile(const std::string& path);
    std::string newPath(const std::string& kind);
    Line& line(const std::string& path);
    void tellLines();
    void answer();

    SystemBusStandIn bus_;
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IObject> manager_;
    std::unique_ptr<sdbus::IObject> settings_;
    std::map<std::string, std::unique_ptr<sdbus::IObject>> profileObjects_;
    std::map<std::string, Settings> profiles_;
    std::map<std::string, Device> devices_;
    std::map<std::string, Line> lines_;
    std::string hidden_;
    std::atomic<std::chrono::milliseconds> perProfile_ = std::chrono::milliseconds::zero();
    std::uint32_t state_ = 70;
    std::uint32_t connectivity_ = 4;
    std::string primaryType_;
    sdbus::ObjectPath primary_ = "/";
    Paths linePaths_;
    Paths devicePaths_;
    std::vector<std::string> deactivated_;
    int last_ = 0;
    mutable std::recursive_mutex mutex_; ///< what the objects say is read by the bus's thread
    std::mutex silenceMutex_;
    std::condition_variable spoken_;
    bool silent_ = false;
};

} // namespace tarvik
