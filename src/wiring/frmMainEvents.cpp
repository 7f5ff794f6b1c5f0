#include "wiring/frmMainEvents.h"

#include "forms/Forms.h"
#include "monitor/mdlCodeDial.h"
#include "monitor/mdlCodeMonitor.h"
#include "monitor/mdlCodeToggle.h"
#include "settings/mdlSettingsControls.h"
#include "settings/mdlSettingsJournal.h"
#include "settings/mdlSettingsLedger.h"
#include "startup/mdlShutDown.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"
#include "ui/mdlGUILists.h"
#include "ui/mdlGUIWindows.h"

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
            KeepJournal(KeepWhen::Due); // what it has to bring back comes before the user's wishes
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

void Form_Pause() {
    guarded("Form_Pause", [] {
        KeepJournal(KeepWhen::AtOnce);
        KeepLedger(LedgerOccasion::MachineSleeps);
    });
}

void connectMainEvents() {
    FrmMain& main = forms().frmMain;
    main.cmdMonitor.Click.connect(cmdMonitor_Click);
    main.cmdConnect.Click.connect(cmdConnect_Click);
    main.cmdDisconnect.Click.connect(cmdDisconnect_Click);
    main.cboConnections.DropDown.connect(cboConnections_DropDown);
    main.cmdHistory.Click.connect(cmdHistory_Click);
    main.cmdStatistics.Click.connect(cmdStatistics_Click);
    main.cmdOptions.Click.connect(cmdOptions_Click);
    main.cmdQuit.Click.connect(cmdQuit_Click);
    main.timUpdateStats.Tick.connect(timUpdateStats_Timer);
    main.QueryUnload.connect(Form_QueryUnload);
    main.Unload.connect(Form_Unload);
    main.Pause.connect(Form_Pause);
}

} // namespace tarvik
