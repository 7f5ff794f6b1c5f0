#include "support/WorldTest.h"

#include <cstdint>

namespace tarvik {
namespace {

/// A session that another follows between two ticks: what tells the two apart, and what is kept.
class FollowingSessionTest : public WorldTest {
protected:
    static constexpr std::uint32_t lastCounter = 4'294'967'295;

    FollowingSessionTest() { startQuietly("/r"); }

    FrmMain& window() { return frmMain(); }

    void setLineTotals(std::uint32_t handle, std::uint64_t rcvd, std::uint64_t sent,
                       std::uint64_t duration) {
        line().connection(handle)->totals =
            Traffic{.rcvd = rcvd, .sent = sent, .milliseconds = duration};
        line().connection(handle)->statistics = {};
        line().transfer(handle, static_cast<std::uint32_t>(rcvd), static_cast<std::uint32_t>(sent),
                        static_cast<std::uint32_t>(duration));
    }

    void setFrames(std::uint32_t handle, std::uint32_t rcvd, std::uint32_t sent) {
        line().connection(handle)->statistics.dwFramesRcved = rcvd;
        line().connection(handle)->statistics.dwFramesXmited = sent;
    }

    /// Two are up and read once; the second is the counted one.
    std::uint32_t secondOfTwo() {
        const std::uint32_t first = dialledConnection();
        const std::uint32_t second = line().connect("Ridge");
        line().transfer(first, 100, 10, 50'000);
        line().transfer(second, 5000, 300, 60'000);
        tick();
        return second;
    }
};

TEST_F(FollowingSessionTest, UnderTheHandleOfTheLastOfTwoKeepsWhatTheOneBeforeCounted) {
    const std::uint32_t second = secondOfTwo();
    line().connection(second)->statistics = {};
    line().transfer(second, 70, 20, 900);

    tick();

    EXPECT_EQ(state().BytesRcvdTotal, Currency(5000));
    EXPECT_EQ(state().BytesSentTotal, Currency(300));
    EXPECT_EQ(state().DurationTotal, Currency(60'000));
    EXPECT_EQ(state().BytesRcvdCurrent, Long(70));
}

TEST_F(FollowingSessionTest, OfTheSameEntryAsTheLastOfTwoKeepsWhatTheOneBeforeCounted) {
    line().disconnect(secondOfTwo());
    line().transfer(line().connect("Ridge"), 70, 20, 900);

    tick();

    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "5,070");
}

TEST_F(FollowingSessionTest, AfterTheFirstOfTwoKeepsWhatTheOneBeforeCounted) {
    secondOfTwo();
    RAS_STATS& first = line().connections.front().statistics;
    first = {};
    first.dwBytesRcved = 7;
    first.dwConnectDuration = 900;

    tick();

    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "5,100");
    EXPECT_EQ(state().BytesRcvdTotal, Currency(100));
}

TEST_F(FollowingSessionTest, AfterADeclinedLastOfTwoIsCountedFromItsBeginning) {
    const std::uint32_t first = line().connect("Ridge");
    line().transfer(first, 5000, 300, 60'000);
    expectSessionQuestion("5300", MsgBoxAnswer::No);
    tick();
    line().transfer(first, 25, 1, 500);
    tick();
    line().connection(first)->statistics = {};
    line().transfer(first, 70, 20, 900);
    const std::uint32_t other = line().connect("Harbour");
    std::swap(line().connections.front(), line().connections.back());
    ASSERT_EQ(line().connections.front().handle, other);

    tick();

    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "95");
    EXPECT_EQ(state().BytesRcvdOffset, Long(0));
}

TEST_F(FollowingSessionTest, AfterAResetInTheSameTickBringsNothingBack) {
    state().TransferResetEnable = 1;
    state().TransferReset = enDateCalc::EndOfDay;
    const std::uint32_t second = secondOfTwo();
    state().TransferReset = enDateCalc::EndOfWeek;
    state().TransferResetLast = Date(36'892);
    line().connection(second)->statistics = {};
    line().transfer(second, 70, 20, 900);

    tick();

    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "70");
}

TEST_F(FollowingSessionTest, CloseToTheEndOfTheTimeIsToldByItsFrames) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 5000, 300, lastCounter - 1000);
    setFrames(handle, 50, 3);
    tick();
    line().connection(handle)->statistics = {};
    line().transfer(handle, 70, 20, 900);
    setFrames(handle, 1, 1);

