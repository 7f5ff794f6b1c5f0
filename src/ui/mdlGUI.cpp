#include "ui/mdlGUI.h"

#include "forms/Forms.h"
#include "forms/StatusLamp.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"
#include "ui/mdlGUIFigures.h"
#include "ui/mdlInternetState.h"
#include "ui/mdlSysTray.h"

namespace tarvik {

namespace {

void showOnline() {
    Forms& f = forms();
    UpdateValuesInGUI(true, true, false);
    f.frmMain.lblActiveConnection.setForeColour(strikingTextColour);
    f.frmSysTray.mnuPopUp.setEntryEnabled(FrmSysTray::connect, false);
    if (state().MonitoringActive) {
        f.frmSysTray.mnuPopUp.setEntryEnabled(FrmSysTray::disconnect, true);
        ToggleSysTray(TrayState::ActiveConnection, TrayState::ActiveConnection);
    }
}

void showOffline() {
    Forms& f = forms();
    UpdateValuesInGUI(true, true, true);
    f.frmMain.lblActiveConnection.setForeColour(usualTextColour);
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
