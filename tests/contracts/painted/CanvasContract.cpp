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

} // namespace
} // namespace tarvik
