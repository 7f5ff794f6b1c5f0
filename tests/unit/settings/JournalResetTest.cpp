#include "settings/JournalRestartTest.h"

#include <gmock/gmock.h>

namespace tarvik {
namespace {

using testing::HasSubstr;

/// Resets by the calendar, and what a start makes of them.
class JournalResetTest : public JournalRestartTest {
protected:
    /// 7,000 bytes are on record; a reset is due, and comes with the first tick of a line.
    void resetByCalendar(bool withBackup) {
        setRecord("7000", "RefreshInterval=200\r\nTransferResetEnable=1\r\nTransferReset=8\r\n"
                          "TransferResetLast=01.01.2001\r\nTransferResetBackup=" +
                              std::string(withBackup ? "1" : "0") + "\r\n");
        start("/r");
        EXPECT_EQ(received(), 7000);
        ridge = machine.connections.connect("Ridge");
        tick();
        EXPECT_EQ(received(), 0);
    }
    /// The same with a backup, killed where it deletes the INI file; the line is down then.
    void killInBackup() {
        machine.files.meanwhile = [this](const std::string& operation, const std::string& which) {
            if (operation == "Kill" && which == iniPath) {
                journalThen = machine.files.file(path);
                iniThen = ini();
            }
        };
        resetByCalendar(true);
        machine.files.meanwhile = nullptr;
        machine.connections.disconnect(ridge);
        newWorld();
        ASSERT_FALSE(journalThen.empty());
        machine.files.setFile(path, journalThen);
    }

    std::string journalThen; // as they were before the INI file was deleted
    std::string iniThen;
};

TEST_F(JournalResetTest, AResetWhoseSessionEndsWithItIsNotUndoneByARestart) {
    resetByCalendar(false);
    machine.connections.disconnect(ridge);
    tickAfter(1);
    endSession();
    EXPECT_THAT(ini(), HasSubstr("TransferResetLast=16.11.2026"));

    newWorld();
    start();

    EXPECT_EQ(received(), 0);
}

TEST_F(JournalResetTest, APowerCutWithoutAnIniFileLosesNeitherSettingsNorReset) {
    resetByCalendar(true);
    ASSERT_FALSE(machine.files.exists(iniPath));
    machine.files.cutPower();
    machine.connections.disconnect(ridge);

    newWorld();
    expectFirstRunBoxes();
    start("/r");
    tick();

    EXPECT_EQ(received(), 0);
    EXPECT_EQ(state().RefreshInterval, Long(200));
    EXPECT_EQ(state().TransferResetEnable, 1);
    EXPECT_EQ(state().TransferResetLast, machine.clock.now.dateOnly());
}

TEST_F(JournalResetTest, AResetOnDemandIsOnTheDiskAtOnce) {
    count(5000);
    machine.desktop.pause(); // they are on the disk
    reset();

    restartAfterPowerCut();

    EXPECT_EQ(received(), 0);
}

TEST_F(JournalResetTest, AResetByTheCalendarIsOnTheDiskAtOnce) {
    count(5000);
    machine.desktop.pause(); // they are on the disk
    makeResetDue(false);
    tickAfter(1);
    ASSERT_EQ(received(), 0);

    restartAfterPowerCut();

    EXPECT_EQ(received(), 0);
}

TEST_F(JournalResetTest, AResetBeforeTheFirstTickLetsTheWholeSessionCountAnew) {
    count(5000);
    pass(10, 30);
    restartAfterKill();
    reset();
    EXPECT_EQ(received(), 0);

    frmMain().cmdMonitor.press();
    tick();

    EXPECT_EQ(received(), 5030) << "as at any reset within a session";
}

TEST_F(JournalResetTest, AKillWhileTheFileIsPutAsideIsAResetThatWasDone) {
    killInBackup();

    expectFirstRunBoxes();
    start("/r");
    tick();

    EXPECT_EQ(received(), 0);
    EXPECT_EQ(state().TransferResetLast, machine.clock.now.dateOnly());
}

TEST_F(JournalResetTest, AKillBeforeTheFileIsPutAsideIsAResetThatIsStillDue) {
    killInBackup();
    setIni(iniThen);

    expectInstanceQuestion();
    start();

    EXPECT_EQ(received(), 7000);
    EXPECT_NE(state().TransferResetLast, machine.clock.now.dateOnly());
}

/// The session counts from its beginning again, from the next tick on.
TEST_F(JournalResetTest, AfterAResetWithinASessionAKillCostsNoMoreThanElsewhere) {
    count(5000);
    reset();
    tickAfter(1);
    ASSERT_EQ(received(), 5000);
    machine.connections.disconnect(ridge);

    restartAfterKill("/r");

    EXPECT_EQ(received(), 5000);
}

TEST_F(JournalResetTest, NorAfterAResetByTheCalendar) {
    count(5000);
    makeResetDue(false);
    tickAfter(1);
    tickAfter(1);
    ASSERT_EQ(received(), 5000);
    machine.connections.disconnect(ridge);

    restartAfterKill("/r");

    EXPECT_EQ(received(), 5000);
}

} // namespace
} // namespace tarvik