    tick();

    EXPECT_EQ(state().DurationTotal, Currency::fromWhole(4'294'966'295));
    EXPECT_EQ(state().DurationCurrent, Long(900));
    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "5,070");
}

TEST_F(FollowingSessionTest, OnALineThatCountsFurtherIsToldByAnyFallOfTheTime) {
    const std::uint32_t handle = dialledConnection();
    setLineTotals(handle, 5'000'000'000, 300, 4'294'960'000);
    tick();
    setLineTotals(handle, 70, 20, 900);

    tick();

    EXPECT_EQ(state().BytesRcvdTotal, Currency::fromWhole(5'000'000'000));
    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "5,000,000,070");
}

TEST_F(FollowingSessionTest, OnALineThatCountsFurtherIsNotSeenInAPassOfTheEnd) {
    const std::uint32_t first = dialledConnection();
    setLineTotals(first, 4'294'967'000, 300, 60'000);
    tick();
    line().disconnect(first);
    setLineTotals(line().connect("Harbour"), 4'294'967'400, 310, 61'000);

    tick();

    EXPECT_EQ(state().BytesRcvdTotal, Currency(0));
    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "4,294,967,400");
}

TEST_F(FollowingSessionTest, OfFewerBytesInMoreFramesIsNoPassOfTheEnd) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 5000, 300, 60'000);
    setFrames(handle, 20, 10);
    tick();
    line().connection(handle)->statistics = {};
    line().transfer(handle, 3000, 400, 90'000);
    setFrames(handle, 45, 12);

    tick();

    EXPECT_EQ(state().BytesRcvdCurrent, Long(3000));
    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "8,000");
    EXPECT_EQ(window().txtBytesSentTotal.text(), "700");
    EXPECT_EQ(state().DurationTotal, Currency(60'000));
}

TEST_F(FollowingSessionTest, OfFewerSentBytesInMoreFramesIsNoPassOfTheEnd) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 300, 5000, 60'000);
    setFrames(handle, 10, 20);
    tick();
    line().connection(handle)->statistics = {};
    line().transfer(handle, 400, 3000, 90'000);
    setFrames(handle, 12, 45);

    tick();

    EXPECT_EQ(window().txtBytesSentTotal.text(), "8,000");
}

TEST_F(FollowingSessionTest, AsManyBytesAsFramesCanCarryAreAPassOfTheEnd) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, lastCounter, 0, 60'000);
    setFrames(handle, 4'000'000, 0);
    tick();
    // Three frames and one under way, of 65,536 bytes each; the pass itself takes the first byte.
    line().transfer(handle, 4 * 65'536, 0, 1000);
    setFrames(handle, 4'000'003, 0);

    tick();

    EXPECT_EQ(state().BytesRcvdTotal, Currency(0));
    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "4,295,229,439");
}

TEST_F(FollowingSessionTest, OneByteMoreThanFramesCanCarryIsNone) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, lastCounter, 0, 60'000);
    setFrames(handle, 4'000'000, 0);
    tick();
    line().transfer(handle, 4 * 65'536 + 1, 0, 1000);
    setFrames(handle, 4'000'003, 0);

    tick();

    EXPECT_EQ(state().BytesRcvdCurrent, Long(262'144));
}

TEST_F(FollowingSessionTest, WithoutFramesAFallOfMoreThanHalfTheRangeIsAPassOfTheEnd) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 3'000'000'000, 0, 60'000);
    tick();
    line().connection(handle)->statistics.dwBytesRcved = 852'516'351; // 2^31 - 1 further
    line().connection(handle)->statistics.dwConnectDuration = 61'000;

    tick();

    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "5,147,483,647");
}

TEST_F(FollowingSessionTest, WithoutFramesAFallOfHalfTheRangeIsAnotherSessions) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 3'000'000'000, 0, 60'000);
    tick();
    line().connection(handle)->statistics.dwBytesRcved = 852'516'352;
    line().connection(handle)->statistics.dwConnectDuration = 61'000;

