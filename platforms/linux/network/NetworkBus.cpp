#include "linux/network/NetworkBus.h"

#include <sdbus-c++/sdbus-c++.h>

#include <algorithm>
#include <array>
#include <poll.h>

namespace tarvik {

namespace {

using Settings = std::map<std::string, std::map<std::string, sdbus::Variant>>;

const std::string service = "org.freedesktop.NetworkManager";
const std::string rootPath = "/org/freedesktop/NetworkManager";
const std::string settingsPath = rootPath + "/Settings";
const std::string lineInterface = service + ".Connection.Active";

constexpr std::uint32_t deviceFailed = 120;
constexpr std::uint64_t longestCall = 2'000'000; // microseconds

constexpr std::array<const char*, 7> dialledTypes{"gsm",       "cdma", "pppoe",    "adsl",
                                                  "bluetooth", "vpn",  "wireguard"};

bool isDialled(const std::string& type) {
    return std::find(dialledTypes.begin(), dialledTypes.end(), type) != dialledTypes.end();
}

/// What was asked about has gone meanwhile, or is another user's; any other error, above all that
/// nobody answers, ends the whole round.
void passUnlessGone(const sdbus::Error& error) {
    const std::string& name = error.getName();
    const auto endsWith = [&](std::string_view end) { return name.ends_with(end); };
    if (!endsWith(".UnknownObject") && !endsWith(".UnknownMethod") &&
        !endsWith(".UnknownInterface") && !endsWith(".PermissionDenied") &&
        !endsWith(".AccessDenied")) {
        throw; // NOLINT: called where an error is being handled
    }
}

/// A text of a profile's settings; empty where it has none.
std::string textOf(const Settings& settings, const std::string& group, const std::string& key) {
    const auto values = settings.find(group);
    if (values == settings.end() || !values->second.contains(key)) {
        return {};
    }
    const sdbus::Variant& value = values->second.at(key);
    return value.containsValueOfType<std::string>() ? value.get<std::string>() : std::string();
}

template <class Value>
Value property(sdbus::IProxy& object, const std::string& interface, const std::string& name) {
    return object.getProperty(name).onInterface(interface).template get<Value>();
}

} // namespace

NetworkBus::NetworkBus() = default;
NetworkBus::~NetworkBus() = default;

bool NetworkBus::connect() {
    if (bus_ != nullptr) {
        return true;
    }
    try {
        bus_ = sdbus::createSystemBusConnection();
        bus_->setMethodCallTimeout(longestCall);
        watch();
        auto daemon = sdbus::createProxy(*bus_, "org.freedesktop.DBus", "/org/freedesktop/DBus");
        daemon->callMethod("NameHasOwner")
            .onInterface("org.freedesktop.DBus")
            .withArguments(service)
            .storeResultsTo(running_);
        return true;
    } catch (const sdbus::Error&) {
        bus_.reset();
        running_ = false;
        return false;
    }
}

void NetworkBus::watch() {
    const auto handler = [this](sdbus::Message& message) { onSignal(message); };
    bus_->addMatch("type='signal',sender='" + service + "'", handler, sdbus::floating_slot);
    bus_->addMatch("type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',arg0='" +
                       service + "'",
                   handler, sdbus::floating_slot);
}

void NetworkBus::onSignal(sdbus::Message& message) {
    const std::string member = message.getMemberName();
    const std::string interface = message.getInterfaceName();
    if (member == "NameOwnerChanged") {
        std::string name;
        std::string before;
        std::string after;
        message >> name >> before >> after;
        running_ = !after.empty();
        profilesStale_ = linesStale_ = true;
        reasons_.clear();
    } else if (interface.starts_with(service + ".Settings")) {
        profilesStale_ = true;
    } else if (interface == lineInterface && member == "StateChanged") {
        std::uint32_t state = 0;
        std::uint32_t reason = 0;
        message >> state >> reason;
        reasons_[message.getPath()] = reason;
        linesStale_ = true;
    } else if (interface == service + ".Device" && member == "StateChanged") {
        std::uint32_t now = 0;
        std::uint32_t before = 0;
        std::uint32_t reason = 0;
        message >> now >> before >> reason;
        deviceReason_ = now == deviceFailed ? reason : deviceReason_;
        linesStale_ = true;
    } else if (member == "PropertiesChanged" || member == "StateChanged") {
        linesStale_ = true;
    }
}

void NetworkBus::pump() {
    while (bus_->processPendingRequest()) {
    }
}

bool NetworkBus::refresh() {
    try {
        if (!connect()) {
            return false;
        }
        pump();
        if (!running_) {
            profiles_.clear();
            lines_.clear();
            return false;
        }
        if (profilesStale_) {
            readProfiles();
        }
        if (linesStale_) {
            readLines();
        }
        return true;
    } catch (const sdbus::Error&) {
        // The bus or the service has gone; the next refresh begins anew.
        bus_.reset();
        running_ = false;
        profilesStale_ = linesStale_ = true;
        profiles_.clear();
        lines_.clear();
        return false;
    }
}

void NetworkBus::wait(int milliseconds) {
    if (!connect()) {
        return;
    }
    const auto data = bus_->getEventLoopPollData();
    pollfd descriptor{.fd = data.fd, .events = data.events, .revents = 0};
    poll(&descriptor, 1, milliseconds);
    refresh();
}

void NetworkBus::readProfiles() {
    profilesStale_ = false;
    std::vector<sdbus::ObjectPath> paths;
    auto settings = sdbus::createProxy(*bus_, service, settingsPath);
    settings->callMethod("ListConnections")
        .onInterface(service + ".Settings")
        .storeResultsTo(paths);
    profiles_.clear();
    for (const auto& path : paths) {
        if (auto profile = readProfile(path)) {
            profiles_.push_back(std::move(*profile));
        }
    }
    std::sort(profiles_.begin(), profiles_.end(),
              [](const NetworkProfile& a, const NetworkProfile& b) { return a.name < b.name; });
}

std::optional<NetworkProfile> NetworkBus::readProfile(const std::string& path) {
    Settings settings;
    try {
        auto object = sdbus::createProxy(*bus_, service, path);
        object->callMethod("GetSettings")
            .onInterface(service + ".Settings.Connection")
            .storeResultsTo(settings);
    } catch (const sdbus::Error& error) {
        passUnlessGone(error);
        return std::nullopt;
    }
    NetworkProfile profile{.path = path,
                           .uuid = textOf(settings, "connection", "uuid"),
                           .name = textOf(settings, "connection", "id"),
                           .type = textOf(settings, "connection", "type"),
                           .userName =
                               textOf(settings, textOf(settings, "connection", "type"), "username"),
                           .service = textOf(settings, "vpn", "service-type")};
    const bool phone =
        profile.type != "bluetooth" || textOf(settings, "bluetooth", "type") == "dun";
    return isDialled(profile.type) && phone ? std::optional(profile) : std::nullopt;
}

void NetworkBus::readState() {
    auto manager = sdbus::createProxy(*bus_, service, rootPath);
    state_ = {.state = property<std::uint32_t>(*manager, service, "State"),
              .connectivity = property<std::uint32_t>(*manager, service, "Connectivity"),
              .primaryType = property<std::string>(*manager, service, "PrimaryConnectionType"),
              .primaryName = {}};
    const auto primary = property<sdbus::ObjectPath>(*manager, service, "PrimaryConnection");
    if (primary != "/") {
        auto line = sdbus::createProxy(*bus_, service, primary);
        state_.primaryName = property<std::string>(*line, lineInterface, "Id");
    }
}

void NetworkBus::readLines() {
    linesStale_ = false;
    readState();
    auto manager = sdbus::createProxy(*bus_, service, rootPath);
    const auto paths =
        property<std::vector<sdbus::ObjectPath>>(*manager, service, "ActiveConnections");
    lines_.clear();
    for (const auto& path : paths) {
        if (auto line = readLine(path)) {
            lines_.push_back(std::move(*line));
        }
    }
}

std::optional<NetworkLine> NetworkBus::readLine(const std::string& path) {
    try {
        auto object = sdbus::createProxy(*bus_, service, path);
        NetworkLine line{.path = path,
                         .uuid = property<std::string>(*object, lineInterface, "Uuid"),
                         .name = property<std::string>(*object, lineInterface, "Id"),
                         .type = property<std::string>(*object, lineInterface, "Type"),
                         .state = property<std::uint32_t>(*object, lineInterface, "State"),
                         .interface = {}};
        if (!isDialled(line.type)) {
            return std::nullopt;
        }
        line.interface = interfaceOf(path, line.type == "vpn");
        return line;
    } catch (const sdbus::Error& error) {
        passUnlessGone(error);
        return std::nullopt;
    }
}

std::string NetworkBus::interfaceOf(const std::string& linePath, bool vpn) {
    auto line = sdbus::createProxy(*bus_, service, linePath);
    const std::string deviceInterface = service + ".Device";
    if (!vpn) {
        const auto devices =
            property<std::vector<sdbus::ObjectPath>>(*line, lineInterface, "Devices");
        if (devices.empty()) {
            return {};
        }
        auto device = sdbus::createProxy(*bus_, service, devices.front());
        const auto ip = property<std::string>(*device, deviceInterface, "IpInterface");
        return ip.empty() ? property<std::string>(*device, deviceInterface, "Interface") : ip;
    }
    // The device of a VPN is the one below it; the tunnel is the device with the same addresses.
    const auto addresses = property<sdbus::ObjectPath>(*line, lineInterface, "Ip4Config");
    if (addresses == "/") {
        return {};
    }
    auto manager = sdbus::createProxy(*bus_, service, rootPath);
    for (const auto& path :
         property<std::vector<sdbus::ObjectPath>>(*manager, service, "AllDevices")) {
        auto device = sdbus::createProxy(*bus_, service, path);
        if (property<sdbus::ObjectPath>(*device, deviceInterface, "Ip4Config") == addresses) {
            return property<std::string>(*device, deviceInterface, "Interface");
        }
    }
    return {};
}

std::string NetworkBus::activate(const NetworkProfile& profile) {
    deviceReason_ = 0;
    try {
        sdbus::ObjectPath line;
        auto manager = sdbus::createProxy(*bus_, service, rootPath);
        manager->callMethod("ActivateConnection")
            .onInterface(service)
            .withArguments(sdbus::ObjectPath(profile.path), sdbus::ObjectPath("/"),
                           sdbus::ObjectPath("/"))
            .storeResultsTo(line);
        return line;
    } catch (const sdbus::Error& error) {
        throw BusFailure{error.getName()};
    }
}

void NetworkBus::deactivate(const std::string& line) {
    try {
        auto manager = sdbus::createProxy(*bus_, service, rootPath);
        manager->callMethod("DeactivateConnection")
            .onInterface(service)
            .withArguments(sdbus::ObjectPath(line));
    } catch (const sdbus::Error& error) {
        throw BusFailure{error.getName()};
    }
}

std::optional<std::uint32_t> NetworkBus::reasonOf(const std::string& line) const {
    const auto found = reasons_.find(line);
    return found == reasons_.end() ? std::nullopt : std::optional(found->second);
}

} // namespace tarvik
