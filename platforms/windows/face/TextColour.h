#pragma once

#include "ui/controls/Control.h"
#include "windows/services/SystemHeader.h"

namespace tarvik::face {

/// The user has chosen strong contrast for the whole system.
bool strongContrast();

/// A text's colour for the system: black is the user's own. Someone who needs strong contrast has
/// chosen the colours that he can read, and gets no other.
COLORREF textColour(const Colour& colour, bool strong);

} // namespace tarvik::face
