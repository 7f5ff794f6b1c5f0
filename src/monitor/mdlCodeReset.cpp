#include "monitor/mdlCodeReset.h"

#include "monitor/mdlDateCalc.h"
#include "ports/Clock.h"
#include "ports/Platform.h"
#include "settings/DatedName.h"
#include "settings/mdlSettingsBackup.h"
#include "settings/mdlSettingsJournal.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlTransfers.h"
#include "state/mdlVar.h"
#include "ui/mdlGUIFigures.h"
#include "ui/mdlSysTray.h"

#include <utility>

namespace tarvik {

namespace {

constexpr const char* mayBeMisread = "The date of the last reset may be misread";
constexpr const char* becauseOfLanguage = ": another language writes it differently. ";

bool userResetsWithoutBackup() {
    return MsgBox(std::string("The criteria to reset the transfer records has been reached.") + CR +
                      "However - An error occured while trying to create the backup-file." + CR +
                      "Do you want to reset the transfers recorded anyway?",
                  MsgBoxButtons::YesNo, MsgBoxIcon::Question) == MsgBoxAnswer::Yes;
}

/// Before a reset that may come from a date misread, the file is put aside as it is. False when
/// that cannot be done: the reset then waits for it.
bool fileIsKept() {
    State& s = state();
    if (s.FileOfDoubtfulReset.empty()) {
        return true;
    }
    std::string copy;
    if (!keepIniFile(s.FileOfDoubtfulReset, copy)) {
        if (!std::exchange(s.ResetWaitTold, true)) {
            TellSoon(std::string(mayBeMisread) +
                     ". The totals are not reset before a copy of the file can be made." + CR +
                     nameWithoutFolder(s.FileOfDoubtfulReset));
        }
        return false;
    }
    if (!copy.empty()) {
        TellSoon(std::string(mayBeMisread) + becauseOfLanguage +
                 "Before the reset of the totals the file was copied to " + CR +
                 nameWithoutFolder(copy));
    }
    return true;
}

/// The backup is the copy then.
void tellOfDoubt() {
    if (!state().FileOfDoubtfulReset.empty()) {
        TellSoon(std::string(mayBeMisread) + becauseOfLanguage +
                 "The file as it was before the reset of the totals is the backup of today.");
    }
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
        if (s.TransferResetBackup != 0) {
            const bool backedUp = BackupINIFile();
            WithdrawReset(backedUp);
            if (backedUp) {
                tellOfDoubt();
            } else if (!userResetsWithoutBackup()) {
                return;
            }
        } else if (!fileIsKept()) {
            return;
        }
        ResetTransfers(true);
        s.TransferResetLast = today;
        s.FileOfDoubtfulReset.clear();
        s.WasReset = true;
        OverruleJournal();
        KeepJournal(KeepWhen::AtOnce);
    });
}

void ResetTransfersRequest() {
    guarded("ResetTransfersRequest", [] {
        if (MsgBox("Are you really sure you want to reset the (overall) values?",
                   MsgBoxButtons::YesNo, MsgBoxIcon::Question) == MsgBoxAnswer::Yes) {
            ResetTransfers(true);
            state().SessionOver = true;
            OverruleJournal();
            KeepJournal(KeepWhen::AtOnce);
            // Without monitoring no tick would show it.
            UpdateValuesInGUI(true, true, false);
        }
    });
}

} // namespace tarvik
