#include "forms/WarningSign.h"

namespace tarvik {

Drawing warningSign() {
    constexpr Colour yellow{255, 196, 12};
    constexpr Colour dark{48, 48, 48};
    using Type = DrawingShape::Type;
    return {{{Type::Polygon, {{0.50, 0.10}, {0.92, 0.86}, {0.08, 0.86}}, yellow, 0},
             {Type::Polygon, {{0.50, 0.10}, {0.92, 0.86}, {0.08, 0.86}}, dark, 0.06},
             {Type::Line, {{0.50, 0.38}, {0.50, 0.60}}, dark, 0.09},
             {Type::Circle, {{0.50, 0.74}, {0.55, 0.74}}, dark, 0}}};
}

} // namespace tarvik
