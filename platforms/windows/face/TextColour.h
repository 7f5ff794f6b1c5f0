#pragma once

#include "controls/Colour.h"
#include "windows/services/SystemHeader.h"

namespace tarvik::face {

/// The user has chosen strong contrast for the whole system.
bool strongContrast();

/// A text's colour for the system: black is the user's own, any other can be read on the ground.
/// Someone who needs strong contrast has chosen the colours that he can read, and gets no other.
COLORREF textColour(const Colour& colour, COLORREF ground, bool strong);

} // namespace tarvik::face
