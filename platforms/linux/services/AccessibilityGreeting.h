#pragma once

#include "linux/services/Greeting.h"

#include <string>

namespace tarvik {

// False where what the toolkit will wait for does not answer as it should; both wait for it without
// end. True where there is none. Their environment is read by whoever asks, as they may go on while
// it is changed.

/// The bus of accessibility at that address, and the registry of listeners on it.
bool accessibilityBusGreets(const std::string& address, Greeting::MayBeSilent& mayBeSilent);

/// The service of accessibility on the session bus of that address, and the bus that it tells of,
/// if it is on, or `wanted` in any case.
bool accessibilityGreets(const std::string& sessionBus, bool wanted,
                         Greeting::MayBeSilent& mayBeSilent);

/// The bus of accessibility that the X display of that name tells of; "" for no display.
bool accessibilityOfDisplayGreets(const std::string& display, Greeting::MayBeSilent& mayBeSilent);

} // namespace tarvik
