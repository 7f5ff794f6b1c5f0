#include "linux/face/SelectionOwner.h"

#include "linux/services/Xcb.h"

#include <algorithm>
#include <poll.h>

namespace tarvik::face {

namespace {

using Clock = std::chrono::steady_clock;

/// Somebody holds it. `tookTime` gets how long the display took for the answer.
bool isHeld(xcb_connection_t* display, xcb_atom_t selection, std::chrono::microseconds& tookTime) {
    const Clock::time_point begin = Clock::now();
    const xcb::Owned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        display, xcb_get_selection_owner(display, selection), nullptr));
    tookTime = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - begin);
    return reply != nullptr && reply->owner != XCB_WINDOW_NONE;
}

/// Asks the holder what it has; the answer comes as an event.
void ask(xcb_connection_t* display, xcb_atom_t selection) {
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(display)).data;
    const xcb_window_t window = xcb_generate_id(display);
    xcb_create_window(display, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, screen->root_visual, 0, nullptr);
    xcb_convert_selection(display, window, selection, xcb::atomOf(display, "TARGETS"),
                          xcb::atomOf(display, "TARVIK_TARGETS"), XCB_CURRENT_TIME);
    xcb_flush(display);
}

bool isAnswered(xcb_connection_t* display, std::chrono::milliseconds longest) {
    const Clock::time_point end = Clock::now() + longest;
    for (auto left = longest; left.count() > 0;
         left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now())) {
        pollfd waiting{.fd = xcb_get_file_descriptor(display), .events = POLLIN, .revents = 0};
        poll(&waiting, 1, static_cast<int>(left.count()));
        while (const xcb::Owned<xcb_generic_event_t> event{xcb_poll_for_event(display)}) {
            constexpr unsigned sentByAProgram = 0x80;
            if ((event->response_type & ~sentByAProgram) == XCB_SELECTION_NOTIFY) {
                return true;
            }
        }
        if (xcb_connection_has_error(display) != 0) {
            return true;
        }
    }
    return false;
}

} // namespace

std::chrono::milliseconds longestSilence(std::chrono::microseconds roundTrip) {
    using std::chrono::milliseconds;
    // One way and back for the question, one for the answer; a holder far away asks some itself.
    constexpr int roundTrips = 4;
    const auto ways = std::chrono::duration_cast<milliseconds>(roundTrips * roundTrip);
    return std::min(milliseconds(100) + ways, milliseconds(1000));
}

bool selectionOwnerAnswers(const char* selection) {
    // A connection of its own: the toolkit's would take the answer away.
    const xcb::Display display(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(display.get()) != 0) {
        return true;
    }
    const xcb_atom_t atom = xcb::atomOf(display.get(), selection);
    std::chrono::microseconds roundTrip{};
    if (!isHeld(display.get(), atom, roundTrip)) {
        return true;
    }
    ask(display.get(), atom);
    return isAnswered(display.get(), longestSilence(roundTrip));
}

} // namespace tarvik::face
