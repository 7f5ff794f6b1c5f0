#pragma once

#include "controls/Colour.h"

namespace tarvik {

/// Of what a window says as usual: the desktop's own.
inline constexpr Colour usualTextColour{0, 0, 0};
/// Of what the user is to notice, a dark red.
inline constexpr Colour strikingTextColour{192, 0, 0};

/// Refreshes figures, colours, tray menu and tray icon after the state of the connection.
void UpdateGUI();

/// Shows in the status lamp whether monitoring is on and a connection is up.
void ShowStatus();

} // namespace tarvik
