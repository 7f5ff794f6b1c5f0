#include "linux/services/ToolkitServices.h"

#include "linux/services/FileDescriptor.h"
#include "linux/services/InputMethodGreeting.h"
#include "linux/services/SessionManagerGreeting.h"

#include <sdbus-c++/sdbus-c++.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <future>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <unistd.h>
#include <utility>

namespace tarvik {

namespace {

const char* const sessionBus = "DBUS_SESSION_BUS_ADDRESS";
const char* const accessibilityBus = "AT_SPI_BUS_ADDRESS";
const char* const sessionManager = "SESSION_MANAGER";
const char* const inputMethod = "QT_IM_MODULE";

/// The longest that all are waited for together. What a loaded machine takes from this process, or
/// from all, does not count, up to a few seconds: a living service is not to be left out because
/// everything starts at once.
constexpr std::chrono::milliseconds turn{10};
constexpr int mostTurns = 15;
constexpr int mostBusyTurns = 300;

std::string fromEnvironment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// The bus of that address greets, or the toolkit finds out at once that it does not: only sockets
/// of this machine are held to it, everything else is the toolkit's to try.
bool greets(const std::string& address) {
    if (!address.starts_with("unix:")) {
        return true;
    }
    try {
        return sdbus::createSessionBusConnectionWithAddress(address) != nullptr;
    } catch (const sdbus::Error& error) {
        const std::string& name = error.getName();
        return name == "org.freedesktop.DBus.Error.FileNotFound" ||
               name == "org.freedesktop.DBus.Error.AccessDenied" ||
               name == "org.freedesktop.DBus.Error.InvalidArgs" ||
               name == "System.Error.ECONNREFUSED";
    }
}

/// Where the session bus is looked for, "" where it would first have to be started.
std::string sessionBusAddress() {
    std::string told = fromEnvironment(sessionBus);
    const std::string runtime = fromEnvironment("XDG_RUNTIME_DIR");
    if (!told.empty() || runtime.empty()) {
        return told;
    }
    const std::string usual = runtime + "/bus";
    return access(usual.c_str(), F_OK) == 0 ? "unix:path=" + usual : "";
}

/// The address that the service of accessibility tells, if it runs; "" if it does not.
std::string toldAccessibilityBus(const std::string& bus) {
    if (!bus.starts_with("unix:")) {
        return "";
    }
    std::string address;
    try {
        const auto connection = sdbus::createSessionBusConnectionWithAddress(bus);
        bool runs = false;
        sdbus::createProxy(*connection, "org.freedesktop.DBus", "/org/freedesktop/DBus")
            ->callMethod("NameHasOwner")
            .onInterface("org.freedesktop.DBus")
            .withArguments("org.a11y.Bus")
            .storeResultsTo(runs);
        if (runs) {
            sdbus::createProxy(*connection, "org.a11y.Bus", "/org/a11y/bus")
                ->callMethod("GetAddress")
                .onInterface("org.a11y.Bus")
                .storeResultsTo(address);
        }
    } catch (const sdbus::Error&) {
        return ""; // there is none that the toolkit could find
    }
    return address;
}

/// More wants to run than there are processors, or waits for the disk: a service may be among it.
bool machineIsBusy() {
    std::ifstream file("/proc/stat");
    unsigned running = 0;
    unsigned blocked = 0;
    for (std::string word; file >> word;) {
        if (word == "procs_running") {
            file >> running;
        } else if (word == "procs_blocked") {
            file >> blocked;
        }
    }
    return running > std::thread::hardware_concurrency() || blocked > 0;
}

/// What is left of the time for all.
struct Patience {
    int turns = mostTurns;
    int busyTurns = mostBusyTurns;

    /// One turn has passed; false when it was the last.
    bool lasts() { return machineIsBusy() ? --busyTurns > 0 : --turns > 0; }
};

/// A greeting that may be waited for, or be left behind: it touches nothing of the program.
class Greeting {
public:
    explicit Greeting(std::function<bool()> call) {
        std::packaged_task<bool()> task([thread = thread_, greet = std::move(call)] {
            *thread = gettid();
            return greet();
        });
        answer_ = task.get_future();
        std::thread(std::move(task)).detach();
    }

    /// Whether it went well within what is left of the time.
    bool wentWell(Patience& patience) {
        while (answer_.wait_for(turn) != std::future_status::ready) {
            if (isWaiting() && !patience.lasts()) {
                return false;
            }
        }
        return answer_.get();
    }

private:
    /// It waits for the service, not for the processor or the disk.
    bool isWaiting() const {
        if (*thread_ == 0) {
            return false; // it has not begun yet
        }
        std::ifstream file("/proc/self/task/" + std::to_string(*thread_) + "/stat");
        const std::string text(std::istreambuf_iterator<char>(file), {});
        const std::size_t name = text.rfind(')');
        return name == std::string::npos || text.substr(name).starts_with(") S");
    }

    std::shared_ptr<std::atomic<pid_t>> thread_ = std::make_shared<std::atomic<pid_t>>(0);
    std::future<bool> answer_;
};

void hide(const char* name, const char* instead, std::string_view what) {
    if (instead == nullptr) {
        unsetenv(name);
    } else {
        setenv(name, instead, 1);
    }
    const std::string line =
        "velmars-tarvik: " + std::string(what) + " does not answer and is left out\n";
    static_cast<void>(writeAll(STDERR_FILENO, line));
}

} // namespace

ToolkitServices::ToolkitServices() {
    // An address of a kind that does not exist: without any, other places would be searched.
    const char* const nowhere = "disabled:";
    const std::string bus = sessionBusAddress();
    const std::string told = fromEnvironment(accessibilityBus);
    const std::string manager = fromEnvironment(sessionManager);
    Greeting ofBus([bus] { return greets(bus); });
    Greeting ofAccessibility(
        [bus, told] { return greets(told.empty() ? toldAccessibilityBus(bus) : told); });
    Greeting ofManager([manager] { return sessionManagerGreets(manager); });
    Greeting ofInputMethod(inputMethodGreets);
    Patience patience;
    const bool busGreets = ofBus.wentWell(patience);
    const bool accessibilityGreets = ofAccessibility.wentWell(patience);
    const bool managerGreets = ofManager.wentWell(patience);
    const bool typingGreets = ofInputMethod.wentWell(patience);
    if (!busGreets) {
        hide(sessionBus, nowhere, "the session bus");
    }
    if (!accessibilityGreets) {
        hide(accessibilityBus, nowhere, "the bus of accessibility");
    }
    if (!managerGreets) {
        hide(sessionManager, nullptr, "the session manager");
    }
    if (!typingGreets) {
        hide(inputMethod, nullptr, "the input method");
    }
}

} // namespace tarvik
