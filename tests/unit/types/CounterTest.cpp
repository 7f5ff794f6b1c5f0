#include "types/Counter.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

TEST(CounterTest, HoldsWhatALongHolds) {
    const Counter counter = Counter::of(Currency(2'147'483'647));

    EXPECT_EQ(counter.figure(), Long(2'147'483'647));
    EXPECT_EQ(counter.beyond(), Currency(0));
}

TEST(CounterTest, StopsAtTheLargestLongAndCountsOnBeyondIt) {
    const Counter counter = Counter::of(Currency::fromWhole(2'147'483'650));

    EXPECT_EQ(counter.figure(), Long(2'147'483'647));
    EXPECT_EQ(counter.beyond(), Currency(3));
    EXPECT_EQ(counter.whole(), Currency::fromWhole(2'147'483'650));
}

TEST(CounterTest, AFigureHasNothingBeyond) {
    EXPECT_EQ(Counter(Long(-5)).whole(), Currency(-5));
    EXPECT_EQ(Counter::of(Currency(-5)), Counter(-5));
}

TEST(CounterTest, LosesNoFraction) {
    EXPECT_EQ(Counter::of(Currency::fromScaled(15'000)).whole(), Currency::fromScaled(15'000));
}

} // namespace
} // namespace tarvik
