#include "wiring/frmOptionsEvents.h"

#include "forms/Forms.h"
#include "monitor/mdlCodeReset.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "settings/Setting.h"
#include "settings/mdlSettingsControls.h"
#include "settings/mdlSettingsJournal.h"
#include "state/mdlTools.h"
#include "types/Convert.h"
#include "ui/mdlGUIFigures.h"
#include "wiring/CloseBox.h"
#include "wiring/NumericField.h"

namespace tarvik {

namespace {

FrmOptions& options() {
    return forms().frmOptions;
}

bool unitsAreListed(const ComboBox& combo) {
    if (combo.listCount() >= transferUnitCount) {
        return true;
    }
    FatalError("opt_cmdOK_Click", FatalKind::Assertion);
    return false;
}

void applyUnit(const UnitSetting& unit) {
    State& s = state();
    const ComboBox& list = options().*unit.list;
    if (unitsAreListed(list)) {
        GetUnitTypeTransfer(list, s.*unit.value);
        showUnit(unit);
        const bool ofTotals = unit.value == &State::UnitTransferTotal;
        UpdateValuesInGUI(ofTotals, !ofTotals, false);
    }
}

/// Takes a setting over from its control. A text that cannot be converted is an error: what comes
/// after it is not applied.
void apply(const Setting& setting) {
    State& s = state();
    const LocaleData& locale = platform().locale.data();
    FrmOptions& o = options();
    std::visit(ByKind{[](const UnitSetting& unit) { applyUnit(unit); },
                      [&](const FlagSetting& flag) { s.*flag.value = (o.*flag.box).value(); },
                      [&](const CriterionSetting& criterion) {
                          s.*criterion.value = static_cast<enDateCalc>(
                              Currency((o.*criterion.list).listIndex()).toByte());
                      },
                      [&](const BytesSetting& bytes) {
                          s.*bytes.value = textToCurrency((o.*bytes.field).text(), locale);
                      },
                      [&](const NumberSetting& number) {
                          s.*number.value =
                              number.within(textToLong((o.*number.field).text(), locale));
                      },
                      [](const DaySetting&) {}},
               setting.kind);
}

/// What follows at once from a setting that was applied.
void follow(const Setting& setting) {
    State& s = state();
    if (setting.isKeptIn(&State::TransferLimitWarning) && s.TransferLimitWarning != 0) {
        s.LimitWarningArmed = true;
    } else if (setting.isKeptIn(&State::RefreshInterval)) {
        forms().frmMain.timUpdateStats.setInterval(s.RefreshInterval.value());
    }
}

void applyAll() {
    for (const Setting& setting : settings()) {
        apply(setting);
        follow(setting);
    }
}

void connectFieldOf(const Setting& setting) {
    FrmOptions& o = options();
    if (const auto* const bytes = std::get_if<BytesSetting>(&setting.kind)) {
        connectNumericField(o.*bytes->field, o.*bytes->remembered, bytes->standard);
    } else if (const auto* const number = std::get_if<NumberSetting>(&setting.kind)) {
        connectNumericField(o.*number->field, o.*number->remembered, number->standard);
    }
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
        if (position >= 0 && position < transferUnitCount) {
            Unit = static_cast<TransferUnit>(position);
        }
    });
}

void cmdResetValues_Click() {
    guarded("cmdResetValues_Click", [] { ResetTransfersRequest(); });
}

void cmdOK_Click() {
    guarded("cmdOK_Click", [] {
        try {
            applyAll();
        } catch (...) {
            KeepJournal(KeepWhen::AtOnce); // what was applied before the error stands
            throw;
        }
        KeepJournal(KeepWhen::AtOnce);
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
    for (const Setting& setting : settings()) {
        connectFieldOf(setting);
    }
}

} // namespace tarvik
