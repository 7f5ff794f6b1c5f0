#include "settings/mdlSettingsJournal.h"
#include "startup/JournalRestartTest.h"

#include <gmock/gmock.h>

namespace tarvik {
namespace {

using testing::HasSubstr;

/// What goes wrong around the journal: backups, saves, files that are out of reach.
class JournalTroubleTest : public JournalRestartTest {
protected:
    static constexpr std::uint32_t alreadyExists = 183;
    static constexpr const char* aside = "C:\\Prog\\Tarvik.2026-11-16.journal";

    /// 5,000 bytes were counted; a reset by the calendar is due, and its backup fails after the
    /// state was saved.
    void failBackup(MsgBoxAnswer answer) {
        count(5000);
        state().TransferResetEnable = 1;
        state().TransferReset = enDateCalc::EndOfMonth;
        state().TransferResetBackup = 1;
        machine.files.setKind("C:\\Prog\\Tarvik.2026-11-16.ini", FileKind::Other);
        expectError("75 (Path/File access error)", "BackupINIFile");
        expectBox("The criteria to reset the transfer records has been reached.\rHowever - An "
                  "error occured while trying to create the backup-file.\rDo you want to reset "
                  "the transfers recorded anyway?",
                  MsgBoxButtons::YesNo, MsgBoxIcon::Question, answer);
        tickAfter(1);
    }
};

TEST_F(JournalTroubleTest, AfterABackupThatFailedWhatIsCountedIsStillKept) {
    failBackup(MsgBoxAnswer::No);
    state().TransferResetEnable = 0; // else the question comes with each tick
    tickAfter(10, 100);
    ASSERT_EQ(received(), 5100);

    restartAfterKill();

    EXPECT_EQ(received(), 5100);
    EXPECT_FALSE(machine.files.exists(aside));
}

TEST_F(JournalTroubleTest, AResetAfterABackupThatFailedIsNotUndoneByAKill) {
    failBackup(MsgBoxAnswer::Yes);
    ASSERT_EQ(received(), 0);
    const Date reset = state().TransferResetLast;

    machine.files.cutPower();
    restartAfterKill();

    EXPECT_EQ(received(), 0);
    EXPECT_EQ(state().TransferResetLast, reset);
}

TEST_F(JournalTroubleTest, AResetThatWasDeclinedIsAnnouncedNoMore) {
    count(5000);
    state().TransferResetEnable = 1;
    state().TransferReset = enDateCalc::EndOfMonth;
    state().TransferResetBackup = 1;
    machine.files.killFailure = ErrorNumber::PermissionDenied;
    expectError("70 (Permission denied)", "BackupINIFile");
    expectBox("The criteria to reset the transfer records has been reached.\rHowever - An error "
              "occured while trying to create the backup-file.\rDo you want to reset the transfers "
              "recorded anyway?",
              MsgBoxButtons::YesNo, MsgBoxIcon::Question, MsgBoxAnswer::No);
    tickAfter(1);
    machine.files.cutPower();
    newWorld();

    Journal next;

    EXPECT_FALSE(next.take(path, iniPath).entry.resetIfGone.has_value());
}

TEST_F(JournalTroubleTest, AnEndWhileTheBoxOfAFirstRunIsOpenLosesNothing) {
    expectFirstRunBoxes();
    start("/r");
    ridge = machine.connections.connect("Ridge");
    tick();
    tickAfter(10, 5000);
    machine.connections.disconnect(ridge);
    newWorld();
    expectWarning("Warning: Unable to set \"IsLocked\"-flag in INI-file!");
    expectBox("Warning: Old settings could not be loaded.\rAssuming first run.",
              MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation, MsgBoxAnswer::Ok,
              [this] { endSession(); });
    start();
    EXPECT_THAT(ini(), HasSubstr("Rcvd=5000"));

    newWorld();
    start();

    EXPECT_EQ(received(), 5000);
    EXPECT_FALSE(machine.files.exists(aside));
}

TEST_F(JournalTroubleTest, SettingsThatWereAppliedBeforeAnErrorAreThereAgain) {
    setIni("[Settings]\r\n");
    start();
    frmMain().cmdOptions.press();
    frmOptions().cboUnitTransferTotal.setListIndex(2);
    frmOptions().txtTransferLimit.setText("many");
    expectError("13 (Type mismatch)", "cmdOK_Click");
    frmOptions().cmdOK.press();
    ASSERT_EQ(state().UnitTransferTotal, TransferUnit::MegaBytes);

    machine.files.cutPower();
    restartAfterKill();

    EXPECT_EQ(state().UnitTransferTotal, TransferUnit::MegaBytes);
}

} // namespace
} // namespace tarvik
