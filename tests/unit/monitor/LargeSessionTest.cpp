#include "monitor/mdlCodeMonitor.h"
#include "monitor/mdlCodeToggle.h"
#include "settings/mdlSettingsLog.h"
#include "support/WorldTest.h"

#include "state/mdlTransfers.h"

#include <cstdint>
#include <initializer_list>

namespace tarvik {
namespace {

/// Sessions beyond what a signed and an unsigned number of 32 bits hold.
class LargeSessionTest : public WorldTest {
protected:
    static constexpr std::uint32_t lastLong = 2'147'483'647;
    static constexpr std::uint32_t lastCounter = 4'294'967'295;

    LargeSessionTest() { startQuietly("/r"); }

    FrmMain& window() { return frmMain(); }

    /// A tick after each amount that was received meanwhile, in frames of 1,000 bytes.
    void receive(std::uint32_t handle, std::initializer_list<std::uint32_t> amounts) {
        for (const std::uint32_t bytes : amounts) {
            line().transfer(handle, bytes, 0, 1000);
            line().connection(handle)->statistics.dwFramesRcved += bytes / 1000;
            tick();
        }
    }

    static Currency whole(std::int64_t value) { return Currency::fromWhole(value); }
};

TEST_F(LargeSessionTest, TheLargestLongIsHeldByTheCounterAlone) {
    receive(dialledConnection(), {lastLong});

    EXPECT_EQ(state().BytesRcvdCurrent.figure(), Long(2'147'483'647));
    EXPECT_EQ(state().BytesRcvdCurrent.beyond(), Currency(0));
    EXPECT_EQ(window().txtBytesRcvd.text(), "2,147,483,647");
}

TEST_F(LargeSessionTest, OneByteMoreIsCarriedBesideTheCounter) {
    receive(dialledConnection(), {lastLong, 1});

    EXPECT_EQ(state().BytesRcvdCurrent.figure(), Long(2'147'483'647));
    EXPECT_EQ(state().BytesRcvdCurrent.beyond(), Currency(1));
    EXPECT_EQ(window().txtBytesRcvd.text(), "2,147,483,648");
    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "2,147,483,648");
}

TEST_F(LargeSessionTest, ACounterAtItsEndIsWhole) {
    receive(dialledConnection(), {lastCounter});

    EXPECT_EQ(window().txtBytesRcvd.text(), "4,294,967,295");
}

TEST_F(LargeSessionTest, ACounterThatPassesItsEndIsCarriedOn) {
    receive(dialledConnection(), {lastCounter, 1, 5});

    EXPECT_EQ(window().txtBytesRcvd.text(), "4,294,967,301");
    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "4,294,967,301");
}

TEST_F(LargeSessionTest, EveryPassOfTheEndIsCounted) {
    receive(dialledConnection(), {3'000'000'000, 3'000'000'000, 3'000'000'000, 3'000'000'000});

    EXPECT_EQ(window().txtBytesRcvd.text(), "12,000,000,000");
}

TEST_F(LargeSessionTest, SentBytesAndTimeAreCarriedOnAsWell) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 0, lastCounter, lastCounter);
    tick();
    line().transfer(handle, 0, 2, 2);

    tick();

    EXPECT_EQ(window().txtBytesSent.text(), "4,294,967,297");
    EXPECT_EQ(window().txtDurationCurrent.text(), "1193:02:47:297");
    EXPECT_EQ(window().txtDurationTotal.text(), "1193:02:47:297");
}

TEST_F(LargeSessionTest, ALargeSessionGoesIntoTheTotalsAsAWhole) {
    const std::uint32_t handle = dialledConnection();
    receive(handle, {lastCounter, 11});
    line().disconnect(handle);

    tick();
    tick();

    EXPECT_EQ(state().BytesRcvdTotal, whole(4'294'967'306));
    EXPECT_EQ(state().DurationTotal, Currency(2000));
    EXPECT_EQ(state().BytesRcvdCurrent.beyond(), Currency(0));
    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "4,294,967,306");
}

TEST_F(LargeSessionTest, ARecordHoldsTheWholeSession) {
    receive(dialledConnection(), {lastCounter, 1});

    ASSERT_TRUE(SaveState());

    EXPECT_EQ(GetBytesRcvd(GetNumRecords()), whole(4'294'967'296));
}

TEST_F(LargeSessionTest, TheLimitComparesTheWholeSession) {
    state().TransferLimit = 1;
    state().TransferLimitWarning = 1;
    state().TransferLimitValue = whole(5'000'000'000);
    const std::uint32_t handle = dialledConnection();
    receive(handle, {lastCounter, 705'032'705});
    EXPECT_FALSE(forms().frmWarning.visible());

    receive(handle, {1});

    EXPECT_TRUE(forms().frmWarning.visible());
}

TEST_F(LargeSessionTest, TheTimeLimitComparesTheWholeSession) {
    state().DurationLimit = 1;
    state().TransferLimitWarning = 1;
    state().DurationLimitHr = 1200; // 4,320,000,000 ms
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 0, 0, lastCounter);
    tick();
    line().transfer(handle, 0, 0, 25'032'705);
    tick();
    EXPECT_FALSE(forms().frmWarning.visible());

    line().transfer(handle, 0, 0, 1);
    tick();

    EXPECT_TRUE(forms().frmWarning.visible());
}

TEST_F(LargeSessionTest, AFoundSessionThatLargeIsAskedAboutWithItsSize) {
    line().transfer(line().connect("Harbour"), 3'000'000'000, 4'000'000'000, 1000);
    expectSessionQuestion("7000000000", MsgBoxAnswer::Yes);

    tick();

    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "3,000,000,000");
    EXPECT_EQ(window().txtBytesSentTotal.text(), "4,000,000,000");
}

TEST_F(LargeSessionTest, ADeclinedSessionThatLargeIsLeftOutWhole) {
    const std::uint32_t handle = line().connect("Harbour");
    line().transfer(handle, 3'000'000'000, 4'000'000'000, 3'000'000'000);
    expectSessionQuestion("7000000000", MsgBoxAnswer::No);
    tick();
    EXPECT_EQ(window().txtBytesRcvd.text(), "0");
    line().transfer(handle, 2'000'000'000, 500'000'000, 1000);

    tick();

    EXPECT_EQ(window().txtBytesRcvd.text(), "2,000,000,000");
    EXPECT_EQ(window().txtBytesSent.text(), "500,000,000");
    EXPECT_EQ(window().txtDurationCurrent.text(), "00:00:01:000");
    line().disconnect(handle);
    tick();
    EXPECT_EQ(state().BytesRcvdTotal, whole(2'000'000'000));
    EXPECT_EQ(state().BytesRcvdOffset.beyond(), Currency(0));
}

TEST_F(LargeSessionTest, AfterAResetInBetweenTheWholeSessionCountsAnew) {
    const std::uint32_t handle = dialledConnection();
    receive(handle, {lastCounter, 5});
    ResetTransfers(true);

    receive(handle, {1});

    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "4,294,967,301");
}

TEST_F(LargeSessionTest, AFullResetForgetsWhatIsBeyond) {
    State& s = state();
    const Counter large = Counter::of(whole(2'147'483'655));
    s.BytesRcvdCurrent = s.BytesSentCurrent = s.DurationCurrent = large;
    s.BytesRcvdOffset = s.BytesSentOffset = s.DurationOffset = large;

    ResetTransfers(true);

    for (const Tally& tally : {Rcvd(), Sent(), Duration()}) {
        EXPECT_EQ(tally.finished, Currency(0));
        EXPECT_EQ(tally.current, Counter(0));
        EXPECT_EQ(tally.offset, Counter(0));
    }
}

TEST_F(LargeSessionTest, ALineThatCountsFurtherIsTakenAtItsWord) {
    const std::uint32_t handle = line().connect("Harbour");
    line().transfer(handle, 5, 6, 7);
    line().connection(handle)->totals =
        Traffic{.rcvd = 30'000'000'005, .sent = 20'000'000'006, .milliseconds = 4'320'000'007};
    expectSessionQuestion("50000000011", MsgBoxAnswer::Yes);

    tick();

    EXPECT_EQ(window().txtBytesRcvd.text(), "30,000,000,005");
    EXPECT_EQ(window().txtBytesSent.text(), "20,000,000,006");
    EXPECT_EQ(window().txtDurationCurrent.text(), "1200:00:00:007");
}

TEST_F(LargeSessionTest, ASenselessFigureStopsWhereTheTotalsHaveRoom) {
    const std::uint32_t handle = dialledConnection();
    line().connection(handle)->totals =
        Traffic{.rcvd = UINT64_MAX, .sent = UINT64_MAX, .milliseconds = UINT64_MAX};

    tick();

    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "461,168,601,842,738");
}

TEST_F(LargeSessionTest, TheStatisticsShowTheWholeSession) {
    forms().frmStatistics.chkActiveConnection.setValue(1);
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 4'000'000'000, 0, 1'000'000);
    line().connection(handle)->statistics.dwFramesRcved = 4'000'000;
    tick();
    line().transfer(handle, 4'000'000'000, 0, 1'000'000);
    line().connection(handle)->statistics.dwFramesRcved = 8'000'000;

    tick();

    EXPECT_EQ(forms().frmStatistics.txtAverageThroughput.text(), "4,000.00 / 32,000.00");
}

TEST_F(LargeSessionTest, ASessionBetweenTwoTicksIsNotTakenForAPassOfTheEnd) {
    const std::uint32_t first = dialledConnection();
    line().transfer(first, 5000, 300, 60'000);
    tick();
    line().connection(first)->statistics = {};
    line().transfer(first, 70, 20, 900);

    tick();

    EXPECT_EQ(state().BytesRcvdCurrent, Long(70));
    EXPECT_EQ(state().BytesRcvdTotal, Currency(5000));
    EXPECT_EQ(state().BytesSentTotal, Currency(300));
    EXPECT_EQ(state().DurationTotal, Currency(60'000));
    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "5,070");
}

TEST_F(LargeSessionTest, AConnectionThatFollowsAtOnceKeepsWhatTheOneBeforeCounted) {
    const std::uint32_t first = dialledConnection();
    line().transfer(first, 5000, 300, 60'000);
    tick();
    line().disconnect(first);
    line().transfer(line().connect("Harbour"), 70, 20, 900);

    tick();

    EXPECT_EQ(state().BytesRcvdCurrent, Long(70));
    EXPECT_EQ(state().BytesRcvdTotal, Currency(5000));
    EXPECT_EQ(state().DurationTotal, Currency(60'000));
}

TEST_F(LargeSessionTest, AnotherEntryThatFollowsAtOnceKeepsWhatTheOneBeforeCounted) {
    const std::uint32_t first = dialledConnection();
    line().transfer(first, 5000, 300, 60'000);
    tick();
    line().disconnect(first);
    line().transfer(line().connect("Ridge"), 7000, 2000, 90'000);

    tick();

    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "12,000");
}

TEST_F(LargeSessionTest, ASessionUnderANewHandleIsNotCountedTwice) {
    const std::uint32_t first = dialledConnection();
    line().transfer(first, 5000, 300, 60'000);
    tick();
    line().disconnect(first);
    line().transfer(line().connect("Harbour"), 5100, 310, 61'000);

    tick();

    EXPECT_EQ(state().BytesRcvdTotal, Currency(0));
    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "5,100");
}

TEST_F(LargeSessionTest, TheEndOfOneOfTwoKeepsWhatItCounted) {
    const std::uint32_t first = dialledConnection();
    const std::uint32_t second = line().connect("Ridge");
    line().transfer(first, 100, 10, 50'000);
    line().transfer(second, 5000, 300, 60'000);
    tick();
    line().disconnect(second);

    tick();

    EXPECT_EQ(state().BytesRcvdTotal, Currency(5000));
    EXPECT_EQ(state().BytesRcvdCurrent, Long(100));
}

TEST_F(LargeSessionTest, ClearedCountersAreNotTakenForAPassOfTheEnd) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 5000, 300, 60'000);
    RAS_STATS& statistics = line().connection(handle)->statistics;
    statistics.dwFramesRcved = 50;
    statistics.dwFramesXmited = 3;
    tick();
    statistics.dwBytesRcved = 70;
    statistics.dwBytesXmited = 0;
    statistics.dwFramesRcved = 1;
    statistics.dwFramesXmited = 0;
    statistics.dwConnectDuration = 61'000;

    tick();

    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "5,070");
    EXPECT_EQ(window().txtBytesSentTotal.text(), "300");
    EXPECT_EQ(window().txtDurationTotal.text(), "00:01:01:000");
}

TEST_F(LargeSessionTest, TimeThatPassesItsEndIsOfTheSameSession) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 10, 10, lastCounter - 86'399'999);
    tick();
    line().transfer(handle, 1, 1, 86'400'000);

    tick();

    EXPECT_EQ(state().DurationTotal, Currency(0));
    EXPECT_EQ(window().txtDurationTotal.text(), "1193:02:47:296");
    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "11");
}

} // namespace
} // namespace tarvik
