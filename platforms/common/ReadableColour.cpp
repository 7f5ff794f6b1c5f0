#include "common/ReadableColour.h"

#include <algorithm>
#include <cmath>

namespace tarvik::face {

namespace {

constexpr double readable = 4.5;
constexpr double tellable = 3;
constexpr double darkGround = 0.18; // of luminance: below it, white is read better than black
constexpr double brightest = 255;

double linear(int channel) {
    const double part = channel / brightest;
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const Colour& colour) {
    return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) +
           0.0722 * linear(colour.blue);
}

/// Each channel multiplied by that.
Colour scaled(const Colour& colour, double factor) {
    const auto channel = [factor](int value) {
        return static_cast<int>(std::lround(std::min(value * factor, brightest)));
    };
    return {channel(colour.red), channel(colour.green), channel(colour.blue)};
}

/// So much of white in it.
Colour whitened(const Colour& colour, double part) {
    const auto channel = [part](int value) {
        return static_cast<int>(std::lround(value + (brightest - value) * part));
    };
    return {channel(colour.red), channel(colour.green), channel(colour.blue)};
}

/// The first of the shades, from none to all of the change, that can be read; else the last.
template <class Shade>
Colour firstReadable(const Colour& ground, Shade shade) {
    constexpr int steps = 20;
    Colour result = shade(0.0);
    for (int i = 1; i <= steps && contrastRatio(result, ground) < readable; ++i) {
        result = shade(i / static_cast<double>(steps));
    }
    return result;
}

} // namespace

double contrastRatio(const Colour& a, const Colour& b) {
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

Colour readableOn(const Colour& colour, const Colour& ground) {
    if (luminance(ground) >= darkGround) {
        return contrastRatio(colour, ground) >= tellable
                   ? colour
                   : firstReadable(ground, [&](double part) { return scaled(colour, 1 - part); });
    }
    // First as bright as its hue allows, then paler: so it stays the same colour to the eye.
    const int largest = std::max({colour.red, colour.green, colour.blue, 1});
    const double most = brightest / largest;
    const Colour brighter =
        firstReadable(ground, [&](double part) { return scaled(colour, 1 + (most - 1) * part); });
    return firstReadable(ground, [&](double part) { return whitened(brighter, part); });
}

} // namespace tarvik::face
