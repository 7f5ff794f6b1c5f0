#include "plan/PlanTest.h"
#include "plan/Plans.h"

#include <gtest/gtest.h>

#include <random>

namespace tarvik {
namespace {

using namespace planned;

/// A few lines, days and amounts, so that they meet.
LedgerEntry randomEntry(std::mt19937& random, Moment around) {
    const auto upTo = [&](int most) { return std::uniform_int_distribution<int>(0, most)(random); };
    LedgerEntry entry =
        carriedAt(quarterOf(around + std::chrono::hours(upTo(96) - 48)),
                  static_cast<std::uint64_t>(upTo(5000)), static_cast<std::uint64_t>(upTo(500)),
                  upTo(1) == 0 ? "Ridge" : "Harbour");
    entry.inside = upTo(3) == 0;
    return entry;
}

Plan randomPlan(std::mt19937& random) {
    const auto upTo = [&](int most) { return std::uniform_int_distribution<int>(0, most)(random); };
    Plan plan = tenGigabytes();
    plan.counted = static_cast<Counted>(upTo(3));
    plan.period.kind = static_cast<PeriodKind>(upTo(4));
    plan.period.from = dayOfCalendar(2026, 11, 15);
    plan.lines = upTo(1) == 0 ? std::vector<std::string>() : std::vector<std::string>{"Ridge"};
    plan.hours = 5;
    return plan;
}

TEST(MeterTest, WhatIsAddedToItIsAsIfItHadBeenReckonedAnew) {
    for (std::uint32_t seed = 0; seed < 500; ++seed) {
        std::mt19937 random(seed);
        const Plan plan = randomPlan(random);
        LedgerContents contents =
            contentsWith({randomEntry(random, noon), randomEntry(random, noon)},
                         {{.at = noon - 1h, .what = ProvidersFigure{Measure::Bytes, 7000, 100}},
                          {.at = noon - 2h, .what = ProvidersFigure{Measure::Time, 90'000, 5}}});
        auto meter = meterOf(plan, History(contents), noon, inBerlin);
        ASSERT_TRUE(meter.has_value());
        for (int i = 0; i < 20; ++i) {
            const LedgerEntry entry = randomEntry(random, noon);
            addTo(*meter, plan, entry);
            enter(contents, {entry});
        }

        EXPECT_EQ(meter->standing, *standingOf(plan, History(contents), noon, inBerlin)) << seed;
    }
}

TEST(MeterTest, ItHoldsUntilThePeriodEnds) {
    const LedgerContents contents = contentsWith({});
    const Plan plan = tenGigabytes();

    const auto meter = meterOf(plan, History(contents), noon, inLondon);

    EXPECT_TRUE(meter->holdsAt(utc(11, 30, 23h + 59min)));
    EXPECT_FALSE(meter->holdsAt(utc(12, 1)));
}

TEST(MeterTest, ItHoldsUntilAnExtensionForTodayEnds) {
    const LedgerContents contents =
        contentsWith({}, {{.at = noon - 1h, .what = Extension{.bytes = 5, .today = true}}});
    const Plan plan = tenGigabytes();

    const auto meter = meterOf(plan, History(contents), noon, inLondon);

    EXPECT_TRUE(meter->holdsAt(noon + 11h));
    EXPECT_FALSE(meter->holdsAt(noon + 12h));
}

TEST(MeterTest, AClockThatIsSetBackHasItReckonedAnew) {
    const LedgerContents contents = contentsWith({});
    const Plan plan = tenGigabytes();

    const auto meter = meterOf(plan, History(contents), noon, inLondon);

    EXPECT_FALSE(meter->holdsAt(noon - 1s));
}

TEST(PlansLookTest, WhatIsLookedAtInAMinuteIsNotLookedForAgain) {
    LedgerContents contents = contentsWith({carriedAt(noon - 24h, 5000)});
    Plans plans;
    plans.all.push_back({.plan = tenGigabytes()});
    plans.look(History(contents), noon, inLondon);
    plans.lookAhead(History(contents), noon, inLondon, {});
    const auto before = plans.all[0].outlookUntil;

    plans.look(History(contents), noon + 59s, inLondon);
    plans.lookAhead(History(contents), noon + 59s, inLondon, {});
    EXPECT_EQ(plans.all[0].outlookUntil, before);
    plans.lookAhead(History(contents), noon + 60s, inLondon, {});
    EXPECT_EQ(plans.all[0].outlookUntil, before + 60s);
}

} // namespace
} // namespace tarvik
