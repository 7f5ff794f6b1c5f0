#include "linux/network/NetworkBus.h"

#include "linux/network/BusCalls.h"
#include "linux/network/BusSignal.h"

#include <algorithm>
#include <poll.h>
#include <thread>
#include <utility>

namespace tarvik {

namespace {

/// How many turns the bus may take to greet, and to take what it is asked to tell: two that do this
/// one after the other are not to be seen.
constexpr int greetingTurns = 9;
constexpr std::chrono::seconds quietTime{5};

/// Whatever has come is handled in less time: NetworkManager sends a few signals in a second, and
/// one takes 10 to 30 microseconds.
constexpr std::chrono::milliseconds longestPump{50};
/// No other program has a reason to send any. The socket holds some 150 small ones, and the bus
/// keeps 127 MiB behind them: how much that is does not show, and an answer would come after it.
constexpr int mostOfStrangers = 20;
/// Whoever floods the bus finds the new name within milliseconds: where an answer does not come at
/// once it does not come in two seconds either, and what is known has to do for a while.
constexpr std::chrono::milliseconds longestInFlood{300};

/// Runs `read` if it is due; it is again where it fails, or where a signal says so meanwhile. False
/// when the answer cannot be used: that keeps nothing else from being read.
template <class Read>
bool readIf(bool& stale, const Read& read) {
    if (!stale) {
        return true;
    }
    stale = false;
    try {
        read();
        return true;
    } catch (const sdbus::Error& error) {
        stale = true;
        if (isNoAnswer(error)) {
            throw;
        }
        return false;
    }
}

/// Has the bus pass on what `handle` is to see.
void watch(sdbus::IConnection& bus, const sdbus::message_handler& handle) {
    const auto match = [&](const std::string& rule) {
        bus.addMatch("type='signal'," + rule, handle, sdbus::floating_slot);
    };
    match("sender='" + dbus::service + "',member='NameOwnerChanged',arg0='" + nm::service + "'");
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

} // namespace

NetworkBus::NetworkBus(std::function<bool()> machineIsBusy)
    : machineIsBusy_(std::move(machineIsBusy)) {}
NetworkBus::~NetworkBus() = default;

bool NetworkBus::connect(Clock::time_point end) {
    if (bus_ != nullptr) {
        return true;
    }
    if (silent() && !greeted()) {
        return false;
    }
    try {
        bus_ = openBus();
        quietUntil_ = {};
        ofStrangers_ = 0;
        // A change that comes before the answer has been taken in by then.
        news_.takeOwner(BusCalls(*bus_, end).ownerOf(nm::service));
        return true;
    } catch (const sdbus::Error& error) {
        bus_.reset();
        failed(isTimeOut(error) ? error : sdbus::Error(dbus::disconnected, error.getMessage()));
        return false;
    }
}

/// A bus that was waited for in vain has greeted now.
bool NetworkBus::greeted() const {
    return connecting_.valid() &&
           connecting_.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

/// The library greets a bus for as long as it takes: a thread of its own does that, and may be left
/// behind. It touches nothing else; signals are not handled before they are asked for. Only the
/// first look waits for it, the later ones take what has come.
std::unique_ptr<sdbus::IConnection> NetworkBus::openBus() {
    const bool isFirst = !connecting_.valid();
    if (isFirst) {
        const auto handle = [this](sdbus::Message& message) { onSignal(message); };
        std::packaged_task<std::unique_ptr<sdbus::IConnection>()> greet([handle] {
            auto bus = sdbus::createSystemBusConnection();
            watch(*bus, handle);
            return bus;
        });
        connecting_ = greet.get_future();
        std::thread(std::move(greet)).detach();
    }
    if (flooded_) {
        connecting_.wait_for(longestInFlood);
    }
    Patience patience(machineIsBusy_, greetingTurns);
    while (!greeted()) {
        if (!isFirst || flooded_ || !patience.lasts(true)) {
            throw sdbus::Error(dbus::timedOut, "");
        }
        connecting_.wait_for(Patience::turn);
    }
    return connecting_.get();
}

void NetworkBus::onSignal(sdbus::Message& message) {
    ++heard_;
    if (!news_.believes(message.getSender())) {
        ++ofStrangers_; // the contents, which may be large, are not looked at
        return;
    }
    const std::uint64_t before = news_.starts();
    news_.take(readSignal(message));
    if (news_.starts() != before) {
        quietUntil_ = {};
    }
}

/// Handles what has come; false when there may be too much behind it. What nobody here has asked
/// for is a stranger's, too: the library drops it unheard.
bool NetworkBus::pump() {
    const auto end = Clock::now() + longestPump;
    heard_ = 0;
    int handled = 0;
    while (bus_->processPendingRequest()) {
        ++handled;
        if (Clock::now() >= end) {
            return false;
        }
    }
    const int unheard = std::max(0, handled - heard_);
    return std::exchange(ofStrangers_, 0) + unheard <= mostOfStrangers;
}

/// Handles what has come. A flood of signals is left behind, as every answer would come after it:
/// this program asks anew under another name. A change may have been hidden by the flood, so
/// everything is read again.
void NetworkBus::catchUp() {
    if (bus_ == nullptr) {
        return;
    }
    flooded_ = !throughBus([this] { return pump(); });
    if (flooded_) {
        bus_.reset();
        news_.doubt();
    }
}

void NetworkBus::failed(const sdbus::Error& error) {
    if (isTimeOut(error)) {
        quietUntil_ = Clock::now() + quietTime;
    } else if (isDisconnected(error)) {
        forget(); // the next refresh begins anew
    }
    // Anything else says nothing about what is known, and is asked again.
}

void NetworkBus::forget() {
    bus_.reset();
    news_.takeOwner({});
    news_.doubt();
    book_.clear();
    lines_.clear();
}

bool NetworkBus::refresh(std::chrono::milliseconds profilesFor) {
    const auto begin = Clock::now();
    try {
        catchUp();
        const auto end = begin + (flooded_ ? longestInFlood : BusCalls::longest);
        const bool reached = connect(end);
        if (!news_.running()) {
            book_.clear();
            lines_.clear();
        } else if (reached && !silent()) {
            readStale(end, profilesFor);
        }
    } catch (const sdbus::Error& error) {
        failed(error);
    }
    return known();
}

void NetworkBus::readStale(Clock::time_point end, std::chrono::milliseconds profilesFor) {
    BusCalls calls(*bus_, end);
    const std::uint64_t start = news_.starts();
    // These first: thousands of profiles are not to keep a connection from being counted.
    const bool read = readIf(news_.linesStale, [&] {
        lines_ = readLines(calls, known() ? lines_ : std::vector<NetworkLine>());
        nameLines(lines_, profiles());
        state_ = readState(calls);
    });
    knownSince_ = read ? start : knownSince_;
    if (std::exchange(bookSince_, start) != start) {
        book_.clear();
    }
    readProfiles(calls, profilesFor);
    nameLines(lines_, profiles());
}

void NetworkBus::readProfiles(BusReplies& replies, std::chrono::milliseconds longest) {
    if (std::exchange(news_.profilesStale, false)) {
        book_.doubt();
    }
    for (const auto& [path, there] : std::exchange(news_.changedProfiles, {})) {
        there ? book_.change(path) : book_.remove(path);
    }
    const auto end = Clock::now() + longest;
    book_.readOn(replies, [end] { return Clock::now() >= end; });
}

void NetworkBus::wait(int milliseconds) {
    if (!connect(Clock::now() + BusCalls::longest)) {
        return;
    }
    const auto data = bus_->getEventLoopPollData();
    pollfd descriptor{.fd = data.fd, .events = data.events, .revents = 0};
    poll(&descriptor, 1, milliseconds);
    refresh();
}

/// What `order` answers; it gets the calls to make. What the user wants is tried even where the
/// service is to be left alone.
template <class Order>
auto NetworkBus::order(const Order& order) {
    const auto end = Clock::now() + BusCalls::longest;
    try {
        catchUp();
        if (!connect(end)) {
            throw BusFailure{late() ? dbus::timedOut : dbus::disconnected};
        }
        BusCalls calls(*bus_, end);
        return order(calls);
    } catch (const sdbus::Error& error) {
        failed(error);
        throw BusFailure{error.getName()};
    }
}

std::string NetworkBus::activate(const NetworkProfile& profile) {
    news_.forgetReasons();
    return order([&](BusCalls& calls) -> std::string {
        return calls.ask<sdbus::ObjectPath>(nm::managerPath, nm::service, "ActivateConnection",
                                            sdbus::ObjectPath(profile.path), sdbus::ObjectPath("/"),
                                            sdbus::ObjectPath("/"));
    });
}

void NetworkBus::deactivate(const std::string& line) {
    order([&](BusCalls& calls) {
        calls.order(nm::managerPath, nm::service, "DeactivateConnection", sdbus::ObjectPath(line));
    });
}

} // namespace tarvik
