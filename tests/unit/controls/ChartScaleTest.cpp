#include "controls/ChartScale.h"

#include "controls/ChartOnSheet.h"
#include "types/Convert.h"

#include <gtest/gtest.h>

#include <limits>

namespace tarvik {
namespace {

constexpr int parts = 10;

/// A tenth of a billionth of a part cannot be seen.
constexpr double unseen = 1e-9;

struct Range {
    double least;
    double most;
};

/// Parts that it takes from zero to a distance. One that cannot be seen takes a part or does not.
double partsFor(double distance, double step, bool ofUnseen) {
    return distance > 0 && ofUnseen ? std::max(1.0, std::ceil(distance / step - unseen))
                                    : std::max(0.0, std::ceil(distance / step - unseen));
}

/// Round steps, the smallest first: 1, 1.5, 2, 2.5, 3, 4, 5, 6 and 8 with any number of zeros.
double naiveStep(const Range& range, int divisions, bool ofUnseen) {
    const bool empty = range.least >= 0 && range.most <= 0;
    for (int exponent = -20; exponent < 20; ++exponent) {
        for (const int tenths : {10, 15, 20, 25, 30, 40, 50, 60, 80}) {
            const double step = tenths * std::pow(10.0, exponent) / 10;
            const double above = partsFor(empty ? 1 : range.most, step, ofUnseen);
            if (above + partsFor(-range.least, step, ofUnseen) <= divisions) {
                return step;
            }
        }
    }
    return 0;
}

bool isNear(double a, double b) {
    return std::abs(a / b - 1) < unseen;
}

void expectSuits(const Range& range, int divisions = parts) {
    const ValueScale scale = valueScale(range.least, range.most, divisions);
    const double least = std::min(range.least, 0.0);
    const double most = std::max(range.most, 0.0);
    const double tolerance = scale.step * unseen;
    ASSERT_EQ(scale.divisions, divisions);
    ASSERT_GT(scale.step, 0);
    // It is the smallest round step ...
    const bool smallest = isNear(scale.step, naiveStep(range, divisions, true)) ||
                          isNear(scale.step, naiveStep(range, divisions, false));
    EXPECT_TRUE(smallest) << scale.step << " for " << range.least << " to " << range.most;
    // ... which puts a line on zero and holds everything.
    EXPECT_NEAR(scale.low / scale.step, std::round(scale.low / scale.step), unseen * parts);
    EXPECT_LE(scale.low, least + tolerance);
    EXPECT_GE(scale.high(), most - tolerance);
}

/// The numbers at the lines say where the lines are, and no two neighbours the same.
void expectLabelsTell(const Range& range) {
    const ValueScale scale = valueScale(range.least, range.most, parts);
    ASSERT_GE(scale.decimals, 0);
    ASSERT_LE(scale.decimals, 20);
    LocaleData locale;
    locale.thousandsSeparator.clear();
    std::string before;
    for (int division = 0; division <= parts; ++division) {
        const std::string label = formatGrouped(scale.at(division), scale.decimals, locale);
        EXPECT_NE(label, before);
        EXPECT_NEAR(std::stod(label), scale.at(division), scale.step * 1e-6) << label;
        before = label;
    }
    // One decimal less would be too few, unless there is none.
    if (scale.decimals > 0) {
        const double coarse = std::pow(10.0, 1 - scale.decimals);
        EXPECT_GT(std::abs(scale.step / coarse - std::round(scale.step / coarse)), 1e-6);
    }
}

TEST(ValueScaleTest, NothingButZerosReachesFromZeroToOne) {
    EXPECT_EQ(valueScale(0, 0, 10), (ValueScale{0, 0.1, 10, 1}));
}

TEST(ValueScaleTest, AHundredIsTenTens) {
    EXPECT_EQ(valueScale(0, 100, 10), (ValueScale{0, 10, 10, 0}));
}

TEST(ValueScaleTest, ALittleMoreThanAHundredIsTenFifteens) {
    EXPECT_EQ(valueScale(0, 100.0001, 10), (ValueScale{0, 15, 10, 0}));
}

TEST(ValueScaleTest, ZeroIsHeldWhereAllValuesAreFarFromIt) {
    EXPECT_EQ(valueScale(990, 1000, 10), (ValueScale{0, 100, 10, 0}));
    EXPECT_EQ(valueScale(-50, -40, 10), (ValueScale{-50, 5, 10, 0}));
}

TEST(ValueScaleTest, NegativeAndPositiveValuesShareTheParts) {
    EXPECT_EQ(valueScale(-25, 75, 10), (ValueScale{-30, 15, 10, 0}));
    EXPECT_EQ(valueScale(-20, 80, 10), (ValueScale{-20, 10, 10, 0}));
    EXPECT_EQ(valueScale(-1, 1, 10), (ValueScale{-1, 0.2, 10, 1}));
}

TEST(ValueScaleTest, TinyValuesHaveTheDecimalsThatTellThemApart) {
    const ValueScale scale = valueScale(0, 0.0001, 10);

    EXPECT_DOUBLE_EQ(scale.step, 0.00001);
    EXPECT_EQ(scale.decimals, 5);
}

TEST(ValueScaleTest, HugeValuesHaveRoundSteps) {
    EXPECT_EQ(valueScale(0, 900'000'000'000'000, 10), (ValueScale{0, 100'000'000'000'000, 10, 0}));
}

TEST(ValueScaleTest, RangesOfTenRoundPartsAreHeldByThese) {
    std::int64_t power = 1; // ten thousandths
    for (int zeros = 0; zeros <= 14; ++zeros, power *= 10) {
        for (const int tenths : {10, 15, 20, 25, 30, 40, 50, 60, 80}) {
            for (int below = 0; below <= parts; ++below) {
                const auto number = [&](int count) {
                    return static_cast<double>(count * tenths * power) / 10'000;
                };
                const ValueScale scale = valueScale(-number(below), number(parts - below), parts);

                EXPECT_TRUE(isNear(scale.step, number(1)) &&
                            isNear(scale.low - number(1), -number(below + 1)))
                    << scale.low << " and parts of " << scale.step << " for " << -number(below)
                    << " to " << number(parts - below);
            }
        }
    }
}

TEST(ValueScaleTest, EdgesOfTheNumbersAreHeld) {
    constexpr double most = 922'337'203'685'477.58;
    for (const Range& range : {Range{0, most}, Range{-most, 0}, Range{-most, most}, Range{0, 1e18},
                               Range{-2 * most, 2 * most}, Range{0, 1e-9}}) {
        expectSuits(range);
        expectLabelsTell(range);
    }
}

TEST(ValueScaleTest, OtherNumbersOfPartsWorkToo) {
    Dice dice(11);
    for (int i = 0; i < 300; ++i) {
        const Range range{-static_cast<double>(dice.whole(0, 1000)),
                          static_cast<double>(dice.whole(1, 1000))};
        for (const int divisions : {1, 2, 3, 5, 7, 20}) {
            if (divisions > 1 || range.least == 0) {
                expectSuits(range, divisions);
            }
        }
    }
}

/// Ranges of numbers with four decimals, of any size from a ten thousandth to the largest.
class RandomRangesTest : public testing::TestWithParam<int> {
protected:
    Dice dice{static_cast<std::uint32_t>(GetParam())};

