#include "contracts/painted/PaintedCanvas.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

class SolidCanvasContract : public testing::TestWithParam<CanvasCase> {};

TEST_P(SolidCanvasContract, IsDrawnToThePixelOnAPlainScreen) {
    EXPECT_EQ(seenOnCanvas(GetParam().draw, 1), GetParam().seen);
}

TEST_P(SolidCanvasContract, IsTheSameOnAFineScreen) {
    EXPECT_EQ(seenOnCanvas(GetParam().draw, 2), GetParam().seen);
}

INSTANTIATE_TEST_SUITE_P(All, SolidCanvasContract, testing::ValuesIn(solidCases()),
                         [](const auto& one) { return nameOf(one.param); });

class DashedCanvasContract : public testing::TestWithParam<CanvasCase> {};

TEST_P(DashedCanvasContract, IsDashed) {
    EXPECT_EQ(seenOnCanvas(GetParam().draw, 1), GetParam().seen);
}

INSTANTIATE_TEST_SUITE_P(All, DashedCanvasContract, testing::ValuesIn(dashedCases()),
                         [](const auto& one) { return nameOf(one.param); });

class FineDashedCanvasContract : public testing::TestWithParam<CanvasCase> {};

TEST_P(FineDashedCanvasContract, IsDashed) {
    EXPECT_EQ(seenOnCanvas(GetParam().draw, 2), GetParam().seen);
}

INSTANTIATE_TEST_SUITE_P(All, FineDashedCanvasContract, testing::ValuesIn(dashedCasesOfScaleTwo()),
                         [](const auto& one) { return nameOf(one.param); });

TEST(CanvasContract, ASlantedAreaIsFilled) {
    const auto draw = [](Canvas& canvas) { drawPolygon(canvas, {{0, 0}, {12, 0}, {0, 6}}); };

    const std::string image = seenOnCanvas(draw, 1);

    EXPECT_EQ(image.substr(0, 9), "#########");
    EXPECT_EQ(image.substr(13 * 6), "............\n");
}

TEST(CanvasContract, TextStandsInItsBox) {
    CanvasSize size;
    const auto draw = [&size](Canvas& canvas) {
        size = canvas.textSize("Xg");
        canvas.text({20, 10}, "Xg", {});
    };

    const Pixels pixels = paintedOnCanvas({120, 60}, draw, 1);

    std::ptrdiff_t painted = 0;
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x) {
            const bool inside = x >= 19 && x <= 21 + size.width && y >= 10 && y < 10 + size.height;
            const bool white = pixels.at(x, y) == 0xFFFFFFU;
            EXPECT_TRUE(inside || white) << x << ' ' << y;
            painted += white ? 0 : 1;
        }
    }
    EXPECT_GT(painted, 0);
}

TEST(CanvasContract, AMillionPointsAreDrawn) {
    std::vector<CanvasPoint> points;
    for (int i = 0; i < 1'000'000; ++i) {
        points.push_back({i * 480.0 / 1'000'000, static_cast<double>(i * 7 % 300)});
    }

    const Pixels pixels = paintedOnCanvas(
        {480, 300}, [&points](Canvas& canvas) { drawLine(canvas, points, 1); }, 1);

    EXPECT_EQ(pixels.at(240, 150), 0U);
}

} // namespace
} // namespace tarvik
