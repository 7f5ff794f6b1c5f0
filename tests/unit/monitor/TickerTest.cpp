#include "monitor/mdlCodeLimits.h"

#include "state/mdlTransfers.h"

#include "support/WorldTest.h"

namespace tarvik {
namespace {

constexpr std::uint32_t step = 104'857'600; // 100 mega-bytes

class TickerTest : public WorldTest {
protected:
    TickerTest() {
        startQuietly("/r");
        state().TransferTicker = 1;
    }

    /// A connection that has transferred so much, and one tick.
    std::uint32_t session(std::uint32_t rcvd, std::uint32_t sent) {
        const std::uint32_t handle = dialledConnection();
        line().transfer(handle, rcvd, sent, 1000);
        tick();
        return handle;
    }

    std::vector<NOTIFYICONDATAA> balloons() const {
        std::vector<NOTIFYICONDATAA> found;
        for (const auto& [request, data] : machine.notificationArea.requests) {
            if ((data.uFlags & NotificationArea::info) != 0) {
                found.push_back(data);
            }
        }
        return found;
    }

    std::vector<std::string> texts() const {
        std::vector<std::string> found;
        for (const NOTIFYICONDATAA& balloon : balloons()) {
            found.emplace_back(balloon.szInfo);
        }
        return found;
    }

