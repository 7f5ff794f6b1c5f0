#include "linux/services/LoginWatch.h"

#include "linux/services/BusHeader.h"
#include "linux/services/FileDescriptor.h"

#include <sdbus-c++/sdbus-c++.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <map>
#include <mutex>
#include <poll.h>
#include <string>
#include <sys/eventfd.h>
#include <system_error>
#include <utility>

namespace tarvik {

namespace {

constexpr const char* loginService = "org.freedesktop.login1";
constexpr const char* loginObject = "/org/freedesktop/login1";
constexpr const char* loginManager = "org.freedesktop.login1.Manager";
constexpr const char* busName = "org.freedesktop.DBus";

/// No other program has a reason to send any signal: more of them within that time are a flood, and
/// whatever comes behind it would come too late.
constexpr int mostOfFlood = 200;
constexpr std::chrono::seconds floodTime{1};

using LoginClock = std::chrono::steady_clock;
using LoginProperties = std::map<std::string, sdbus::Variant>;

/// What holds the machine up for as long as it is open.
using Delay = std::shared_ptr<sdbus::UnixFd>;

/// Whether the login manager says that of itself.
bool isTrue(const LoginProperties& properties, const char* name) {
    const auto found = properties.find(name);
    return found != properties.end() && found->second.containsValueOfType<bool>() &&
           found->second.get<bool>();
}

} // namespace

/// What the watch and its thread have together; the thread may outlive the watch while it greets a
/// bus that does not answer, or asks such a one for signals.
class LoginWatch::Shared {
public:
    explicit Shared(std::function<void(Release)> pausing) : pausing_(std::move(pausing)) {}

    void run() {
        try {
            // A flood of signals is left behind by connecting anew, under another name.
            do {
                connect();
            } while (beginsListening() && listen() && rest());
        } catch (const sdbus::Error&) {
            // There is no bus, or it is gone: nothing more is learned.
        }
        proxies_ = {};
        delay_.reset(); // nobody would release it
    }

    /// True when the thread ends soon.
    bool end() {
        const std::lock_guard lock(mutex_);
        over_ = true;
        eventfd_write(wake_.number(), 1);
        return listening_;
    }

private:
    struct Proxies {
        std::unique_ptr<sdbus::IProxy> login;
        std::unique_ptr<sdbus::IProxy> bus;
    };

    /// The library waits for the bus here, and hears nothing else.
    void connect() {
        proxies_ = {};
        bus_.reset();
        bus_ = sdbus::createSystemBusConnection();
        watch();
    }

    bool beginsListening() {
        const std::lock_guard lock(mutex_);
        listening_ = !over_;
        return listening_;
    }

    /// Handles what comes; true when that is a flood, false when it is to end.
    bool listen() {
        begun_ = LoginClock::now();
        ofStrangers_ = 0;
        while (true) {
            while (bus_->processPendingRequest()) {
                if (isFlood()) {
                    return true;
                }
            }
            const auto data = bus_->getEventLoopPollData();
            if (isTold(data.fd, data.events, data.getPollTimeout())) {
                return false;
            }
        }
    }

    /// One thing has been handled, of which it is told if it was what this asked for.
    bool isFlood() {
        const auto now = LoginClock::now();
        if (now - begun_ > floodTime) {
            begun_ = now;
            ofStrangers_ = 0;
        }
        ofStrangers_ += std::exchange(believed_, false) ? 0 : 1;
        return ofStrangers_ > mostOfFlood;
    }

    /// Until the flood may be looked at again; false when this is to end.
    bool rest() {
        const auto left = begun_ + floodTime - LoginClock::now();
        const auto wait = std::chrono::ceil<std::chrono::milliseconds>(left).count();
        if (isTold(-1, 0, std::max(0, static_cast<int>(wait)))) {
            return false;
        }
        const std::lock_guard lock(mutex_);
        listening_ = false;
        return !over_;
    }

    /// Whether the end has been told, when anything comes there or the time is over.
    bool isTold(int number, short events, int milliseconds) const {
        std::array<pollfd, 2> places{{{wake_.number(), POLLIN, 0}, {number, events, 0}}};
        poll(places.data(), places.size(), milliseconds);
        return places[0].revents != 0;
    }

