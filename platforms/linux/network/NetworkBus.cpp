#include "linux/network/NetworkBus.h"

#include "linux/network/BusCalls.h"

#include <poll.h>
#include <thread>

namespace tarvik {

namespace {

const std::string busName = "org.freedesktop.DBus";

constexpr std::uint32_t deviceFailed = 120;
constexpr std::chrono::seconds longestConnecting{1}; // to the bus, and again to ask it
constexpr std::chrono::seconds quietTime{5};

} // namespace

NetworkBus::NetworkBus() = default;
NetworkBus::~NetworkBus() = default;

bool NetworkBus::connect() {
    if (bus_ != nullptr) {
        return true;
    }
    if (silent()) {
        return false;
    }
    try {
        openBus();
        bus_->setMethodCallTimeout(longestConnecting);
        watch();
        sdbus::createProxy(*bus_, busName, "/org/freedesktop/DBus")
            ->callMethod("NameHasOwner")
            .onInterface(busName)
            .withTimeout(longestConnecting)
            .withArguments(nm::service)
            .storeResultsTo(running_);
        ++starts_;
        return true;
    } catch (const sdbus::Error& error) {
        forget();
        if (isTimeOut(error)) {
            quietUntil_ = Clock::now() + quietTime;
        }
        return false;
    }
}

/// The library greets a bus for as long as it takes: a thread of its own does that, and may be left
/// behind. It touches nothing else.
void NetworkBus::openBus() {
    if (!connecting_.valid()) {
        std::packaged_task<std::unique_ptr<sdbus::IConnection>()> greet(
            [] { return sdbus::createSystemBusConnection(); });
        connecting_ = greet.get_future();
        std::thread(std::move(greet)).detach();
    }
    if (connecting_.wait_for(longestConnecting) != std::future_status::ready) {
        throw sdbus::Error("org.freedesktop.DBus.Error.Timeout", "");
    }
    bus_ = connecting_.get();
}

void NetworkBus::requireBus() {
    if (!connect()) {
        throw BusFailure{busName + ".Error.Disconnected"};
    }
}

void NetworkBus::forget() {
    bus_.reset();
    running_ = known_ = false;
    profilesStale_ = linesStale_ = true;
    profiles_.clear();
    lines_.clear();
}

void NetworkBus::watch() {
    const auto match = [this](const std::string& rule) {
        bus_->addMatch(
            "type='signal'," + rule, [this](sdbus::Message& message) { onSignal(message); },
            sdbus::floating_slot);
    };
    match("sender='" + busName + "',member='NameOwnerChanged',arg0='" + nm::service + "'");
    // No more than is needed: some properties, as the strength of a wireless network, change all
    // the time, and nobody fetches the signals while monitoring is off.
    const std::string own = "sender='" + nm::service + "',";
    match(own + "interface='" + nm::settingsInterface + "'");
    match(own + "interface='" + nm::profileInterface + "'");
    match(own + "interface='" + nm::lineInterface + "'");
    match(own + "interface='" + nm::deviceInterface + "',member='StateChanged'");
    for (const std::string& changing : {nm::service, nm::lineInterface}) {
        match(own + "member='PropertiesChanged',arg0='" + changing + "'");
    }
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
        ++starts_;
        known_ = false;
        quietUntil_ = {};
        profilesStale_ = linesStale_ = true;
        reasons_.clear();
    } else if (interface.starts_with(nm::settingsInterface)) {
        // Connections bear the names of their profiles.
        profilesStale_ = linesStale_ = true;
    } else {
        linesStale_ = true;
        if (interface == nm::lineInterface && member == "StateChanged") {
            std::uint32_t state = 0;
            std::uint32_t reason = 0;
            message >> state >> reason;
            reasons_[message.getPath()] = reason;
        } else if (interface == nm::deviceInterface) {
            std::uint32_t now = 0;
            std::uint32_t before = 0;
            std::uint32_t reason = 0;
            message >> now >> before >> reason;
            deviceReason_ = now == deviceFailed ? reason : deviceReason_;
        }
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
        if (!silent()) {
            readStale();
        }
    } catch (const sdbus::Error& error) {
        if (isTimeOut(error)) {
            quietUntil_ = Clock::now() + quietTime;
        } else {
            forget(); // the bus or the service has gone; the next refresh begins anew
        }
    }
    return known_;
}

void NetworkBus::readStale() {
    BusCalls calls(*bus_);
    if (profilesStale_) {
        profiles_ = readProfiles(calls);
        profilesStale_ = false;
    }
    if (linesStale_) {
        lines_ = readLines(calls, profiles_);
        state_ = readState(calls);
        linesStale_ = false;
    }
    known_ = true;
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

std::string NetworkBus::activate(const NetworkProfile& profile) {
    deviceReason_ = 0;
    reasons_.clear();
    requireBus();
    try {
        sdbus::ObjectPath line;
        BusCalls(*bus_)
            .object(nm::managerPath)
            ->callMethod("ActivateConnection")
            .onInterface(nm::service)
            .withArguments(sdbus::ObjectPath(profile.path), sdbus::ObjectPath("/"),
                           sdbus::ObjectPath("/"))
            .storeResultsTo(line);
        return line;
    } catch (const sdbus::Error& error) {
        throw BusFailure{error.getName()};
    }
}

void NetworkBus::deactivate(const std::string& line) {
    requireBus();
    try {
        BusCalls(*bus_)
            .object(nm::managerPath)
            ->callMethod("DeactivateConnection")
            .onInterface(nm::service)
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
