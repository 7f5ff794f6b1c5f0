#include "linux/network/NetworkBus.h"

#include "linux/network/BusCalls.h"

#include <algorithm>
#include <exception>
#include <poll.h>
#include <sys/ioctl.h>
#include <system_error>
#include <thread>
#include <utility>

namespace tarvik {

namespace {

/// How many turns the bus may take to greet, and to take what it is asked to tell: two that do this
/// one after the other are not to be seen.
constexpr int greetingTurns = 9;
constexpr std::chrono::seconds quietTime{5};
/// A reading that takes longer is slow: it is left at that for as long again, but no longer than
/// this.
constexpr std::chrono::milliseconds slowReading{100};
constexpr std::chrono::milliseconds longestRest{500};

/// How long the bus may take for an answer of its own, and how much longer on a busy machine.
constexpr std::chrono::milliseconds longestOfBus{90};
constexpr std::chrono::milliseconds longestOfBusyBus{850};

/// Whatever has come is handled in less time: NetworkManager sends a few signals in a second, and
/// one takes 10 to 30 microseconds.
constexpr std::chrono::milliseconds longestPump{25};
/// No other program has a reason to send any. The socket holds some 150 small ones, or 130 KB of
/// those that are so large that there are fewer than 20, and the bus keeps 127 MiB behind them: how
/// much that is does not show, and an answer would come after it.
constexpr int mostOfStrangers = 20;
constexpr int mostBytesOfStrangers = 65'536;
/// A new connection that greeted too late to be used at once has no more than NetworkManager tells
/// within a second, or else the flood has found it.
constexpr int mostBytesBeforeUse = 4'096;
/// Whoever floods the bus finds the new name within milliseconds: where an answer does not come at
/// once it does not come in two seconds either, and what is known has to do for a while. The window
/// is to notice nothing of it, and two may look one after the other.
constexpr std::chrono::milliseconds longestInFlood{90};
constexpr std::chrono::milliseconds greetingInFlood{40};
constexpr std::chrono::seconds betweenLooksInFlood{1};
/// An order waits for the new connection, but leaves the old one time enough.
constexpr std::chrono::milliseconds greetingForOrder{1000};

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

/// How many bytes have come that the library has not read.
int waitingBytes(const sdbus::IConnection& bus) {
    int bytes = 0;
    return ioctl(bus.getEventLoopPollData().fd, FIONREAD, &bytes) == 0 ? bytes : 0;
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

/// Sees to a connection that can be used; in a flood to another one, for which it waits so long.
/// False when there is none, or when it is to be left alone.
bool NetworkBus::connect(Clock::time_point end, std::chrono::milliseconds inFlood) {
    if (bus_ != nullptr && !flooded_ && !ownerStale_) {
        return true;
    }
    if (bus_ == nullptr && silent() && !greeted()) {
        return false;
    }
    try {
        if (bus_ == nullptr || flooded_) {
            bus_ = openBus(inFlood);
            ownerStale_ = true;
            quietUntil_ = {};
            ofStrangers_ = 0;
        }
        learnOwner(end);
        return true;
    } catch (const sdbus::Error& error) {
        if (flooded_ && bus_ != nullptr) {
            return true; // the one before, or the next one, which the flood has found
        }
        bus_.reset();
        failed(isTimeOut(error) ? error : sdbus::Error(dbus::disconnected, error.getMessage()));
        return false;
    }
}

/// Asks the bus itself, which is not NetworkManager and gets no two seconds. A change that comes
/// before the answer has been taken in by then.
void NetworkBus::learnOwner(Clock::time_point end) {
    const auto ask = [&](std::chrono::milliseconds longest) {
        BusCalls calls(*bus_, std::min(end, Clock::now() + longest));
        news_.takeOwner(calls.ownerOf(nm::service));
        ownerStale_ = false;
    };
    try {
        ask(longestOfBus);
    } catch (const sdbus::Error& error) {
        if (!isTimeOut(error) || !machineIsBusy_()) {
            throw;
        }
        ask(longestOfBusyBus);
    }
}

/// A bus that was waited for in vain has greeted now.
bool NetworkBus::greeted() const {
    return connecting_.valid() &&
           connecting_.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

/// The library greets a bus for as long as it takes: a thread of its own does that, and may be left
/// behind. It touches nothing else; signals are not handled before they are asked for.
void NetworkBus::greet() {
    const auto handle = [this](sdbus::Message& message) { onSignal(message); };
    std::packaged_task<std::unique_ptr<sdbus::IConnection>()> greeting([handle] {
        auto bus = sdbus::createSystemBusConnection();
        watch(*bus, handle);
        return bus;
    });
    auto answer = greeting.get_future();
    try {
        std::thread(std::move(greeting)).detach();
    } catch (const std::system_error& error) {
        throw sdbus::Error(dbus::timedOut, error.what()); // there is no room: later, perhaps
    }
    connecting_ = std::move(answer);
}

/// Only the first look waits for the greeting, the later ones take what has come; in a flood each
/// waits so long. What greeted after that is left behind where the flood has found it, too.
std::unique_ptr<sdbus::IConnection> NetworkBus::openBus(std::chrono::milliseconds inFlood) {
    if (flooded_ && greeted()) {
        auto bus = greetedBus();
        if (waitingBytes(*bus) <= mostBytesBeforeUse) {
            return bus;
        }
    }
    const bool isFirst = !connecting_.valid();
    if (isFirst) {
        greet();
    }
    if (flooded_) {
        connecting_.wait_for(inFlood);
    }
    Patience patience(machineIsBusy_, greetingTurns);
    while (!greeted()) {
        if (!isFirst || flooded_ || !patience.lasts(true)) {
            throw sdbus::Error(dbus::timedOut, "");
        }
        connecting_.wait_for(Patience::turn);
    }
    return greetedBus();
}

/// The connection, or why there is none.
std::unique_ptr<sdbus::IConnection> NetworkBus::greetedBus() {
    try {
        return connecting_.get();
    } catch (const sdbus::Error&) {
        throw;
    } catch (const std::exception& error) {
        throw sdbus::Error(dbus::disconnected, error.what());
    }
}

void NetworkBus::onSignal(sdbus::Message& message) {
    const std::uint64_t before = news_.starts();
    believed_ = news_.take(message);
    ofStrangers_ += believed_ ? 0 : 1;
    if (news_.starts() != before) {
        quietUntil_ = {};
    }
}

/// Handles what has come; false when there may be too much behind it. What nobody here has asked
/// for is a stranger's, too: the library drops it unheard. So is a message that has come in part,
/// for all that shows: nothing of NetworkManager's is that large.
bool NetworkBus::pump() {
    const auto end = Clock::now() + longestPump;
    int strangers = std::exchange(ofStrangers_, 0);
    int bytes = 0;
    int waiting = waitingBytes(*bus_);
    bool handled = true;
    while (handled || waiting > 0) {
        believed_ = false;
        handled = bus_->processPendingRequest();
        const int before = std::exchange(waiting, waitingBytes(*bus_));
        if (!believed_) {
            strangers += handled ? 1 : 0;
            bytes += std::max(0, before - waiting); // the bus may have sent more meanwhile
        }
        if (Clock::now() >= end) {
            return false;
        }
    }
    ofStrangers_ = 0;
    return strangers <= mostOfStrangers && bytes <= mostBytesOfStrangers;
}

/// Handles what has come. A flood of signals is left behind, as every answer would come after it:
/// this program asks anew under another name. A change may have been hidden by the flood, so
/// everything is read again.
void NetworkBus::catchUp() {
    if (bus_ == nullptr) {
        flooded_ = false;
        return;
    }
    const bool before = flooded_;
    try {
        flooded_ = !throughBus([this] { return pump(); });
    } catch (const sdbus::Error&) {
        bus_.reset();
        throw;
    }
    if (flooded_) {
        news_.doubt();
    } else if (before) {
        quietUntil_ = {};
    }
    if (!flooded_ && greeted()) {
        connecting_ = {}; // no need of it any more
    }
}

/// In a flood nothing is found to be gone: others may keep the bus from taking a connection, or an
/// answer from coming.
void NetworkBus::failed(const sdbus::Error& error) {
    if (isTimeOut(error) || (flooded_ && isDisconnected(error))) {
        quietUntil_ = Clock::now() + (flooded_ ? betweenLooksInFlood : quietTime);
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
    if (resting()) {
        return known();
    }
    const auto begin = Clock::now();
    try {
        catchUp();
        const auto end = begin + (flooded_ ? longestInFlood : BusCalls::longest);
        restUntil_ = begin + betweenLooksInFlood;
        const bool reached = connect(end, greetingInFlood);
        if (!news_.running()) {
            book_.clear();
            lines_.clear();
        } else if (reached && !ownerStale_ && !silent() && due() && !mayWait(profilesFor)) {
            readStale(end, profilesFor);
        }
    } catch (const sdbus::Error& error) {
        failed(error);
    }
    return known();
}

/// There is something to ask NetworkManager.
bool NetworkBus::due() const {
    return !known() || news_.linesStale || news_.profilesStale || !news_.changedProfiles.empty() ||
           !book_.complete();
}

/// A tick looks several times. What changes again while it is read slowly would have each of them
/// read on for as long as an answer may take. Whoever asks for profiles waits all the same.
bool NetworkBus::mayWait(std::chrono::milliseconds profilesFor) const {
    return known() && profilesFor <= reading && Clock::now() < readAgain_;
}

/// On a busy machine whatever is read takes long, and a line that comes up must not wait for it.
void NetworkBus::restAfter(Clock::duration taken) {
    if (taken > slowReading && !machineIsBusy_()) {
        readAgain_ = Clock::now() + std::min<Clock::duration>(taken, longestRest);
    }
}

void NetworkBus::readStale(Clock::time_point end, std::chrono::milliseconds profilesFor) {
    learnOwner(end); // a halted bus is found so before NetworkManager is waited for
    BusCalls calls(*bus_, end);
    const std::uint64_t start = news_.starts();
    const auto begin = Clock::now();
    // These first: thousands of profiles are not to keep a connection from being counted.
    const bool read = readIf(news_.linesStale, [&] {
        lines_ = readLines(calls, known() ? lines_ : std::vector<NetworkLine>());
        nameLines(lines_, profiles());
        state_ = readState(calls);
    });
    knownSince_ = read ? start : knownSince_;
    restAfter(Clock::now() - begin);
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
    const std::chrono::milliseconds longest(milliseconds);
    if (resting() || !connect(Clock::now() + BusCalls::longest, greetingInFlood)) {
        // There is nothing to listen to, or too much.
        std::this_thread::sleep_for(longest);
    } else {
        const auto data = bus_->getEventLoopPollData();
        pollfd descriptor{.fd = data.fd, .events = data.events, .revents = 0};
        poll(&descriptor, 1, milliseconds);
    }
    refresh();
}

/// What `order` answers; it gets the calls to make. What the user wants is tried even where the
/// service is to be left alone.
template <class Order>
auto NetworkBus::order(const Order& order) {
    readAgain_ = {}; // what comes of it is to be seen at once
    const auto end = Clock::now() + BusCalls::longest;
    try {
        catchUp();
        if (!connect(end, greetingForOrder)) {
            throw BusFailure{late() ? dbus::timedOut : dbus::disconnected};
        }
        if (!flooded_) {
            learnOwner(end);
        }
        BusCalls calls(*bus_, end);
        return order(calls);
    } catch (const sdbus::Error& error) {
        failed(error);
        throw BusFailure{flooded_ && isDisconnected(error) ? dbus::timedOut : error.getName()};
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
