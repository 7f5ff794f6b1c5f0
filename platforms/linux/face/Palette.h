#pragma once

#include "controls/Colour.h"

#include <QColor>
#include <QPalette>

namespace tarvik::face {

/// The palette that windows start from.
QPalette applicationPalette();

/// A text colour as the palette allows it: black is the palette's own, any other can be read on the
/// window's background.
QColor readableColour(const Colour& colour, const QPalette& palette);

} // namespace tarvik::face
