#include "wiring/frmOptionsEvents.h"

#include "forms/Forms.h"
#include "monitor/mdlCodeReset.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "state/mdlTools.h"
#include "types/Convert.h"
#include "ui/mdlGUIFigures.h"
#include "wiring/CloseBox.h"
#include "wiring/NumericField.h"

namespace tarvik {

namespace {

constexpr int unitCount = 4;

FrmOptions& options() {
    return forms().frmOptions;
}

Long wholeNumber(const TextBox& field) {
    return textToLong(field.text(), platform().locale.data());
}

/// The number if it lies within the bounds, else the standard one.
Long within(Long number, Long least, Long most, Long standard) {
    return number < least || number > most ? standard : number;
}

bool unitsAreListed(const ComboBox& combo) {
    if (combo.listCount() >= unitCount) {
        return true;
    }
    FatalError("opt_cmdOK_Click", FatalKind::Assertion);
    return false;
}

void applyUnits() {
    State& s = state();
    FrmMain& main = forms().frmMain;
    if (unitsAreListed(options().cboUnitTransferCurrent)) {
        GetUnitTypeTransfer(options().cboUnitTransferCurrent, s.UnitTransferCurrent);
        SetLabelUnitTransfer(main.lblTransferCurrent, "current ", s.UnitTransferCurrent);
        UpdateValuesInGUI(false, true, false);
    }
    if (unitsAreListed(options().cboUnitTransferTotal)) {
        GetUnitTypeTransfer(options().cboUnitTransferTotal, s.UnitTransferTotal);
        SetLabelUnitTransfer(main.lblTransferTotal, "total ", s.UnitTransferTotal);
        UpdateValuesInGUI(true, false, false);
    }
}

void applyStartUp() {
    state().StartUpRunMonitoring = options().chkStartupRunMonitoring.value();
    state().StartUpMinimise = options().chkStartUpMinimise.value();
}

void applyLimits() {
    State& s = state();
    s.TransferLimit = options().chkTransferLimit.value();
    s.TransferLimitValue =
        textToCurrency(options().txtTransferLimit.text(), platform().locale.data());
    s.DurationLimit = options().chkDurationLimit.value();
    s.DurationLimitHr = wholeNumber(options().txtDurationLimitHr);
    s.DurationLimitMin = wholeNumber(options().txtDurationLimitMin);
    s.TransferLimitWarning = options().chkTransferLimitWarning.value();
    if (s.TransferLimitWarning != 0) {
        s.LimitWarningArmed = true;
    }
    s.TransferLimitHangUp = options().chkTransferLimitHangUp.value();
}

void applyReset() {
    State& s = state();
    s.TransferResetEnable = options().chkTransferResetEnable.value();
    s.TransferReset =
        static_cast<enDateCalc>(Currency(options().cboTransferReset.listIndex()).toByte());
    s.TransferResetBackup = options().chkTransferResetBackup.value();
}

void applyInterval() {
    const Long interval = within(wholeNumber(options().txtRefreshInterval), 100, 50'000, 1000);
    state().RefreshInterval = interval;
    forms().frmMain.timUpdateStats.setInterval(interval.value());
}

void applyRecording() {
    State& s = state();
    s.LogIPAddress = options().chkLogIPAddress.value();
    s.TransferTicker = options().chkTransferTicker.value();
    s.TransferTickerValue = within(wholeNumber(options().txtTransferTicker), 1, 9999, 100);
}

} // namespace

void ToggleLimitControls() {
    guarded("ToggleLimitControls", [] {
        FrmOptions& o = options();
        const bool transfer = o.chkTransferLimit.ticked();
        const bool duration = o.chkDurationLimit.ticked();
        o.txtTransferLimit.setEnabled(transfer);
        o.txtDurationLimitHr.setEnabled(duration);
        o.txtDurationLimitMin.setEnabled(duration);
        o.lblDurationTimeSep.setEnabled(duration);
        o.lblLimitAction.setEnabled(transfer || duration);
        o.chkTransferLimitWarning.setEnabled(transfer || duration);
        o.chkTransferLimitHangUp.setEnabled(transfer || duration);
    });
}

void ToggleResetControls() {
    guarded("ToggleResetControls", [] {
        FrmOptions& o = options();
        const bool enabled = o.chkTransferResetEnable.ticked();
        o.cboTransferReset.setEnabled(enabled);
        o.chkTransferResetBackup.setEnabled(enabled);
    });
}

void ToggleTickerControls() {
    guarded("ToggleTickerControls", [] {
        FrmOptions& o = options();
        const bool enabled = o.chkTransferTicker.ticked();
        o.txtTransferTicker.setEnabled(enabled);
        o.lblTransferTicker.setEnabled(enabled);
    });
}

void GetUnitTypeTransfer(const ComboBox& Combo, TransferUnit& Unit) {
    guarded("GetUnitTypeTransfer", [&] {
        const int position = Combo.listIndex();
        if (position >= 0 && position < unitCount) {
            Unit = static_cast<TransferUnit>(position);
        }
    });
}

void cmdResetValues_Click() {
    guarded("cmdResetValues_Click", [] { ResetTransfersRequest(); });
}

void cmdOK_Click() {
    guarded("cmdOK_Click", [] {
        applyUnits();
        applyStartUp();
        applyLimits();
        applyReset();
        applyInterval();
        applyRecording();
        options().setVisible(false);
    });
}

void frmOptions_cmdCancel_Click() {
    guarded("cmdCancel_Click", [] { options().setVisible(false); });
}

void connectOptionsEvents() {
    FrmOptions& o = options();
    o.chkTransferLimit.Click.connect(ToggleLimitControls);
    o.chkDurationLimit.Click.connect(ToggleLimitControls);
    o.chkTransferResetEnable.Click.connect(ToggleResetControls);
    o.chkTransferTicker.Click.connect(ToggleTickerControls);
    o.cmdResetValues.Click.connect(cmdResetValues_Click);
    o.cmdOK.Click.connect(cmdOK_Click);
    o.cmdCancel.Click.connect(frmOptions_cmdCancel_Click);
    connectCloseBox(o, frmOptions_cmdCancel_Click);
    connectNumericField(o.txtDurationLimitHr, o.rememberedDurationLimitHr, 600);
    connectNumericField(o.txtDurationLimitMin, o.rememberedDurationLimitMin, 0);
    connectNumericField(o.txtRefreshInterval, o.rememberedRefreshInterval, 1000);
    connectNumericField(o.txtTransferLimit, o.rememberedTransferLimit, 1'000'000);
    connectNumericField(o.txtTransferTicker, o.rememberedTransferTicker, 100);
}

} // namespace tarvik
