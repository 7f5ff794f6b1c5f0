#include "linux/face/Palette.h"

#include <QGuiApplication>

#include <algorithm>
#include <cmath>

namespace tarvik::face {

namespace {

constexpr double readable = 4.5;

double linear(double channel) {
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

} // namespace

QPalette applicationPalette() {
    return QGuiApplication::palette();
}

double contrastRatio(const QColor& a, const QColor& b) {
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

QColor readableColour(const Colour& colour, const QPalette& palette) {
    if (colour == Colour{}) {
        return palette.color(QPalette::WindowText);
    }
    const QColor background = palette.color(QPalette::Window);
    const bool lighter = luminance(background) < 0.18;
    QColor result(colour.red, colour.green, colour.blue);
    constexpr int steps = 20;
    for (int i = 0; i < steps && contrastRatio(result, background) < readable; ++i) {
        const float lightness = result.lightnessF() + (lighter ? 0.05F : -0.05F);
        result.setHslF(result.hslHueF(), result.hslSaturationF(),
                       std::clamp(lightness, 0.0F, 1.0F));
    }
    return result;
}

} // namespace tarvik::face
