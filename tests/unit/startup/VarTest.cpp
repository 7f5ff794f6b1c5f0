#include "startup/mdlVar.h"

#include "startup/mdlStartUp.h"
#include "support/WorldTest.h"

namespace tarvik {
namespace {

using VarTest = WorldTest;

TEST_F(VarTest, AFinishedSessionGoesIntoTheTotalsWithoutItsOffset) {
    state().BytesRcvdTotal = 100;
    state().BytesRcvdCurrent = 5000;
    state().BytesRcvdOffset = 2000;

    ResetTransfers(false);

    EXPECT_EQ(state().BytesRcvdTotal, Currency(3100));
    EXPECT_EQ(state().BytesRcvdCurrent, Long(0));
    EXPECT_EQ(state().BytesRcvdOffset, Long(0));
}

TEST_F(VarTest, AllThreeFiguresAreFolded) {
    state().BytesSentCurrent = 7;
    state().BytesSentOffset = 2;
    state().DurationCurrent = 900;
    state().DurationOffset = 400;

    ResetTransfers(false);

    EXPECT_EQ(state().BytesSentTotal, Currency(5));
    EXPECT_EQ(state().DurationTotal, Currency(500));
    EXPECT_EQ(state().BytesSentCurrent, Long(0));
    EXPECT_EQ(state().BytesSentOffset, Long(0));
    EXPECT_EQ(state().DurationCurrent, Long(0));
    EXPECT_EQ(state().DurationOffset, Long(0));
}

TEST_F(VarTest, AFoldedSessionMayGoBeyond32Bits) {
    state().BytesRcvdTotal = 2'147'483'647;
    state().BytesRcvdCurrent = 2'147'483'647;

    ResetTransfers(false);

    EXPECT_EQ(state().BytesRcvdTotal, Currency::fromWhole(4'294'967'294));
}

TEST_F(VarTest, AFullResetLeavesAllNineCountersZero) {
    State& s = state();
    s.BytesRcvdTotal = s.BytesSentTotal = s.DurationTotal = 9;
    s.BytesRcvdCurrent = s.BytesSentCurrent = s.DurationCurrent = 8;
    s.BytesRcvdOffset = s.BytesSentOffset = s.DurationOffset = 7;

    ResetTransfers(true);

    for (const Currency total : {s.BytesRcvdTotal, s.BytesSentTotal, s.DurationTotal}) {
        EXPECT_EQ(total, Currency(0));
    }
    for (const Long counter : {s.BytesRcvdCurrent, s.BytesSentCurrent, s.DurationCurrent,
                               s.BytesRcvdOffset, s.BytesSentOffset, s.DurationOffset}) {
        EXPECT_EQ(counter, Long(0));
    }
}

TEST_F(VarTest, ATotalThatOverflowsIsReportedUnderItsName) {
    state().BytesRcvdTotal = Currency::fromScaled(INT64_MAX);
    state().BytesRcvdCurrent = 1;
    expectError("6 (Overflow)", "ResetTransfers");

    ResetTransfers(false);
}

TEST_F(VarTest, WithoutAFileEverySettingHasItsDefault) {
    expectWarning("Warning: Old settings could not be loaded.\rAssuming first run.");

    InitApplicationStatus();

    const State& s = state();
    EXPECT_EQ(s.UnitTransferCurrent, TransferUnit::Bytes);
    EXPECT_EQ(s.UnitTransferTotal, TransferUnit::Bytes);
    EXPECT_EQ(s.StartUpRunMonitoring, 0);
    EXPECT_EQ(s.StartUpMinimise, 0);
    EXPECT_EQ(s.TransferLimit, 0);
    EXPECT_EQ(s.TransferLimitValue, Currency(1'000'000));
    EXPECT_EQ(s.DurationLimit, 0);
    EXPECT_EQ(s.DurationLimitHr, Long(600));
    EXPECT_EQ(s.DurationLimitMin, Long(0));
    EXPECT_EQ(s.TransferLimitWarning, 0);
    EXPECT_EQ(s.TransferLimitHangUp, 0);
    EXPECT_EQ(s.TransferResetEnable, 0);
    EXPECT_EQ(s.TransferReset, enDateCalc::MiddleOfDay);
    EXPECT_EQ(s.TransferResetBackup, 0);
    EXPECT_EQ(s.TransferResetLast.serial(), 36892.0); // 1 January 2001
    EXPECT_EQ(s.RefreshInterval, Long(1000));
    EXPECT_EQ(s.LogIPAddress, 0);
    EXPECT_EQ(s.TransferTicker, 0);
    EXPECT_EQ(s.TransferTickerValue, Long(100));
    EXPECT_TRUE(s.LimitWarningArmed);
    EXPECT_TRUE(s.FirstOnlineUpdate);
    EXPECT_FALSE(s.DialInStarted);
    EXPECT_FALSE(s.MonitoringActive);
    EXPECT_FALSE(s.ConnectionActive);
    EXPECT_EQ(s.HostName, "");
    EXPECT_EQ(s.IPAddress, "");
    EXPECT_EQ(s.BytesRcvdTotal, Currency(0));
}

TEST_F(VarTest, EverythingIsZeroBeforeTheDefaultsAreWritten) {
    EXPECT_EQ(state().RefreshInterval, Long(0));
    EXPECT_FALSE(state().FirstOnlineUpdate);
    EXPECT_FALSE(state().LimitWarningArmed);
    EXPECT_EQ(state().IniFileName, "");
}

} // namespace
} // namespace tarvik
