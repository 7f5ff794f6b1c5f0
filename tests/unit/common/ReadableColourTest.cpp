#include "common/ReadableColour.h"

#include <gtest/gtest.h>

namespace tarvik::face {
namespace {

constexpr Colour darkRed{192, 0, 0};

TEST(ReadableColourTest, BlackAndWhiteDifferMost) {
    EXPECT_NEAR(contrastRatio({0, 0, 0}, {255, 255, 255}), 21, 0.001);
    EXPECT_NEAR(contrastRatio({255, 255, 255}, {0, 0, 0}), 21, 0.001);
    EXPECT_NEAR(contrastRatio(darkRed, darkRed), 1, 0.001);
}

TEST(ReadableColourTest, OnEveryDarkGroundTheTextCanBeRead) {
    for (int shade = 0; shade <= 117; ++shade) {
        const Colour ground{shade, shade, shade};

        EXPECT_GE(contrastRatio(readableOn(darkRed, ground), ground), 4.5) << shade;
    }
}

TEST(ReadableColourTest, ALighterRedIsStillRed) {
    EXPECT_EQ(readableOn(darkRed, {0, 0, 0}).green, 0);
    EXPECT_EQ(readableOn(darkRed, {0, 0, 0}).blue, 0);
    EXPECT_GT(readableOn(darkRed, {0, 0, 0}).red, 192);
}

TEST(ReadableColourTest, OnLightGroundsTheColourStaysAsItIs) {
    for (const Colour ground : {Colour{255, 255, 255}, {240, 240, 240}, {212, 208, 200}}) {
        EXPECT_EQ(readableOn(darkRed, ground), darkRed) << ground.red;
    }
}

TEST(ReadableColourTest, OnAMiddleGreyTheTextCanBeRead) {
    constexpr Colour grey{128, 128, 128};

    EXPECT_GE(contrastRatio(readableOn(darkRed, grey), grey), 4.5);
}

} // namespace
} // namespace tarvik::face
