#include "types/Traffic.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

constexpr std::uint64_t mostOfAll = UINT64_MAX;

TEST(TrafficTest, ASumStopsAtTheLargestNumber) {
    EXPECT_EQ(sumUpTo(2, 3), 5U);
    EXPECT_EQ(sumUpTo(mostOfAll - 1, 1), mostOfAll);
    EXPECT_EQ(sumUpTo(mostOfAll, 1), mostOfAll);
    EXPECT_EQ((Traffic{1, 2, 3} + Traffic{mostOfAll, 20, 30}), (Traffic{mostOfAll, 22, 33}));
}

TEST(TrafficTest, ADifferenceStopsAtNothing) {
    EXPECT_EQ(lessDownTo(5, 3), 2U);
    EXPECT_EQ(lessDownTo(3, 5), 0U);
    EXPECT_EQ((Traffic{5, 2, 30} - Traffic{3, 2, 40}), (Traffic{2, 0, 0}));
}

TEST(TrafficTest, APortionIsExactAtAnyWidth) {
    EXPECT_EQ(portion(100, 1, 3), 33U);
    EXPECT_EQ(portion(mostOfAll, 4'000'000'000, 4'000'000'000), mostOfAll);
    EXPECT_EQ(portion(18'446'744'073'709'551'614U, 1, 2), 9'223'372'036'854'775'807U);
    EXPECT_EQ(portion(18'446'744'073'709'551'615U, 2, 3), 12'297'829'382'473'034'410U);
    EXPECT_EQ(portion(7, 0, 5), 0U);
}

TEST(TrafficTest, APortionOfMoreThanTheWholeStopsAtTheLargestNumber) {
    EXPECT_EQ(portion(mostOfAll / 2, 3, 1), mostOfAll);
    EXPECT_EQ(portion(10, 5, 2), 25U);
}

} // namespace
} // namespace tarvik
