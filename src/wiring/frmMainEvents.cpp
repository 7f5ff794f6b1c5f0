#include "wiring/frmMainEvents.h"

#include "forms/Forms.h"
#include "monitor/mdlCodeDial.h"
#include "monitor/mdlCodeMonitor.h"
#include "monitor/mdlCodeToggle.h"
#include "startup/mdlShutDown.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"
#include "ui/mdlGUI.h"
#include "ui/mdlSysTray.h"
#include "wiring/frmHistoryEvents.h"
#include "wiring/frmOptionsEvents.h"
#include "wiring/frmStatisticsEvents.h"
#include "wiring/frmSysTrayEvents.h"
#include "wiring/frmWarningEvents.h"

namespace tarvik {

void cmdMonitor_Click() {
    guarded("cmdMonitor_Click", [] { ToggleMonitoringActive(!state().MonitoringActive); });
}

void cmdConnect_Click() {
    guarded("cmdHistory_Click", [] {
        const ComboBox& connections = forms().frmMain.cboConnections;
        if (connections.listCount() == 0) {
            MsgBox("Error: No connections are setup to connect to.", MsgBoxButtons::OkOnly,
                   MsgBoxIcon::Exclamation);
        } else if (connections.listIndex() < 0) {
            MsgBox("Error: No connection chosen to connect to.", MsgBoxButtons::OkOnly,
                   MsgBoxIcon::Exclamation);
        } else {
            DialIn(connections.text(), "");
        }
    });
}

void cmdDisconnect_Click() {
    guarded("cmdHistory_Click", [] { HangUp(); });
}

void cboConnections_DropDown() {
    guarded("cboConnections_DropDown", [] { RefreshEntries(); });
}

void cmdQuit_Click() {
    guarded("cmdQuit_Click", [] { forms().frmMain.unload(); });
}

void cmdOptions_Click() {
    guarded("cmdOptions_Click", [] {
        FrmOptions& options = forms().frmOptions;
        if (!options.visible()) {
            InitControls();
        }
        ToggleFormVisibility(options, true);
    });
}

void cmdHistory_Click() {
    guarded("cmdHistory_Click", [] { ToggleFormVisibility(forms().frmHistory, true); });
}

void cmdStatistics_Click() {
    guarded("cmdStatistics_Click", [] { ToggleFormVisibility(forms().frmStatistics, true); });
}

void timUpdateStats_Timer() {
    const TickOfReports tick(state().ErrorsOfTicks);
    guarded("timUpdateStats_Timer", [] { UpdateStats(); });
}

void Form_QueryUnload(bool& Cancel, UnloadMode Mode) {
    guarded("Form_QueryUnload", [&] {
        FrmMain& main = forms().frmMain;
        if (Mode == UnloadMode::FormControlMenu) {
            ToggleFormVisibility(main, !main.visible());
            Cancel = true;
        } else if (Mode == UnloadMode::FormCode && state().MonitoringActive) {
            MsgBox(std::string("Warning: Monitoring is still active.") + CR +
                       "Please de-activate monitoring before quit.",
                   MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation);
            ToggleFormVisibility(main, true);
            Cancel = true;
        }
    });
}

void Form_Unload() {
    guarded("Form_Unload", [] { ShutDown(); });
}

void connectEvents() {
    Forms& f = forms();
    f.frmMain.cmdMonitor.Click.connect(cmdMonitor_Click);
    f.frmMain.cmdConnect.Click.connect(cmdConnect_Click);
    f.frmMain.cmdDisconnect.Click.connect(cmdDisconnect_Click);
    f.frmMain.cboConnections.DropDown.connect(cboConnections_DropDown);
    f.frmMain.cmdHistory.Click.connect(cmdHistory_Click);
    f.frmMain.cmdStatistics.Click.connect(cmdStatistics_Click);
    f.frmMain.cmdOptions.Click.connect(cmdOptions_Click);
    f.frmMain.cmdQuit.Click.connect(cmdQuit_Click);
    f.frmMain.timUpdateStats.Tick.connect(timUpdateStats_Timer);
    f.frmMain.QueryUnload.connect(Form_QueryUnload);
    f.frmMain.Unload.connect(Form_Unload);
    f.frmSysTray.Initialize.connect(frmSysTray_Form_Initialize);
    f.frmSysTray.picSysTrayHook.MouseMove.connect(picSysTrayHook_MouseMove);
    f.frmSysTray.mnuPopUp.Click.connect(mnuPopUpEntry_Click);
    connectHistoryEvents();
    connectOptionsEvents();
    connectStatisticsEvents();
    connectWarningEvents();
}

} // namespace tarvik
