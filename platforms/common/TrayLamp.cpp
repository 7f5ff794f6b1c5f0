#include "common/TrayLamp.h"

#include <utility>

namespace tarvik::face {

namespace {

// Marks are dark on white, with a white edge around: they are seen on a light and on a dark panel,
// on any lamp, and by who sees no colours. Their lines lie on those of an icon of 16 pixels.
constexpr Colour ink{38, 42, 46};
constexpr Colour paper{255, 255, 255};
constexpr double pixel = 1.0 / 16;

DrawingShape box(double from, double top, double to, double bottom, Colour colour) {
    return {.type = DrawingShape::Type::Polygon,
            .points = {{from, top}, {to, top}, {to, bottom}, {from, bottom}},
            .colour = colour};
}

DrawingShape diamond(Colour colour, double stroke) {
    constexpr double middle = 12.2 * pixel;
    constexpr double reach = 2.8 * pixel;
    return {.type = DrawingShape::Type::Polygon,
            .points = {{middle, middle - reach},
                       {middle + reach, middle},
                       {middle, middle + reach},
                       {middle - reach, middle}},
            .colour = colour,
            .stroke = stroke};
}

std::vector<DrawingShape> shapesOf(TrayMark mark) {
    switch (mark) {
    case TrayMark::First:
        return {diamond(paper, 2.4 * pixel), diamond(paper, 0), diamond(ink, pixel)};
    case TrayMark::Last:
        return {box(9 * pixel, 9 * pixel, 1, 1, paper),
                box(10 * pixel, 10 * pixel, 15 * pixel, 15 * pixel, ink),
                box(11 * pixel, 12 * pixel, 14 * pixel, 13 * pixel, paper)};
    case TrayMark::None:
        break;
    }
    return {};
}

} // namespace

LampState lampOf(TrayIcon icon) {
    switch (icon) {
    case TrayIcon::imgSysTrayOnline:
        return LampState::Online;
    case TrayIcon::imgSysTrayOffline:
        return LampState::Waiting;
    case TrayIcon::imgSysTray:
        break;
    }
    return LampState::NotMonitoring;
}

Drawing trayDrawing(std::uint32_t number) {
    constexpr std::uint32_t icons = trayIconNumbers / 3;
    const std::uint32_t known = number < trayIconNumbers ? number : 0;
    Drawing drawing = statusLamp(lampOf(static_cast<TrayIcon>(known % icons)));
    for (DrawingShape& shape : shapesOf(static_cast<TrayMark>(known / icons))) {
        drawing.shapes.push_back(std::move(shape));
    }
    return drawing;
}

} // namespace tarvik::face
