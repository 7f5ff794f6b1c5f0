#include "controls/ChartPalette.h"

#include <algorithm>
#include <cmath>

namespace tarvik {

namespace {

constexpr Colour black{0, 0, 0};
constexpr Colour white{255, 255, 255};

/// So much of the second colour in the first.
Colour mixed(const Colour& first, const Colour& second, double part) {
    const auto channel = [part](int a, int b) {
        return static_cast<int>(std::lround(a + (b - a) * part));
    };
    return {channel(first.red, second.red), channel(first.green, second.green),
            channel(first.blue, second.blue)};
}

/// How light the eye takes a colour to be, from 0 to 255.
double lightness(const Colour& colour) {
    return 0.299 * colour.red + 0.587 * colour.green + 0.114 * colour.blue;
}

/// Relative luminance as accessibility guidelines define it, from 0 to 1.
double luminance(const Colour& colour) {
    const auto linear = [](int channel) {
        const double part = channel / 255.0;
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) +
           0.0722 * linear(colour.blue);
}

/// How light the eye takes a colour to be, from 0 to 100 (L* of CIELAB).
double perceived(const Colour& colour) {
    const double y = luminance(colour);
    return y > 0.008856 ? 116 * std::cbrt(y) - 16 : 903.3 * y;
}

double contrast(const Colour& a, const Colour& b) {
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// The wanted colour, or the nearest one towards black or white that `suits`; white or black where
/// none does.
template <class Suits>
Colour nearest(const Colour& wanted, Suits suits) {
    constexpr int steps = 64;
    for (int step = 0; step <= steps; ++step) {
        for (const Colour& end : {black, white}) {
            const Colour colour = mixed(wanted, end, static_cast<double>(step) / steps);
            if (suits(colour)) {
                return colour;
            }
        }
    }
    return lightness(wanted) > 0 ? white : black;
}

/// The least contrast with the background that lines and bars are told by.
constexpr double leastContrast = 3;
/// So far are the columns apart in lightness, so that they differ where hues are not seen.
constexpr double leastApart = 16;
constexpr double middleLight = 128;
// Chosen so that readers who do not tell red from green still tell blue from orange.
constexpr std::array<Colour, Chart::mostColumns> onLight{{{16, 68, 140}, {217, 95, 2}}};
constexpr std::array<Colour, Chart::mostColumns> onDark{{{140, 200, 255}, {222, 116, 34}}};

/// A paler one of a column's colours that is not taken for the background.
Colour fillOn(const Colour& background, const Colour& column) {
    constexpr double usualPart = 0.35;
    constexpr double least = 1.1; // contrast
    double part = usualPart;
    while (part < 0.9 && contrast(mixed(background, column, part), background) < least) {
        part += 0.05;
    }
    return mixed(background, column, part);
}

/// The two colours where they can be seen, else others near them.
std::array<Colour, Chart::mostColumns> columnsOn(const Colour& background) {
    const auto& wanted = lightness(background) > middleLight ? onLight : onDark;
    const auto seen = [&](const Colour& colour) {
        return contrast(colour, background) >= leastContrast;
    };
    const Colour second = nearest(wanted[1], seen);
    const Colour first = nearest(wanted[0], [&](const Colour& colour) {
        return seen(colour) && std::abs(perceived(colour) - perceived(second)) >= leastApart;
    });
    return {first, second};
}

} // namespace

ChartPalette ChartPalette::on(const Colour& background, const Colour& text) {
    constexpr double axisPart = 0.6;
    constexpr double majorPart = 0.35;
    constexpr double minorPart = 0.15;
    ChartPalette palette;
    palette.background = background;
    palette.text = text;
    palette.axis = mixed(background, text, axisPart);
    palette.majorGrid = mixed(background, text, majorPart);
    palette.minorGrid = mixed(background, text, minorPart);
    palette.columns = columnsOn(background);
    for (std::size_t i = 0; i < palette.fills.size(); ++i) {
        palette.fills[i] = fillOn(background, palette.columns[i]);
    }
    return palette;
}

} // namespace tarvik
