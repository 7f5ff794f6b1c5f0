#include "linux/services/AccessibilityGreeting.h"

#include "linux/services/BusGreeting.h"
#include "linux/services/Xcb.h"

#include <sdbus-c++/sdbus-c++.h>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace tarvik {

namespace {

const char* const service = "org.a11y.Bus";

const char* const registry = "org.a11y.atspi.Registry";

std::unique_ptr<sdbus::IProxy> daemonOf(sdbus::IConnection& bus) {
    return sdbus::createProxy(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus");
}

bool runs(sdbus::IConnection& bus, const char* name) {
    bool is = false;
    daemonOf(bus)
        ->callMethod("NameHasOwner")
        .onInterface("org.freedesktop.DBus")
        .withArguments(name)
        .storeResultsTo(is);
    return is;
}

/// The toolkit's question would start it: it may take its time for that, as a bus may.
void startRegistry(sdbus::IConnection& bus, Greeting::MayBeSilent& mayBeSilent) {
    std::uint32_t started = 0;
    mayBeSilent = true;
    daemonOf(bus)
        ->callMethod("StartServiceByName")
        .onInterface("org.freedesktop.DBus")
        .withArguments(registry, std::uint32_t{0})
        .storeResultsTo(started);
    mayBeSilent = false;
}

/// Who wants to hear of what. A program of its own tells that on the bus of accessibility, and the
/// toolkit waits for it, at the start and whenever somebody begins or ceases to listen.
void askRegistry(sdbus::IConnection& bus, Greeting::MayBeSilent& mayBeSilent) {
    if (!runs(bus, registry)) {
        startRegistry(bus, mayBeSilent);
    }
    const auto proxy = sdbus::createProxy(bus, registry, "/org/a11y/atspi/registry");
    const auto question = proxy->createMethodCall(registry, "GetRegisteredEvents");
    proxy->callMethod(question, 0);
}

/// What it says of that; one that cannot tell has none of it, as for the toolkit.
bool tells(sdbus::IProxy& proxy, const char* property) {
    try {
        return proxy.getProperty(property).onInterface("org.a11y.Status").get<bool>();
    } catch (const sdbus::Error&) {
        return false;
    }
}

/// Accessibility is in use. The toolkit waits for both answers, so that both are asked for.
bool isOn(sdbus::IProxy& proxy) {
    const bool enabled = tells(proxy, "IsEnabled");
    const bool screenReader = tells(proxy, "ScreenReaderEnabled");
    return enabled || screenReader;
}

/// The address that the service of accessibility tells, "" for none.
///
/// One that has answered, and then takes its time for the address, starts its bus just now. The
/// toolkit asks for the address without waiting, so that a screen reader is not shut out by a slow
/// start. The price: a bus that comes so late, and is mute, is not found out here.
std::string toldAddress(const std::string& sessionBus, bool wanted,
                        Greeting::MayBeSilent& mayBeSilent) {
    std::string address;
    if (!sessionBus.starts_with("unix:")) {
        return address;
    }
    try {
        const auto bus = sdbus::createSessionBusConnectionWithAddress(sessionBus);
        const auto proxy = sdbus::createProxy(*bus, service, "/org/a11y/bus");
        // One that comes later the toolkit is told of; it starts none. Where it is off, the
        // question would start a bus that nobody needs.
        if (runs(*bus, service) && (isOn(*proxy) || wanted)) {
            mayBeSilent = true;
            proxy->callMethod("GetAddress").onInterface(service).storeResultsTo(address);
        }
    } catch (const sdbus::Error&) {
        address.clear(); // there is none that the toolkit could find
    }
    mayBeSilent = false;
    return address;
}

std::string textOnDisplay(xcb_connection_t* display, const char* name) {
    const xcb_atom_t atom = xcb::atomOf(display, name, xcb::Missing::StaysAway);
    if (atom == XCB_ATOM_NONE) {
        return "";
    }
    constexpr std::uint32_t mostWords = 128;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
    const xcb::Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        display, xcb_get_property(display, 0, root, atom, XCB_ATOM_STRING, 0, mostWords), nullptr));
    return reply == nullptr
               ? ""
               : std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                             static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
}

} // namespace

bool accessibilityBusGreets(const std::string& address, Greeting::MayBeSilent& mayBeSilent) {
    const bool greets = busGreets(
        address, [&mayBeSilent](sdbus::IConnection& bus) { askRegistry(bus, mayBeSilent); });
    mayBeSilent = false;
    return greets;
}

bool accessibilityGreets(const std::string& sessionBus, bool wanted,
                         Greeting::MayBeSilent& mayBeSilent) {
    return accessibilityBusGreets(toldAddress(sessionBus, wanted, mayBeSilent), mayBeSilent);
}

bool accessibilityOfDisplayGreets(const std::string& display, Greeting::MayBeSilent& mayBeSilent) {
    if (display.empty()) {
        return true;
    }
    // A display that is far away is no fault of accessibility.
    mayBeSilent = true;
    const xcb::Display connection(xcb_connect(display.c_str(), nullptr));
    const std::string address = xcb_connection_has_error(connection.get()) != 0
                                    ? ""
                                    : textOnDisplay(connection.get(), "AT_SPI_BUS");
    mayBeSilent = false;
    return accessibilityBusGreets(address, mayBeSilent);
}

} // namespace tarvik
