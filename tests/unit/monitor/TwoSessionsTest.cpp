#include "support/WorldTest.h"

#include "state/mdlTransfers.h"

#include <algorithm>
#include <cstdint>

namespace tarvik {
namespace {

/// Two lines that are up at once, side by side or one within the other: docs/counting.md tells what
/// each of them adds.
class TwoSessionsTest : public WorldTest {
protected:
    TwoSessionsTest() { startQuietly("/r"); }

    FrmMain& window() { return frmMain(); }

    void dialled() { state().DialInStarted = true; }

    /// One that the list names before those that are up: the counted one stays the last.
    std::uint32_t connectBefore(const char* entry, std::uint32_t rcvd, std::uint32_t carrier = 0) {
        const std::uint32_t handle = line().connect(entry);
        line().connection(handle)->carrier = carrier;
        line().transfer(handle, rcvd, 0, rcvd);
        std::rotate(line().connections.begin(), line().connections.end() - 1,
                    line().connections.end());
        return handle;
    }

    void receive(std::uint32_t handle, std::uint32_t rcvd) {
        line().transfer(handle, rcvd, 0, rcvd);
    }

    void limitWithHangUp(std::int64_t bytes) {
        state().TransferLimit = 1;
        state().TransferLimitHangUp = 1;
        state().TransferLimitValue = Currency::fromWhole(bytes);
    }

