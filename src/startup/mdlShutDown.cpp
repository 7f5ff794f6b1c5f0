#include "startup/mdlShutDown.h"

#include "forms/Forms.h"
#include "monitor/mdlSessions.h"
#include "settings/mdlCarried.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsJournal.h"
#include "settings/mdlSettingsLedger.h"
#include "settings/mdlSettingsLog.h"
#include "startup/mdlSingleInstance.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"
#include "ui/mdlSysTray.h"

namespace tarvik {

namespace {

/// False until the defaults are written: the user's session may end at a message before that, and
/// saving a state of zeros would wipe the stored settings. The interval is 0 only then.
bool stateIsSet() {
    return state().RefreshInterval != Long(0);
}

} // namespace

void ShutDown() {
    guarded("ShutDown", [] {
        Forms& f = forms();
        f.frmMain.timUpdateStats.setEnabled(false);
        KeepOtherSessions();
        NoteCarried();
        KeepLedger(LedgerOccasion::ProgramEnds);
        // The save may be cut off: until it is done, this is what there is.
        KeepJournal(KeepWhen::AtOnce);
        const bool saved = stateIsSet() && SaveState();
        if (stateIsSet() && !saved) {
            MsgBox("Warning: State could not be saved.", MsgBoxButtons::OkOnly,
                   MsgBoxIcon::Exclamation);
        }
        if (!SetLocked(false)) {
            MsgBox("Warning: Unable to unset \"IsLocked\"-flag in INI-file!", MsgBoxButtons::OkOnly,
                   MsgBoxIcon::Exclamation);
        }
        EndJournal(saved);
        LeaveLedger();
        f.frmWarning.unload();
        f.frmStatistics.unload();
        f.frmPlanWarning.unload();
        f.frmPlan.unload();
        f.frmOptions.unload();
        f.frmHistory.unload();
        RemoveFromSysTray();
        ReleaseApp();
    });
}

} // namespace tarvik
