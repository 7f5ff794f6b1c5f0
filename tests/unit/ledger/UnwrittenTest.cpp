#include "ledger/Unwritten.h"
#include "ledger/LedgerContents.h"
#include "ledger/LedgerTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace tarvik {
namespace {

using Occasion = LedgerOccasion;

constexpr Moment quarter = day + 7h;

Growth growthOf(Moment from, Moment to, std::uint64_t rcvd) {
    return {.line = "Ridge", .from = from, .to = to, .ahead = 60min, .traffic = {rcvd, 10, 100}};
}

Traffic sumOf(const std::vector<LedgerEntry>& entries) {
    Traffic sum;
    for (const LedgerEntry& one : entries) {
        sum = sum + one.traffic;
    }
    return sum;
}

TEST(ByQuarterHoursTest, WhatPassedInOneIsItsOwn) {
    const auto entries = byQuarterHours(growthOf(quarter + 1min, quarter + 2min, 77));

    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(
        entries[0],
        (LedgerEntry{.at = quarter, .ahead = 60min, .line = "Ridge", .traffic = {77, 10, 100}}));
}

TEST(ByQuarterHoursTest, WhatPassedAcrossABoundaryIsSharedByTime) {
    const auto entries = byQuarterHours(growthOf(quarter + 14min, quarter + 18min, 1001));

    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].traffic, (Traffic{250, 2, 25}));
    EXPECT_EQ(entries[1].at, quarter + 15min);
    EXPECT_EQ(entries[1].traffic, (Traffic{751, 8, 75}));
}

TEST(ByQuarterHoursTest, WhatEndsAtABoundaryBelongsBeforeIt) {
    const auto entries = byQuarterHours(growthOf(quarter + 14min, quarter + 15min, 5));

    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].at, quarter);
}

TEST(ByQuarterHoursTest, HoursOfSleepAreSharedAndTogetherAreAll) {
    const Growth growth = growthOf(quarter - 3h - 20s, quarter + 5h + 7s, 1'000'003);

    const auto entries = byQuarterHours(growth);

    EXPECT_EQ(entries.size(), 34U);
    EXPECT_EQ(sumOf(entries), growth.traffic);
}

TEST(ByQuarterHoursTest, WhereTheClockWasSetBackAllBelongsToItsEnd) {
    const auto entries = byQuarterHours(growthOf(quarter + 1h, quarter + 1min, 5));

    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].at, quarter);
}

TEST(ByQuarterHoursTest, OverMoreThanADayAllBelongsToItsEnd) {
    EXPECT_EQ(byQuarterHours(growthOf(quarter - 24h - 1s, quarter, 5000)).size(), 1U);
    EXPECT_EQ(byQuarterHours(growthOf(quarter - 24h, quarter, 5000)).size(), 96U);
}

