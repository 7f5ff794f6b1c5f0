#include "plan/PlanTest.h"

#include <gtest/gtest.h>

namespace tarvik::planned {
namespace {

Standing standing(const Plan& plan, const LedgerContents& contents, Moment at = noon,
                  const Zone& zone = inLondon) {
    const auto result = standingOf(plan, History(contents), at, zone);
    EXPECT_TRUE(result);
    return result.value_or(Standing());
}

LedgerNote saying(Moment at, std::uint64_t told, std::uint64_t counted) {
    return {
        .at = at, .ahead = 0min, .plan = 1, .what = ProvidersFigure{Measure::Bytes, told, counted}};
}

LedgerNote extending(Moment at, std::uint64_t bytes, bool today) {
    return {.at = at, .ahead = 60min, .plan = 1, .what = Extension{bytes, 0, today}};
}

LedgerNote takingBack(const LedgerNote& note) {
    return {.at = note.at + 1h,
            .ahead = 0min,
            .plan = note.plan,
            .what = TakenBack{std::holds_alternative<Extension>(note.what), note.at}};
}

TEST(UsageTest, WhatThePeriodCarriedIsUsed) {
    const LedgerContents contents =
        contentsWith({carriedAt(utc(10, 31, 1425min), 1), carriedAt(utc(11, 1), 20),
                      carriedAt(utc(11, 30, 1425min), 300, 4), carriedAt(utc(12, 1), 5000)});

    const Standing result = standing(tenGigabytes(), contents);

    EXPECT_EQ(result.used, (Quantity{324, 1'800'000}));
    EXPECT_EQ(result.total(), (Quantity{10'000 * megabyte, 0}));
    EXPECT_EQ(result.left().bytes, 10'000 * megabyte - 324);
}

TEST(UsageTest, WhatIsNotInTheLedgerYetIsUsed) {
    const LedgerContents contents = contentsWith({carriedAt(utc(11, 1), 20)});
    const std::vector<LedgerEntry> unwritten{carriedAt(utc(11, 2), 5), carriedAt(utc(12, 1), 700)};

    const auto result = standingOf(tenGigabytes(), History(contents, unwritten), noon, inLondon);

    EXPECT_EQ(result->used.bytes, 25U);
}

TEST(UsageTest, AChangedDayCutsThePastAnew) {
    const LedgerContents contents =
        contentsWith({carriedAt(utc(11, 5), 20), carriedAt(utc(11, 12), 1)});
    Plan plan = tenGigabytes();

    EXPECT_EQ(standing(plan, contents).used.bytes, 21U);
    plan.period.day = 10;

    EXPECT_EQ(standing(plan, contents).used.bytes, 1U);
}

class CountedTest : public testing::Test {
protected:
    const LedgerContents contents =
        contentsWith({carriedAt(utc(11, 5), 20, 3), carriedAt(utc(11, 6), 1, 5)});

    std::uint64_t used(Counted counted) const {
        Plan plan = tenGigabytes();
        plan.counted = counted;
        return standing(plan, contents).used.bytes;
    }
};

TEST_F(CountedTest, EachDirectionOrBothOrTheLargerIsCounted) {
    EXPECT_EQ(used(Counted::Both), 29U);
    EXPECT_EQ(used(Counted::Received), 21U);
    EXPECT_EQ(used(Counted::Sent), 8U);
    EXPECT_EQ(used(Counted::Larger), 21U);
}

class LinesTest : public testing::Test {
protected:
    LinesTest() {
        LedgerEntry tunnel = carriedAt(utc(11, 5), 700, 0, "Office");
        tunnel.inside = true;
        enter(contents, {tunnel});
    }

    LedgerContents contents =
        contentsWith({carriedAt(utc(11, 5), 20), carriedAt(utc(11, 5), 3, 0, "Harbour")});
    Plan plan = tenGigabytes();
};

TEST_F(LinesTest, AllThatDoNotRunInsideAnotherCount) {
    EXPECT_EQ(standing(plan, contents).used.bytes, 23U);
}

TEST_F(LinesTest, ChosenOnesCountWhereverTheyRun) {
    plan.lines = {"Office", "Harbour"};

    EXPECT_EQ(standing(plan, contents).used.bytes, 703U);
}

TEST(ProvidersFigureTest, ItHoldsAndWhatIsCountedLaterComesOnTop) {
    const LedgerContents contents = contentsWith(
        {carriedAt(utc(11, 5), 20), carriedAt(utc(11, 10), 7)}, {saying(utc(11, 6), 50, 20)});

    EXPECT_EQ(standing(tenGigabytes(), contents).used.bytes, 57U);
}

TEST(ProvidersFigureTest, ItMayBeLessThanWasCounted) {
    const LedgerContents contents =
        contentsWith({carriedAt(utc(11, 5), 20)}, {saying(utc(11, 6), 5, 20)});

    EXPECT_EQ(standing(tenGigabytes(), contents).used.bytes, 5U);
}

TEST(ProvidersFigureTest, TheLastOneCounts) {
    const LedgerContents contents = contentsWith(
        {carriedAt(utc(11, 5), 20)}, {saying(utc(11, 6), 50, 20), saying(utc(11, 7), 30, 20)});

    EXPECT_EQ(standing(tenGigabytes(), contents).used.bytes, 30U);
}

TEST(ProvidersFigureTest, ItIsOfItsPeriodAlone) {
    const LedgerContents contents = contentsWith(
        {carriedAt(utc(10, 5), 20), carriedAt(utc(11, 5), 3)}, {saying(utc(10, 6), 50, 20)});

    EXPECT_EQ(standing(tenGigabytes(), contents).used.bytes, 3U);
}

TEST(ProvidersFigureTest, TakenBackItIsAsIfItHadNotBeen) {
    const LedgerNote first = saying(utc(11, 6), 50, 20);
    const LedgerNote second = saying(utc(11, 7), 70, 20);
    LedgerContents contents =
        contentsWith({carriedAt(utc(11, 5), 20)}, {first, second, takingBack(second)});

    EXPECT_EQ(standing(tenGigabytes(), contents).used.bytes, 50U);
    contents.notes.push_back(takingBack(first));

    EXPECT_EQ(standing(tenGigabytes(), contents).used.bytes, 20U);
}

TEST(ProvidersFigureTest, AnotherPlansIsNotThisOnes) {
    LedgerNote other = saying(utc(11, 6), 50, 20);
    other.plan = 2;
    LedgerNote earlier = saying(utc(11, 6), 60, 20);
    Plan plan = tenGigabytes();
    plan.made = utc(11, 7);

    EXPECT_EQ(
        standing(plan, contentsWith({carriedAt(utc(11, 5), 20)}, {other, earlier})).used.bytes,
        20U);
}

TEST(ProvidersFigureTest, HoursHaveTheirOwn) {
    LedgerNote note = saying(utc(11, 6), 0, 0);
    note.what = ProvidersFigure{Measure::Time, 10 * hour, 900'000};

    const Standing result =
        standing(tenGigabytes(), contentsWith({carriedAt(utc(11, 5), 20)}, {note}));

    EXPECT_EQ(result.used, (Quantity{20, 10 * hour}));
}

TEST(ExtensionTest, OneForThePeriodHoldsUntilItsEnd) {
    const LedgerContents contents = contentsWith({}, {extending(utc(11, 6), 500, false)});

    EXPECT_EQ(standing(tenGigabytes(), contents).extended.bytes, 500U);
    EXPECT_EQ(standing(tenGigabytes(), contents, utc(11, 30, 1439min)).extended.bytes, 500U);
    EXPECT_EQ(standing(tenGigabytes(), contents, utc(12, 1)).extended.bytes, 0U);
}

TEST(ExtensionTest, OneForTodayEndsWithTheUsersDay) {
    const LedgerContents contents = contentsWith({}, {extending(utc(11, 6, 10h), 500, true)});

    const auto extended = [&](std::chrono::minutes time) {
        return standing(tenGigabytes(), contents, utc(11, 6, time), inBerlin).extended.bytes;
    };
    EXPECT_EQ(extended(1379min), 500U);
    EXPECT_EQ(extended(23h), 0U);
}

TEST(ExtensionTest, OneForTodayLastsAnHourMoreOnTheDayThatIsLonger) {
    LedgerNote note =
        extending(utc(10, 24, 23h), 500, true); // 25 October in Berlin, in summer time
    note.ahead = 120min;
    const LedgerContents contents = contentsWith({}, {note});

    EXPECT_EQ(standing(tenGigabytes(), contents, utc(10, 25, 1379min), inBerlin).extended.bytes,
              500U);
    EXPECT_EQ(standing(tenGigabytes(), contents, utc(10, 25, 23h), inBerlin).extended.bytes, 0U);
}

TEST(ExtensionTest, SeveralAddUpAndEachMayBeTakenBack) {
    const LedgerNote first = extending(utc(11, 6), 500, false);
    const LedgerNote second = extending(utc(11, 7), 30, false);
    LedgerContents contents = contentsWith({}, {first, second});

    EXPECT_EQ(standing(tenGigabytes(), contents).extended.bytes, 530U);
    contents.notes.push_back(takingBack(first));

    EXPECT_EQ(standing(tenGigabytes(), contents).extended.bytes, 30U);
}

TEST(ExtensionTest, APlanThatLimitsNoBytesIsNotExtended) {
    Plan plan;
    plan.hours = 20;

    EXPECT_EQ(standing(plan, contentsWith({}, {extending(utc(11, 6), 500, false)})).extended,
              Quantity());
}

class RollOverTest : public testing::Test {
protected:
    RollOverTest() { plan.rollOver = RollOver::All; }

    Plan plan = tenGigabytes();
    /// 4 GB in September, 7 GB in October.
    LedgerContents contents = contentsWith(
        {carriedAt(utc(9, 5), 4'000 * megabyte), carriedAt(utc(10, 5), 7'000 * megabyte)});
};

TEST_F(RollOverTest, WhatWasNotUsedComesOnTop) {
    EXPECT_EQ(standing(plan, contents).rolledOver.bytes, 3'000 * megabyte);
    EXPECT_EQ(standing(plan, contents).total().bytes, 13'000 * megabyte);
}

TEST_F(RollOverTest, ItGoesToNoThirdPeriod) {
    EXPECT_EQ(standing(plan, contents, utc(10, 16)).rolledOver.bytes, 6'000 * megabyte);
    EXPECT_EQ(standing(plan, contents).rolledOver.bytes, 3'000 * megabyte);
    EXPECT_EQ(standing(plan, contentsWith({}), utc(11, 16)).rolledOver.bytes, 10'000 * megabyte);
}

TEST_F(RollOverTest, ItMayBeUpToAnAmount) {
    plan.rollOver = RollOver::UpTo;
    plan.rollOverMost = {.thousandths = 1'500, .unit = SizeUnit::GB};

    EXPECT_EQ(standing(plan, contents).rolledOver.bytes, 1'500 * megabyte);
}

TEST_F(RollOverTest, OrNothing) {
    plan.rollOver = RollOver::None;

    EXPECT_EQ(standing(plan, contents).rolledOver, Quantity());
}

TEST_F(RollOverTest, WhoeverUsedMoreHasNothingLeft) {
    enter(contents, {carriedAt(utc(10, 6), 9'000 * megabyte)});

    EXPECT_EQ(standing(plan, contents).rolledOver, Quantity());
}

TEST_F(RollOverTest, OfAPeriodThatTheLedgerDoesNotKnowWholeNothingComes) {
    contents.head.begun = utc(10, 1) + 1s;
    EXPECT_EQ(standing(plan, contents).rolledOver, Quantity());

    contents.head.begun = utc(10, 1);
    EXPECT_EQ(standing(plan, contents).rolledOver.bytes, 3'000 * megabyte);
}

TEST_F(RollOverTest, ButWhatTheProviderSaidOfItIsKnown) {
    contents.head.begun = utc(10, 20);
    contents.notes = {LedgerNote{.at = utc(10, 31),
                                 .plan = 1,
                                 .what = ProvidersFigure{.measure = Measure::Bytes,
                                                         .told = 8'000 * megabyte,
                                                         .counted = 7'000 * megabyte}}};

    EXPECT_EQ(standing(plan, contents).rolledOver.bytes, 2'000 * megabyte);
}

TEST_F(RollOverTest, TheFirstPeriodHasNoneBeforeIt) {
    plan.period = {.kind = PeriodKind::Days, .every = 30, .from = dayOfCalendar(2026, 11, 10)};

    EXPECT_EQ(standing(plan, contents).rolledOver, Quantity());
}

TEST_F(RollOverTest, HoursRollOverToo) {
    plan.hours = 20;
    EXPECT_EQ(standing(plan, contents).rolledOver.milliseconds, 20 * hour - 900'000);

    plan.rollOver = RollOver::UpTo;
    plan.rollOverHours = 2;
    EXPECT_EQ(standing(plan, contents).rolledOver.milliseconds, 2 * hour);
}

TEST(StandingTest, OutsideAPackThereIsNone) {
    Plan plan = tenGigabytes();
    plan.period = {.kind = PeriodKind::Pack, .from = dayOfCalendar(2026, 12, 1)};

    EXPECT_FALSE(standingOf(plan, History(contentsWith({})), noon, inLondon));
}

TEST(StandingTest, UsedAndLeftAreAllThereIsAndWhatIsOver) {
    const LedgerContents contents = contentsWith({carriedAt(utc(11, 5), 12'000 * megabyte)});

    const Standing result = standing(tenGigabytes(), contents);

    EXPECT_EQ(result.left().bytes, 0U);
    EXPECT_EQ(result.over().bytes, 2'000 * megabyte);
    EXPECT_EQ(result.used + result.left(), result.total() + result.over());
}

TEST(StandingTest, TheLargestFiguresDoNotWrap) {
    Plan plan = tenGigabytes();
    plan.allowance = readDataSize("8388608 TiB");
    plan.rollOver = RollOver::All;
    const LedgerContents contents = contentsWith({carriedAt(utc(11, 5), UINT64_MAX, UINT64_MAX)});

    const Standing result = standing(plan, contents);

    EXPECT_EQ(result.used.bytes, UINT64_MAX);
    EXPECT_EQ(result.total().bytes, UINT64_MAX);
    EXPECT_EQ(result.left().bytes, 0U);
}

} // namespace
} // namespace tarvik::planned
