#include "plan/PlanTest.h"

#include "scripted/ScriptedServices.h"

#include <gtest/gtest.h>

namespace tarvik::planned {
namespace {

void expectPeriod(const PeriodRule& rule, Moment moment, Moment begin, Moment end,
                  const Zone& zone = inLondon) {
    const auto period = periodAt(rule, moment, zone);
    ASSERT_TRUE(period);
    EXPECT_EQ(period->begin, begin);
    EXPECT_EQ(period->end, end);
}

TEST(LocalTimeTest, ATimeOfTheClockIsAMoment) {
    EXPECT_EQ(momentOf(dayOfCalendar(2026, 7, 1) + 2h, inBerlin), utc(7, 1));
    EXPECT_EQ(momentOf(dayOfCalendar(2026, 12, 1) + 1h, inBerlin), utc(12, 1));
}

TEST(LocalTimeTest, ATimeThatTheClockNeverShowsIsTheMomentOfTheChange) {
    const LocalDay change = dayOfCalendar(2026, 3, 29);

    EXPECT_EQ(momentOf(change + 2h, inBerlin), utc(3, 29, 1h));
    EXPECT_EQ(momentOf(change + 2h + 59min, inBerlin), utc(3, 29, 1h));
    EXPECT_EQ(momentOf(change + 3h, inBerlin), utc(3, 29, 1h));
    EXPECT_EQ(momentOf(change + 1h + 59min, inBerlin), utc(3, 29, 59min));
    EXPECT_EQ(momentOf(change + 3h + 1min, inBerlin), utc(3, 29, 61min));
}

TEST(LocalTimeTest, OfATimeThatComesTwiceItIsTheFirst) {
    const LocalDay change = dayOfCalendar(2026, 10, 25);

    EXPECT_EQ(momentOf(change + 2h + 30min, inBerlin), utc(10, 25, 30min));
    EXPECT_EQ(momentOf(change + 3h, inBerlin), utc(10, 25, 2h));
}

TEST(LocalTimeTest, ADayThatAZoneLeavesOutHasNoLength) {
    const Moment change = utc(12, 30, 10h);
    const Zone zone = [&](Moment moment) { return moment < change ? -600min : 840min; };

    EXPECT_EQ(momentOf(LocalMoment(dayOfCalendar(2026, 12, 30)), zone), change);
    EXPECT_EQ(momentOf(LocalMoment(dayOfCalendar(2026, 12, 31)), zone), change);
}

TEST(LocalTimeTest, TheZoneIsTheClocks) {
    ScriptedClock clock;
    clock.zone = [](std::int64_t universal) { return universal < 5'000 ? 60 : -120; };

    const Zone zone = zoneOf(clock);

    EXPECT_EQ(zone(Moment(4s)), 60min);
    EXPECT_EQ(zone(Moment(5s)), -120min);
}

TEST(PeriodTest, AMonthBeginsAtItsDayAndHour) {
    const PeriodRule rule{.hour = 6, .day = 14};

    expectPeriod(rule, utc(11, 16), utc(11, 14, 6h), utc(12, 14, 6h));
    expectPeriod(rule, utc(11, 14, 6h), utc(11, 14, 6h), utc(12, 14, 6h));
    expectPeriod(rule, utc(11, 14, 359min), utc(10, 14, 6h), utc(11, 14, 6h));
    expectPeriod(rule, utc(12, 31), utc(12, 14, 6h), utc(1, 14, 6h, 2027));
}

TEST(PeriodTest, InAShorterMonthThePeriodEndsEarlier) {
    const PeriodRule rule{.day = 31};

    expectPeriod(rule, utc(2, 1), utc(1, 31), utc(2, 28));
    expectPeriod(rule, utc(3, 1), utc(2, 28), utc(3, 31));
    expectPeriod(rule, utc(2, 1, 0min, 2028), utc(1, 31, 0min, 2028), utc(2, 29, 0min, 2028));
}

TEST(PeriodTest, AMonthIsTheUsersOwn) {
    expectPeriod({}, utc(10, 31, 23h), utc(10, 31, 23h), utc(11, 30, 23h), inBerlin);
    expectPeriod({}, utc(10, 5), utc(9, 30, 22h), utc(10, 31, 23h), inBerlin);
}

TEST(PeriodTest, DaysAreCountedFromTheirDateAndNoneIsBeforeIt) {
    const PeriodRule rule{
        .kind = PeriodKind::Days, .hour = 8, .every = 28, .from = dayOfCalendar(2026, 11, 2)};

    expectPeriod(rule, utc(11, 2, 8h), utc(11, 2, 8h), utc(11, 30, 8h));
    expectPeriod(rule, utc(12, 1), utc(11, 30, 8h), utc(12, 28, 8h));
    EXPECT_FALSE(periodAt(rule, utc(11, 2, 479min), inLondon));
}

TEST(PeriodTest, WeeksAreCountedFromTheirDate) {
    const PeriodRule rule{
        .kind = PeriodKind::Weeks, .every = 2, .from = dayOfCalendar(2026, 11, 2)};

    expectPeriod(rule, utc(11, 16), utc(11, 16), utc(11, 30));
}

TEST(PeriodTest, AWeekBeginsOnItsDay) {
    const PeriodRule sunday{.kind = PeriodKind::Weekday, .hour = 18, .weekday = 7};

    expectPeriod(sunday, utc(11, 16), utc(11, 15, 18h), utc(11, 22, 18h));
    expectPeriod(sunday, utc(11, 15, 17h), utc(11, 8, 18h), utc(11, 15, 18h));
}

TEST(PeriodTest, ADayBeginsAtItsHourAndMayBeLonger) {
    const PeriodRule rule{.kind = PeriodKind::Daily, .hour = 2};

    expectPeriod(rule, utc(11, 16), utc(11, 15, 2h), utc(11, 16, 2h));
    expectPeriod(rule, utc(3, 29, 12h), utc(3, 29, 1h), utc(3, 30), inBerlin);
    expectPeriod(rule, utc(10, 25, 12h), utc(10, 25), utc(10, 26, 1h), inBerlin);
}

TEST(PeriodTest, APackIsOnePeriod) {
    const PeriodRule rule{.kind = PeriodKind::Pack,
                          .hour = 9,
                          .from = dayOfCalendar(2026, 11, 1),
                          .until = dayOfCalendar(2026, 12, 1)};

    expectPeriod(rule, utc(11, 16), utc(11, 1, 9h), utc(12, 1, 9h));
    EXPECT_FALSE(periodAt(rule, utc(11, 1, 8h), inLondon));
    EXPECT_FALSE(periodAt(rule, utc(12, 1, 9h), inLondon));
}

TEST(PeriodTest, APackWithoutADateHasNoEnd) {
    const PeriodRule rule{.kind = PeriodKind::Pack, .from = dayOfCalendar(2026, 11, 1)};

    expectPeriod(rule, utc(11, 16, 0min, 2999), utc(11, 1), Period::endless);
}

TEST(PeriodTest, APackThatEndsBeforeItBeginsIsNone) {
    const PeriodRule rule{.kind = PeriodKind::Pack,
                          .from = dayOfCalendar(2026, 11, 1),
                          .until = dayOfCalendar(2026, 11, 1)};

    EXPECT_FALSE(periodAt(rule, utc(11, 1), inLondon));
}

TEST(PeriodTest, ThePeriodsToComeAreKnownByTheirNumbers) {
    const auto now = periodAt({}, utc(11, 16), inLondon);
    ASSERT_TRUE(now);

    const auto next = periodOf({}, now->number + 3, inLondon);

    ASSERT_TRUE(next);
    EXPECT_EQ(next->begin, utc(2, 1, 0min, 2027));
    EXPECT_EQ(next->local, LocalMoment(dayOfCalendar(2027, 2, 1)));
}

TEST(PeriodTest, AClockThatShowsAnyMomentHasAPeriod) {
    for (const Moment moment : {Moment(std::chrono::seconds(INT64_MIN)), Moment(),
                                Moment(std::chrono::seconds(INT64_MAX))}) {
        for (const PeriodKind kind : {PeriodKind::Month, PeriodKind::Weekday, PeriodKind::Daily}) {
            EXPECT_TRUE(periodAt({.kind = kind}, moment, inBerlin));
        }
    }
}

} // namespace
} // namespace tarvik::planned
