#include "forms/frmWarning.h"

#include "forms/WarningSign.h"

namespace tarvik {

namespace {

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