TEST(ByQuarterHoursTest, AClockThatShowsNoYearOfFourDigitsIsTakenForTheNearest) {
    const auto before = byQuarterHours(growthOf(quarter, Moment(-1s), 5));
    const auto behind = byQuarterHours(growthOf(quarter, Moment(999'999'999'999s), 5));

    EXPECT_EQ(before[0].at, firstMoment);
    EXPECT_EQ(behind[0].at, lastMoment);
}

TEST(ByQuarterHoursTest, NothingMakesNoEntry) {
    EXPECT_TRUE(byQuarterHours({.line = "Ridge", .from = quarter, .to = quarter + 1h}).empty());
}

TEST(UnwrittenTest, ALineHasOneEntryForAQuarterHour) {
    Unwritten unwritten;

    unwritten.add(growthOf(quarter, quarter + 1min, 5));
    unwritten.add(growthOf(quarter + 1min, quarter + 2min, 6));

    ASSERT_EQ(unwritten.entries().size(), 1U);
    EXPECT_EQ(unwritten.entries()[0].traffic, (Traffic{11, 20, 200}));
    EXPECT_EQ(unwritten.bytes(), 31U);
}

TEST(UnwrittenTest, LinesAndWhatRunsInsideStayApart) {
    Unwritten unwritten;
    Growth inside = growthOf(quarter, quarter + 1min, 5);
    inside.inside = true;
    Growth other = growthOf(quarter, quarter + 1min, 5);
    other.line = "Harbour";

    unwritten.add(inside);
    unwritten.add(other);
    unwritten.add(growthOf(quarter, quarter + 1min, 5));

    EXPECT_EQ(unwritten.entries().size(), 3U);
}

TEST(UnwrittenTest, WhatIsBeingWrittenDoesNotChangeAndTheRestComesBehindIt) {
    Unwritten unwritten;
    unwritten.add(entryAt(quarter, 5));
    unwritten.beginWriting(1000);

    unwritten.add(entryAt(quarter, 70));
    unwritten.add(entryAt(quarter - 15min, 300));

    EXPECT_EQ(unwritten.entries(), (std::vector{entryAt(quarter, 5), entryAt(quarter - 15min, 300),
                                                entryAt(quarter, 70)}));
}

TEST(UnwrittenTest, WhatComesAfterAllIsWrittenIsSummedUpAgain) {
    Unwritten unwritten;
    unwritten.add(entryAt(quarter, 5));
    unwritten.beginWriting(1000);
    unwritten.endWriting();

    unwritten.add(entryAt(quarter, 70));
    unwritten.add(entryAt(quarter, 300));

    EXPECT_EQ(unwritten.entries().size(), 1U);
}

/// So many quarter hours of Ridge with one byte each.
Unwritten manyQuarters(int count) {
    Unwritten unwritten;
    for (int i = 0; i < count; ++i) {
        unwritten.add(entryAt(quarter + i * 15min, 1));
    }
    return unwritten;
}

std::size_t sizeOf(const std::vector<LedgerEntry>& entries) {
    std::size_t size = 0;
    for (const LedgerEntry& one : entries) {
        size += textOf(one).size();
    }
    return size;
}

TEST(UnwrittenTest, WhatHasRoomIsBegunAndToldAsItIs) {
    Unwritten unwritten = manyQuarters(8);

    unwritten.beginWriting(1000);

    EXPECT_EQ(unwritten.begun(), unwritten.entries());
    EXPECT_EQ(entriesOf(unwritten.textWithin(1000)), unwritten.entries());
}

TEST(UnwrittenTest, OfWhatHasNoRoomAPortionIsBegunAndTheRestIsToldInOne) {
    Unwritten unwritten = manyQuarters(80);

    unwritten.beginWriting(1000);

    const std::string text = unwritten.textWithin(1000);
    const std::vector<LedgerEntry> told = entriesOf(text);
    std::vector<LedgerEntry> expected = unwritten.begun();
    ASSERT_GT(expected.size(), 8U);
    LedgerEntry rest = entryAt(quarter + 79 * 15min, 80 - expected.size());
    rest.traffic.sent = 80 - expected.size();
    rest.traffic.milliseconds = 60'000 * rest.traffic.sent;
    expected.push_back(rest);
    EXPECT_EQ(told, expected);
    EXPECT_LE(text.size(), 1000U);
}

TEST(UnwrittenTest, APortionIsNoLongerThanOneThatTheNextRunCanTellAgain) {
    Unwritten unwritten = manyQuarters(80);

    unwritten.beginWriting(4000);

    EXPECT_LE(sizeOf(unwritten.begun()), longestPortion);
    EXPECT_GT(sizeOf(unwritten.begun()), longestPortion - 100);
}

TEST(UnwrittenTest, OnePortionComesAfterTheOtherUntilAllIsWritten) {
    Unwritten unwritten = manyQuarters(80);
    const std::vector<LedgerEntry> all = unwritten.entries();
    std::vector<LedgerEntry> written;

    while (!unwritten.entries().empty()) {
        unwritten.beginWriting(1000);
        const std::vector<LedgerEntry> begun = unwritten.begun();
        written.insert(written.end(), begun.begin(), begun.end());
        unwritten.endWriting();
    }

    EXPECT_EQ(written, all);
}

TEST(UnwrittenTest, WhatWasBegunAndFailedIsBegunAgainAsItWas) {
    Unwritten unwritten = manyQuarters(80);
    unwritten.beginWriting(1000);
    const std::vector<LedgerEntry> begun = unwritten.begun();

    unwritten.add(entryAt(quarter - 15min, 300));
    unwritten.beginWriting(2000);

    EXPECT_EQ(unwritten.begun(), begun);
}

TEST(UnwrittenTest, WithoutAnyRoomOneIsBegun) {
    Unwritten unwritten = manyQuarters(80);

    unwritten.beginWriting(0);

    EXPECT_EQ(unwritten.begun().size(), 1U);
}

TEST(UnwrittenTest, WhatRunsInsideIsJoinedApart) {
    Unwritten unwritten = manyQuarters(80);
    for (int i = 0; i < 3; ++i) {
        LedgerEntry inside = entryAt(quarter + i * 15min, 7);
        inside.inside = true;
        unwritten.add(inside);
    }

    const std::vector<LedgerEntry> told = entriesOf(unwritten.textWithin(1000));

    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[0].traffic, (Traffic{80, 80, 4'800'000}));
    EXPECT_EQ(told[1].traffic, (Traffic{21, 3, 180'000}));
    EXPECT_TRUE(told[1].inside);
}

TEST(UnwrittenTest, WhereLinesHaveNoRoomSomeAreToldWithoutTheirNames) {
    Unwritten unwritten;
    for (int i = 0; i < 20; ++i) {
        unwritten.add(entryAt(quarter, 5, std::string(256, static_cast<char>('a' + i))));
    }

    const std::string text = unwritten.textWithin(2000);

    const std::vector<LedgerEntry> told = entriesOf(text);
    EXPECT_LE(text.size(), 2000U);
    EXPECT_EQ(told.size(), 6U);
    EXPECT_EQ(told.back().line, "");
    EXPECT_EQ(told.back().traffic.rcvd, 75U);
    EXPECT_EQ(sumOf(told), sumOf(unwritten.entries()));
}

TEST(UnwrittenTest, WhatIsLeftOfARunBeforeIsToldInItsOrderAsLongAsItMayHaveBeenBegun) {
    std::vector<LedgerEntry> left;
    for (int i = 0; i < 60; ++i) {
        left.push_back(entryAt(quarter - i * 15min, 1)); // not in the order of time
    }
    Unwritten unwritten(left);
    unwritten.add(entryAt(quarter + 15min, 7));

    const std::vector<LedgerEntry> told = entriesOf(unwritten.textWithin(3000));

    const std::size_t same = told.size() - 1;
    EXPECT_GT(same, 20U);
    EXPECT_TRUE(
        std::equal(left.begin(), left.begin() + static_cast<std::ptrdiff_t>(same), told.begin()));
    EXPECT_EQ(told.back().traffic.rcvd, 67 - same);
}

class DueTest : public testing::Test {
protected:
    static Unwritten with(std::uint64_t bytes) {
        Unwritten unwritten;
        unwritten.add({.line = "Ridge",
                       .from = quarter,
                       .to = quarter + 1min,
                       .ahead = 0min,
                       .traffic = {bytes, 0, 1}});
        return unwritten;
    }
    static bool due(const Unwritten& unwritten, Moment now, std::uint64_t sinceWrite,
                    Occasion occasion = Occasion::Tick) {
        return isWriteDue(unwritten, occasion, now, sinceWrite);
    }
};

TEST_F(DueTest, AMegabyteIsWrittenAfterAMinute) {
    EXPECT_TRUE(due(with(1'000'000), quarter + 2min, 60'000));
    EXPECT_FALSE(due(with(1'000'000), quarter + 2min, 59'999));
}

TEST_F(DueTest, LessWaitsForTheEndOfTheQuarterHour) {
    EXPECT_FALSE(due(with(999'999), quarter + 14min + 59s, 600'000));
    EXPECT_TRUE(due(with(999'999), quarter + 15min, 600'000));
    EXPECT_FALSE(due(with(999'999), quarter + 15min, 59'999));
}

TEST_F(DueTest, AnEndIsWrittenAtOnce) {
    EXPECT_TRUE(due(with(1), quarter + 1min, 0, Occasion::SessionEnds));
    EXPECT_TRUE(due(with(1), quarter + 1min, 0, Occasion::MachineSleeps));
    EXPECT_TRUE(due(with(1), quarter + 1min, 0, Occasion::ProgramEnds));
}

TEST_F(DueTest, NothingIsNeverWritten) {
    EXPECT_FALSE(due(Unwritten(), quarter + 1h, 600'000));
    EXPECT_FALSE(due(Unwritten(), quarter + 1h, 600'000, Occasion::SessionEnds));
}

} // namespace
} // namespace tarvik
