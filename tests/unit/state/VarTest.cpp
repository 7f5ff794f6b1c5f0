#include "state/mdlTransfers.h"
#include "state/mdlVar.h"

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
    for (const Counter& counter : {s.BytesRcvdCurrent, s.BytesSentCurrent, s.DurationCurrent,
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

TEST_F(VarTest, TheDefaultsReplaceWhateverWasThere) {
    State& s = state();
    s.RasConnections.resize(2);
    s.HostName = s.IPAddress = "x";
    s.BytesRcvdCurrent = s.BytesSentCurrent = s.DurationCurrent = 9;
    s.BytesRcvdOffset = s.BytesSentOffset = s.DurationOffset = 9;
    s.BytesRcvdTotal = s.BytesSentTotal = s.DurationTotal = s.TickerBase = 9;
    s.MonitoringActive = s.ConnectionActive = s.DialInStarted = true;
    s.UnitTransferCurrent = s.UnitTransferTotal = TransferUnit::GigaBytes;
    s.StartUpRunMonitoring = s.StartUpMinimise = s.TransferLimit = s.DurationLimit = 1;
    s.TransferLimitWarning = s.TransferLimitHangUp = s.TransferResetEnable = 1;
    s.TransferResetBackup = s.LogIPAddress = s.TransferTicker = 1;
    s.DurationLimitMin = 9;
    s.TransferReset = enDateCalc::EndOfYear;
    expectWarning("Warning: Old settings could not be loaded.\rAssuming first run.");

    InitApplicationStatus();

    EXPECT_TRUE(s.RasConnections.empty());
    EXPECT_EQ(s.HostName + s.IPAddress, "");
    for (const Counter& counter : {s.BytesRcvdCurrent, s.BytesSentCurrent, s.DurationCurrent,
                                   s.BytesRcvdOffset, s.BytesSentOffset, s.DurationOffset}) {
        EXPECT_EQ(counter, Long(0));
    }
    for (const Currency total :
         {s.BytesRcvdTotal, s.BytesSentTotal, s.DurationTotal, s.TickerBase}) {
        EXPECT_EQ(total, Currency(0));
    }
    EXPECT_FALSE(s.MonitoringActive || s.ConnectionActive || s.DialInStarted);
    EXPECT_EQ(s.UnitTransferCurrent, TransferUnit::Bytes);
    EXPECT_EQ(s.UnitTransferTotal, TransferUnit::Bytes);
    for (const std::uint8_t flag :
         {s.StartUpRunMonitoring, s.StartUpMinimise, s.TransferLimit, s.DurationLimit,
          s.TransferLimitWarning, s.TransferLimitHangUp, s.TransferResetEnable,
          s.TransferResetBackup, s.LogIPAddress, s.TransferTicker}) {
        EXPECT_EQ(flag, 0);
    }
    EXPECT_EQ(s.DurationLimitMin, Long(0));
    EXPECT_EQ(s.TransferReset, enDateCalc::MiddleOfDay);
}

TEST_F(VarTest, TheDefaultsLeaveTheSwitchesOfTheCommandLine) {
    state().ArgRun = state().ArgMinimise = true;
    expectWarning("Warning: Old settings could not be loaded.\rAssuming first run.");

    InitApplicationStatus();

    EXPECT_TRUE(state().ArgRun);
    EXPECT_TRUE(state().ArgMinimise);
}

struct DateFormCase {
    const char* name;
    LocaleData locale;
};

class DefaultDateTest : public WorldTest, public testing::WithParamInterface<DateFormCase> {};

TEST_P(DefaultDateTest, IsTheFirstOfJanuary2001) {
    machine.locale.conventions = GetParam().locale;
    expectWarning("Warning: Old settings could not be loaded.\rAssuming first run.");

    InitApplicationStatus();

    EXPECT_EQ(state().TransferResetLast.serial(), 36892.0);
}

INSTANTIATE_TEST_SUITE_P(EachForm, DefaultDateTest,
                         testing::Values(DateFormCase{"German", germanLocale()},
                                         DateFormCase{"American", americanLocale()},
                                         DateFormCase{"Swedish", swedishLocale()},
                                         DateFormCase{"French", frenchLocale()},
                                         DateFormCase{"Finnish", finnishLocale()},
                                         DateFormCase{"Japanese", japaneseLocale()}),
                         [](const auto& given) { return given.param.name; });

TEST_F(VarTest, EverythingIsZeroBeforeTheDefaultsAreWritten) {
    EXPECT_EQ(state().RefreshInterval, Long(0));
    EXPECT_FALSE(state().FirstOnlineUpdate);
    EXPECT_FALSE(state().LimitWarningArmed);
    EXPECT_EQ(state().IniFileName, "");
}

} // namespace
} // namespace tarvik
