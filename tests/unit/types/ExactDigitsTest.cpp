#include "types/ExactDigits.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace tarvik {
namespace {

/// What the standard library makes of it.
std::string libraryDigits(double magnitude) {
    std::array<char, 400> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                            std::chars_format::fixed, exactDecimals);
    std::string digits(buffer.data(), end);
    digits.erase(digits.find('.'), 1);
    return digits;
}

class ExactDigitsOf : public testing::TestWithParam<double> {};

TEST_P(ExactDigitsOf, AreTheLibrarys) {
    EXPECT_EQ(exactDigits(GetParam()), libraryDigits(GetParam()));
}

using Limits = std::numeric_limits<double>;

INSTANTIATE_TEST_SUITE_P(Edges, ExactDigitsOf,
                         testing::Values(0.0, 1.0, 0.1, 0.5, 9.999, 1024.0, 1e15, 1e22, 1e23, 1e300,
                                         Limits::max(), Limits::min(), Limits::denorm_min(),
                                         Limits::epsilon(), 4'294'967'295.0, 4'294'967'296.0,
                                         1.0 - Limits::epsilon() / 2));

TEST(ExactDigitsTest, WhatStandsBeforeThePointComesFirst) {
    EXPECT_EQ(exactDigits(0.0), "0" + std::string(30, '0'));
    EXPECT_EQ(exactDigits(1.5), "15" + std::string(29, '0'));
    EXPECT_EQ(exactDigits(1234.0), "1234" + std::string(30, '0'));
}

/// With 31 digits after the point, the last of them a five.
TEST(ExactDigitsTest, ATieGoesToTheEvenDigit) {
    for (int numerator = 1; numerator < 4096; numerator += 2) {
        const double tie = std::ldexp(numerator, -31);
        ASSERT_EQ(exactDigits(tie), libraryDigits(tie)) << numerator;
    }
}

TEST(ExactDigitsTest, EveryKindOfNumberHasTheLibrarysDigits) {
    std::mt19937_64 random(20'261'123); // NOLINT: the same numbers every time
    for (int i = 0; i < 100'000; ++i) {
        const double number = std::fabs(std::bit_cast<double>(random()));
        if (std::isfinite(number)) {
            ASSERT_EQ(exactDigits(number), libraryDigits(number)) << i;
        }
    }
}

TEST(ExactDigitsTest, NumbersThatAWindowShowsHaveTheLibrarysDigits) {
    std::mt19937_64 random(7); // NOLINT: the same numbers every time
    for (int i = 0; i < 100'000; ++i) {
        const auto bytes = static_cast<double>(random() >> (i % 50 + 11));
        const double shown = bytes / (i % 2 == 0 ? 1024.0 : 1'000'000.0);
        ASSERT_EQ(exactDigits(shown), libraryDigits(shown)) << i;
    }
}

} // namespace
} // namespace tarvik
