#pragma once

#include "controls/Canvas.h"

#include <optional>
#include <span>
#include <vector>

namespace tarvik::face {

// What the canvases of all desktops take from here, so that whole numbers mean the same pixels on
// each of them.

/// A place in whole pixels.
struct PixelPoint {
    int x = 0;
    int y = 0;

    friend bool operator==(const PixelPoint&, const PixelPoint&) = default;
};

/// A rectangle of whole pixels: `right` and `bottom` belong to it no more.
struct PixelRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

/// The pixel that a point stands in the middle of.
PixelPoint nearestPixel(const CanvasPoint& point);

/// The width of a stroke in whole pixels: 1 or more.
int pixelWidth(const Stroke& stroke);

/// The pixels that a stroke is drawn over and left out for, in turn; none for a solid one. They
/// grow with the scale and with the width.
std::vector<int> dashes(const Stroke& stroke, double scale);

/// The pixels of a line that runs along the axes only; nothing for one that does not.
std::optional<std::vector<PixelRect>> pixelsOf(std::span<const CanvasPoint> points,
                                               const Stroke& stroke, double scale);

/// The rectangle whose four corners these are; nothing for other corners.
std::optional<PixelRect> rectangleOf(std::span<const CanvasPoint> corners);

/// The pixels whose middle lies in the area between the corners, column by column. It takes no
/// longer than it has corners and columns; where its edges cross, what they go around twice is not
/// in it.
std::vector<PixelRect> columnsOf(std::span<const CanvasPoint> corners);

/// The same line for the eye: of all points that follow each other within one column of pixels, the
/// first, the highest, the lowest and the last.
std::vector<CanvasPoint> thinned(std::span<const CanvasPoint> points);

} // namespace tarvik::face
