#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace tarvik::xcb {

// What belongs to whoever asks an X display on a connection of his own.

struct Free {
    void operator()(void* memory) const { std::free(memory); }
    void operator()(xcb_connection_t* display) const { xcb_disconnect(display); }
};

/// A reply or an event, or a connection.
template <class Type>
using Owned = std::unique_ptr<Type, Free>;
using Display = Owned<xcb_connection_t>;

enum class Missing : std::uint8_t { IsMade, StaysAway };

/// The number that the display knows the name by; XCB_ATOM_NONE where it is missing and stays away,
/// or where the display does not answer.
inline xcb_atom_t atomOf(xcb_connection_t* display, std::string_view name,
                         Missing missing = Missing::IsMade) {
    const std::uint8_t onlyIfThere = missing == Missing::StaysAway ? 1 : 0;
    const auto length = static_cast<std::uint16_t>(name.size());
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        display, xcb_intern_atom(display, onlyIfThere, length, name.data()), nullptr));
    return reply == nullptr ? xcb_atom_t{XCB_ATOM_NONE} : reply->atom;
}

} // namespace tarvik::xcb
