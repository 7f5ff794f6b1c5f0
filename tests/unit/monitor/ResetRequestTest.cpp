#include "monitor/mdlCodeReset.h"

#include "support/WorldTest.h"

namespace tarvik {
namespace {

constexpr const char* reallyReset = "Are you really sure you want to reset the (overall) values?";

/// The reset by hand.
class ResetRequestTest : public WorldTest {
protected:
    ResetRequestTest() {
        startQuietly("/r");
        setTotals(20, 100, 3000);
    }

    void expectResetQuestion(MsgBoxAnswer answer) {
        expectBox(reallyReset, MsgBoxButtons::YesNo, MsgBoxIcon::Question, answer);
    }

    void expectTotals(int rcvd, int sent, int duration) {
        EXPECT_EQ(state().BytesRcvdTotal, Currency(rcvd));
        EXPECT_EQ(state().BytesSentTotal, Currency(sent));
        EXPECT_EQ(state().DurationTotal, Currency(duration));
    }
};

TEST_F(ResetRequestTest, TheUserMayClearTheTotals) {
    state().BytesRcvdCurrent = 5;
    expectResetQuestion(MsgBoxAnswer::Yes);

    ResetTransfersRequest();

    expectTotals(0, 0, 0);
    EXPECT_EQ(state().BytesRcvdCurrent, Long(0));
}

TEST_F(ResetRequestTest, TheUserMayThinkBetterOfIt) {
    state().BytesRcvdCurrent = 5;
    expectResetQuestion(MsgBoxAnswer::No);

    ResetTransfersRequest();

    expectTotals(100, 20, 3000);
    EXPECT_EQ(state().BytesRcvdCurrent, Long(5));
}

TEST_F(ResetRequestTest, AResetByHandIsNotTheLastReset) {
    const Date last = Date::fromCivil({2026, 11, 10});
    state().TransferResetLast = last;
    expectResetQuestion(MsgBoxAnswer::Yes);

    ResetTransfersRequest();

    EXPECT_EQ(state().TransferResetLast, last);
}

TEST_F(ResetRequestTest, AResetByHandShowsInTheMainWindowAtOnce) {
    line().transfer(dialledConnection(), 60, 70, 80);
    tick();
    ASSERT_EQ(frmMain().txtBytesRcvdTotal.text(), "160");
    expectResetQuestion(MsgBoxAnswer::Yes);

    ResetTransfersRequest();

    EXPECT_EQ(frmMain().txtBytesRcvdTotal.text(), "0");
    EXPECT_EQ(frmMain().txtBytesSentTotal.text(), "0");
    EXPECT_EQ(frmMain().txtDurationTotal.text(), "00:00:00:000");
    EXPECT_EQ(frmMain().txtBytesRcvd.text(), "0");
    EXPECT_EQ(frmMain().txtBytesSent.text(), "0");
    EXPECT_EQ(frmMain().txtDurationCurrent.text(), "00:00:00:000");
}

TEST_F(ResetRequestTest, TheButtonOfTheOptionsAsks) {
    expectResetQuestion(MsgBoxAnswer::Yes);

    frmOptions().cmdResetValues.press();

    expectTotals(0, 0, 0);
}

TEST_F(ResetRequestTest, AResetByHandKeepsTheSessionUnderWayForTheNextTick) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 60, 70, 80);
    tick();
    expectResetQuestion(MsgBoxAnswer::Yes);
    ResetTransfersRequest();

    tick();

    EXPECT_EQ(frmMain().txtBytesRcvdTotal.text(), "60");
}

TEST_F(ResetRequestTest, AnErrorOfTheRequestIsReportedAndLeavesTheTotals) {
    expectBox(reallyReset, MsgBoxButtons::YesNo, MsgBoxIcon::Question, MsgBoxAnswer::Yes,
              [] { raise(ErrorNumber::OutOfMemory); });
    expectError("7 (Out of memory)", "ResetTransfersRequest");

    ResetTransfersRequest();

    expectTotals(100, 20, 3000);
}

} // namespace
} // namespace tarvik
