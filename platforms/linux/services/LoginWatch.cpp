#include "linux/services/LoginWatch.h"

#include <sdbus-c++/sdbus-c++.h>

#include <mutex>
#include <string>
#include <utility>

namespace tarvik {

namespace {

constexpr const char* loginService = "org.freedesktop.login1";
constexpr const char* loginObject = "/org/freedesktop/login1";
constexpr const char* loginManager = "org.freedesktop.login1.Manager";
constexpr const char* busName = "org.freedesktop.DBus";

/// What holds the machine up for as long as it is open.
using Delay = std::shared_ptr<sdbus::UnixFd>;

} // namespace

/// What the watch and its thread have together; the thread may outlive the watch while it greets a
/// bus that does not answer, or asks such a one for signals.
class LoginWatch::Shared {
public:
    explicit Shared(std::function<void(Release)> pausing) : pausing_(std::move(pausing)) {}

    void run() {
        try {
            auto opened = sdbus::createSystemBusConnection();
            bus_ = std::move(opened);
            watch();
            if (beginsLoop()) {
                bus_->enterEventLoop();
            }
            proxies_ = {};
        } catch (const sdbus::Error&) {
            // There is no bus, or it is gone: nothing more is learned.
            proxies_ = {};
        }
    }

    /// True when the thread ends soon.
    bool end() {
        const std::lock_guard lock(mutex_);
        over_ = true;
        if (looping_) {
            bus_->leaveEventLoop();
        }
        return looping_;
    }

private:
    struct Proxies {
        std::unique_ptr<sdbus::IProxy> login;
        std::unique_ptr<sdbus::IProxy> bus;
    };

    bool beginsLoop() {
        const std::lock_guard lock(mutex_);
        looping_ = !over_;
        return looping_;
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
        owner_ = owner;
        if (!owner_.empty()) {
            askForDelay();
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

    /// Anybody may send such a signal to this program: only the name's owner is believed.
    void onSignal(sdbus::Message& message) {
        const std::string sender = message.getSender();
        const std::string member = message.getMemberName();
        if (sender == busName && member == "NameOwnerChanged") {
            std::string name;
            std::string before;
            std::string now;
            message >> name >> before >> now;
            delay_.reset();
            takeOwner(now);
        } else if (!owner_.empty() && sender == owner_ &&
                   (member == "PrepareForSleep" || member == "PrepareForShutdown")) {
            bool begins = false;
            message >> begins;
            begins ? pause() : askForDelay();
        }
    }

    void pause() {
        pausing_([delay = std::exchange(delay_, nullptr)]() mutable { delay.reset(); });
    }

    std::function<void(Release)> pausing_;
    std::mutex mutex_;
    bool over_ = false;
    bool looping_ = false; ///< whatever comes now, the thread can be told to end
    std::unique_ptr<sdbus::IConnection> bus_;
    Proxies proxies_;
    std::string owner_;
    Delay delay_;
};

LoginWatch::LoginWatch(std::function<void(Release)> pausing)
    : shared_(std::make_shared<Shared>(std::move(pausing))),
      thread_([shared = shared_] { shared->run(); }) {}

LoginWatch::~LoginWatch() {
    if (shared_->end()) {
        thread_.join();
    } else {
        thread_.detach();
    }
}

} // namespace tarvik
