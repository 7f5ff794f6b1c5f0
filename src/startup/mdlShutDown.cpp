#include "startup/mdlShutDown.h"

#include "settings/mdlSettings.h"
#include "settings/mdlSettingsLog.h"
#include "startup/mdlSingleInstance.h"
#include "startup/mdlTools.h"
#include "ui/Forms.h"
#include "ui/mdlSysTray.h"

namespace tarvik {

void ShutDown() {
    guarded("ShutDown", [] {
        Forms& f = forms();
        f.frmMain.timUpdateStats.setEnabled(false);
        if (!SaveState()) {
            MsgBox("Warning: State could not be saved.", MsgBoxButtons::OkOnly,
                   MsgBoxIcon::Exclamation);
        }
        if (!SetLocked(false)) {
            MsgBox("Warning: Unable to unset \"IsLocked\"-flag in INI-file!", MsgBoxButtons::OkOnly,
                   MsgBoxIcon::Exclamation);
        }
        f.frmWarning.unload();
        f.frmStatistics.unload();
        f.frmOptions.unload();
        f.frmHistory.unload();
        RemoveFromSysTray();
        ReleaseApp();
    });
}

} // namespace tarvik
