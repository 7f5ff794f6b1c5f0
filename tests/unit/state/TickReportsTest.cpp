#include "state/TickReports.h"

#include "monitor/mdlCodeToggle.h"
#include "support/WorldTest.h"
#include "ui/mdlGUIFigures.h"

namespace tarvik {
namespace {

TEST(TickReportsTest, OutsideOfATickEverythingIsNews) {
    TickReports reports;

    EXPECT_TRUE(reports.isNews("a"));
    EXPECT_TRUE(reports.isNews("a"));
}

TEST(TickReportsTest, WhatConsecutiveTicksReportIsNewsOnce) {
    TickReports reports;
    for (const bool expected : {true, false, false}) {
        const TickOfReports tick(reports);
        EXPECT_EQ(reports.isNews("a"), expected);
    }
}

TEST(TickReportsTest, ATickWithoutItMakesItNewsAgain) {
    TickReports reports;
    for (const bool fails : {true, false, true}) {
        const TickOfReports tick(reports);
        if (fails) {
            EXPECT_TRUE(reports.isNews("a"));
        }
    }
}

TEST(TickReportsTest, AnotherTextIsNewsOfItsOwn) {
    TickReports reports;
    {
        const TickOfReports tick(reports);
        EXPECT_TRUE(reports.isNews("a"));
        EXPECT_TRUE(reports.isNews("b"));
        EXPECT_TRUE(reports.isNews("b"));
    }
    const TickOfReports tick(reports);
    EXPECT_FALSE(reports.isNews("b"));
    EXPECT_FALSE(reports.isNews("a"));
    EXPECT_TRUE(reports.isNews("c"));
}

/// The total is as large as it can be: to add anything to it is an error, in every tick.
class DamagedTotalTest : public WorldTest {
protected:
    static constexpr const char* overflow = "6 (Overflow)";

    DamagedTotalTest() {
        startQuietly("/r");
        handle_ = dialledConnection();
        tick();
        state().BytesRcvdTotal = largest;
    }

    void receiveAndTick() {
        machine.connections.transfer(handle_, 5000, 700, 1500);
        tick();
    }

    const Currency largest = Currency::fromWhole(922'337'203'685'477);

private:
    std::uint32_t handle_ = 0;
};

TEST_F(DamagedTotalTest, IsToldOnceWhileEveryTickMeetsItAndCountingGoesOn) {
    expectError(overflow, "UpdateValuesInGUI");
    receiveAndTick();

    receiveAndTick();
    receiveAndTick();

    EXPECT_EQ(state().BytesRcvdCurrent, Long(15'000));
    EXPECT_EQ(state().BytesSentCurrent, Long(2100));
    EXPECT_TRUE(state().MonitoringActive);
}

TEST_F(DamagedTotalTest, IsToldAgainAfterATickWithoutIt) {
    expectError(overflow, "UpdateValuesInGUI");
    receiveAndTick();
    state().BytesRcvdTotal = Currency(0);
    receiveAndTick();
    state().BytesRcvdTotal = largest;

    expectError(overflow, "UpdateValuesInGUI");
    receiveAndTick();
}

TEST_F(DamagedTotalTest, IsToldAgainWhenMonitoringIsStartedAnew) {
    expectError(overflow, "UpdateValuesInGUI");
    receiveAndTick();
    expectStopQuestion(MsgBoxAnswer::Ok);
    ToggleMonitoringActive(false);
    ToggleMonitoringActive(true);

    expectError(overflow, "UpdateValuesInGUI");
    receiveAndTick();
}

TEST_F(DamagedTotalTest, IsToldEachTimeOutsideOfTheTicks) {
    expectError(overflow, "UpdateValuesInGUI");
    receiveAndTick();

    expectError(overflow, "UpdateValuesInGUI");
    UpdateValuesInGUI(true, true, false);
}

} // namespace
} // namespace tarvik