    std::string rcvdTotal() { return window().txtBytesRcvdTotal.text(); }
    std::string timeTotal() { return window().txtDurationTotal.text(); }
};

TEST_F(TwoSessionsTest, TheOneThatIsNotShownIsKeptWhenItEnds) {
    dialled();
    const std::uint32_t shown = connectBefore("Harbour", 100);
    const std::uint32_t other = connectBefore("Ridge", 5000);
    tick();
    EXPECT_EQ(rcvdTotal(), "100");
    line().disconnect(other);
    receive(shown, 7);

    tick();

    EXPECT_EQ(rcvdTotal(), "5,107");
    EXPECT_EQ(timeTotal(), "00:00:05:107");
}

TEST_F(TwoSessionsTest, TheEndOfOneIsShownAlsoWhenTheOtherCannotBeRead) {
    dialled();
    connectBefore("Harbour", 100);
    const std::uint32_t other = connectBefore("Ridge", 5000);
    tick();
    line().disconnect(other);
    line().failNext("RasGetConnectionStatistics", 601);
    expectFailure("Error: RasGetConnectionStatistics failed with 601:\rThe port handle is "
                  "invalid.");

    tick();

    EXPECT_EQ(rcvdTotal(), "5,100");
}

TEST_F(TwoSessionsTest, BothAreKeptWhenTheyEndTogether) {
    dialled();
    connectBefore("Harbour", 100);
    connectBefore("Ridge", 5000);
    tick();
    line().connections.clear();

    tick();
    tick();

    EXPECT_EQ(state().BytesRcvdTotal, Currency(5100));
    EXPECT_EQ(rcvdTotal(), "5,100");
}

TEST_F(TwoSessionsTest, BothAreSavedWhenTheProgramEnds) {
    dialled();
    connectBefore("Harbour", 100);
    connectBefore("Ridge", 5000);
    tick();

    window().unload(UnloadMode::AppWindows);

    EXPECT_NE(ini().find("Rcvd=5100"), std::string::npos) << ini();
}

TEST_F(TwoSessionsTest, AResetForgetsBothAndCountsEachFromItsBeginning) {
    dialled();
    const std::uint32_t shown = connectBefore("Harbour", 100);
    const std::uint32_t other = connectBefore("Ridge", 5000);
    tick();
    ResetTransfers(true);
    line().disconnect(other);

    tick();

    EXPECT_EQ(rcvdTotal(), "100");
    line().disconnect(shown);
    tick();
    EXPECT_EQ(rcvdTotal(), "100");
}

TEST_F(TwoSessionsTest, WhatWasCountedBeforeTheCarrierCameUpStays) {
    dialled();
    const std::uint32_t inner = line().connect("Office");
    receive(inner, 5000);
    tick();
    const std::uint32_t carrier = line().connect("Harbour");
    line().connection(inner)->carrier = carrier;
    receive(inner, 10);
    receive(carrier, 10);
    tick();
    line().connections.clear();

    tick();

    EXPECT_EQ(rcvdTotal(), "5,010");
}

TEST_F(TwoSessionsTest, WhatOneCarriesWithinTheOtherCountsOnce) {
    dialled();
    const std::uint32_t carrier = connectBefore("Harbour", 5100);
    const std::uint32_t inner = connectBefore("Office", 5000, carrier);
    tick();
    EXPECT_EQ(rcvdTotal(), "5,100");
    line().disconnect(inner);

    tick();

    EXPECT_EQ(rcvdTotal(), "5,100");
    line().disconnect(carrier);
    tick();
    EXPECT_EQ(state().BytesRcvdTotal, Currency(5100));
}

TEST_F(TwoSessionsTest, WhatOneCarriesAfterItsCarrierEndedCountsFromThereOn) {
    dialled();
    const std::uint32_t carrier = connectBefore("Harbour", 5100);
    const std::uint32_t inner = connectBefore("Office", 5000, carrier);
    tick();
    line().disconnect(carrier);
    receive(inner, 30);

    tick();

    EXPECT_EQ(rcvdTotal(), "5,130");
    line().disconnect(inner);
    tick();
    EXPECT_EQ(state().BytesRcvdTotal, Currency(5130));
}

TEST_F(TwoSessionsTest, TheOffsetOfADeclinedOneIsNotTakenFromTheOther) {
    connectBefore("Harbour", 830);
    const std::uint32_t asked = connectBefore("Ridge", 5000);
    expectSessionQuestion("5000", MsgBoxAnswer::No);
    tick();
    EXPECT_EQ(rcvdTotal(), "0");
    EXPECT_EQ(timeTotal(), "00:00:00:000");
    receive(asked, 40);
    receive(line().connections.back().handle, 7);

    tick();

    EXPECT_EQ(rcvdTotal(), "7");
    line().connections.clear();
    tick();
    EXPECT_EQ(rcvdTotal(), "47");
    EXPECT_EQ(timeTotal(), "00:00:00:047");
}

TEST_F(TwoSessionsTest, OneThatComesAfterTheAnswerNoIsCountedWhole) {
    const std::uint32_t asked = connectBefore("Ridge", 5000);
    expectSessionQuestion("5000", MsgBoxAnswer::No);
    tick();
    const std::uint32_t later = line().connect("Harbour");
    receive(later, 700);

    tick();

    EXPECT_EQ(rcvdTotal(), "700");
    line().disconnect(later);
    receive(asked, 3);
    tick();
    EXPECT_EQ(rcvdTotal(), "703");
}

TEST_F(TwoSessionsTest, ALimitThatHangsUpBothLosesNothingAndTellsNoError) {
    dialled();
    limitWithHangUp(8000);
    const std::uint32_t second = connectBefore("Harbour", 0);
    const std::uint32_t first = connectBefore("Ridge", 5000);
    tick();
    receive(first, 4000);
    receive(second, 20);

    tick();

    EXPECT_TRUE(line().connections.empty());
    EXPECT_TRUE(state().MonitoringActive);
    tick();
    EXPECT_EQ(rcvdTotal(), "9,020");
}

TEST_F(TwoSessionsTest, ALimitAtTheFirstTickLosesNothingOfALineThatWasNeverRead) {
    dialled();
    limitWithHangUp(8000);
    connectBefore("Harbour", 20);
    connectBefore("Ridge", 9000);

    tick();
    tick();

    EXPECT_EQ(rcvdTotal(), "9,020");
}

TEST_F(TwoSessionsTest, ALimitReachedByTheLastKeepsTheFirstAsWell) {
    dialled();
    limitWithHangUp(8000);
    connectBefore("Harbour", 9000);
    connectBefore("Ridge", 20);

    tick();
    tick();

    EXPECT_EQ(rcvdTotal(), "9,020");
}

TEST_F(TwoSessionsTest, ALineThatTheLimitCannotHangUpIsReadOn) {
    dialled();
    limitWithHangUp(8000);
    connectBefore("Harbour", 20);
    connectBefore("Ridge", 9000);
    line().failNext("RasHangUpA", 601);
    expectFailure("Error: RasHangUp failed with 601:\rThe port handle is invalid.");
    expectStopQuestion(MsgBoxAnswer::Cancel);

    tick();
    tick();

    EXPECT_EQ(Rcvd().overall(), Currency(9020));
}

} // namespace
} // namespace tarvik
