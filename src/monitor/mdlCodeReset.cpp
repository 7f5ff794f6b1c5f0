#include "monitor/mdlCodeReset.h"

#include "monitor/mdlDateCalc.h"
#include "ports/Clock.h"
#include "ports/Platform.h"
#include "settings/mdlSettingsBackup.h"
#include "startup/mdlConst.h"
#include "startup/mdlTools.h"
#include "startup/mdlVar.h"
#include "ui/mdlGUI.h"

namespace tarvik {

namespace {

bool userResetsWithoutBackup() {
    return MsgBox(std::string("The criteria to reset the transfer records has been reached.") + CR +
                      "However - An error occured while trying to create the backup-file." + CR +
                      "Do you want to reset the transfers recorded anyway?",
                  MsgBoxButtons::YesNo, MsgBoxIcon::Question) == MsgBoxAnswer::Yes;
}

} // namespace

void CheckReset() {
    guarded("CheckReset", [] {
        State& s = state();
        if (s.TransferResetEnable == 0) {
            return;
        }
        const Date today = platform().clock.currentDate();
        if (today <= DateCalc(s.TransferReset, s.TransferResetLast, false)) {
            return;
        }
        // Without a backup and without the user's word the question comes again with the next tick:
        // the reset is not lost.
        if (s.TransferResetBackup != 0 && !BackupINIFile() && !userResetsWithoutBackup()) {
            return;
        }
        ResetTransfers(true);
        s.TransferResetLast = today;
    });
}

void ResetTransfersRequest() {
    guarded("ResetTransfersRequest", [] {
        if (MsgBox("Are you really sure you want to reset the (overall) values?",
                   MsgBoxButtons::YesNo, MsgBoxIcon::Question) == MsgBoxAnswer::Yes) {
            ResetTransfers(true);
            // Without monitoring no tick would show it.
            UpdateValuesInGUI(true, true, false);
        }
    });
}

} // namespace tarvik
