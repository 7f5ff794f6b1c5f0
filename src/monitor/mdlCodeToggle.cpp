#include "monitor/mdlCodeToggle.h"

#include "forms/Forms.h"
#include "settings/mdlSettingsJournal.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"
#include "ui/mdlGUI.h"
#include "ui/mdlSysTray.h"

namespace tarvik {

namespace {

void switchOn() {
    Forms& f = forms();
    f.frmMain.lblMonitoring.setCaption("Monitoring: active");
    f.frmMain.lblMonitoring.setForeColour(usualTextColour);
    f.frmMain.cmdMonitor.setCaption("Stop Monitoring");
    f.frmSysTray.mnuPopUp.setEntryCaption(FrmSysTray::monitoring, "Stop Monitoring");
    f.frmMain.timUpdateStats.setEnabled(true);
    state().MonitoringActive = true;
    state().ErrorsOfTicks.forget();
    ShowStatus();
}

bool userStopsAnyway() {
    return MsgBox(std::string("Warning: An active connection has been detected.") + CR +
                      "If monitoring is stopped the transfer of this connection" + CR +
                      "will no longer be recorded." + CR + "Press OK to stop monitoring now.",
                  MsgBoxButtons::OkCancel, MsgBoxIcon::Exclamation) == MsgBoxAnswer::Ok;
}

void switchOff() {
    Forms& f = forms();
    f.frmMain.timUpdateStats.setEnabled(false);
    f.frmMain.lblMonitoring.setCaption("Monitoring: inactive");
    f.frmMain.lblMonitoring.setForeColour(strikingTextColour);
    f.frmMain.cmdMonitor.setCaption("Start Monitoring");
    f.frmSysTray.mnuPopUp.setEntryCaption(FrmSysTray::monitoring, "Start Monitoring");
    f.frmSysTray.mnuPopUp.setEntryEnabled(FrmSysTray::connect, false);
    f.frmSysTray.mnuPopUp.setEntryEnabled(FrmSysTray::disconnect, false);
    ToggleSysTray(TrayState::NotMonitoring, TrayState::NotMonitoring);
    state().MonitoringActive = false;
    state().ConnectionActive = false;
    ShowStatus();
    // No tick will do it.
    KeepJournal(KeepWhen::AtOnce);
}

} // namespace

void ToggleMonitoringActive(bool Activate) {
    guarded("ToggleMonitoringActive", [&] {
        if (Activate) {
            switchOn();
        } else if (!state().ConnectionActive || userStopsAnyway()) {
            switchOff();
        }
    });
}

} // namespace tarvik