    void watch() {
        const auto handle = [this](sdbus::Message& message) { onSignal(message); };
        const auto match = [&](const std::string& rule) {
            bus_->addMatch("type='signal'," + rule, handle, sdbus::floating_slot);
        };
        match(std::string("sender='") + busName + "',member='NameOwnerChanged',arg0='" +
              loginService + "'");
        match(std::string("sender='") + loginService + "',interface='" + loginManager + "',path='" +
              loginObject + "'");
        proxies_.login = sdbus::createProxy(*bus_, loginService, loginObject);
        proxies_.bus = sdbus::createProxy(*bus_, busName, "/org/freedesktop/DBus");
        proxies_.bus->callMethodAsync("GetNameOwner")
            .onInterface(busName)
            .withArguments(std::string(loginService))
            .uponReplyInvoke([this](const sdbus::Error* error, const std::string& owner) {
                if (error == nullptr) {
                    takeOwner(owner);
                }
            });
    }

    void takeOwner(const std::string& owner) {
        const bool same = std::exchange(owner_, owner) == owner;
        delay_ = same ? delay_ : nullptr;
        if (!owner_.empty()) {
            same ? askForState() : askForDelay();
        }
    }

    void askForDelay() {
        proxies_.login->callMethodAsync("Inhibit")
            .onInterface(loginManager)
            .withArguments(std::string("sleep:shutdown"), std::string("Velmars Tarvik"),
                           std::string("What was counted is being stored."), std::string("delay"))
            .uponReplyInvoke([this](const sdbus::Error* error, const sdbus::UnixFd& delay) {
                if (error == nullptr) {
                    delay_ = std::make_shared<sdbus::UnixFd>(delay);
                }
            });
    }

    /// Its signals may have been lost in a flood.
    void askForState() {
        proxies_.login->callMethodAsync("GetAll")
            .onInterface("org.freedesktop.DBus.Properties")
            .withArguments(std::string(loginManager))
            .uponReplyInvoke([this](const sdbus::Error* error, const LoginProperties& state) {
                if (error == nullptr) {
                    takeState(isTrue(state, "PreparingForSleep") ||
                              isTrue(state, "PreparingForShutdown"));
                }
            });
    }

    void takeState(bool preparing) {
        if (preparing && delay_ != nullptr) {
            pause();
        } else if (!preparing && delay_ == nullptr) {
            askForDelay();
        }
    }

    /// Anybody may send such a signal to this program: only the name's owner is believed. One that
    /// cannot be read is dropped.
    void onSignal(sdbus::Message& message) {
        try {
            const std::string sender = headerOf(message, &sdbus::Message::getSender);
            const std::string member = headerOf(message, &sdbus::Message::getMemberName);
            believed_ = sender == busName || (!owner_.empty() && sender == owner_);
            if (sender == busName && member == "NameOwnerChanged") {
                onOwner(message);
            } else if (believed_ &&
                       (member == "PrepareForSleep" || member == "PrepareForShutdown")) {
                bool begins = false;
                message >> begins;
                begins ? pause() : askForDelay();
            }
        } catch (const sdbus::Error&) {
            return;
        }
    }

    void onOwner(sdbus::Message& message) {
        std::string name;
        std::string before;
        std::string now;
        message >> name >> before >> now;
        if (name == loginService) {
            takeOwner(now);
        }
    }

    void pause() {
        pausing_([delay = std::exchange(delay_, nullptr)]() mutable { delay.reset(); });
    }

    std::function<void(Release)> pausing_;
    FileDescriptor wake_{eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
    std::mutex mutex_;
    bool over_ = false;
    bool listening_ = false; ///< whatever comes now, the thread can be told to end
    std::unique_ptr<sdbus::IConnection> bus_;
    Proxies proxies_;
    std::string owner_;
    Delay delay_;
    LoginClock::time_point begun_; ///< counting the strangers' signals
    int ofStrangers_ = 0;
    bool believed_ = false; ///< what was handled last
};

LoginWatch::LoginWatch(std::function<void(Release)> pausing)
    : shared_(std::make_shared<Shared>(std::move(pausing))) {
    try {
        thread_ = std::thread([shared = shared_] { shared->run(); });
    } catch (const std::system_error&) {
        // There is no room for one: nothing is learned.
    }
}

LoginWatch::~LoginWatch() {
    if (!thread_.joinable()) {
        return;
    }
    if (shared_->end()) {
        thread_.join();
    } else {
        thread_.detach();
    }
}

} // namespace tarvik
