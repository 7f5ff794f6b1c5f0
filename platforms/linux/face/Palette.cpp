#include "linux/face/Palette.h"

#include "common/ReadableColour.h"

#include <QGuiApplication>

namespace tarvik::face {

namespace {

Colour colourOf(const QColor& colour) {
    return {colour.red(), colour.green(), colour.blue()};
}

} // namespace

QPalette applicationPalette() {
    return QGuiApplication::palette();
}

QColor readableColour(const Colour& colour, const QPalette& palette) {
    if (colour == Colour{}) {
        return palette.color(QPalette::WindowText);
    }
    const Colour shown = readableOn(colour, colourOf(palette.color(QPalette::Window)));
    return {shown.red, shown.green, shown.blue};
}

} // namespace tarvik::face
