#include "forms/frmWarning.h"

namespace tarvik {

namespace {

/// A triangle with an exclamation mark.
Drawing warningSign() {
    constexpr Colour yellow{255, 196, 12};
    constexpr Colour dark{48, 48, 48};
    using Type = DrawingShape::Type;
    return {{{Type::Polygon, {{0.50, 0.10}, {0.92, 0.86}, {0.08, 0.86}}, yellow, 0},
             {Type::Polygon, {{0.50, 0.10}, {0.92, 0.86}, {0.08, 0.86}}, dark, 0.06},
             {Type::Line, {{0.50, 0.38}, {0.50, 0.60}}, dark, 0.09},
             {Type::Circle, {{0.50, 0.74}, {0.55, 0.74}}, dark, 0}}};
}

constexpr int descriptionWidth = 56;
constexpr int descriptionLines = 6;

} // namespace

FrmWarning::FrmWarning() : Form("frmWarning", "Velmars Tarvik - Warning") {
    picWarning.setDrawing(warningSign());
    picWarning.setAccessibleName("Warning");

    setLayout(column({
        row({item(picWarning),
             item(lblDescription).wide(descriptionWidth).tall(descriptionLines).share(1)}),
        row({space(), item(cmdDisconnect), item(cmdReset), item(cmdCancel)}).sameSize(),
    }));
    // Closing the warning for good is a decision: a stray Escape only puts it aside.
    setEscapeCloses();
    setInitialFocus(cmdCancel);
}

} // namespace tarvik
