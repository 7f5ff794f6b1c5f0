#pragma once

#include "controls/Colour.h"

#include <QColor>
#include <QPalette>

namespace tarvik::face {

/// The palette that windows start from.
QPalette applicationPalette();

/// Contrast of two colours after the web's accessibility guidelines: 1 (none) to 21.
double contrastRatio(const QColor& a, const QColor& b);

/// A text colour as the palette allows it: black is the palette's own, any other can be read on the
/// window's background.
QColor readableColour(const Colour& colour, const QPalette& palette);

} // namespace tarvik::face
