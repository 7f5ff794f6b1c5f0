#pragma once

#include "controls/Drawing.h"

#include <QIcon>

class QPainter;

namespace tarvik::face {

/// Paints the drawing into the square of that side from the painter's origin.
void paintDrawing(QPainter& painter, const Drawing& drawing, double side);

/// The drawing alone, in the sizes that panels use.
QIcon iconOf(const Drawing& drawing);

} // namespace tarvik::face
