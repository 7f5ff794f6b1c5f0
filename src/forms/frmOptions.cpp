#include "forms/frmOptions.h"

#include <initializer_list>

namespace tarvik {

namespace {
// Room for the largest number that each field takes.
constexpr int limitBytesWidth = 16;
constexpr int hoursWidth = 6;
constexpr int minutesWidth = 4;
constexpr int intervalWidth = 7;
constexpr int tickerWidth = 6;
constexpr int unitWidth = 14;
constexpr int criterionWidth = 20;
} // namespace

LayoutNode FrmOptions::startUpFrame() {
    return frame(frameStartUp, column({item(chkStartupRunMonitoring), item(chkStartUpMinimise)}));
}

LayoutNode FrmOptions::unitsFrame() {
    // clang-format off
    return frame(frameTransfer, grid(2, {
        item(cboUnitTransferCurrent).wide(unitWidth), item(lblUnitTransferCurrent).share(1),
        item(cboUnitTransferTotal).wide(unitWidth),   item(lblUnitTransferTotal),
    }));
    // clang-format on
}

LayoutNode FrmOptions::warningsFrame() {
    return frame(
        frameWarnings,
        column({
            grid(2, {item(chkTransferLimit), item(txtTransferLimit).wide(limitBytesWidth).share(1),
                     item(chkDurationLimit),
                     row({item(txtDurationLimitHr).wide(hoursWidth), item(lblDurationTimeSep),
                          item(txtDurationLimitMin).wide(minutesWidth), space()})}),
            item(lblLimitAction),
            item(chkTransferLimitWarning),
            item(chkTransferLimitHangUp),
        }));
}

LayoutNode FrmOptions::resetFrame() {
    return frame(frameTransferReset, column({
                                         item(chkTransferResetEnable),
                                         item(cboTransferReset).wide(criterionWidth),
                                         item(chkTransferResetBackup),
                                         item(cmdResetValues),
                                         space(),
                                     }));
}

LayoutNode FrmOptions::miscellaneousFrame() {
    return frame(
        frameMisc,
        column({
            row({item(lblRefreshInterval), item(txtRefreshInterval).wide(intervalWidth), space()}),
            item(chkLogIPAddress),
            row({item(chkTransferTicker), item(txtTransferTicker).wide(tickerWidth),
                 item(lblTransferTicker), space()}),
            space(),
        }));
}

FrmOptions::FrmOptions() : Form("frmOptions", "Velmars Tarvik - Options") {
    // As the boxes are not ticked: see the rules of their clicks.
    for (Control* dependent : std::initializer_list<Control*>{
             &txtTransferLimit, &txtDurationLimitHr, &lblDurationTimeSep, &txtDurationLimitMin,
             &lblLimitAction, &chkTransferLimitWarning, &chkTransferLimitHangUp, &cboTransferReset,
             &chkTransferResetBackup, &txtTransferTicker, &lblTransferTicker}) {
        dependent->setEnabled(false);
    }
    setLayout(column({
        // The last frames take what is left over, so that both columns end on one line.
        row({column({startUpFrame(), unitsFrame(), miscellaneousFrame().share(1)}).share(1),
             column({warningsFrame(), resetFrame().share(1)}).share(1)})
            .share(1),
        row({item(cmdPlan), row({space(), item(cmdOK), item(cmdCancel)}).sameSize().share(1)}),
    }));
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);
    setInitialFocus(chkStartupRunMonitoring);
}

} // namespace tarvik