    double number() {
        std::int64_t most = 1;
        for (std::int64_t digits = dice.whole(0, 18); digits > 0; --digits) {
            most *= 10;
        }
        return static_cast<double>(dice.whole(0, most)) / 10'000;
    }
};

TEST_P(RandomRangesTest, ArePositive) {
    for (int i = 0; i < 1000; ++i) {
        const Range range{number(), number()};
        expectSuits({std::min(range.least, range.most), std::max(range.least, range.most)});
        expectLabelsTell(range);
    }
}

TEST_P(RandomRangesTest, AreNegative) {
    for (int i = 0; i < 1000; ++i) {
        const Range range{-number(), 0};
        expectSuits(range);
        expectLabelsTell(range);
    }
}

TEST_P(RandomRangesTest, AreMixed) {
    for (int i = 0; i < 1000; ++i) {
        const Range range{-number(), number()};
        expectSuits(range);
        expectLabelsTell(range);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomRangesTest, testing::Values(1, 2, 3));

using Numbers = std::vector<std::int64_t>;

/// Both ends, and the numbers between them that are multiples of the step.
Numbers labelsAt(std::int64_t first, std::int64_t last, std::int64_t step) {
    Numbers numbers;
    for (std::int64_t number = first; number <= last; ++number) {
        if (number == first || number == last || number % step == 0) {
            numbers.push_back(number);
        }
    }
    return numbers;
}

TEST(RowScaleTest, HasTheSmallestStepThatLeavesFewEnoughLabels) {
    constexpr std::array steps{1, 2, 5, 10, 20, 50, 100, 200, 500, 1000, 2000, 5000};
    for (int most = 2; most <= 15; ++most) {
        for (const int first : {1, 2, 37, 100, 998}) {
            for (int last = first; last <= first + 700; last += 1 + (last - first) / 40) {
                const auto fits = [&](int step) {
                    return labelsAt(first, last, step).size() <= static_cast<std::size_t>(most);
                };
                const int step = *std::find_if(steps.begin(), steps.end(), fits);
                const RowScale scale = rowScale(first, last, most);
                ASSERT_EQ(scale.step, step) << first << " to " << last << ", at most " << most;
                ASSERT_EQ(scale.numbers, labelsAt(first, last, step));
            }
        }
    }
}

TEST(RowScaleTest, RoundNumbersAreThoseThatPeopleCount) {
    EXPECT_EQ(rowScale(1, 30, 11).numbers, (Numbers{1, 5, 10, 15, 20, 25, 30}));
    EXPECT_EQ(rowScale(1, 100, 11).numbers, (Numbers{1, 10, 20, 30, 40, 50, 60, 70, 80, 90, 100}));
    EXPECT_EQ(rowScale(1, 300, 8).numbers, (Numbers{1, 50, 100, 150, 200, 250, 300}));
    EXPECT_EQ(rowScale(95, 212, 11).numbers, (Numbers{95, 100, 120, 140, 160, 180, 200, 212}));
}

TEST(RowScaleTest, OneRowHasOneLabel) {
    EXPECT_EQ(rowScale(7, 7, 11).numbers, (Numbers{7}));
}

TEST(RowScaleTest, BothEndsAreLabelledHoweverFewLabelsThereMayBe) {
    for (const int most : {0, 1, 2}) {
        EXPECT_EQ(rowScale(1, 123'456, most).numbers, (Numbers{1, 123'456}));
    }
}

TEST(RowScaleTest, ManyRowsHaveLargeSteps) {
    EXPECT_EQ(rowScale(1, 1'000'000, 11).step, 100'000);
    EXPECT_EQ(rowScale(1, 1'000'001, 11).step, 200'000);
    EXPECT_EQ(rowScale(1, std::numeric_limits<std::int32_t>::max(), 12).step, 200'000'000);
}

TEST(RowScaleTest, NumbersBelowZeroAreRoundToo) {
    EXPECT_EQ(rowScale(-7, 6, 5).numbers, (Numbers{-7, -5, 0, 5, 6}));
}

} // namespace
} // namespace tarvik
