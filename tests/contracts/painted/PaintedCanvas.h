#pragma once

#include "support/CanvasCases.h"
#include "support/Pixels.h"

#include <functional>
#include <string>

namespace tarvik {

/// What is drawn on the face's canvas, which has so many pixels, and so many of them to a unit.
Pixels paintedOnCanvas(CanvasSize size, const std::function<void(Canvas&)>& draw, double scale);

/// The same of a canvas for the cases, in characters.
inline std::string seenOnCanvas(const std::function<void(Canvas&)>& draw, double scale) {
    return inCharacters(paintedOnCanvas({CanvasCase::width, CanvasCase::height}, draw, scale));
}

} // namespace tarvik
