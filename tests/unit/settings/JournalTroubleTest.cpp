#include "settings/JournalRestartTest.h"
#include "settings/mdlSettingsRestore.h"

#include <gmock/gmock.h>

namespace tarvik {
namespace {

using testing::HasSubstr;

/// What goes wrong around the journal: backups, saves, files that are out of reach.
class JournalTroubleTest : public JournalRestartTest {
protected:
    /// 5,000 bytes were counted; a reset by the calendar is due, and its backup fails after the
    /// state was saved.
    void failBackup(MsgBoxAnswer answer) {
        count(5000);
        makeResetDue(true);
        machine.files.setKind("C:\\Prog\\Tarvik.2026-11-16.ini", FileKind::Other);
        expectError("75 (Path/File access error)", "BackupINIFile");
        expectBackupQuestion(answer);
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

    restartAfterPowerCut();

    EXPECT_EQ(received(), 0);
    EXPECT_EQ(state().TransferResetLast, reset);
}

TEST_F(JournalTroubleTest, AResetThatWasDeclinedIsAnnouncedNoMore) {
    count(5000);
    makeResetDue(true);
    machine.files.killFailure = ErrorNumber::PermissionDenied;
    expectError("70 (Permission denied)", "BackupINIFile");
    expectBackupQuestion(MsgBoxAnswer::No);
    tickAfter(1);
    machine.files.cutPower();
    newWorld();

    Journal next;

    EXPECT_FALSE(next.take(path, iniPath).entry.resetIfGone.has_value());
}

TEST_F(JournalTroubleTest, AnEndWhileTheBoxOfAFirstRunIsOpenLosesNothing) {
    countInFirstRun(5000);
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

struct ClosedCase {
    const char* name;
    void (ScriptedFiles::*close)(const std::string& path);
};

class ClosedJournalTest : public JournalTroubleTest,
                          public testing::WithParamInterface<ClosedCase> {};

TEST_P(ClosedJournalTest, IsLeftAloneAndTold) {
    count(5000);
    newWorld();
    machine.connections.disconnect(ridge);
    const std::string before = machine.files.file(path);
    (machine.files.*GetParam().close)(path);

    expectInstanceQuestion();
    startAndCount(3);

    EXPECT_EQ(machine.files.file(path), before);
    ASSERT_EQ(notes().size(), 1U);
    EXPECT_THAT(notes()[0], HasSubstr("cannot be read and is left alone"));
}

INSTANTIATE_TEST_SUITE_P(All, ClosedJournalTest,
                         testing::Values(ClosedCase{"ForWriting", &ScriptedFiles::setReadOnly},
                                         ClosedCase{"ForReading", &ScriptedFiles::setUnreadable}),
                         [](const auto& given) { return std::string(given.param.name); });

TEST_F(JournalTroubleTest, SettingsThatWereAppliedBeforeAnErrorAreThereAgain) {
    setIni("[Settings]\r\n");
    start();
    frmMain().cmdOptions.press();
    frmOptions().cboUnitTransferTotal.setListIndex(2);
    frmOptions().txtTransferLimit.setText("many");
    expectError("13 (Type mismatch)", "cmdOK_Click");
    frmOptions().cmdOK.press();
    ASSERT_EQ(state().UnitTransferTotal, TransferUnit::MegaBytes);

    restartAfterPowerCut();

    EXPECT_EQ(state().UnitTransferTotal, TransferUnit::MegaBytes);
}

TEST_F(JournalTroubleTest, TotalsThatAreTooLargeToBeKeptAreToldOnce) {
    count(5000);
    state().BytesRcvdTotal = largestKept + Currency(1);
    tickAfter(10, 1);
    tickAfter(10, 1);

    ASSERT_EQ(notes().size(), 1U);
    EXPECT_THAT(notes()[0], HasSubstr("cannot be written"));
}

TEST_F(JournalTroubleTest, AJournalThatCannotBeDeletedSaysThatTheEndWasInOrder) {
    count(5000);
    machine.files.killFailure = ErrorNumber::PermissionDenied;
    endSession();
    machine.files.killFailure.reset();
    ASSERT_TRUE(journalIsThere());
    editInterval();

    newWorld();
    expectSessionQuestion("5000", MsgBoxAnswer::No);
    start("/r");
    tick();

    EXPECT_EQ(received(), 5000);
    EXPECT_EQ(state().RefreshInterval, Long(200));
    EXPECT_TRUE(notes().empty());
}

TEST_F(JournalTroubleTest, AJournalThatHoldsOnlyDamageIsPutAside) {
    count(5000);
    tickAfter(10, 1);
    tickAfter(10, 1);
    newWorld();
    std::string bytes = machine.files.file(path);
    for (std::size_t place = 0; place < journalPlaces; ++place) {
        bytes[place * journalPlace + 100] =
            static_cast<char>(bytes[place * journalPlace + 100] ^ 1);
    }
    machine.files.setFile(path, bytes);

    expectInstanceQuestion();
    start();

    EXPECT_FALSE(journalIsThere());
    EXPECT_EQ(machine.files.file(aside), bytes);
    ASSERT_EQ(notes().size(), 1U);
    EXPECT_THAT(notes()[0], HasSubstr("is damaged. The journal is now"));
}

TEST_F(JournalTroubleTest, AnEntryWhoseSettingsNobodyCanHaveMeantIsCalledDamaged) {
    count(5000);
    newWorld();
    JournalEntry entry;
    {
        Journal other;
        entry = other.take(path, iniPath).entry;
        entry.settings.fill(INT64_MAX);
        other.keep(entry, true);
    }

    expectInstanceQuestion();
    start();

    ASSERT_EQ(notes().size(), 1U);
    EXPECT_THAT(notes()[0], HasSubstr("is damaged. The journal is now"));
}

TEST_F(JournalTroubleTest, AfterAJournalWasPutAsideTheFirstLookWritesNothing) {
    count(5000);
    machine.files.cutPower();
    newWorld();
    machine.connections.disconnect(ridge);
    setRecord("77");
    machine.files.meanwhile = [this](const std::string& operation, const std::string&) {
        machine.files.holdFailure =
            operation == "flush" ? FileResult(ErrorNumber::PathFileAccess) : std::nullopt;
    };
    start();
    machine.files.meanwhile = nullptr;
    machine.files.holdFailure.reset();

    machine.desktop.pause();

    EXPECT_FALSE(journalIsThere());
}

TEST_F(JournalTroubleTest, TheNoteAboutAFailureFindsRoomForTheName) {
    machine.program.folderPath = "C:\\" + std::string(240, 'p');
    machine.files.holdFailure = ErrorNumber::DiskFull;
    setIni("[Settings]\r\n");
    machine.files.setFile(machine.program.folderPath + "\\Tarvik.ini", "[Settings]\r\n");
    startAndCount(5);

    ASSERT_EQ(notes().size(), 1U);
    EXPECT_THAT(notes()[0], testing::EndsWith("\rTarvik.journal"));
}

TEST_F(JournalTroubleTest, AFileOfSettingsThatCannotBeReadAgainIsTold) {
    setIni("[Settings]\r\n");
    start();
    setIni("[Settings]\r\nIsLocked=1\r\n"); // else nobody reads it again
    machine.files.setUnreadable(iniPath);

    RestoreFromJournal();
    TellOfJournal();

    ASSERT_EQ(notes().size(), 1U);
    EXPECT_THAT(notes()[0], HasSubstr("is left alone and not kept"));
}

/// A save whose file is in its place, and whose folder may not be on the disk yet.
TEST_F(JournalTroubleTest, AfterASaveThatFailedLateWhatIsCountedIsStillKept) {
    count(5000);
    makeResetDue(true);
    machine.files.lateFailure = ErrorNumber::PathFileAccess;
    expectBackupQuestion(MsgBoxAnswer::No);
    tickAfter(1);
    state().TransferResetEnable = 0;
    tickAfter(10, 100);
    machine.files.lateFailure.reset();

    restartAfterKill();

    EXPECT_EQ(received(), 5100);
    EXPECT_FALSE(machine.files.exists(aside));
}

/// Room comes back while the box tells of it: the file that the end makes then says nothing.
TEST_F(JournalTroubleTest, ASaveThatFailsWhereNoFileWasLosesNothing) {
    countInFirstRun(5000);
    machine.connections.disconnect(ridge);
    tickAfter(1);
    frmMain().cmdMonitor.press();
    machine.files.replaceFailure = ErrorNumber::DiskFull;
    expectBox("Warning: State could not be saved.", MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation,
              MsgBoxAnswer::Ok, [this] { machine.files.replaceFailure.reset(); });
    frmMain().cmdQuit.press();
    ASSERT_TRUE(machine.files.exists(iniPath));

    newWorld();
    start();

    EXPECT_EQ(received(), 5000);
    EXPECT_FALSE(machine.files.exists(aside));
}

TEST_F(JournalTroubleTest, ACopyThatCountedNothingHidesNothingThatAnotherHasSaved) {
    setIni("[Settings]\r\n");
    start("/r");
    setRecord("5000", "IsLocked=1\r\n");
    endSession();
    EXPECT_FALSE(journalIsThere());

    newWorld();
    start();

    EXPECT_EQ(received(), 5000);
}

} // namespace
} // namespace tarvik