    /// What a balloon with 100 in the options says.
    static std::string text(const std::string& further, const std::string& total) {
        return "Another " + further + " bytes transferred (100MB were setup).\r" + total +
               " bytes transferred in total.";
    }
};

TEST_F(TickerTest, AtExactlyOneStepThereIsNoBalloon) {
    session(step, 0);

    EXPECT_TRUE(balloons().empty());
    EXPECT_EQ(state().TickerBase, Currency(0));
}

TEST_F(TickerTest, OneByteBeyondAStepIsTold) {
    session(step + 1, 0);

    EXPECT_EQ(texts(), std::vector<std::string>{
                           "Another 104857601 bytes transferred (100MB were setup).\r104857601 "
                           "bytes transferred in total."});
}

TEST_F(TickerTest, TheBalloonIsAnInformationOfTenSeconds) {
    session(step + 1, 0);

    ASSERT_EQ(balloons().size(), 1U);
    const NOTIFYICONDATAA balloon = balloons().front();
    EXPECT_STREQ(balloon.szInfoTitle, "Tarvik - transfer ticker");
    EXPECT_EQ(balloon.dwInfoFlags, 1U);
    EXPECT_EQ(balloon.uTimeoutOrVersion, 10'000U);
}

TEST_F(TickerTest, TheBalloonBelongsToTheIcon) {
    session(step + 1, 0);

    ASSERT_EQ(balloons().size(), 1U);
    const NOTIFYICONDATAA balloon = balloons().front();
    EXPECT_EQ(balloon.cbSize, 488U);
    EXPECT_EQ(balloon.uFlags, 16U);
    EXPECT_EQ(balloon.uID, 1U);
    EXPECT_EQ(balloon.hWnd, frmSysTray().picSysTrayHook.hWnd());
}

TEST_F(TickerTest, TheBalloonChangesTheIconThatIsThere) {
    machine.notificationArea.requests.clear();
    state().BytesRcvdTotal = static_cast<std::int32_t>(step) + 1;

    CheckLimits();

    ASSERT_EQ(machine.notificationArea.requests.size(), 1U);
    EXPECT_EQ(machine.notificationArea.requests[0].request, 1U);
}

TEST_F(TickerTest, TotalsAndSessionOfBothDirectionsAreAddedUp) {
    state().BytesRcvdTotal = 100'000'000;
    state().BytesSentTotal = 20'000'000;
    state().BytesRcvdCurrent = 3'000'000;
    state().BytesSentCurrent = 400'000;

    CheckLimits();

    EXPECT_EQ(texts(), std::vector<std::string>{text("123400000", "123400000")});
}

TEST_F(TickerTest, TheFieldOfTheOptionsIsQuotedAsItStands) {
    frmOptions().txtTransferTicker.setText("7x");

    session(step + 1, 0);

    EXPECT_EQ(texts(), std::vector<std::string>{
                           "Another 104857601 bytes transferred (7xMB were setup).\r104857601 "
                           "bytes transferred in total."});
}

TEST_F(TickerTest, TheStepIsTheSettingWhateverTheFieldSays) {
    state().TransferTickerValue = 1;

    session(1'048'577, 0);

    EXPECT_EQ(texts(), std::vector<std::string>{text("1048577", "1048577")});
}

TEST_F(TickerTest, WhatTheUserDeclinedToCountIsToldAllTheSame) {
    line().transfer(line().connect("Harbour"), step, 1, 1000);
    expectSessionQuestion("104857601", MsgBoxAnswer::No);

    tick();

    EXPECT_EQ(state().BytesRcvdOffset, Long(static_cast<std::int32_t>(step)));
    EXPECT_EQ(texts(), std::vector<std::string>{text("104857601", "104857601")});
}

TEST_F(TickerTest, ALateBalloonTellsMoreThanOneStep) {
    session(3 * step + 5, 0);

    EXPECT_EQ(texts(), std::vector<std::string>{text("314572805", "314572805")});
}

TEST_F(TickerTest, TheNextStepCountsFromTheFigureThatWasTold) {
    const std::uint32_t handle = session(3 * step + 5, 0);
    EXPECT_EQ(state().TickerBase, Currency(314'572'805));
    line().transfer(handle, step, 0, 1000);
    tick();
    ASSERT_EQ(balloons().size(), 1U);
    line().transfer(handle, 0, 1, 1000);

    tick();

    EXPECT_EQ(texts(), (std::vector<std::string>{text("314572805", "314572805"),
                                                 text("104857601", "419430406")}));
}

TEST_F(TickerTest, AFigureIsToldOnce) {
    session(step + 1, 0);

    tick();

    EXPECT_EQ(balloons().size(), 1U);
}

TEST_F(TickerTest, WhatWasTransferredInFormerRunsIsNotTold) {
    state().BytesRcvdTotal = 500'000'000;

    session(step, 0);

    EXPECT_TRUE(balloons().empty());
    EXPECT_EQ(state().TickerBase, Currency(500'000'000));
}

TEST_F(TickerTest, TheTotalOfTheBalloonIncludesFormerRuns) {
    state().BytesRcvdTotal = 500'000'000;

    session(step + 1, 0);

    EXPECT_EQ(texts(), std::vector<std::string>{text("104857601", "604857601")});
}

TEST_F(TickerTest, AStepMayPassOverSeveralSessions) {
    const std::uint32_t first = session(step, 0);
    line().disconnect(first);
    tick();

    session(1, 0);

    EXPECT_EQ(texts(), std::vector<std::string>{text("104857601", "104857601")});
}

TEST_F(TickerTest, AfterAResetTheTickerIsSilentUntilItsFigureIsReachedAgain) {
    const std::uint32_t handle = session(step + 1, 0);
    ResetTransfers(true);
    line().disconnect(handle);
    tick();

    session(step + 2, 0);

    EXPECT_EQ(balloons().size(), 1U);
    EXPECT_EQ(state().TickerBase, Currency(104'857'601));
}

TEST_F(TickerTest, SwitchedOffItTellsNothingAndKeepsItsFigure) {
    state().TransferTicker = 0;

    session(step + 1, 0);

    EXPECT_TRUE(balloons().empty());
    EXPECT_EQ(state().TickerBase, Currency(0));
}

TEST_F(TickerTest, OfflineNothingIsTold) {
    state().BytesRcvdTotal = 500'000'000;

    tick();

    EXPECT_TRUE(balloons().empty());
}

TEST_F(TickerTest, WithoutBalloonSupportTheDesktopIsAskedForNothingAndTheFigureMovesOn) {
    frmSysTray().balloonSupport = false;
    machine.notificationArea.requests.clear();
    state().BytesRcvdTotal = static_cast<std::int32_t>(step) + 1;

    CheckLimits();

    EXPECT_TRUE(machine.notificationArea.requests.empty());
    EXPECT_EQ(state().TickerBase, Currency(104'857'601));
}

TEST_F(TickerTest, ABalloonThatWasNotShownCountsAsTold) {
    machine.notificationArea.present = false;

    session(step + 1, 0);
    tick();

    EXPECT_EQ(balloons().size(), 1U);
    EXPECT_EQ(state().TickerBase, Currency(104'857'601));
}

TEST_F(TickerTest, TheLargestStepDoesNotOverflow) {
    state().TransferTickerValue = 9999;
    state().BytesSentTotal = Currency::fromWhole(10'484'711'424);
    CheckLimits();
    EXPECT_TRUE(balloons().empty());
    state().BytesSentCurrent = 1;

    CheckLimits();

    EXPECT_EQ(texts(), std::vector<std::string>{text("10484711425", "10484711425")});
}

TEST_F(TickerTest, ASessionBeyondItsCounterIsToldAsAWhole) {
    const std::uint32_t handle = session(4'294'967'295, 0);
    line().transfer(handle, 104'857'601, 0, 1000);
    tick();

    EXPECT_EQ(texts(), (std::vector<std::string>{text("4294967295", "4294967295"),
                                                 text("104857601", "4399824896")}));
}

TEST_F(TickerTest, AnAbsurdStepIsNeverReachedWithoutAnError) {
    state().TransferTickerValue = INT32_MAX;
    state().BytesSentTotal = Currency::fromWhole(922'337'203'685'477);

    CheckLimits();

    EXPECT_TRUE(balloons().empty());
}

TEST_F(TickerTest, TotalsThatOverflowAreReportedAndNothingIsTold) {
    state().BytesSentTotal = Currency::fromScaled(INT64_MAX);
    state().BytesSentCurrent = 1;
    expectError("6 (Overflow)", "CheckLimits");

    CheckLimits();

    EXPECT_TRUE(balloons().empty());
    EXPECT_EQ(state().TickerBase, Currency(0));
}

} // namespace
} // namespace tarvik
