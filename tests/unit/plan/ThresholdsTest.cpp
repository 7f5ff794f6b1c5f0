#include "plan/Thresholds.h"
#include "plan/PlanTest.h"

#include <gtest/gtest.h>

namespace tarvik::planned {
namespace {

using Places = std::vector<std::size_t>;

/// 1,000 bytes allowed, and what is said at 80, 50 and 100 per cent of them.
class ThresholdsTest : public testing::Test {
protected:
    ThresholdsTest() {
        plan.thresholds = {{.percent = 80}, {.percent = 50}, {.percent = 100}};
        standing.period.local = LocalMoment(dayOfCalendar(2026, 11, 1));
        standing.allowance.bytes = 1000;
    }

    DueThresholds dueAt(std::uint64_t used) {
        standing.used.bytes = used;
        const DueThresholds due = dueThresholds(plan, standing);
        plan.said = due.said;
        return due;
    }

    Plan plan = tenGigabytes();
    Standing standing;
};

TEST_F(ThresholdsTest, EachIsSaidWhenItIsReached) {
    EXPECT_EQ(dueAt(499).toSay, Places{});
    EXPECT_EQ(dueAt(500).toSay, Places{1});
    EXPECT_EQ(dueAt(799).toSay, Places{});
    EXPECT_EQ(dueAt(800).toSay, Places{0});
    EXPECT_EQ(dueAt(1000).toSay, Places{2});
}

TEST_F(ThresholdsTest, SeveralAtOnceTheLowestFirst) {
    EXPECT_EQ(dueAt(5000).toSay, (Places{1, 0, 2}));
}

TEST_F(ThresholdsTest, EachIsSaidOnceInAPeriod) {
    dueAt(900);

    EXPECT_EQ(dueAt(900).toSay, Places{});
    EXPECT_EQ(dueAt(100).toSay, Places{});
    EXPECT_EQ(dueAt(900).toSay, Places{});
}

TEST_F(ThresholdsTest, InTheNextPeriodEachIsSaidAgain) {
    dueAt(900);
    standing.period.local = LocalMoment(dayOfCalendar(2026, 12, 1));

    EXPECT_EQ(dueAt(900).toSay, (Places{1, 0}));
}

TEST_F(ThresholdsTest, AClockThatIsSetBackAndForthSaysNothingTwice) {
    dueAt(900);
    standing.period.local = LocalMoment(dayOfCalendar(2026, 10, 1));
    dueAt(900);
    standing.period.local = LocalMoment(dayOfCalendar(2026, 11, 1));

    EXPECT_EQ(dueAt(900).toSay, Places{});
}

TEST_F(ThresholdsTest, OfThreePeriodsIsKeptWhatWasSaid) {
    for (unsigned month = 1; month <= 9; ++month) {
        standing.period.local = LocalMoment(dayOfCalendar(2026, month, 1));
        dueAt(500);
    }

    ASSERT_EQ(plan.said.size(), 3U);
    EXPECT_EQ(plan.said.back().period, LocalMoment(dayOfCalendar(2026, 9, 1)));
    EXPECT_EQ(plan.said.back().said, std::vector<int>{50});
}

TEST_F(ThresholdsTest, TheyAreOfAllThatMayBeUsed) {
    standing.extended.bytes = 500;
    standing.rolledOver.bytes = 500;

    EXPECT_EQ(dueAt(999).toSay, Places{});
    EXPECT_EQ(dueAt(1000).toSay, Places{1});
}

TEST_F(ThresholdsTest, APartOfAByteIsNotReached) {
    standing.allowance.bytes = 1001;

    EXPECT_EQ(dueAt(500).toSay, Places{});
    EXPECT_EQ(dueAt(501).toSay, Places{1});
}

TEST_F(ThresholdsTest, EitherOfTwoLimitsReachesThem) {
    plan.hours = 10;
    standing.allowance.milliseconds = 10 * hour;
    standing.used.milliseconds = 5 * hour;

    EXPECT_EQ(dueAt(0).toSay, Places{1});
}

TEST_F(ThresholdsTest, WhatIsNotLimitedReachesNone) {
    plan.allowance.reset();

    EXPECT_EQ(dueAt(5000).toSay, Places{});
}

TEST_F(ThresholdsTest, TheyHangUpAtOnceOrAfterSomeGrace) {
    plan.thresholds[0].hangUp = HangUpRule::AtOnce;
    plan.thresholds[2].hangUp = HangUpRule::AfterGrace;
    plan.thresholds[2].grace = {.thousandths = 1, .unit = SizeUnit::MB}; // 1,000 bytes

    EXPECT_EQ(dueAt(799).toHangUp, Places{});
    EXPECT_EQ(dueAt(800).toHangUp, Places{0});
    EXPECT_EQ(dueAt(1999).toHangUp, Places{});
    EXPECT_EQ(dueAt(2000).toHangUp, Places{2});
    EXPECT_EQ(dueAt(9000).toHangUp, Places{});
}

TEST_F(ThresholdsTest, GraceOfTimeIsInMinutes) {
    plan = Plan();
    plan.hours = 1;
    plan.thresholds = {{.percent = 100, .hangUp = HangUpRule::AfterGrace, .graceMinutes = 30}};
    standing.allowance = {0, hour};
    standing.used.milliseconds = hour + hour / 2 - 1;
    EXPECT_EQ(dueAt(0).toHangUp, Places{});

    standing.used.milliseconds = hour + hour / 2;

    EXPECT_EQ(dueAt(0).toHangUp, Places{0});
}

TEST_F(ThresholdsTest, AfterTheLastOneNothingMoreIsWantedIfTheUserSaysSo) {
    standing.used.bytes = 1000;
    EXPECT_FALSE(isBlocked(plan, standing));

    plan.blockAfterLast = true;
    EXPECT_TRUE(isBlocked(plan, standing));
    standing.used.bytes = 999;
    EXPECT_FALSE(isBlocked(plan, standing));
}

TEST_F(ThresholdsTest, AnExtensionOpensTheWayAgain) {
    plan.blockAfterLast = true;
    dueAt(1000);

    standing.extended.bytes = 500;

    EXPECT_FALSE(isBlocked(plan, standing));
    standing.used.bytes = 1500;
    EXPECT_TRUE(isBlocked(plan, standing));
    EXPECT_EQ(dueThresholds(plan, standing).toSay, Places{});
}

TEST_F(ThresholdsTest, WithoutThresholdsNothingIsBlocked) {
    plan.thresholds.clear();
    plan.blockAfterLast = true;
    standing.used.bytes = 5000;

    EXPECT_FALSE(isBlocked(plan, standing));
}

TEST_F(ThresholdsTest, TheLargestFiguresDoNotWrap) {
    standing.allowance.bytes = UINT64_MAX;

    EXPECT_EQ(dueAt(UINT64_MAX / 2).toSay, Places{});
    EXPECT_EQ(dueAt(UINT64_MAX / 2 + 1).toSay, Places{1});
    EXPECT_EQ(dueAt(UINT64_MAX).toSay, (Places{0, 2}));
}

} // namespace
} // namespace tarvik::planned
