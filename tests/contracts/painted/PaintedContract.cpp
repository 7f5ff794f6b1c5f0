#include "contracts/painted/PaintedFace.h"

#include "contracts/FaceUnderTest.h"
#include "controls/ChartPalette.h"
#include "support/ChartForm.h"
#include "support/FormOn.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

class PaintedChartContract : public testing::Test {
protected:
    PaintedChartContract() {
        form.setVisible(true);
        face->settle();
    }
    ~PaintedChartContract() override {
        form.unload();
        face->settle();
    }

    Pixels painted() const { return pixelsOf(chart); }

    std::unique_ptr<FaceUnderTest> face = faceUnderTest();
    FormOn<ChartForm> form{face->desktop()};
    Chart& chart = form.chtValues;
};

TEST_F(PaintedChartContract, TheChartIsPainted) {
    const Colour line = ChartPalette::on({255, 255, 255}, {0, 0, 0}).columns[0];
    const auto colour = static_cast<std::uint32_t>(line.red << 16 | line.green << 8 | line.blue);
    const auto before = painted().countOf(colour);

    form.fill(24);

    EXPECT_GT(painted().countOf(colour), before + 100);
}

TEST_F(PaintedChartContract, AMillionRowsArePainted) {
    const Pixels empty = painted();

    form.fill(1'000'000);

    EXPECT_GT(differingPart(painted(), empty), 0.05);
}

TEST_F(PaintedChartContract, TheChartGrowsWithTheWindow) {
    const Pixels before = painted();

    enlarge(form, 100, 50);
    face->settle();

    EXPECT_EQ(painted().width, before.width + 100);
    EXPECT_EQ(painted().height, before.height + 50);
}

TEST_F(PaintedChartContract, WhatIsReadIsPainted) {
    form.fill(24);
    const Pixels before = painted();

    face->press(chart, FaceKey::Home);
    const Pixels first = painted();
    face->press(chart, FaceKey::End);

    EXPECT_NE(first, before);
    EXPECT_NE(painted(), first);
}

TEST_F(PaintedChartContract, ThePointerReadsRowAfterRow) {
    form.fill(24);
    const int width = painted().width;
    std::vector<int> rows;
    for (int x = 0; x < width; ++x) {
        movePointer(chart, x);
        if (rows.empty() || rows.back() != chart.readRow()) {
            rows.push_back(chart.readRow());
        }
    }

    std::vector<int> expected{Chart::none};
    for (int row = 0; row < 24; ++row) {
        expected.push_back(row);
    }
    expected.push_back(Chart::none);
    EXPECT_EQ(rows, expected);
}

TEST_F(PaintedChartContract, NothingIsReadWhenThePointerHasLeft) {
    form.fill(24);
    movePointer(chart, painted().width / 2);
    EXPECT_NE(chart.readRow(), Chart::none);

    takePointerAway(chart);

    EXPECT_EQ(chart.readRow(), Chart::none);
}

TEST_F(PaintedChartContract, DarkColoursMakeADarkImage) {
    form.fill(24);
    const Pixels light = painted();

    const auto dark = otherColours(form, {30, 32, 34}, {220, 220, 220});

    EXPECT_EQ(painted().at(2, 2), 0x1E2022U);
    EXPECT_GT(differingPart(painted(), light), 0.9);
}

TEST_F(PaintedChartContract, TheFocusIsSeen) {
    giveFocus(form.cmdOk);
    const Pixels without = painted();

    giveFocus(chart);

    const double differing = differingPart(painted(), without);
    EXPECT_GT(differing, 0);
    EXPECT_LT(differing, 0.02);
}

} // namespace
} // namespace tarvik
