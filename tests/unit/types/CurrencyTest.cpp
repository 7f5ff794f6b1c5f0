#include "types/Currency.h"
#include "support/ErrorOf.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tarvik {
namespace {

constexpr std::int64_t largest = 9'223'372'036'854'775'807;
constexpr std::int64_t smallest = -largest - 1;

Currency scaled(std::int64_t value) {
    return Currency::fromScaled(value);
}

std::int64_t scaledOf(double value) {
    return Currency::fromDouble(value).scaled();
}

TEST(CurrencyTest, HoldsTheValueTimesTenThousand) {
    EXPECT_EQ(Currency(Long(-3)).scaled(), -30'000);
    EXPECT_EQ(Currency::fromWhole(5).scaled(), 50'000);
    EXPECT_EQ(scaledOf(1.25), 12'500);
    EXPECT_EQ(Currency().scaled(), 0);
}

TEST(CurrencyTest, AddsAndSubtractsExactly) {
    EXPECT_EQ((scaled(9'007'199'254'740'993) + scaled(1)).scaled(), 9'007'199'254'740'994);
    EXPECT_EQ((scaled(5) - scaled(12)).scaled(), -7);
}

TEST(CurrencyTest, ReachesBothEndsOfItsRange) {
    EXPECT_EQ((scaled(largest - 1) + scaled(1)).scaled(), largest);
    EXPECT_EQ((scaled(smallest + 1) - scaled(1)).scaled(), smallest);
    EXPECT_EQ((scaled(-1) - scaled(smallest)).scaled(), largest);
    EXPECT_EQ((scaled(0) + scaled(smallest)).scaled(), smallest);
}

TEST(CurrencyTest, RaisesOverflowBeyondItsRange) {
    EXPECT_EQ(errorOf([] { return scaled(largest) + scaled(1); }), 6);
    EXPECT_EQ(errorOf([] { return scaled(smallest) + scaled(-1); }), 6);
    EXPECT_EQ(errorOf([] { return scaled(smallest) - scaled(1); }), 6);
    EXPECT_EQ(errorOf([] { return scaled(largest) - scaled(-1); }), 6);
    EXPECT_EQ(errorOf([] { return scaled(0) - scaled(smallest); }), 6);
}

TEST(CurrencyTest, ASumThatDoesNotFitIsNextToTheEndOfTheRange) {
    const Currency most = Currency::fromScaled(INT64_MAX);
    const Currency least = Currency::fromScaled(INT64_MIN);

    EXPECT_EQ(nearestSum(most, Currency::fromScaled(1)), most);
    EXPECT_EQ(nearestSum(Currency::fromScaled(-1), least), least);
    EXPECT_EQ(nearestSum(most, least), Currency::fromScaled(-1));
    EXPECT_EQ(nearestSum(least, most), Currency::fromScaled(-1));
    EXPECT_EQ(nearestSum(Currency(2), Currency(3)), Currency(5));
}

TEST(CurrencyTest, WholeNumbersEndAtTheRange) {
    EXPECT_EQ(Currency::fromWhole(922'337'203'685'477).scaled(), 9'223'372'036'854'770'000);
    EXPECT_EQ(Currency::fromWhole(-922'337'203'685'477).scaled(), -9'223'372'036'854'770'000);
    EXPECT_EQ(errorOf([] { return Currency::fromWhole(922'337'203'685'478); }), 6);
    EXPECT_EQ(errorOf([] { return Currency::fromWhole(-922'337'203'685'478); }), 6);
}

TEST(CurrencyTest, RoundsDoublesToFourDecimalsTiesToEven) {
    EXPECT_EQ(scaledOf(0.00003), 0);
    EXPECT_EQ(scaledOf(0.00007), 1);
    EXPECT_EQ(scaledOf(0.03125), 312);
    EXPECT_EQ(scaledOf(0.09375), 938);
    EXPECT_EQ(scaledOf(-0.03125), -312);
    EXPECT_EQ(scaledOf(-0.09375), -938);
    EXPECT_EQ(scaledOf(-0.00007), -1);
}

TEST(CurrencyTest, TakesDoublesUpToTheEndsOfItsRange) {
    EXPECT_EQ(scaledOf(922'337'203'685'477.0), 9'223'372'036'854'769'664);
    EXPECT_EQ(scaledOf(-922'337'203'685'477.5808), smallest);
    EXPECT_EQ(errorOf([] { return Currency::fromDouble(922'337'203'685'478.0); }), 6);
    EXPECT_EQ(errorOf([] { return Currency::fromDouble(-922'337'203'685'478.0); }), 6);
}

TEST(CurrencyTest, RaisesOverflowForWhatIsNoNumber) {
    EXPECT_EQ(errorOf([] { return Currency::fromDouble(std::nan("")); }), 6);
    EXPECT_EQ(errorOf([] { return Currency::fromDouble(HUGE_VAL); }), 6);
    EXPECT_EQ(errorOf([] { return Currency::fromDouble(-HUGE_VAL); }), 6);
}

TEST(CurrencyTest, BecomesADouble) {
    EXPECT_EQ(scaled(12'345).toDouble(), 1.2345);
    EXPECT_EQ(scaled(-5'000).toDouble(), -0.5);
}

TEST(CurrencyTest, BecomesTheNearestLongTiesToEven) {
    EXPECT_EQ(scaled(5'000).toLong(), Long(0));
    EXPECT_EQ(scaled(15'000).toLong(), Long(2));
    EXPECT_EQ(scaled(25'000).toLong(), Long(2));
    EXPECT_EQ(scaled(25'001).toLong(), Long(3));
    EXPECT_EQ(scaled(-15'000).toLong(), Long(-2));
    EXPECT_EQ(scaled(-25'000).toLong(), Long(-2));
    EXPECT_EQ(scaled(-24'999).toLong(), Long(-2));
}

TEST(CurrencyTest, BecomesALongOnlyWithinThirtyTwoBits) {
    EXPECT_EQ(scaled(21'474'836'474'999).toLong(), Long(2'147'483'647));
    EXPECT_EQ(scaled(-21'474'836'485'000).toLong(), Long(-2'147'483'647 - 1));
    EXPECT_EQ(errorOf([] { return scaled(21'474'836'475'000).toLong(); }), 6);
    EXPECT_EQ(errorOf([] { return scaled(-21'474'836'485'001).toLong(); }), 6);
}

TEST(CurrencyTest, BecomesAByteOnlyFromZeroTo255) {
    EXPECT_EQ(scaled(2'554'999).toByte(), 255);
    EXPECT_EQ(scaled(-5'000).toByte(), 0);
    EXPECT_EQ(errorOf([] { return scaled(2'555'000).toByte(); }), 6);
    EXPECT_EQ(errorOf([] { return scaled(-5'001).toByte(); }), 6);
}

TEST(CurrencyTest, TheIntegralPartDropsFractionsTowardsZero) {
    EXPECT_EQ(scaled(19'999).integralPart(), 1);
    EXPECT_EQ(scaled(-19'999).integralPart(), -1);
}

TEST(CurrencyTest, Compares) {
    EXPECT_LT(scaled(-1), scaled(0));
    EXPECT_GT(scaled(10'001), Currency(1));
    EXPECT_EQ(scaled(10'000), Currency(1));
}

} // namespace
} // namespace tarvik
