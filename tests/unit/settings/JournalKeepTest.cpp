#include "settings/JournalRestartTest.h"

#include <gmock/gmock.h>

namespace tarvik {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST_F(JournalRestartTest, AnOrderlyEndLeavesTheIniFileAlone) {
    count(5000);
    EXPECT_TRUE(journalIsThere());

    endSession();

    EXPECT_FALSE(journalIsThere());
    EXPECT_THAT(ini(), HasSubstr("Rcvd=5000"));
}

TEST_F(JournalRestartTest, WhileNothingChangesNoFileIsMade) {
    setIni("[Settings]\r\n");
    start("/r");
    for (int i = 0; i < 100; ++i) {
        tickAfter(10);
    }

    EXPECT_FALSE(journalIsThere());
}

TEST_F(JournalRestartTest, AnEndWhoseSaveFailedIsMadeGoodByTheNextStart) {
    count(5000);
    machine.files.replaceFailure = ErrorNumber::DiskFull;
    expectWarning("Warning: State could not be saved.");
    expectWarning("Warning: Unable to unset \"IsLocked\"-flag in INI-file!");
    endSession();
    machine.files.replaceFailure.reset();
    EXPECT_TRUE(journalIsThere());

    pass(30, 11);
    restartAfterKill("/r");
    tick();

    EXPECT_EQ(received(), 5011);
}

TEST_F(JournalRestartTest, AResetIsNotUndoneByARestart) {
    resetAndQuit();
    EXPECT_TRUE(journalIsThere()) << "the file alone would bring them back";

    newWorld();
    start();

    EXPECT_EQ(received(), 0);
    EXPECT_TRUE(notes().empty()) << "it ended in order";
}

TEST_F(JournalRestartTest, SettingsThatWereWrittenIntoTheFileAfterAnEndInOrderHold) {
    resetAndQuit();
    editInterval();

    newWorld();
    start();

    EXPECT_EQ(state().RefreshInterval, Long(200));
    EXPECT_EQ(received(), 0);
}

TEST_F(JournalRestartTest, AfterAResetTheNextRecordMakesTheJournalNeedless) {
    resetAndQuit();
    newWorld();
    startAndCount(40);
    endSession();

    EXPECT_FALSE(journalIsThere());
    newWorld();
    machine.connections.disconnect(ridge);
    start();
    EXPECT_EQ(received(), 40);
}

TEST_F(JournalRestartTest, AJournalOfAnotherFileIsPutAside) {
    count(5000);
    newWorld();
    setRecord("77");

    start();

    EXPECT_EQ(received(), 77);
    EXPECT_FALSE(journalIsThere());
    EXPECT_TRUE(machine.files.exists(aside));
    ASSERT_EQ(notes().size(), 1U);
    EXPECT_THAT(notes()[0], HasSubstr("Tarvik.2026-11-16.journal"));
}

TEST_F(JournalRestartTest, ASecondOneOfTheDayGetsANumber) {
    machine.files.setFile(aside, "the first");
    count(5000);
    newWorld();
    machine.files.remove(iniPath);

    expectFirstRunBoxes();
    start();

    EXPECT_EQ(machine.files.file(aside), "the first");
    EXPECT_TRUE(machine.files.exists("C:\\Prog\\Tarvik.2026-11-16.1.journal"));
    EXPECT_EQ(received(), 0);
}

TEST_F(JournalRestartTest, ACopyBesideTheOneThatHasTheJournalSpoilsNothing) {
    count(5000);
    const std::string before = machine.files.file(path);
    machine.files.heldElsewhere = true;
    newWorld();
    machine.instances.error = alreadyExists;
    machine.connections.disconnect(ridge);
    expectInstanceQuestion();
    startAndCount(3);

    EXPECT_EQ(machine.files.file(path), before);
    EXPECT_EQ(received(), 3);
    EXPECT_TRUE(notes().empty());
    endSession();
    EXPECT_EQ(machine.files.file(path), before);
}

TEST_F(JournalRestartTest, WithoutRoomTheProgramWorksAsBeforeAndSaysSoOnce) {
    machine.files.holdFailure = ErrorNumber::DiskFull;

    count(5000);
    tickAfter(10, 1);
    tickAfter(10, 1);

    EXPECT_EQ(received(), 5002);
    ASSERT_EQ(notes().size(), 1U);
    EXPECT_THAT(notes()[0], StartsWith("The journal of the running count cannot be written."));
    endSession();
    EXPECT_THAT(ini(), HasSubstr("Rcvd=5002"));
}

TEST_F(JournalRestartTest, WhatIsNoJournalIsLeftAloneAndTold) {
    machine.files.setFile(path, "My own notes");

    count(5000);
    endSession();

    EXPECT_EQ(machine.files.file(path), "My own notes");
    ASSERT_EQ(notes().size(), 1U);
    EXPECT_THAT(notes()[0], HasSubstr("left alone"));
}

TEST_F(JournalRestartTest, TheEndOfASessionIsFlushedAtOnce) {
    count(5000);
    tickAfter(5, 1);
    const int flushes = machine.files.flushes;
    machine.connections.disconnect(ridge);

    tickAfter(1);

    EXPECT_EQ(machine.files.flushes, flushes + 1);
    restartAfterPowerCut();
    EXPECT_EQ(received(), 5001);
}

TEST_F(JournalRestartTest, TheEndOfASessionThatWasDialledAnewUnderItsHandleIsFlushedAtOnce) {
    count(5000);
    tickAfter(5, 1);
    const int flushes = machine.files.flushes;
    machine.connections.connection(ridge)->statistics.dwBytesRcved = 3;
    machine.connections.connection(ridge)->statistics.dwConnectDuration = 500;

    tickAfter(1);

    EXPECT_EQ(machine.files.flushes, flushes + 1);
    machine.files.cutPower();
    machine.connections.disconnect(ridge);
    restartAfterKill();
    EXPECT_EQ(received(), 5004);
}

TEST_F(JournalRestartTest, TheEndOfASessionThatIsListedStillIsFlushedOnce) {
    count(5000);
    tickAfter(5, 1);
    const int flushes = machine.files.flushes;
    machine.connections.connection(ridge)->state = ras::connected + 1;

    for (int i = 0; i < 3; ++i) {
        tickAfter(1);
    }

    EXPECT_EQ(machine.files.flushes, flushes + 1);
    restartAfterPowerCut();
    EXPECT_EQ(received(), 5001);
}

TEST_F(JournalRestartTest, AMachineThatGoesToSleepFindsEverythingFlushed) {
    count(5000);
    tickAfter(1, 77);

    machine.desktop.pause();

    restartAfterPowerCut();
    EXPECT_EQ(received(), 5077);
}

TEST_F(JournalRestartTest, MonitoringThatStopsIsKeptAtOnce) {
    count(5000);
    tickAfter(1, 77);
    expectStopQuestion(MsgBoxAnswer::Ok);

    frmMain().cmdMonitor.press();

    restartAfterPowerCut();
    EXPECT_EQ(received(), 5077);
}

TEST_F(JournalRestartTest, APowerCutCostsHalfAMinuteAtMost) {
    count(5000);
    for (int second = 0; second < 300; ++second) {
        tickAfter(1, 10);
    }
    const std::int64_t counted = received();

    restartAfterPowerCut();

    EXPECT_GE(received(), counted - 300 - 50);
    EXPECT_LT(received(), counted);
}

TEST_F(JournalRestartTest, AKillCostsFiveSecondsAtMost) {
    count(5000);
    for (int second = 0; second < 303; ++second) {
        tickAfter(1, 10);
        const std::int64_t counted = received();
        Journal next;
        world->journal.release();
        const JournalFinding found = next.take(path, iniPath);
        ASSERT_EQ(found.kind, JournalFinding::Kind::Entry);
        EXPECT_GE(found.entry.totals.rcvd, Currency::fromWhole(counted - 50));
        EXPECT_LE(found.entry.totals.rcvd, Currency::fromWhole(counted));
        world->journal = std::move(next);
    }
}

TEST_F(JournalRestartTest, WhileTheQuestionAboutASessionIsOpenItDoesNotCount) {
    setIni("[Settings]\r\n");
    ridge = machine.connections.connect("Ridge");
    machine.connections.transfer(ridge, 1000, 0, 9000);
    std::string journalThen;
    const auto sleep = [&] {
        machine.desktop.pause();
        journalThen = machine.files.file(path);
    };
    expectBox("Monitoring has been started and an active connection with transfer has been "
              "detected.\r\rIf you have already monitored this online-session with Tarvik then\r"
              "this may result in an unwanted offset of the recorded transfer.\r\rDo you want to "
              "use (record) the this online-session (1000 bytes)?\r(Press NO if you restarted "
              "Tarvik.)",
              MsgBoxButtons::YesNo, MsgBoxIcon::Question, MsgBoxAnswer::Yes, sleep);
    start("/r");
    tick();
    EXPECT_EQ(received(), 1000);

    newWorld();
    machine.files.setFile(path, journalThen);
    expectInstanceQuestion();
    start();
    EXPECT_EQ(received(), 0);

    expectSessionQuestion("1000", MsgBoxAnswer::Yes);
    frmMain().cmdMonitor.press();
    tick();

    EXPECT_EQ(received(), 1000) << "there was no answer before the kill";
}

} // namespace
} // namespace tarvik
