#include "ui/mdlGUI.h"

#include "forms/Forms.h"
#include "forms/StatusLamp.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"
#include "types/Convert.h"
#include "ui/mdlGUIFigures.h"
#include "ui/mdlGUILists.h"
#include "ui/mdlInternetState.h"
#include "ui/mdlSysTray.h"

namespace tarvik {

namespace {

constexpr Colour black{0, 0, 0};
constexpr Colour darkRed{192, 0, 0};

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

LampState lampState() {
    if (state().ConnectionActive) {
        return LampState::Online;
    }
    return state().MonitoringActive ? LampState::Waiting : LampState::NotMonitoring;
}

} // namespace

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

} // namespace tarvik
