#include "settings/JournalRestartTest.h"
#include "monitor/mdlCodeDial.h"

#include <gmock/gmock.h>

namespace tarvik {
namespace {

using testing::StartsWith;

TEST_F(JournalRestartTest, WhatTheWindowShowedIsShownAgain) {
    count(5000);
    const std::string shown = frmMain().txtBytesRcvdTotal.text();

    restartAfterKill();

    EXPECT_EQ(received(), 5000);
    EXPECT_EQ(frmMain().txtBytesRcvdTotal.text(), shown);
}

TEST_F(JournalRestartTest, ANoteTellsWhatWasBroughtBack) {
    count(5000);

    restartAfterKill();

    ASSERT_EQ(notes().size(), 1U);
    EXPECT_THAT(notes()[0], StartsWith("When the program last ended, not all was stored."));
}

TEST_F(JournalRestartTest, TheSameSessionIsCarriedOnToTheByte) {
    count(5000);
    pass(60, 700);

    restartAfterKill("/r");
    tickAfter(1, 30);

    EXPECT_EQ(received(), 5730);
    EXPECT_EQ(frmMain().txtBytesRcvd.text(), "5,730");
    EXPECT_FALSE(state().FirstOnlineUpdate);
}

TEST_F(JournalRestartTest, ThreeKillsInOneSessionLoseAndDoubleNothing) {
    count(5000);
    for (int i = 0; i < 3; ++i) {
        pass(60, 100);
        restartAfterKill("/r");
        tickAfter(10, 10);
    }

    machine.connections.disconnect(ridge);
    tick();

    EXPECT_EQ(received(), 5330);
    EXPECT_EQ(state().BytesRcvdTotal, Currency(5330));
}

TEST_F(JournalRestartTest, WhatWasDeclinedStaysDeclined) {
    setIni("[Settings]\r\n");
    ridge = machine.connections.connect("Ridge");
    machine.connections.transfer(ridge, 1000, 0, 9000);
    expectSessionQuestion("1000", MsgBoxAnswer::No);
    start("/r");
    tick();
    tickAfter(10, 70);

    restartAfterKill("/r");
    tickAfter(10, 5);

    EXPECT_EQ(received(), 75);
}

TEST_F(JournalRestartTest, ASessionThatEndedMeanwhileIsInTheTotals) {
    count(5000);
    machine.connections.disconnect(ridge);

    restartAfterKill("/r");
    tickAfter(10);

    EXPECT_EQ(state().BytesRcvdTotal, Currency(5000));
    EXPECT_EQ(received(), 5000);
}

TEST_F(JournalRestartTest, AnotherSessionOfTheSameEntryIsAskedAbout) {
    count(5000);
    machine.connections.disconnect(ridge);
    pass(60);
    ridge = machine.connections.connect("Ridge");
    machine.connections.transfer(ridge, 6000, 0, 30'000);

    restartAsking("6000", MsgBoxAnswer::Yes);

    EXPECT_EQ(received(), 11'000);
}

TEST_F(JournalRestartTest, ASessionWhoseCounterHasFallenIsAskedAbout) {
    count(5000);
    pass(20, 0);
    machine.connections.connection(ridge)->statistics.dwBytesRcved = 4999;

    restartAsking("4999", MsgBoxAnswer::No);

    EXPECT_EQ(received(), 5000);
}

TEST_F(JournalRestartTest, ASessionOverAnotherDeviceIsAskedAbout) {
    count(5000);
    machine.connections.connection(ridge)->deviceName = "Line 2";

    restartAsking("5000", MsgBoxAnswer::No);

    EXPECT_EQ(received(), 5000);
}

TEST_F(JournalRestartTest, ASessionThatBeganAtAnotherMomentIsAskedAbout) {
    count(5000);
    machine.clock.advanceSeconds(60); // nothing passes on the line: it is not the same one

    restartAsking("5000", MsgBoxAnswer::No);

    EXPECT_EQ(received(), 5000);
}

TEST_F(JournalRestartTest, SummerTimeMakesNoOtherSession) {
    count(5000);
    pass(60, 700);
    machine.clock.now = Date(machine.clock.now.serial() - 1.0 / 24); // it has ended

    restartAfterKill("/r");
    tickAfter(1, 30);

    EXPECT_EQ(received(), 5730);
}

TEST_F(JournalRestartTest, ASleepOfTheMachineMakesNoOtherSession) {
    count(5000);
    const std::uint64_t asleep = machine.clock.steady;
    pass(60, 700);
    machine.clock.steady = asleep;

    restartAfterKill("/r");
    tickAfter(1, 30);

    EXPECT_EQ(received(), 5730);
}

/// The machine dials at each of its starts: as long after the start the line is as old.
TEST_F(JournalRestartTest, ASessionAfterAStartOfTheMachineIsAnother) {
    count(5000);
    pass(60, 700);
    machine.clock.universal += 100'000;

    restartAsking("5700", MsgBoxAnswer::Yes);

    EXPECT_EQ(received(), 10'700);
}

/// Both lines went on; until each is read what it had counted stands in the totals.
TEST_F(JournalRestartTest, ALimitDoesNotCountALineTwiceInTheFirstTick) {
    setIni("[Settings]\r\nTransferTicker=1\r\nTransferTickerValue=1\r\n");
    start("/r");
    ridge = machine.connections.connect("Ridge");
    harbour = machine.connections.connect("Harbour");
    tick();
    machine.connections.transfer(harbour, 900'000, 0, 10'000);
    tickAfter(10, 900'000);
    ASSERT_EQ(notes().size(), 0U);

    restartAfterKill("/r");
    const std::size_t before = notes().size();
    machine.connections.transfer(harbour, 0, 0, 1'000);
    tickAfter(1);

    EXPECT_EQ(notes().size(), before) << notes().back();
}

TEST_F(JournalRestartTest, ACallThatFailsOnceDoesNotGiveASessionUp) {
    for (const char* call : {"RasGetConnectStatus", "RasGetConnectionStatistics"}) {
        count(5000);
        newWorld();
        expectInstanceQuestion();
        start();
        machine.connections.failNext(call, 1);
        frmMain().cmdMonitor.press();
        tickAfter(1, 30);

        EXPECT_EQ(received(), 5030) << call;
        machine.connections.disconnect(ridge);
        endSession();
        machine.files.remove(iniPath);
        newWorld();
    }
}

/// A tick that fails at the second line: the first one's figures are newer than the second one's
/// when the next kill comes.
TEST_F(JournalRestartTest, EachSessionGoesOnFromItsOwnReading) {
    countTwoLines();
    machine.connections.transfer(harbour, 0, 0, 60'000);
    pass(60);
    newWorld();
    expectInstanceQuestion();
    start("/r");
    machine.connections.failNext("RasGetConnectionStatistics", 0);
    machine.connections.failNext("RasGetConnectionStatistics", 0);
    machine.connections.failNext("RasGetConnectionStatistics", 0);
    machine.connections.failNext("RasGetConnectionStatistics", 668);
    machine.connections.errorTexts[668] = "No connection.";
    expectFailure("Error: RasGetConnectionStatistics failed with 668:\rNo connection.");
    expectStopQuestion(MsgBoxAnswer::Ok);
    tick();
    machine.desktop.pause();

    machine.connections.transfer(harbour, 1, 0, 10'000);
    pass(10, 20);
    restartAfterKill("/r");
    tick();
    machine.connections.disconnect(ridge);
    machine.connections.disconnect(harbour);
    tick();

    EXPECT_EQ(received(), 5851);
}

TEST_F(JournalRestartTest, ASessionThatTheProgramHasHungUpIsOverAlsoWhileTheLineLingers) {
    count(5000);
    const ScriptedConnections::Connection lingering = *machine.connections.connection(ridge);
    frmMain().cmdDisconnect.press();
    machine.connections.connections.push_back(lingering);
    tickAfter(10);

    restartAsking("5000", MsgBoxAnswer::No);

    EXPECT_EQ(received(), 5000);
}

TEST_F(JournalRestartTest, AServiceThatKnowsItsSessionsIsBelieved) {
    setIni("[Settings]\r\n");
    start("/r");
    ridge = machine.connections.connect("Ridge");
    machine.connections.marks[ridge] = "the first";
    tick();
    tickAfter(10, 5000);
    machine.clock.advanceSeconds(600); // the clock says otherwise

    restartAfterKill("/r");
    tick();
    EXPECT_EQ(received(), 5000);

    machine.connections.marks[ridge] = "another";
    restartAsking("5000", MsgBoxAnswer::Yes);
    EXPECT_EQ(received(), 10'000);
}

TEST_F(JournalRestartTest, TwoLinesAreCarriedOn) {
    countTwoLines();

    machine.connections.transfer(harbour, 7, 0, 10'000);
    pass(10, 20);
    restartAfterKill("/r");
    EXPECT_EQ(received(), 5830);
    tick();
    EXPECT_EQ(received(), 837) << "the last of the list is shown, as before";
    machine.connections.disconnect(ridge);
    machine.connections.disconnect(harbour);
    tick();

    EXPECT_EQ(received(), 5857);
}

TEST_F(JournalRestartTest, BesideASessionThatGoesOnAnotherOneIsAskedAbout) {
    count(5000);
    harbour = machine.connections.connect("Harbour");
    machine.connections.transfer(harbour, 830, 0, 3000);

    restartAsking("830", MsgBoxAnswer::No);
    machine.connections.transfer(harbour, 4, 0, 1000);
    tickAfter(1, 60);
    machine.connections.disconnect(harbour);
    tick();

    EXPECT_EQ(received(), 5064);
}

TEST_F(JournalRestartTest, BesideASessionThatGoesOnTheLineTheProgramDialledIsNotAskedAbout) {
    count(5000);
    restartAfterKill();
    ASSERT_GT(DialIn("Harbour", ""), Long(0));
    machine.connections.transfer(ridge + 1, 830, 0, 3000);

    frmMain().cmdMonitor.press();
    tick();
    machine.connections.disconnect(ridge + 1);
    machine.connections.disconnect(ridge);
    tick();

    EXPECT_EQ(received(), 5830);
}

TEST_F(JournalRestartTest, ADialOfALineThatIsUpStillGoesOnWithItsSession) {
    machine.connections.joinsRunning = true;
    count(5000);
    pass(10, 30);
    restartAfterKill();
    ASSERT_EQ(DialIn("Ridge", ""), Long(static_cast<std::int32_t>(ridge)));

    frmMain().cmdMonitor.press();
    tick();

    EXPECT_EQ(received(), 5030);
}

TEST_F(JournalRestartTest, BesideSessionsThatGoOnTheAddressIsAskedForOnce) {
    countTwoLines("LogIPAddress=1\r\n");
    machine.sockets.hostFound = false;

    newWorld();
    expectInstanceQuestion();
    expectWarning("Winsock.dll is not responding.");
    start("/r");
    tick();

    EXPECT_FALSE(state().FirstOnlineUpdate);
}

TEST_F(JournalRestartTest, SettingsThatWereConfirmedAreThereAgain) {
    setIni("[Settings]\r\n");
    start();
    frmMain().cmdOptions.press();
    frmOptions().chkTransferLimit.setValue(1);
    frmOptions().txtTransferLimit.setText("123456");
    frmOptions().cboUnitTransferTotal.setListIndex(2);
    frmOptions().cmdOK.press();

    restartAfterKill();

    EXPECT_EQ(state().TransferLimit, 1);
    EXPECT_EQ(state().TransferLimitValue, Currency(123'456));
    EXPECT_EQ(state().UnitTransferTotal, TransferUnit::MegaBytes);
    EXPECT_EQ(frmOptions().txtTransferLimit.text(), "123456");
    EXPECT_EQ(frmMain().lblTransferTotal.caption(), "total (MBytes):");
}

TEST_F(JournalRestartTest, AFirstRunIsKeptToo) {
    countInFirstRun(5000);
    EXPECT_FALSE(machine.files.exists(iniPath));

    newWorld();
    expectFirstRunBoxes();
    start("/r");
    tick();

    EXPECT_EQ(received(), 5000);
}

} // namespace
} // namespace tarvik
