#include "settings/mdlSettings.h"

#include "forms/Forms.h"
#include "ports/Clock.h"
#include "ports/Files.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "ports/PrivateProfile.h"
#include "settings/mdlSettingsBackup.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlTransfers.h"
#include "state/mdlVar.h"
#include "types/Convert.h"
#include "ui/mdlGUIFigures.h"
#include "ui/mdlGUILists.h"

namespace tarvik {

namespace {

std::uint8_t byteSetting(const char* key) {
    return GetLongFromINI(SettingsSection, key).toByte();
}

Long longSetting(const char* key) {
    return GetLongFromINI(SettingsSection, key).toLong();
}

/// A setting outside its range is replaced, without a word.
Long longSettingWithin(const char* key, Long least, Long most, Long otherwise) {
    const Long value = longSetting(key);
    return value < least || value > most ? otherwise : value;
}

void loadFlag(const char* key, std::uint8_t& flag, CheckBox& box) {
    flag = byteSetting(key);
    box.setValue(flag);
}

void loadUnit(const char* key, TransferUnit& unit, ComboBox& combo, Label& label,
              const char* prefix) {
    unit = static_cast<TransferUnit>(byteSetting(key));
    SetComboBox(combo, static_cast<std::uint8_t>(unit));
    SetLabelUnitTransfer(label, prefix, unit);
}

void loadTotals() {
    const std::string lastState = GetStringFromINI(SettingsSection, "LastState");
    if (lastState.empty()) {
        ResetTransfers(true);
        return;
    }
    ResetTransfers(false);
    State& s = state();
    s.BytesSentTotal = GetCurrencyFromINI(lastState, "Sent");
    s.BytesRcvdTotal = GetCurrencyFromINI(lastState, "Rcvd");
    s.DurationTotal = GetCurrencyFromINI(lastState, "Duration");
}

void loadUnitsAndStartUp() {
    State& s = state();
    FrmOptions& options = forms().frmOptions;
    FrmMain& main = forms().frmMain;
    loadUnit("UnitTransferCurrent", s.UnitTransferCurrent, options.cboUnitTransferCurrent,
             main.lblTransferCurrent, "current ");
    loadUnit("UnitTransferTotal", s.UnitTransferTotal, options.cboUnitTransferTotal,
             main.lblTransferTotal, "total ");
    loadFlag("StartUpRunMonitoring", s.StartUpRunMonitoring, options.chkStartupRunMonitoring);
    loadFlag("StartUpMinimise", s.StartUpMinimise, options.chkStartUpMinimise);
}

void loadLimits() {
    State& s = state();
    FrmOptions& options = forms().frmOptions;
    loadFlag("TransferLimit", s.TransferLimit, options.chkTransferLimit);
    s.TransferLimitValue = GetCurrencyFromINI(SettingsSection, "TransferLimitValue");
    options.txtTransferLimit.setText(toText(s.TransferLimitValue, platform().locale.data()));
    loadFlag("DurationLimit", s.DurationLimit, options.chkDurationLimit);
    s.DurationLimitHr = longSetting("DurationLimitHr");
    options.txtDurationLimitHr.setText(toText(s.DurationLimitHr));
    s.DurationLimitMin = longSetting("DurationLimitMin");
    options.txtDurationLimitMin.setText(toText(s.DurationLimitMin));
    loadFlag("TransferLimitWarning", s.TransferLimitWarning, options.chkTransferLimitWarning);
    loadFlag("TransferLimitHangUp", s.TransferLimitHangUp, options.chkTransferLimitHangUp);
}

/// A date of the last reset that another language may have written: it is none here, or lies after
/// today, or would be written differently here. No text is no date of anybody's.
bool isDoubtful(const std::string& text, Date read) {
    const bool toCome = read.serial() >= platform().clock.currentDate().serial() + 1;
    return !text.empty() && (toCome || text != toText(read, platform().locale.data()));
}

void loadReset() {
    State& s = state();
    FrmOptions& options = forms().frmOptions;
    loadFlag("TransferResetEnable", s.TransferResetEnable, options.chkTransferResetEnable);
    s.TransferReset = static_cast<enDateCalc>(byteSetting("TransferReset"));
    SetComboBox(options.cboTransferReset, static_cast<std::uint8_t>(s.TransferReset));
    loadFlag("TransferResetBackup", s.TransferResetBackup, options.chkTransferResetBackup);
    s.TransferResetLast = Date(GetDateFromINI(SettingsSection, "TransferResetLast").toDouble());
    const std::string text = GetStringFromINI(SettingsSection, "TransferResetLast");
    s.FileOfDoubtfulReset = isDoubtful(text, s.TransferResetLast) ? s.IniFileName : "";
}

void loadTiming() {
    State& s = state();
    FrmOptions& options = forms().frmOptions;
    s.RefreshInterval = longSettingWithin("RefreshInterval", 100, 50000, 1000);
    options.txtRefreshInterval.setText(toText(s.RefreshInterval));
    loadFlag("LogIPAddress", s.LogIPAddress, options.chkLogIPAddress);
    loadFlag("TransferTicker", s.TransferTicker, options.chkTransferTicker);
    s.TransferTickerValue = longSettingWithin("TransferTickerValue", 1, 9999, 100);
    options.txtTransferTicker.setText(toText(s.TransferTickerValue));
}

} // namespace

bool LoadState() {
    const bool loaded = guarded("LoadState", false, [](bool& result) {
        SetIniFileName(false, false);
        // A file that one look finds and the other does not is there, and out of reach at times.
        const FileKind kind = platform().files.Dir(usualIniFile());
        const bool found = !state().IniFileName.empty();
        state().IniFileUnread = kind == FileKind::Other || (kind == FileKind::File && !found);
        if (!found) {
            return;
        }
        const ProfileReading reading(platform().profile, state().IniFileName);
        if (!reading.readable()) {
            state().IniFileUnread = true;
            return;
        }
        loadTotals();
        forms().frmOptions.load();
        loadUnitsAndStartUp();
        loadLimits();
        loadReset();
        loadTiming();
        result = true;
    });
    const State& s = state();
    if (!loaded && !s.IniFileName.empty() && !s.IniFileUnread) {
        // A value has ended it halfway, and the next save writes the defaults of all that was not
        // read.
        std::string copy;
        keepIniFile(s.IniFileName, copy);
    }
    return loaded;
}

} // namespace tarvik
