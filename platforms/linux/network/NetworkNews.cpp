#include "linux/network/NetworkNews.h"

#include "linux/network/BusReplies.h"
#include "linux/network/BusSignal.h"
#include "linux/services/BusHeader.h"

#include <algorithm>
#include <cstddef>

namespace tarvik {

namespace {

constexpr std::uint32_t deviceFailed = 120;

/// Whether the signal begins with so many values of that type.
template <class Value>
bool has(const BusSignal& signal, std::size_t count) {
    return signal.values.size() >= count &&
           std::all_of(signal.values.begin(),
                       signal.values.begin() + static_cast<std::ptrdiff_t>(count),
                       [](const auto& value) { return std::holds_alternative<Value>(value); });
}

bool begins(const BusSignal& signal, const std::string& text) {
    return has<std::string>(signal, 1) && std::get<std::string>(signal.values[0]) == text;
}

std::uint32_t numberAt(const BusSignal& signal, std::size_t place) {
    return std::get<std::uint32_t>(signal.values[place]);
}

} // namespace

bool NetworkNews::believes(const std::string& sender) const {
    return sender == dbus::service || (running() && sender == owner_);
}

void NetworkNews::takeOwner(const std::string& owner) {
    if (owner == owner_) {
        return;
    }
    owner_ = owner;
    ++starts_;
    doubt();
    changedProfiles.clear();
    reasons_.clear();
}

void NetworkNews::forgetReasons() {
    reasons_.clear();
    deviceReason_ = 0;
}

void NetworkNews::take(const BusSignal& signal) {
    if (signal.sender != dbus::service) {
        if (believes(signal.sender)) {
            takeOfService(signal);
        }
    } else if (signal.interface == dbus::service && signal.member == "NameOwnerChanged" &&
               has<std::string>(signal, 3) && begins(signal, nm::service)) {
        takeOwner(std::get<std::string>(signal.values[2]));
    }
}

bool NetworkNews::take(sdbus::Message& message) {
    const bool believed = believes(headerOf(message, &sdbus::Message::getSender));
    if (believed) {
        take(readSignal(message));
    }
    return believed;
}

void NetworkNews::takeOfService(const BusSignal& signal) {
    if (signal.interface == nm::settingsInterface) {
        takeOfSettings(signal);
    } else if (signal.interface == nm::profileInterface) {
        takeOfProfile(signal);
    } else if (signal.interface == nm::lineInterface) {
        takeOfLine(signal);
    } else if (signal.interface == nm::deviceInterface) {
        takeOfDevice(signal);
    } else if (signal.interface == dbus::propertiesInterface) {
        linesStale |= begins(signal, nm::service) || begins(signal, nm::lineInterface);
    }
}

void NetworkNews::takeOfSettings(const BusSignal& signal) {
    const bool there = signal.member == "NewConnection";
    if ((there || signal.member == "ConnectionRemoved") && has<std::string>(signal, 1)) {
        const std::string& path = std::get<std::string>(signal.values[0]);
        if (path.starts_with('/')) { // any other text names nothing
            changedProfiles[path] = there;
        }
    }
}

void NetworkNews::takeOfProfile(const BusSignal& signal) {
    const bool there = signal.member == "Updated";
    if (there || signal.member == "Removed") {
        changedProfiles[signal.path] = there;
    }
}

void NetworkNews::takeOfLine(const BusSignal& signal) {
    if (signal.member != "StateChanged") {
        linesStale = true;
    } else if (has<std::uint32_t>(signal, 2)) {
        linesStale = true;
        reasons_[signal.path] = numberAt(signal, 1);
    }
}

void NetworkNews::takeOfDevice(const BusSignal& signal) {
    if (signal.member == "StateChanged" && has<std::uint32_t>(signal, 3)) {
        linesStale = true;
        deviceReason_ = numberAt(signal, 0) == deviceFailed ? numberAt(signal, 2) : deviceReason_;
    }
}

std::optional<std::uint32_t> NetworkNews::reasonOf(const std::string& line) const {
    const auto found = reasons_.find(line);
    return found == reasons_.end() ? std::nullopt : std::optional(found->second);
}

} // namespace tarvik
