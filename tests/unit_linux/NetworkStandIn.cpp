#include "NetworkStandIn.h"
#include "NetworkNames.h"

#include <thread>

namespace tarvik {

namespace {

/// Held for what the objects say only, never for a call to the bus: the bus has a lock of its own,
/// which its thread holds while it asks for this one.
using Guard = std::lock_guard<std::recursive_mutex>;

} // namespace

NetworkStandIn::NetworkStandIn() {
    start();
}

NetworkStandIn::~NetworkStandIn() {
    stop();
}

void NetworkStandIn::start() {
    connection_ = sdbus::createSystemBusConnection();
    registerManager();
    registerSettings();
    for (const auto& [path, settings] : profiles_) {
        registerProfile(path);
    }
    connection_->requestName(network::service);
    connection_->enterEventLoopAsync();
}

void NetworkStandIn::stop() {
    setSilent(false);
    if (connection_ == nullptr) {
        return;
    }
    connection_->leaveEventLoop();
    for (auto& [path, line] : lines_) {
        line.object.reset();
    }
    for (auto& [path, device] : devices_) {
        device.object.reset();
    }
    profileObjects_.clear();
    lines_.clear();
    linePaths_.clear();
    manager_.reset();
    settings_.reset();
    connection_.reset();
}

void NetworkStandIn::setSilent(bool silent) {
    const std::lock_guard guard(silenceMutex_);
    silent_ = silent;
    spoken_.notify_all();
}

/// Every call passes here: it waits while the service is silent.
void NetworkStandIn::answer() {
    std::unique_lock lock(silenceMutex_);
    spoken_.wait(lock, [this] { return !silent_; });
}

std::unique_ptr<sdbus::IObject> NetworkStandIn::objectAt(const std::string& path) {
    return sdbus::createObject(*connection_, path);
}

template <class Value>
void NetworkStandIn::property(sdbus::IObject& object, const std::string& interface,
                              const std::string& name, const Value& value) {
    object.registerProperty(name).onInterface(interface).withGetter([this, &value]() -> Value {
        answer();
        const Guard guard(mutex_);
        return value;
    });
}

void NetworkStandIn::registerManager() {
    manager_ = objectAt(network::managerPath);
    property(*manager_, network::service, "State", state_);
    property(*manager_, network::service, "Connectivity", connectivity_);
    property(*manager_, network::service, "PrimaryConnectionType", primaryType_);
    property(*manager_, network::service, "PrimaryConnection", primary_);
    manager_->registerProperty("ActiveConnections")
        .onInterface(network::service)
        .withGetter([this]() -> Paths {
            answer();
            if (onLook) {
                onLook();
            }
            const Guard guard(mutex_);
            return linePaths_;
        });
    property(*manager_, network::service, "AllDevices", devicePaths_);
    manager_->registerMethod("ActivateConnection")
        .onInterface(network::service)
        .implementedAs([this](const sdbus::ObjectPath& profile, const sdbus::ObjectPath&,
                              const sdbus::ObjectPath&) -> sdbus::ObjectPath {
            answer();
            if (!failure.empty()) {
                throw sdbus::Error(failure, "");
            }
            return onActivate(profile);
        });
    manager_->registerMethod("DeactivateConnection")
        .onInterface(network::service)
        .implementedAs([this](const sdbus::ObjectPath& path) {
            answer();
            if (!failure.empty()) {
                throw sdbus::Error(failure, "");
            }
            const Guard guard(mutex_);
            deactivated_.push_back(path);
        });
    manager_->finishRegistration();
}

void NetworkStandIn::registerSettings() {
    settings_ = objectAt(network::managerPath + "/Settings");
    settings_->registerMethod("ListConnections")
        .onInterface(network::service + ".Settings")
        .implementedAs([this]() -> Paths {
            answer();
            const Guard guard(mutex_);
            Paths paths;
            for (const auto& [path, settings] : profiles_) {
                paths.emplace_back(path);
            }
            return paths;
        });
    for (const char* signal : {"NewConnection", "ConnectionRemoved"}) {
        settings_->registerSignal(signal)
            .onInterface(network::service + ".Settings")
            .withParameters<sdbus::ObjectPath>();
    }
    settings_->finishRegistration();
}

void NetworkStandIn::registerProfile(const std::string& path) {
    auto object = objectAt(path);
    object->registerMethod("GetSettings")
        .onInterface(network::service + ".Settings.Connection")
        .implementedAs([this, path]() -> Settings {
            answer();
            std::this_thread::sleep_for(perProfile_.load());
            const Guard guard(mutex_);
            if (path == hidden_) {
                throw sdbus::Error(network::service + ".Settings.PermissionDenied", "");
            }
            return profiles_[path];
        });
    object->registerSignal("Updated").onInterface(network::service + ".Settings.Connection");
    object->finishRegistration();
    profileObjects_[path] = std::move(object);
}

std::string NetworkStandIn::newPath(const std::string& kind) {
    const Guard guard(mutex_);
    return network::managerPath + "/" + kind + "/" + std::to_string(++last_);
}

std::string NetworkStandIn::addProfile(const std::string& name, const std::string& type,
                                       const Settings& more) {
    const std::string path = newPath("Settings");
    {
        const Guard guard(mutex_);
        Settings& settings = profiles_[path] = more;
        settings["connection"]["id"] = sdbus::Variant(name);
        settings["connection"]["uuid"] = sdbus::Variant(path);
        settings["connection"]["type"] = sdbus::Variant(type);
    }
    registerProfile(path);
    settings_->emitSignal("NewConnection")
        .onInterface(network::service + ".Settings")
        .withArguments(sdbus::ObjectPath(path));
    return path;
}

void NetworkStandIn::renameProfile(const std::string& path, const std::string& name) {
    {
        const Guard guard(mutex_);
        profiles_.at(path)["connection"]["id"] = sdbus::Variant(name);
    }
    profileObjects_.at(path)->emitSignal("Updated").onInterface(network::service +
                                                                ".Settings.Connection");
}

void NetworkStandIn::removeProfile(const std::string& path) {
    {
        const Guard guard(mutex_);
        profiles_.erase(path);
    }
    profileObjects_.erase(path);
    settings_->emitSignal("ConnectionRemoved")
        .onInterface(network::service + ".Settings")
        .withArguments(sdbus::ObjectPath(path));
}

std::string NetworkStandIn::addDevice(const std::string& interface, const std::string& ip4,
                                      const std::string& ip6) {
    const std::string path = newPath("Devices");
    Device* device = nullptr;
    {
        const Guard guard(mutex_);
        device = &devices_[path];
        device->interface = device->ipInterface = interface;
        device->ip4 = ip4;
        device->ip6 = ip6;
        devicePaths_.emplace_back(path);
    }
    device->object = objectAt(path);
    property(*device->object, network::deviceInterface, "Interface", device->interface);
    property(*device->object, network::deviceInterface, "IpInterface", device->ipInterface);
    property(*device->object, network::deviceInterface, "Ip4Config", device->ip4);
    property(*device->object, network::deviceInterface, "Ip6Config", device->ip6);
    device->object->registerSignal("StateChanged")
        .onInterface(network::deviceInterface)
        .withParameters<std::uint32_t, std::uint32_t, std::uint32_t>();
    device->object->finishRegistration();
    return path;
}

std::string NetworkStandIn::addLine(const std::string& profile, std::uint32_t state,
                                    const Paths& devices, const std::string& ip4,
                                    const std::string& ip6) {
    const std::string path = newPath("ActiveConnection");
    Line* line = nullptr;
    {
        const Guard guard(mutex_);
        line = &lines_[path];
        line->uuid = profile;
        line->id = profiles_[profile]["connection"]["id"].get<std::string>();
        line->type = profiles_[profile]["connection"]["type"].get<std::string>();
        line->state = state;
        line->devices = devices;
        line->ip4 = ip4;
        line->ip6 = ip6;
        linePaths_.emplace_back(path);
    }
    line->object = objectAt(path);
    property(*line->object, network::lineInterface, "Uuid", line->uuid);
    property(*line->object, network::lineInterface, "Id", line->id);
    property(*line->object, network::lineInterface, "Type", line->type);
    property(*line->object, network::lineInterface, "State", line->state);
    property(*line->object, network::lineInterface, "Devices", line->devices);
    property(*line->object, network::lineInterface, "Ip4Config", line->ip4);
    property(*line->object, network::lineInterface, "Ip6Config", line->ip6);
    line->object->registerSignal("StateChanged")
        .onInterface(network::lineInterface)
        .withParameters<std::uint32_t, std::uint32_t>();
    line->object->finishRegistration();
    tellLines();
    return path;
}

void NetworkStandIn::tellLines() {
    manager_->emitPropertiesChangedSignal(network::service, {"ActiveConnections"});
}

void NetworkStandIn::settle() {
    std::string id;
    sdbus::createProxy(*connection_, "org.freedesktop.DBus", "/org/freedesktop/DBus")
        ->callMethod("GetId")
        .onInterface("org.freedesktop.DBus")
        .storeResultsTo(id);
}

NetworkStandIn::Line& NetworkStandIn::line(const std::string& path) {
    const Guard guard(mutex_);
    return lines_.at(path);
}

void NetworkStandIn::setLineState(const std::string& path, std::uint32_t state,
                                  std::uint32_t reason) {
    {
        const Guard guard(mutex_);
        lines_.at(path).state = state;
        if (state == 4) {
            std::erase(linePaths_, path);
        }
    }
    line(path)
        .object->emitSignal("StateChanged")
        .onInterface(network::lineInterface)
        .withArguments(state, reason);
    if (state == 4) {
        tellLines();
    }
}

void NetworkStandIn::loseLine(const std::string& path) {
    line(path).object.reset();
    tellLines();
}

void NetworkStandIn::setAddresses(const std::string& path, const std::string& ip4) {
    const Guard guard(mutex_);
    lines_.at(path).ip4 = ip4;
}

void NetworkStandIn::failDevice(const std::string& path, std::uint32_t reason) {
    constexpr std::uint32_t before = 40;
    constexpr std::uint32_t failed = 120;
    devices_.at(path)
        .object->emitSignal("StateChanged")
        .onInterface(network::deviceInterface)
        .withArguments(failed, before, reason);
}

void NetworkStandIn::setPrimary(const std::string& path, const std::string& type) {
    {
        const Guard guard(mutex_);
        primary_ = path;
        primaryType_ = type;
    }
    manager_->emitPropertiesChangedSignal(network::service, {"PrimaryConnection"});
}

std::vector<std::string> NetworkStandIn::deactivated() const {
    const Guard guard(mutex_);
    return deactivated_;
}

} // namespace tarvik
