#include "forms/frmPlanWarning.h"

#include "forms/WarningSign.h"

namespace tarvik {

namespace {
constexpr int warningWidth = 56;
constexpr int warningLines = 3;
} // namespace

FrmPlanWarning::FrmPlanWarning() : Form("frmPlanWarning", "Velmars Tarvik - Plan warning") {
    picWarning.setDrawing(warningSign());
    picWarning.setAccessibleName("Warning");
    setLayout(column({
        row({item(picWarning),
             item(lblDescription).wide(warningWidth).tall(warningLines).share(1)}),
        row({space(), item(cmdExtendToday), item(cmdExtendPeriod), item(cmdPlan), item(cmdCancel)}),
    }));
    setCancelButton(cmdCancel);
    setInitialFocus(cmdCancel);
    setQuiet();
}

} // namespace tarvik
