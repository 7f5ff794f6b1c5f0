#pragma once

#include "controls/Colour.h"

#include <vector>

namespace tarvik {

/// A point of a drawing; the drawing's square reaches from 0 to 1 in both directions, y downwards.
struct DrawingPoint {
    double x = 0;
    double y = 0;

    friend bool operator==(const DrawingPoint&, const DrawingPoint&) = default;
};

/// One shape of a drawing: a closed polygon, an open line, or a circle (centre and a point on it).
struct DrawingShape {
    enum class Type { Polygon, Line, Circle };

    Type type = Type::Circle;
    std::vector<DrawingPoint> points;
    Colour colour;
    /// Width of the stroke as a part of the square; 0 fills the shape.
    double stroke = 0;

    friend bool operator==(const DrawingShape&, const DrawingShape&) = default;
};

/// A small image made of shapes, later ones above earlier ones; sharp at any size.
struct Drawing {
    std::vector<DrawingShape> shapes;

    friend bool operator==(const Drawing&, const Drawing&) = default;
};

} // namespace tarvik
