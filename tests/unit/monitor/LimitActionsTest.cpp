#include "monitor/LimitsTest.h"

namespace tarvik {
namespace {

using Texts = std::vector<std::string>;

TEST_F(LimitsTest, TheWarningDoesNotHoldUpTheTick) {
    limitTransfer(0);
    warn();
    connection(5000, 0, 0);

    tick();

    EXPECT_TRUE(frmWarning().visible());
    EXPECT_TRUE(machine.desktop.takesInput());
    EXPECT_EQ(machine.desktop.blockingCalls, 0);
    EXPECT_EQ(frmMain().txtBytesRcvd.text(), "5,000");
}

TEST_F(LimitsTest, EachTickBringsTheWarningToTheFront) {
    limitTransfer(0);
    warn();
    connection(5000, 0, 0);
    machine.desktop.broughtToFront.clear();
    machine.desktop.visibilityTold.clear();

    tick();
    tick();
    tick();

    EXPECT_EQ(machine.desktop.broughtToFront, (Texts{"frmWarning", "frmWarning", "frmWarning"}));
    EXPECT_EQ(machine.desktop.visibilityTold, Texts{"frmWarning shown"});
}

TEST_F(LimitsTest, AMinimisedWarningIsRestored) {
    limitTransfer(0);
    warn();
    connection(5000, 0, 0);
    tick();
    frmWarning().setMinimised(true);

    tick();

    EXPECT_TRUE(frmWarning().visible());
    EXPECT_FALSE(frmWarning().minimised());
}

TEST_F(LimitsTest, AWarningAloneLeavesTheConnection) {
    limitTransfer(0);
    warn();
    connection(5000, 0, 0);

    tick();

    EXPECT_EQ(hangUps(), 0);
    EXPECT_TRUE(state().ConnectionActive);
}

TEST_F(LimitsTest, ADisarmedWarningIsNotShown) {
    limitTransfer(0);
    warn();
    state().LimitWarningArmed = false;
    connection(5000, 0, 0);

    tick();

    EXPECT_FALSE(frmWarning().visible());
}

TEST_F(LimitsTest, HangingUpAloneShowsNoWarning) {
    limitTransfer(0);
    hangUp();
    connection(5000, 0, 0);

    tick();

    EXPECT_EQ(hangUps(), 1);
    EXPECT_TRUE(line().connections.empty());
    EXPECT_FALSE(state().ConnectionActive);
    EXPECT_FALSE(frmWarning().visible());
}

TEST_F(LimitsTest, BothActionsAreTaken) {
    limitTransfer(0);
    warn();
    hangUp();
    connection(5000, 0, 0);

    tick();

    EXPECT_TRUE(frmWarning().visible());
    EXPECT_EQ(hangUps(), 1);
}

TEST_F(LimitsTest, ADisarmedWarningDoesNotKeepTheLineUp) {
    limitTransfer(0);
    warn();
    hangUp();
    state().LimitWarningArmed = false;
    connection(5000, 0, 0);

    tick();

    EXPECT_FALSE(frmWarning().visible());
    EXPECT_EQ(hangUps(), 1);
}

TEST_F(LimitsTest, EveryConnectionIsHungUpAtItsFirstTick) {
    limitTransfer(1'000'000);
    hangUp();
    connection(1'000'001, 0, 0);
    tick();
    ASSERT_EQ(hangUps(), 1);
    tick();
    connection(1, 0, 0);
    tick();
    ASSERT_EQ(hangUps(), 2);
    tick();
    connection(0, 0, 0);

    tick();

    EXPECT_EQ(hangUps(), 3);
    EXPECT_TRUE(line().connections.empty());
}

TEST_F(LimitsTest, TheTimeLimitHangsUpToo) {
    limitDuration(0, 1);
    hangUp();
    connection(0, 0, 60'001);

    tick();

    EXPECT_EQ(hangUps(), 1);
}

TEST_F(LimitsTest, WithoutAnActiveConnectionNothingIsHungUp) {
    limitTransfer(0);
    hangUp();
    state().BytesRcvdTotal = 5000;
    connection(0, 0, 0);

    CheckLimits();

    EXPECT_EQ(hangUps(), 0);
}

TEST_F(LimitsTest, TheTickerTellsBeforeTheLimitHangsUp) {
    limitTransfer(0);
    hangUp();
    state().TransferTicker = 1;
    state().TransferTickerValue = 1;
    connection(1'048'577, 0, 0);
    line().failNext("RasHangUpA", 601);
    std::uint32_t lastFlags = 0;
    expectBox("Error: RasHangUp failed with 601:\rThe port handle is invalid.",
              MsgBoxButtons::OkOnly, MsgBoxIcon::Critical, MsgBoxAnswer::Ok,
              [&] { lastFlags = machine.notificationArea.requests.back().data.uFlags; });
    expectStopQuestion(MsgBoxAnswer::Cancel);

    tick();

    EXPECT_EQ(lastFlags, NotificationArea::info);
}

} // namespace
} // namespace tarvik
