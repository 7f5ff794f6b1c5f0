#include "startup/mdlStartUp.h"

#include "connection/mdlCode.h"
#include "forms/Forms.h"
#include "monitor/mdlCodeToggle.h"
#include "monitor/mdlPlanFigures.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "settings/Setting.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsControls.h"
#include "settings/mdlSettingsLedger.h"
#include "settings/mdlSettingsLoad.h"
#include "settings/mdlSettingsRestore.h"
#include "startup/mdlArguments.h"
#include "startup/mdlSingleInstance.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlTransfers.h"
#include "state/mdlVar.h"
#include "ui/mdlGUI.h"
#include "ui/mdlGUILists.h"
#include "ui/mdlGUIWindows.h"
#include "ui/mdlSysTray.h"

namespace tarvik {

namespace {

bool userWantsAnotherInstance() {
    return MsgBox(std::string("Warning: Another instance of Velmars Tarvik seems to be running.") +
                      CR + "Are you sure that you want to start another instance?" + CR +
                      "(This could cause the protocol file to become corrupt!)",
                  MsgBoxButtons::YesNo, MsgBoxIcon::Question) == MsgBoxAnswer::Yes;
}

void loadForms() {
    Forms& f = forms();
    f.frmMain.load();
    f.frmHistory.load();
    f.frmOptions.load();
    f.frmStatistics.load();
    f.frmWarning.load();
}

void startRunning() {
    FrmMain& main = forms().frmMain;
    main.setVisible(true);
    main.bringToFront();
    if (state().StartUpRunMonitoring != 0 || state().ArgRun) {
        ToggleMonitoringActive(true);
    }
    if (state().StartUpMinimise != 0 || state().ArgMinimise) {
        ToggleFormVisibility(main, false);
    }
}

bool userRunsAnyway(bool enumerationFailed) {
    std::string text = std::string("Error: The following errors occured during initialisation:") +
                       CR + "- Obtaining available connections failed." + CR +
                       "  (No RAS connections seem to be setup on this system.)";
    if (enumerationFailed) {
        text += std::string(CR) + "- Enumerating RAS connections failed." + CR +
                "  (OS may not support function needed to operate.)";
    }
    text += std::string(CR) + CR + "A lot of functionality will not work therefore." + CR +
            "The program maybe in an inoperatable state." + CR + CR +
            "Press OK to shutdown the application or Cancel to run anyway.";
    return MsgBox(text, MsgBoxButtons::OkCancel, MsgBoxIcon::Critical) == MsgBoxAnswer::Cancel;
}

void writeDefaults() {
    State& s = state();
    s.RasConnections.clear();
    s.HostName.clear();
    s.IPAddress.clear();
    s.TickerBase = 0;
    s.LimitWarningArmed = true;
    setDefaults(s, platform().locale.data());
    s.MonitoringActive = false;
    s.ConnectionActive = false;
    s.FirstOnlineUpdate = true;
    s.DialInStarted = false;
}

} // namespace

void Main() {
    guarded("Main", [] {
        state().OnlyInstance = RegisterApp();
        const bool locked = GetLocked();
        if ((!state().OnlyInstance || locked) && !userWantsAnotherInstance()) {
            return;
        }
        if (!SetLocked(true)) {
            MsgBox("Warning: Unable to set \"IsLocked\"-flag in INI-file!", MsgBoxButtons::OkOnly,
                   MsgBoxIcon::Exclamation);
        }
        loadForms();
        InitArgs();
        OperateArgs();
        if (InitApplication()) {
            startRunning();
        } else {
            forms().frmMain.unload();
        }
    });
}

bool InitApplication() {
    return guarded("InitApplication", false, [](bool& result) {
        if (state().AppInitialised) {
            return;
        }
        const bool connectionsFailed = !PreInitGUI();
        InitApplicationStatus();
        InitGUI();
        AddToSysTray(TrayState::NotMonitoring, TrayState::NotMonitoring);
        TellOfJournal();
        TellOfLedger();
        ShowPlans();
        std::uint32_t count = 0;
        const bool enumerationFailed = InitRas(0, count) != 0;
        if (connectionsFailed && !userRunsAnyway(enumerationFailed)) {
            return;
        }
        state().AppInitialised = true;
        result = true;
    });
}

void InitApplicationStatus() {
    guarded("InitApplicationStatus", [] {
        writeDefaults();
        ResetTransfers(true);
        const bool loaded = LoadState();
        // Before the box: the user's session may end at it, and what is saved then is what stands
        // here.
        RestoreFromJournal();
        TakeLedger();
        if (loaded) {
            UpdateGUI();
        } else {
            MsgBox(std::string("Warning: Old settings could not be loaded.") + CR +
                       "Assuming first run.",
                   MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation);
        }
    });
}

} // namespace tarvik