    tick();

    EXPECT_EQ(state().BytesRcvdCurrent, Long(852'516'352));
    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "3,852,516,352");
}

TEST_F(FollowingSessionTest, WithoutFramesAndWithoutTimeFewerBytesAreAnotherSessions) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 5000, 300, 60'000);
    tick();
    line().connection(handle)->statistics.dwBytesRcved = 3000;

    tick();

    EXPECT_EQ(state().BytesRcvdCurrent, Long(3000));
    EXPECT_EQ(state().BytesRcvdTotal, Currency(5000));
}

TEST_F(FollowingSessionTest, AfterAHangUpByTheProgramIsAnotherWhateverItsFigures) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 5000, 300, 60'000);
    tick();
    window().cmdDisconnect.press();
    line().transfer(line().connect("Harbour"), 9000, 400, 61'000);

    tick();

    EXPECT_EQ(state().BytesRcvdTotal, Currency(5000));
    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "14,000");
}

TEST_F(FollowingSessionTest, DialledByTheProgramIsAnotherWhateverItsFigures) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 5000, 300, 60'000);
    tick();
    line().disconnect(handle);
    window().cmdConnect.press();
    line().transfer(line().connections.front().handle, 9000, 400, 61'000);

    tick();

    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "14,000");
}

TEST_F(FollowingSessionTest, DialledByTheProgramUnderTheSameHandleIsAnotherWhateverItsFigures) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 5000, 300, 60'000);
    tick();
    line().disconnect(handle);
    window().cmdConnect.press();
    line().connections.front().handle = handle;
    state().DialledConnection = handle;
    line().transfer(handle, 9000, 400, 61'000);

    tick();

    EXPECT_EQ(state().BytesRcvdCurrent, Long(9000));
    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "14,000");
    line().transfer(handle, 1, 0, 1000);
    tick();
    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "14,001");
}

TEST_F(FollowingSessionTest, ADialOfWhatIsUpAlreadyIsNoOtherSession) {
    line().joinsRunning = true;
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 5000, 300, 60'000);
    tick();

    window().cmdConnect.press();
    line().transfer(handle, 10, 0, 1000);
    tick();
    window().cmdConnect.press();
    tick();

    EXPECT_EQ(state().BytesRcvdTotal, Currency(0));
    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "5,010");
}

TEST_F(FollowingSessionTest, ALineThatLingersAfterItsHangUpIsCountedOnce) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 5000, 300, 60'000);
    tick();
    const auto lingering = line().connections;
    window().cmdDisconnect.press();
    line().connections = lingering;
    line().transfer(handle, 10, 0, 500);
    tick();
    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "5,010");
    line().disconnect(handle);

    tick();

    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "5,010");
}

TEST_F(FollowingSessionTest, OnAServiceThatKeepsHandlesANewOneIsAnotherWhateverItsFigures) {
    line().renumbersConnections = false;
    const std::uint32_t handle = dialledConnection();
    setLineTotals(handle, 100'000'000, 300, 60'000);
    tick();
    line().disconnect(handle);
    setLineTotals(line().connect("Harbour"), 100'000'500, 300, 61'000);

    tick();

    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "200,000,500");
}

TEST_F(FollowingSessionTest, CountersThatWereClearedAndOvertakenInOneDirectionCountWhole) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 5000, 300, 60'000);
    setFrames(handle, 50, 3);
    tick();
    line().connection(handle)->statistics = {};
    line().transfer(handle, 70, 400, 61'000);
    setFrames(handle, 1, 4);

    tick();

    EXPECT_EQ(window().txtBytesRcvdTotal.text(), "5,070");
    EXPECT_EQ(window().txtBytesSentTotal.text(), "700");
    EXPECT_EQ(window().txtDurationTotal.text(), "00:01:01:000");
}

} // namespace
} // namespace tarvik
