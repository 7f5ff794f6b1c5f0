#include "ui/controls/ChartPalette.h"

#include <cmath>

namespace tarvik {

namespace {

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

constexpr double middle = 128;
// Chosen so that readers who do not tell red from green still tell blue from orange.
constexpr std::array<Colour, Chart::mostColumns> onLight{{{16, 68, 140}, {217, 95, 2}}};
constexpr std::array<Colour, Chart::mostColumns> onDark{{{140, 200, 255}, {222, 116, 34}}};

} // namespace

ChartPalette ChartPalette::on(const Colour& background, const Colour& text) {
    constexpr double axisPart = 0.6;
    constexpr double majorPart = 0.35;
    constexpr double minorPart = 0.15;
    constexpr double fillPart = 0.35;
    ChartPalette palette;
    palette.background = background;
    palette.text = text;
    palette.axis = mixed(background, text, axisPart);
    palette.majorGrid = mixed(background, text, majorPart);
    palette.minorGrid = mixed(background, text, minorPart);
    palette.columns = lightness(background) > middle ? onLight : onDark;
    for (std::size_t i = 0; i < palette.fills.size(); ++i) {
        palette.fills[i] = mixed(background, palette.columns[i], fillPart);
    }
    return palette;
}

} // namespace tarvik
