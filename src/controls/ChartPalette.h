#pragma once

#include "controls/Chart.h"

#include <array>

namespace tarvik {

/// The colours of a chart. The two columns differ in lightness as well as in hue.
struct ChartPalette {
    Colour background;
    Colour text;
    Colour axis;
    Colour majorGrid;
    Colour minorGrid;
    std::array<Colour, Chart::mostColumns> columns;
    std::array<Colour, Chart::mostColumns> fills; ///< of areas: paler

    /// What goes with a background and a text colour, be they light or dark.
    static ChartPalette on(const Colour& background, const Colour& text);
};

} // namespace tarvik
