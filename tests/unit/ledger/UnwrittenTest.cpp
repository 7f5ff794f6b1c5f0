#include "ledger/Unwritten.h"
#include "ledger/LedgerTest.h"

#include <gtest/gtest.h>

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
