#include "ui/mdlGUI.h"

#include "connection/mdlCode.h"
#include "forms/Forms.h"
#include "forms/StatusLamp.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlTransfers.h"
#include "types/Convert.h"
#include "types/Text.h"
#include "ui/mdlInternetState.h"
#include "ui/mdlSysTray.h"

#include <array>
#include <initializer_list>
#include <utility>

namespace tarvik {

namespace {

constexpr Colour black{0, 0, 0};
constexpr Colour darkRed{192, 0, 0};

/// Adds the entries to what the list holds and selects the first.
void addItems(ComboBox& combo, std::initializer_list<const char*> texts) {
    for (const char* text : texts) {
        combo.addItem(text);
    }
    combo.setListIndex(0);
}

std::string transferText(double bytes, bool current) {
    const TransferUnit unit = current ? state().UnitTransferCurrent : state().UnitTransferTotal;
    const int decimals = unit == TransferUnit::Bytes ? 0 : 2;
    return formatGrouped(FinaliseTransfer(bytes, current), decimals, platform().locale.data());
}

void showTotals() {
    const State& s = state();
    FrmMain& main = forms().frmMain;
    const Currency rcvd = s.BytesRcvdTotal + CountedRcvd();
    const Currency sent = s.BytesSentTotal + CountedSent();
    main.txtBytesRcvdTotal.setText(transferText(rcvd.toDouble(), false));
    main.txtBytesSentTotal.setText(transferText(sent.toDouble(), false));
    main.txtDurationTotal.setText(FinaliseTime(s.DurationTotal + CountedDuration()));
}

void showCurrent() {
    const State& s = state();
    FrmMain& main = forms().frmMain;
    // The counters are 32-bit numbers: a difference of theirs that does not fit is an error.
    const Currency rcvd = Currency(s.BytesRcvdCurrent - s.BytesRcvdOffset) + s.BytesRcvdBeyond -
                          s.BytesRcvdOffsetBeyond;
    const Currency sent = Currency(s.BytesSentCurrent - s.BytesSentOffset) + s.BytesSentBeyond -
                          s.BytesSentOffsetBeyond;
    const Currency duration =
        Currency(s.DurationCurrent - s.DurationOffset) + s.DurationBeyond - s.DurationOffsetBeyond;
    main.txtBytesRcvd.setText(transferText(rcvd.toDouble(), true));
    main.txtBytesSent.setText(transferText(sent.toDouble(), true));
    main.txtDurationCurrent.setText(FinaliseTime(duration));
}

void resetCurrent() {
    FrmMain& main = forms().frmMain;
    main.txtBytesRcvd.setText("0");
    main.txtBytesSent.setText("0");
    main.txtDurationCurrent.setText("00:00:00:000");
}

void showOnline() {
    Forms& f = forms();
    UpdateValuesInGUI(true, true, false);
    f.frmMain.lblActiveConnection.setForeColour(darkRed);
    f.frmSysTray.mnuPopUp.setEntryEnabled(FrmSysTray::connect, false);
    if (state().MonitoringActive) {
        f.frmSysTray.mnuPopUp.setEntryEnabled(FrmSysTray::disconnect, true);
        ToggleSysTray(TrayState::ActiveConnection, TrayState::ActiveConnection);
    }
}

void showOffline() {
    Forms& f = forms();
    UpdateValuesInGUI(true, true, true);
    f.frmMain.lblActiveConnection.setForeColour(black);
    f.frmMain.txtActiveConnection.setText("");
    f.frmSysTray.mnuPopUp.setEntryEnabled(FrmSysTray::disconnect, false);
    if (state().MonitoringActive) {
        f.frmSysTray.mnuPopUp.setEntryEnabled(FrmSysTray::connect, true);
        ToggleSysTray(TrayState::NoConnection, TrayState::NoConnection);
    }
}

/// Once in a run: whoever hides the window looks for it in the notification area.
void tellOfMinimising() {
    if (std::exchange(forms().frmSysTray.minimisingTold, true)) {
        return;
    }
    const std::string text = std::string("This desktop has no notification area.") + CR +
                             "The main window is minimised instead of being hidden.";
    if (!ShowBalloonTip(text, "Velmars Tarvik", informationIcon, balloonMilliseconds)) {
        MsgBox(text, MsgBoxButtons::OkOnly, MsgBoxIcon::Information);
    }
}

LampState lampState() {
    if (state().ConnectionActive) {
        return LampState::Online;
    }
    return state().MonitoringActive ? LampState::Waiting : LampState::NotMonitoring;
}

} // namespace

void RefreshEntries() {
    guarded("RefreshEntries", [] {
        std::vector<PhoneBookEntry> entries;
        RasGetAllEntries(entries, "");
        std::vector<std::string> names;
        names.reserve(entries.size());
        for (const PhoneBookEntry& entry : entries) {
            names.push_back(entry.name);
        }
        ComboBox& connections = forms().frmMain.cboConnections;
        if (connections.items() == names) {
            return;
        }
        const std::string chosen = connections.text();
        connections.clear();
        for (const std::string& name : names) {
            connections.addItem(name);
        }
        const auto place = std::find(names.begin(), names.end(), chosen);
        if (place != names.end()) {
            connections.setListIndex(static_cast<int>(place - names.begin()));
        }
    });
}

bool PreInitGUI() {
    return guarded("PreInitGUI", false, [](bool& result) {
        PreInitOptions();
        PreInitHistory();
        std::vector<PhoneBookEntry> entries;
        result = RasGetAllEntries(entries, "");
        ComboBox& connections = forms().frmMain.cboConnections;
        connections.clear();
        for (const PhoneBookEntry& entry : entries) {
            connections.addItem(entry.name);
        }
    });
}

void PreInitOptions() {
    guarded("PreInitOptions", [] {
        FrmOptions& options = forms().frmOptions;
        FillTransferUnitComboBox(options.cboUnitTransferCurrent);
        FillTransferUnitComboBox(options.cboUnitTransferTotal);
        addItems(options.cboTransferReset,
                 {"middle of day", "middle of week", "middle of month", "middle of 1/4 year",
                  "middle of 1/2 year", "middle of year", "end of day", "end of week",
                  "end of month", "end of 1/4 year", "end of 1/2 year", "end of year"});
    });
}

void PreInitHistory() {
    guarded("PreInitHistory", [] {
        FrmHistory& history = forms().frmHistory;
        addItems(history.cboChartType,
                 {"plot as line", "plot as bars", "plot as area", "plot as step"});
        addItems(history.cboDataType, {"total transfer", "differential transfer", "percentual"});
        FillTransferUnitComboBox(history.cboTransferUnit);
        addItems(history.cboDataToShow,
                 {"Rcvd and Sent", "Received only", "Sent only", "Total (rcvd+sent)", "Duration"});
    });
}

void InitGUI() {
    guarded("InitGUI", [] {
        InitControls();
        Timer& timer = forms().frmMain.timUpdateStats;
        timer.setInterval(state().RefreshInterval.value());
        timer.setEnabled(state().MonitoringActive);
    });
}

void InitControls() {
    guarded("InitControls", [] {
        const State& s = state();
        FrmOptions& options = forms().frmOptions;
        SetComboBox(options.cboUnitTransferCurrent, static_cast<int>(s.UnitTransferCurrent));
        SetComboBox(options.cboUnitTransferTotal, static_cast<int>(s.UnitTransferTotal));
        options.chkStartUpMinimise.setValue(s.StartUpMinimise);
        options.chkStartupRunMonitoring.setValue(s.StartUpRunMonitoring);
        options.chkTransferLimit.setValue(s.TransferLimit);
        options.txtTransferLimit.setText(toText(s.TransferLimitValue, platform().locale.data()));
        options.chkDurationLimit.setValue(s.DurationLimit);
        options.txtDurationLimitHr.setText(toText(s.DurationLimitHr));
        options.txtDurationLimitMin.setText(toText(s.DurationLimitMin));
        options.chkTransferLimitWarning.setValue(s.TransferLimitWarning);
        options.chkTransferLimitHangUp.setValue(s.TransferLimitHangUp);
        options.chkTransferResetEnable.setValue(s.TransferResetEnable);
        SetComboBox(options.cboTransferReset, static_cast<int>(s.TransferReset));
        options.chkTransferResetBackup.setValue(s.TransferResetBackup);
        options.txtRefreshInterval.setText(toText(s.RefreshInterval));
        options.chkLogIPAddress.setValue(s.LogIPAddress);
        options.chkTransferTicker.setValue(s.TransferTicker);
        options.txtTransferTicker.setText(toText(s.TransferTickerValue));
    });
}

void UpdateGUI() {
    guarded("UpdateGUI", [] {
        if (state().ConnectionActive) {
            showOnline();
        } else {
            showOffline();
        }
        ShowStatus();
        if (forms().frmStatistics.chkInternetState.ticked()) {
            SetConnectedState();
        }
    });
}

void ShowStatus() {
    guarded("ShowStatus", [] {
        Picture& lamp = forms().frmMain.picStatus;
        lamp.setDrawing(statusLamp(lampState()));
        lamp.setAccessibleName(statusLampName(lampState()));
    });
}

void UpdateValuesInGUI(bool ShowTotal, bool ShowCurrent, bool ResetCurrent) {
    guarded("UpdateValuesInGUI", [&] {
        if (ShowTotal) {
            showTotals();
        }
        if (ResetCurrent) {
            resetCurrent();
        } else if (ShowCurrent) {
            showCurrent();
        }
    });
}

double FinaliseTransfer(double Value, bool Current) {
    return guarded("FinaliseTransfer", 0.0, [&](double& result) {
        const TransferUnit unit = Current ? state().UnitTransferCurrent : state().UnitTransferTotal;
        result = Value;
        for (int step = 0; step < static_cast<int>(unit); ++step) {
            result /= 1024.0;
        }
    });
}

std::string FinaliseTime(Currency Duration) {
    return guarded("FinaliseTime", std::string(), [&](std::string& result) {
        std::int64_t rest = Duration.integralPart();
        const std::string milliseconds = zeroPadded(rest % 1000, 3);
        rest /= 1000;
        const std::string seconds = zeroPadded(rest % 60, 2);
        rest /= 60;
        const std::string minutes = zeroPadded(rest % 60, 2);
        rest /= 60;
        result = zeroPadded(rest, 2) + ":" + minutes + ":" + seconds + ":" + milliseconds;
    });
}

void FillTransferUnitComboBox(ComboBox& Combo) {
    guarded("FillTransferUnitComboBox", [&] {
        Combo.clear();
        addItems(Combo, {"Bytes", "Kilo-Bytes", "Mega-Bytes", "Giga-Bytes"});
    });
}

void FillDurationUnitComboBox(ComboBox& Combo) {
    guarded("FillDurationUnitComboBox", [&] {
        Combo.clear();
        addItems(Combo, {"Milli-Seconds", "Seconds", "Minutes", "Hours"});
    });
}

int ElementIsInComboBox(const ComboBox& Combo, const std::string& Element) {
    return guarded("ElementIsInComboBox", ComboBox::none, [&](int& result) {
        constexpr int longestSearched = 32'000;
        if (Combo.listCount() > longestSearched) {
            return;
        }
        for (int position = 0; position < Combo.listCount(); ++position) {
            const std::string& text = Combo.items()[static_cast<std::size_t>(position)];
            if (equalWithoutCase(trimSpaces(text), trimSpaces(Element))) {
                result = position;
            }
        }
    });
}

void SetComboBox(ComboBox& Combo, Long Index) {
    guarded("SetComboBox", [&] {
        if (Index.value() < Combo.listCount()) {
            Combo.setListIndex(Index.value());
        }
    });
}

void SetLabelUnitTransfer(Label& Caption, const std::string& Prefix, TransferUnit Unit) {
    guarded("SetLabelUnitTransfer", [&] {
        static constexpr std::array<const char*, 4> units{
            "(bytes):", "(KBytes):", "(MBytes):", "(GBytes):"};
        const auto position = static_cast<std::size_t>(Unit);
        if (position < units.size()) {
            Caption.setCaption(Prefix + units[position]);
        }
    });
}

void ToggleFormVisibility(Form& Window, bool Visible) {
    guarded("ToggleFormVisibility", [&] {
        if (!Visible && &Window == &forms().frmMain && !IsInSysTray()) {
            Window.setMinimised(true);
            tellOfMinimising();
            return;
        }
        Window.setVisible(Visible);
        if (Window.visible()) {
            Window.bringToFront();
        }
    });
}

} // namespace tarvik
