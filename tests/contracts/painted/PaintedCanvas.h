#pragma once

#include "support/CanvasCases.h"

#include <string>

namespace tarvik {

/// What is drawn on the face's canvas for a screen with so many pixels to a unit, in characters.
std::string seenOnCanvas(void (*draw)(Canvas&), double scale);

} // namespace tarvik
