#include "plan/Forecast.h"
#include "plan/PlanTest.h"

#include <gtest/gtest.h>

namespace tarvik::planned {
namespace {

/// 10 GB a month, 3.1 of them used by noon of 19 November: 12 days are left.
class BudgetTest : public testing::Test {
protected:
    BudgetTest() { enter(contents, {carriedAt(utc(11, 5), 3'000 * megabyte)}); }

    Budget budget(Moment at) const {
        const History history(contents);
        const auto standing = standingOf(plan, history, at, inLondon);
        const auto result = budgetOf(plan, history, *standing, at, inLondon);
        EXPECT_TRUE(result);
        return result.value_or(Budget());
    }

    Plan plan = tenGigabytes();
    LedgerContents contents = contentsWith({carriedAt(utc(11, 19), 100 * megabyte)});
};

TEST_F(BudgetTest, WhatIsLeftIsDealtOutToTheDaysThatAreLeft) {
    const Budget result = budget(utc(11, 19, 12h));

    EXPECT_EQ(result.daysLeft, 12);
    EXPECT_EQ(result.perDay.bytes, 575 * megabyte);
}

TEST_F(BudgetTest, OfTodaysPartIsLeftWhatWasNotUsedToday) {
    EXPECT_EQ(budget(utc(11, 19, 12h)).today.bytes, 7'000 * megabyte / 12 - 100 * megabyte);
}

TEST_F(BudgetTest, WhoeverCarriesOnHasWhatTheDaysBeforeDidNotUse) {
    plan.dealOut = DealOut::CarryOn;

    // 19 of 30 days are due.
    EXPECT_EQ(budget(utc(11, 19, 12h)).today.bytes, 3'233'333'333U);
}

TEST_F(BudgetTest, WhatIsForTodayAloneIsNotDealtOutToTheDaysThatAreLeft) {
    contents.notes = {{.at = utc(11, 19, 10h),
                       .plan = 1,
                       .what = Extension{.bytes = 500 * megabyte, .today = true}}};

    const Budget result = budget(utc(11, 19, 12h));

    EXPECT_EQ(result.perDay.bytes, 575 * megabyte);
    EXPECT_EQ(result.today.bytes, 7'000 * megabyte / 12 + 400 * megabyte);
}

TEST_F(BudgetTest, AReserveIsNotDealtOut) {
    plan.reservePercent = 10;

    EXPECT_EQ(budget(utc(11, 19, 12h)).perDay.bytes, 5'900 * megabyte / 12);
}

TEST_F(BudgetTest, OnTheLastDayAllThatIsLeftIsForToday) {
    const Budget result = budget(utc(11, 30, 23h));

    EXPECT_EQ(result.daysLeft, 1);
    EXPECT_EQ(result.perDay.bytes, 6'900 * megabyte);
    EXPECT_EQ(result.today.bytes, 6'900 * megabyte);
}

TEST_F(BudgetTest, TheDayAPeriodEndsOnIsOneOfThem) {
    plan.period.hour = 6;

    EXPECT_EQ(budget(utc(11, 30, 23h)).daysLeft, 2);
    EXPECT_EQ(budget(utc(12, 1, 5h)).daysLeft, 1);
}

TEST_F(BudgetTest, WhoeverUsedTooMuchHasNothing) {
    enter(contents, {carriedAt(utc(11, 18), 7'000 * megabyte)});

    const Budget result = budget(utc(11, 19, 12h));

    EXPECT_EQ(result.perDay, Quantity());
    EXPECT_EQ(result.today, Quantity());
}

TEST_F(BudgetTest, WhatTheProviderSaidTodayIsNoUseOfTheDaysBefore) {
    contents.notes.push_back(
        {.at = utc(11, 19, 6h),
         .plan = 1,
         .what = ProvidersFigure{Measure::Bytes, 3'200 * megabyte, 3'100 * megabyte}});

    EXPECT_EQ(budget(utc(11, 19, 12h)).today.bytes, 7'000 * megabyte / 12 - 200 * megabyte);
}

TEST_F(BudgetTest, HoursHaveTheirOwn) {
    plan.allowance.reset();
    plan.hours = 24;

    const Budget result = budget(utc(11, 19, 12h));

    EXPECT_EQ(result.perDay, (Quantity{0, (24 * hour - hour / 2) / 12}));
}

TEST_F(BudgetTest, WhatIsNotLimitedHasNone) {
    plan.allowance.reset();
    const History history(contents);
    const auto standing = standingOf(plan, history, noon, inLondon);

    EXPECT_FALSE(budgetOf(plan, history, *standing, noon, inLondon));
}

TEST_F(BudgetTest, APackWithoutADateHasNone) {
    plan.period = {.kind = PeriodKind::Pack, .from = dayOfCalendar(2026, 11, 1)};
    const History history(contents);
    const auto standing = standingOf(plan, history, noon, inLondon);

    EXPECT_FALSE(budgetOf(plan, history, *standing, noon, inLondon));
    EXPECT_FALSE(forecastOf(plan, history, *standing, noon, inLondon, {}));
}

class ForecastTest : public testing::Test {
protected:
    std::optional<Forecast> forecast(Moment at, const Zone& zone = inLondon) const {
        const History history(contents);
        const auto standing = standingOf(plan, history, at, zone);
        return forecastOf(plan, history, *standing, at, zone, capacity);
    }

    Plan plan = tenGigabytes();
    LedgerContents contents = contentsWith({});
    Capacity capacity;
};

TEST_F(ForecastTest, WithoutFourWeeksItGoesOnAsSoFar) {
    contents.head.begun = utc(11, 1);
    enter(contents, {carriedAt(utc(11, 5), 3'000 * megabyte)});

    const auto result = forecast(utc(11, 11)); // 10 of 30 days

    ASSERT_TRUE(result);
    EXPECT_EQ(result->expected.bytes, 9'000 * megabyte);
    EXPECT_EQ(result->least.bytes, 9'000 * megabyte - 6'000 * megabyte / 11);
    EXPECT_EQ(result->most.bytes, 9'000 * megabyte + 6'000 * megabyte / 11);
}

TEST_F(ForecastTest, WhereTheLedgerBeganLaterItsPaceIsFromThere) {
    contents.head.begun = utc(11, 6);
    enter(contents, {carriedAt(utc(11, 6), 1'000 * megabyte)});

    EXPECT_EQ(forecast(utc(11, 11))->expected.bytes, 5'000 * megabyte);
}

TEST_F(ForecastTest, UntilSixHoursAreKnownThereIsNone) {
    EXPECT_FALSE(forecast(utc(11, 1, 359min)));
    EXPECT_TRUE(forecast(utc(11, 1, 6h)));
    contents.head.begun = utc(11, 10);

    EXPECT_FALSE(forecast(utc(11, 10, 359min)));
    EXPECT_TRUE(forecast(utc(11, 10, 6h)));
}

TEST_F(ForecastTest, WithFourWeeksADayIsAsThoseOfItsName) {
    // 16 November 2026 is a Monday; the Tuesdays before carried 100, 200, 300 and 400 MB.
    for (unsigned week = 0; week < 4; ++week) {
        enter(contents, {carriedAt(utc(11, 10) - week * 168h, (4 - week) * 100 * megabyte)});
    }

    const auto result = forecast(utc(11, 16)); // two Tuesdays to come, two passed this month

    ASSERT_TRUE(result);
    EXPECT_EQ(result->expected.bytes, (400 + 300 + 2 * 250) * megabyte);
    EXPECT_EQ(result->least.bytes, (400 + 300 + 2 * 100) * megabyte);
    EXPECT_EQ(result->most.bytes, (400 + 300 + 2 * 400) * megabyte);
}

TEST_F(ForecastTest, OfTodayTheRestIsItsPart) {
    enter(contents, {carriedAt(utc(11, 9), 400 * megabyte)}); // a Monday

    const auto result = forecast(utc(11, 16, 18h));

    // A quarter of this Monday and two others to come, each a fourth of 400 MB.
    EXPECT_EQ(result->expected.bytes, (400 + 25 + 2 * 100) * megabyte);
}

TEST_F(ForecastTest, OfTheLastDayItIsThePartBeforeTheEnd) {
    plan.period.hour = 6;
    enter(contents, {carriedAt(utc(11, 10), 400 * megabyte)}); // a Tuesday, as is 1 December

    EXPECT_EQ(forecast(utc(11, 25))->expected.bytes, (400 + 25) * megabyte);
    EXPECT_EQ(forecast(utc(12, 1))->expected.bytes, (400 + 25) * megabyte);
    EXPECT_EQ(forecast(utc(12, 1, 3h))->expected.bytes, (400 + 12) * megabyte + megabyte / 2);
}

TEST_F(ForecastTest, ADayOfSummerTimeIsAsLongAsItIs) {
    plan.period = {.kind = PeriodKind::Weekday};
    // Sundays; 25 October 2026 has 25 hours in Berlin.
    enter(contents, {carriedAt(utc(10, 18, 12h), 1'000 * megabyte)});

    const auto result = forecast(utc(10, 25, 13h), inBerlin); // ten hours are left

    EXPECT_EQ(result->expected.bytes, 100 * megabyte);
}

TEST_F(ForecastTest, OfOneDirectionALineCarriesHalfAsMuch) {
    contents.head.begun = utc(11, 1);
    enter(contents, {carriedAt(utc(11, 1), 3'000 * megabyte)});
    capacity.bytesPerSecond = 100;
    plan.counted = Counted::Received;

    const auto result = forecast(utc(11, 2));

    EXPECT_EQ(result->expected.bytes, 3'000 * megabyte + std::uint64_t{100} * 29 * 86'400);
}

TEST_F(ForecastTest, ItIsNeverMoreThanTheLineCanCarry) {
    contents.head.begun = utc(11, 1);
    enter(contents, {carriedAt(utc(11, 1), 3'000 * megabyte)});
    capacity.bytesPerSecond = 100;

    const auto result = forecast(utc(11, 2));

    // It may carry as much in either direction.
    const std::uint64_t most = 3'000 * megabyte + std::uint64_t{2} * 100 * 29 * 86'400;
    EXPECT_EQ(result->expected.bytes, most);
    EXPECT_EQ(result->least.bytes, most);
    EXPECT_EQ(result->most.bytes, most);
}

TEST_F(ForecastTest, NoLineIsUpLongerThanThereIsTime) {
    contents.head.begun = utc(11, 1);
    std::vector<LedgerEntry> all;
    for (int i = 0; i < 96; ++i) {
        all.push_back(carriedAt(utc(11, 1) + i * 15min, 0));
    }
    enter(contents, all);

    const auto result = forecast(utc(11, 2));

    EXPECT_EQ(result->most.milliseconds, 720 * hour);
    capacity.lines = 2;
    EXPECT_EQ(forecast(utc(11, 2))->most.milliseconds, 24 * hour + (696 + 348) * hour);
}

TEST_F(ForecastTest, ItGoesOnFromWhatTheProviderSaid) {
    contents.head.begun = utc(11, 1);
    enter(contents, {carriedAt(utc(11, 5), 1'000 * megabyte)});
    contents.notes.push_back(
        {.at = utc(11, 9),
         .plan = 1,
         .what = ProvidersFigure{Measure::Bytes, 4'000 * megabyte, 1'000 * megabyte}});

    EXPECT_EQ(forecast(utc(11, 11))->expected.bytes, 6'000 * megabyte);
}

TEST_F(ForecastTest, OfTheLargerDirectionTheSumsAreCompared) {
    plan.counted = Counted::Larger;
    contents.head.begun = utc(11, 1);
    enter(contents, {carriedAt(utc(11, 5), 1'000, 600), carriedAt(utc(11, 6), 0, 600)});

    EXPECT_EQ(forecast(utc(11, 16))->expected.bytes, 2'400U);
}

TEST_F(ForecastTest, TheLargestFiguresDoNotWrap) {
    contents.head.begun = utc(11, 1);
    enter(contents, {carriedAt(utc(11, 5), UINT64_MAX, UINT64_MAX)});

    EXPECT_EQ(forecast(utc(11, 6))->most.bytes, UINT64_MAX);
}

} // namespace
} // namespace tarvik::planned
