#include "linux/face/SelectionOwner.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

using namespace std::chrono_literals;

TEST(SelectionOwnerTest, AQuickDisplayIsWaitedForBriefly) {
    EXPECT_EQ(face::longestSilence(200us), 100ms);
    EXPECT_LE(face::longestSilence(25ms), 200ms);
}

TEST(SelectionOwnerTest, ADisplayFarAwayGetsTheTimeOfItsWays) {
    EXPECT_EQ(face::longestSilence(80ms), 420ms);
}

TEST(SelectionOwnerTest, ADisplayThatHangsIsNotWaitedForWithoutEnd) {
    EXPECT_EQ(face::longestSilence(30s), 1000ms);
}

} // namespace
} // namespace tarvik
