#include "forms/StatusLamp.h"

namespace tarvik {

namespace {

constexpr Colour grey{128, 134, 139};
constexpr Colour amber{214, 137, 16};
constexpr Colour green{34, 139, 60};
constexpr Colour white{255, 255, 255};

DrawingShape circle(double radius, Colour colour, double stroke) {
    return {.type = DrawingShape::Type::Circle,
            .points = {{0.5, 0.5}, {0.5 + radius, 0.5}},
            .colour = colour,
            .stroke = stroke};
}

} // namespace

Drawing statusLamp(LampState state) {
    switch (state) {
    case LampState::Waiting:
        return {{circle(0.40, amber, 0.10), circle(0.18, amber, 0)}};
    case LampState::Online:
        return {{circle(0.45, green, 0),
                 {.type = DrawingShape::Type::Line,
                  .points = {{0.27, 0.52}, {0.44, 0.68}, {0.73, 0.35}},
                  .colour = white,
                  .stroke = 0.11}}};
    case LampState::NotMonitoring:
        break;
    }
    return {{circle(0.40, grey, 0.10)}};
}

const char* statusLampName(LampState state) {
    switch (state) {
    case LampState::Waiting:
        return "Monitoring, no active connection";
    case LampState::Online:
        return "Monitoring, active connection";
    case LampState::NotMonitoring:
        break;
    }
    return "Not monitoring";
}

} // namespace tarvik
