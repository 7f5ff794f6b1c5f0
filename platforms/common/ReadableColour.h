#pragma once

#include "controls/Colour.h"

namespace tarvik::face {

/// Contrast of two colours after the web's accessibility guidelines: 1 (none) to 21.
double contrastRatio(const Colour& a, const Colour& b);

/// A text colour that can be read on the ground: on a dark one it is made lighter until it has a
/// contrast of 4.5. On a light one it stays as it is, unless it would not be told from the ground
/// (a contrast below 3); then it is made darker.
Colour readableOn(const Colour& colour, const Colour& ground);

} // namespace tarvik::face
