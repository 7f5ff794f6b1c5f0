#include "monitor/mdlCodeReset.h"
#include "settings/JournalRestartTest.h"

#include <gmock/gmock.h>

namespace tarvik {
namespace {

using testing::HasSubstr;

/// A journal that somebody has open when the program starts, and lets go later.
class JournalReachTest : public JournalRestartTest {
protected:
    /// 5,000 bytes were counted when the program was killed; the line is down.
    void startOutOfReach() {
        count(5000);
        newWorld();
        machine.connections.disconnect(ridge);
        machine.files.holdFailure = ErrorNumber::PermissionDenied;
        expectInstanceQuestion();
        start("/r");
    }
    /// The run ends in order, and only then somebody lets the journal go.
    void restartInReach() {
        endSession();
        machine.files.holdFailure.reset();
        newWorld();
        start();
    }
};

TEST_F(JournalReachTest, ItIsToldOnceThatItCannotBeRead) {
    startOutOfReach();
    for (int i = 0; i < 5; ++i) {
        tickAfter(10);
    }

    ASSERT_EQ(notes().size(), 1U);
    EXPECT_THAT(notes()[0], HasSubstr("cannot be read and is left alone"));
    EXPECT_EQ(received(), 0);
}

TEST_F(JournalReachTest, WhereNothingWasCountedMeanwhileItIsBroughtBack) {
    startOutOfReach();
    tickAfter(10);
    machine.files.holdFailure.reset();
    tickAfter(10);

    EXPECT_EQ(received(), 5000);
    ASSERT_EQ(notes().size(), 2U);
    EXPECT_THAT(notes()[1], HasSubstr("was brought back"));
    EXPECT_TRUE(world->journal.inUse());
}

TEST_F(JournalReachTest, WhereSomethingWasCountedMeanwhileItIsSetAsideAndKeptAnew) {
    startOutOfReach();
    const std::string before = machine.files.file(path);
    ridge = machine.connections.connect("Ridge");
    tick();
    tickAfter(1, 30);
    machine.files.holdFailure.reset();
    tickAfter(10, 3);

    EXPECT_EQ(machine.files.file(aside), before);
    ASSERT_EQ(notes().size(), 2U);
    EXPECT_THAT(notes()[1], HasSubstr("has counted since"));
    restartAfterKill("/r");
    EXPECT_EQ(received(), 33);
}

/// The next start would take it for what stood here last.
TEST_F(JournalReachTest, WhatWasSetMeanwhileIsNotUndoneByItAfterAnEndInOrder) {
    startOutOfReach();
    frmMain().cmdOptions.press();
    frmOptions().chkTransferTicker.setValue(true);
    frmOptions().cmdOK.press();

    restartInReach();

    EXPECT_NE(state().TransferTicker, 0);
    EXPECT_TRUE(machine.files.exists(aside));
}

TEST_F(JournalReachTest, AResetMeanwhileIsNotUndoneByItAfterAnEndInOrder) {
    startOutOfReach();
    expectBox("Are you really sure you want to reset the (overall) values?", MsgBoxButtons::YesNo,
              MsgBoxIcon::Question, MsgBoxAnswer::Yes);
    state().BytesRcvdTotal = 7;
    ResetTransfersRequest();

    restartInReach();

    EXPECT_EQ(received(), 0);
}

TEST_F(JournalReachTest, WhereNothingWasCountedOrSetAnEndInOrderLeavesItToTheNextStart) {
    startOutOfReach();

    restartInReach();

    EXPECT_EQ(received(), 5000);
}

TEST_F(JournalReachTest, WhereItIsGoneMeanwhileANewOneIsKept) {
    startOutOfReach();
    machine.files.remove(path);
    machine.files.holdFailure.reset();
    tickAfter(10);
    ridge = machine.connections.connect("Ridge");
    tick();
    tickAfter(10, 7);

    restartAfterKill("/r");
    EXPECT_EQ(received(), 7);
}

TEST_F(JournalReachTest, OneThatAnotherProgramHasOpenIsTold) {
    count(5000);
    newWorld();
    machine.files.heldElsewhere = true;

    expectInstanceQuestion();
    start();

    ASSERT_EQ(notes().size(), 1U) << "no other copy of the program is running";
    EXPECT_THAT(notes()[0], HasSubstr("Another program has the journal"));
}

TEST_F(JournalReachTest, OneThatAnotherCopyHasIsNotLookedForAgain) {
    count(5000);
    newWorld();
    machine.connections.disconnect(ridge);
    machine.instances.error = alreadyExists;
    machine.files.heldElsewhere = true;
    expectInstanceQuestion();
    start("/r");
    machine.files.heldElsewhere = false;
    const std::string before = machine.files.file(path);
    tickAfter(10);
    tickAfter(10);

    EXPECT_EQ(machine.files.file(path), before);
    EXPECT_EQ(notes().size(), 0U);
    EXPECT_EQ(received(), 0);
}

TEST_F(JournalReachTest, TotalsBeyondWhatItHoldsAreToldOnce) {
    setRecord("900000000000000");
    start("/r");
    for (int i = 0; i < 5; ++i) {
        tickAfter(10);
    }

    ASSERT_EQ(notes().size(), 1U);
    EXPECT_THAT(notes()[0], HasSubstr("cannot be written"));
}

TEST_F(JournalReachTest, ItIsBroughtBackBeforeTheOptionsAreShownAlsoWithoutMonitoring) {
    count(5000);
    newWorld();
    machine.connections.disconnect(ridge);
    machine.files.holdFailure = ErrorNumber::PermissionDenied;
    expectInstanceQuestion();
    start();
    machine.files.holdFailure.reset();
    machine.clock.advanceSeconds(10);

    frmMain().cmdOptions.press();
    frmOptions().cmdOK.press();

    EXPECT_EQ(received(), 5000);
    EXPECT_FALSE(machine.files.exists(aside));
}

TEST_F(JournalReachTest, WhileTheHistoryShowsAnotherFileItIsNotJudged) {
    startOutOfReach();
    const std::string own = state().IniFileName;
    machine.files.setFile("C:\\Old\\Tarvik.ini", "[Settings]\r\nLastDateStamp=7\r\n");
    state().IniFileName = "C:\\Old\\Tarvik.ini";
    machine.files.holdFailure.reset();
    tickAfter(10);
    EXPECT_FALSE(machine.files.exists(aside));

    state().IniFileName = own;
    tickAfter(10);

    EXPECT_EQ(received(), 5000);
}

} // namespace
} // namespace tarvik
