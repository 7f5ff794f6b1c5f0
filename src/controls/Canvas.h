#pragma once

#include "controls/Colour.h"

#include <span>
#include <string>

namespace tarvik {

/// A place on a canvas: pixels of the screen from the upper left corner, y downwards.
struct CanvasPoint {
    double x = 0;
    double y = 0;

    friend bool operator==(const CanvasPoint&, const CanvasPoint&) = default;
};

struct CanvasSize {
    double width = 0;
    double height = 0;

    friend bool operator==(const CanvasSize&, const CanvasSize&) = default;
};

enum class LineStyle { Solid, Dashed, Dotted };

/// How a line is drawn; the width in pixels.
struct Stroke {
    Colour colour;
    double width = 1;
    LineStyle style = LineStyle::Solid;
};

/// A sheet that each desktop supplies. Its pixels are those of the screen, so that what is put on
/// whole numbers is sharp at any scale: a line of width 1 from (3, 2) to (9, 2) is the pixels 3 to
/// 9 of row 2. Colours are taken as they are.
class Canvas {
public:
    virtual ~Canvas() = default;

    /// Pixels of the whole sheet.
    virtual CanvasSize size() const = 0;
    /// Pixels that make up what is one pixel on a screen of plain resolution; 1 or more.
    virtual double scale() const = 0;

    /// An open line through all points; one point draws nothing.
    virtual void line(std::span<const CanvasPoint> points, const Stroke& stroke) = 0;
    /// A filled area without an outline. A rectangle from (3, 2) to (9, 5) is the pixels 3 to 8 of
    /// the rows 2 to 4.
    virtual void polygon(std::span<const CanvasPoint> corners, const Colour& fill) = 0;
    /// One line of text; the point is the upper left corner of its box.
    virtual void text(CanvasPoint leftTop, const std::string& text, const Colour& colour) = 0;
    /// Of the box that `text` takes.
    virtual CanvasSize textSize(const std::string& text) const = 0;
};

} // namespace tarvik
