#include "linux/services/AccessibilityGreeting.h"

#include "linux/services/BusGreeting.h"
#include "linux/services/Xcb.h"

#include <sdbus-c++/sdbus-c++.h>

#include <cstddef>
#include <cstdint>

namespace tarvik {

namespace {

const char* const service = "org.a11y.Bus";

/// One that runs; the toolkit starts none, and is told of one that comes later.
bool runs(sdbus::IConnection& bus) {
    bool is = false;
    sdbus::createProxy(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus")
        ->callMethod("NameHasOwner")
        .onInterface("org.freedesktop.DBus")
        .withArguments(service)
        .storeResultsTo(is);
    return is;
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
        // Where it is off, the question would start a bus that nobody needs.
        if (runs(*bus) && (isOn(*proxy) || wanted)) {
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

bool accessibilityGreets(const std::string& sessionBus, bool wanted,
                         Greeting::MayBeSilent& mayBeSilent) {
    return busGreets(toldAddress(sessionBus, wanted, mayBeSilent));
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
    return busGreets(address);
}

} // namespace tarvik
