#include "linux/services/ToolkitServices.h"

#include "linux/services/AccessibilityGreeting.h"
#include "linux/services/BusGreeting.h"
#include "linux/services/Environment.h"
#include "linux/services/FileDescriptor.h"
#include "linux/services/InputMethodGreeting.h"
#include "linux/services/SessionManagerGreeting.h"

#include <cstdlib>
#include <string>
#include <string_view>
#include <unistd.h>

namespace tarvik {

namespace {

const char* const sessionBus = "DBUS_SESSION_BUS_ADDRESS";
const char* const accessibilityBus = "AT_SPI_BUS_ADDRESS";
const char* const sessionManager = "SESSION_MANAGER";
const char* const inputMethod = "QT_IM_MODULE";

/// So many answers of the session bus the toolkit waits for, where accessibility is in use.
constexpr int answersOfBus = 12;

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

/// The display of X whose notes the toolkit reads, "" for none. Where Wayland is there too, X may
/// not run, and would be started only to be asked.
std::string displayOfX() {
    const std::string platform = fromEnvironment("QT_QPA_PLATFORM");
    const bool isX =
        platform.empty() ? fromEnvironment("WAYLAND_DISPLAY").empty() : platform.starts_with("xcb");
    return isX ? fromEnvironment("DISPLAY") : "";
}

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

ToolkitServices::ToolkitServices(Patience patience) {
    // An address of a kind that does not exist: without any, other places would be searched.
    const char* const nowhere = "disabled:";
    const std::string bus = sessionBusAddress();
    const std::string given = fromEnvironment(accessibilityBus);
    const bool wanted = std::getenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON") != nullptr;
    const std::string display = displayOfX();
    const std::string manager = fromEnvironment(sessionManager);
    const InputMethodPlaces typing = inputMethodPlaces();
    Greeting ofBus([bus](auto&) {
        return busGreets(bus, [](sdbus::IConnection& asked) { askBus(asked, answersOfBus); });
    });
    Greeting ofAccessibility([bus, given, wanted](auto& mayBeSilent) {
        return given.empty() ? accessibilityGreets(bus, wanted, mayBeSilent)
                             : accessibilityBusGreets(given, mayBeSilent);
    });
    // The toolkit comes to the bus that the display tells of even where accessibility is off.
    Greeting ofDisplay([given, display](auto& mayBeSilent) {
        return !given.empty() || accessibilityOfDisplayGreets(display, mayBeSilent);
    });
    Greeting ofManager([manager](auto&) { return sessionManagerGreets(manager); });
    Greeting ofInputMethod([typing](auto&) { return inputMethodGreets(typing); });
    const bool sessionBusIsWell = ofBus.wentWell(patience);
    const bool accessibilityIsWell = ofAccessibility.wentWell(patience);
    const bool displaysOneIsWell = ofDisplay.wentWell(patience);
    const bool managerIsWell = ofManager.wentWell(patience);
    const bool typingIsWell = ofInputMethod.wentWell(patience);
    if (!sessionBusIsWell) {
        hide(sessionBus, nowhere, "the session bus");
    }
    if (!accessibilityIsWell || !displaysOneIsWell) {
        hide(accessibilityBus, nowhere, "the bus of accessibility");
    }
    if (!managerIsWell) {
        hide(sessionManager, nullptr, "the session manager");
    }
    if (!typingIsWell) {
        hide(inputMethod, nullptr, "the input method");
    }
}

} // namespace tarvik
