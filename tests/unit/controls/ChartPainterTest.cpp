#include "controls/ChartOnSheet.h"

namespace tarvik {
namespace {

/// Ten rows of values up to 100 on a sheet of 399 by 295 pixels. The numbers of the values are at
/// most three characters wide, 21 pixels: the plot begins at 8 + 21 + 4 and ends at 399 - 2 * 8. It
/// lies below two texts and half a number, 8 + 2.5 * 14 + 2 * 4, and above two texts,
/// 295 - 8 - 2 * 14 - 2 * 4. So a row is 35 pixels wide, and the value v stands at 251 - 2 * v.
class ChartPainterTest : public ChartOnSheet {
protected:
    static constexpr double left = 33;
    static constexpr double top = 51;
    static constexpr double right = 383;
    static constexpr double bottom = 251;

    ChartPainterTest() { fill({tens}); }

    RecordingCanvas draw() { return ChartOnSheet::draw(399, 295); }

    static std::vector<Points> pointsOf(const std::vector<Drawn>& drawn) {
        std::vector<Points> points;
        for (const Drawn& one : drawn) {
            points.push_back(one.points);
        }
        return points;
    }
    std::vector<Points> lines(const Colour& colour) {
        return pointsOf(draw().of(Kind::Line, colour));
    }
    std::vector<Points> polygons(const Colour& colour) {
        return pointsOf(draw().of(Kind::Polygon, colour));
    }
    static Points across(double y) { return {{left, y}, {right, y}}; }
    static Points down(double x) { return {{x, top}, {x, bottom}}; }
    static Points rectangle(double from, double upper, double to, double lower) {
        return {{from, upper}, {to, upper}, {to, lower}, {from, lower}};
    }

    const Values tens{10, 20, 30, 40, 50, 60, 70, 80, 90, 100};
};

TEST_F(ChartPainterTest, ThePlotLeavesRoomForAllTexts) {
    draw();

    EXPECT_EQ(painter.plot(), (CanvasArea{left, top, right, bottom}));
}

TEST_F(ChartPainterTest, TheSheetIsCoveredFirst) {
    const Drawn first = draw().drawn.front();

    EXPECT_EQ(first.kind, Kind::Polygon);
    EXPECT_EQ(first.colour, background);
    EXPECT_EQ(first.points, rectangle(0, 0, 399, 295));
}

TEST_F(ChartPainterTest, TenPartsOfTheValuesHaveLines) {
    setAxis(ChartAxisId::X, "Days", GridPen::None, GridPen::None);

    std::vector<Points> expected;
    for (int part = 0; part <= 10; ++part) {
        expected.push_back(across(251 - 20 * part));
    }
    EXPECT_EQ(lines(majorGrid), expected);
}

TEST_F(ChartPainterTest, OneLineStandsBetweenEachTwoOfTheValues) {
    setAxis(ChartAxisId::X, "Days", GridPen::None, GridPen::None);

    std::vector<Points> expected;
    for (int part = 0; part < 10; ++part) {
        expected.push_back(across(241 - 20 * part));
    }
    EXPECT_EQ(lines(minorGrid), expected);
}

TEST_F(ChartPainterTest, RowsHaveLinesInTheirMiddle) {
    setAxis(ChartAxisId::Y, "Bytes", GridPen::None, GridPen::None);

    std::vector<Points> expected;
    for (int row = 0; row < 10; ++row) {
        expected.push_back(down(51 + 35 * row)); // 33 + 17.5, rounded
    }
    EXPECT_EQ(lines(majorGrid), expected);
}

TEST_F(ChartPainterTest, OneLineStandsBetweenEachTwoRows) {
    setAxis(ChartAxisId::Y, "Bytes", GridPen::None, GridPen::None);

    std::vector<Points> expected;
    for (int row = 0; row < 9; ++row) {
        expected.push_back(down(68 + 35 * row));
    }
    EXPECT_EQ(lines(minorGrid), expected);
}

TEST_F(ChartPainterTest, GridLinesAreDottedAndThin) {
    const RecordingCanvas canvas = draw();

    for (const Colour& colour : {majorGrid, minorGrid}) {
        const std::vector<Drawn> grid = canvas.of(Kind::Line, colour);
        EXPECT_FALSE(grid.empty());
        for (const Drawn& one : grid) {
            EXPECT_EQ(one.style, LineStyle::Dotted);
            EXPECT_EQ(one.width, 1);
        }
    }
}

TEST_F(ChartPainterTest, WithoutPensThereIsNoGrid) {
    setAxis(ChartAxisId::X, "Days", GridPen::None, GridPen::None);
    setAxis(ChartAxisId::Y, "Bytes", GridPen::None, GridPen::None);

    EXPECT_TRUE(lines(majorGrid).empty());
    EXPECT_TRUE(lines(minorGrid).empty());
}

TEST_F(ChartPainterTest, EachKindOfGridLineHasAPenOfItsOwn) {
    setAxis(ChartAxisId::X, "Days", GridPen::None, GridPen::Ditted);
    setAxis(ChartAxisId::Y, "Bytes", GridPen::Ditted, GridPen::None);

    EXPECT_EQ(lines(majorGrid).size(), 11U);
    EXPECT_EQ(lines(minorGrid).size(), 9U);
}

TEST_F(ChartPainterTest, AxesRunAlongTheValuesAndAlongZero) {
    const RecordingCanvas canvas = draw();

    EXPECT_EQ(pointsOf(canvas.of(Kind::Line, axis)), (std::vector<Points>{down(33), across(251)}));
    EXPECT_EQ(canvas.of(Kind::Line, axis)[0].style, LineStyle::Solid);
}

TEST_F(ChartPainterTest, PartsAreNumberedBesideTheirLines) {
    const std::vector<Drawn> numbers = valueLabels(draw());

    ASSERT_EQ(numbers.size(), 11U);
    EXPECT_EQ(numbers[0].text, "0");
    EXPECT_EQ(numbers[0].points[0], (CanvasPoint{22, 244}));
    EXPECT_EQ(numbers[5].text, "50");
    EXPECT_EQ(numbers[5].points[0], (CanvasPoint{15, 144}));
    EXPECT_EQ(numbers[10].text, "100");
    EXPECT_EQ(numbers[10].points[0], (CanvasPoint{8, 44}));
}

TEST_F(ChartPainterTest, PartsAreNumberedAsTheUserWritesNumbers) {
    LocaleData locale;
    locale.decimalSeparator = ",";
    locale.thousandsSeparator = ".";
    chart.setLocale(locale);
    fill({{10'000}});
    EXPECT_NE(draw().textThatReads("10.000"), nullptr);

    fill({{0.25}});
    EXPECT_NE(draw().textThatReads("0,250"), nullptr);
}

TEST_F(ChartPainterTest, ZeroHasNoMinus) {
    fill({{-0.2, 0.1}});

    EXPECT_NE(draw().textThatReads("0.00"), nullptr);
    EXPECT_EQ(draw().textThatReads("-0.00"), nullptr);
}

TEST_F(ChartPainterTest, RowsAreNamedBelowTheirMiddle) {
    const std::vector<Drawn> names = rowLabels(draw());

    ASSERT_EQ(names.size(), 10U);
    EXPECT_EQ(names[0].text, "1");
    EXPECT_EQ(names[0].points[0], (CanvasPoint{47, 255})); // 50.5 - 3.5
    EXPECT_EQ(names[8].text, "9");
    EXPECT_EQ(names[8].points[0], (CanvasPoint{327, 255}));
    EXPECT_EQ(names[9].text, "10");
    EXPECT_EQ(names[9].points[0], (CanvasPoint{359, 255})); // 365.5 - 7, rounded
}

TEST_F(ChartPainterTest, RowsHaveTheNamesThatTheyWereGiven) {
    chart.setFirstRow(99'100);

    EXPECT_EQ(rowLabels(draw()).front().text, "99,100");
}

TEST_F(ChartPainterTest, TitlesStandAboveAndBelow) {
    const RecordingCanvas canvas = draw();

    EXPECT_EQ(canvas.textThatReads("Traffic")->points[0], (CanvasPoint{175, 8}));
    EXPECT_EQ(canvas.textThatReads("Bytes")->points[0], (CanvasPoint{8, 26}));
    EXPECT_EQ(canvas.textThatReads("Days")->points[0], (CanvasPoint{194, 273}));
}

TEST_F(ChartPainterTest, ALineRunsThroughTheMiddleOfRows) {
    const std::vector<Drawn> curve = draw().of(Kind::Line, lineColours[0]);

    Points expected;
    for (int row = 0; row < 10; ++row) {
        expected.push_back({50.5 + 35 * row, 231.0 - 20 * row});
    }
    ASSERT_EQ(curve.size(), 1U);
    EXPECT_EQ(curve[0].points, expected);
    EXPECT_EQ(curve[0].style, LineStyle::Solid);
    EXPECT_EQ(curve[0].width, 2);
}

TEST_F(ChartPainterTest, ALineHasAMarkAtEachValue) {
    std::vector<Points> expected;
    for (int row = 0; row < 10; ++row) {
        const double x = 51 + 35 * row;
        const double y = 231 - 20 * row;
        expected.push_back(rectangle(x - 3, y - 3, x + 4, y + 4));
    }
    EXPECT_EQ(polygons(lineColours[0]), expected);
}

TEST_F(ChartPainterTest, ManyRowsHaveNoMarks) {
    fill({Values(30, 50)}); // 350 / 30 is less than 12

    EXPECT_TRUE(polygons(lineColours[0]).empty());
}

TEST_F(ChartPainterTest, ASecondLineIsDashedAndMarkedOtherwise) {
    fill({tens, Values(10, 50)});

    const RecordingCanvas canvas = draw();
    const std::vector<Drawn> curve = canvas.of(Kind::Line, lineColours[1]);
    // The key is drawn with a short line in that colour, too.
    ASSERT_EQ(curve.size(), 2U);
    EXPECT_EQ(curve[0].points.front(), (CanvasPoint{50.5, 151}));
    EXPECT_EQ(curve[0].style, LineStyle::Dashed);
    EXPECT_NE(canvas.of(Kind::Polygon, lineColours[1])[0].points,
              canvas.of(Kind::Polygon, lineColours[0])[4].points);
}

TEST_F(ChartPainterTest, StepsAreLevelOverTheirRows) {
    chart.setType(ChartType::Step);

    Points expected;
    for (int row = 0; row < 10; ++row) {
        expected.push_back({33.0 + 35 * row, 231.0 - 20 * row});
        expected.push_back({68.0 + 35 * row, 231.0 - 20 * row});
    }
    EXPECT_EQ(lines(lineColours[0]), std::vector<Points>{expected});
    EXPECT_TRUE(polygons(lineColours[0]).empty());
}

TEST_F(ChartPainterTest, AnAreaReachesFromTheLineToZero) {
    chart.setType(ChartType::Area);
    fill({{10, 60, 20, 100, 50, 40, 30, 80, 90, 70}});

    Points expected;
    for (int row = 0; row < 10; ++row) {
        expected.push_back({50.5 + 35 * row, 251 - 2 * chart.data(0, row)});
    }
    EXPECT_EQ(lines(lineColours[0]), std::vector<Points>{expected});
    expected.push_back({365.5, 251});
    expected.push_back({50.5, 251});
    EXPECT_EQ(polygons(fillColours[0]), std::vector<Points>{expected});
}

TEST_F(ChartPainterTest, BarsTakeFourFifthsOfTheirRows) {
    chart.setType(ChartType::Bar);

    std::vector<Points> expected;
    for (int row = 0; row < 10; ++row) {
        // 3.5 on both sides stay free: 36.5 to 64.5, rounded.
        const double from = 37 + 35 * row;
        expected.push_back(rectangle(from, 231 - 20 * row, from + 28, 251));
    }
    EXPECT_EQ(polygons(lineColours[0]), expected);
    EXPECT_TRUE(lines(lineColours[0]).empty());
}

TEST_F(ChartPainterTest, BarsOfTwoColumnsStandSideBySide) {
    chart.setType(ChartType::Bar);
    fill({tens, Values(10, 50)});

    const RecordingCanvas canvas = draw();
    const auto first = pointsOf(canvas.of(Kind::Polygon, lineColours[0]));
    const auto second = pointsOf(canvas.of(Kind::Polygon, lineColours[1]));
    // Behind the bars come the marks of the key.
    ASSERT_EQ(first.size(), 11U);
    ASSERT_EQ(second.size(), 11U);
    EXPECT_EQ(first[9], rectangle(352, 51, 366, 251)); // 351.5 to 365.5
    EXPECT_EQ(second[9], rectangle(366, 151, 380, 251));
}

TEST_F(ChartPainterTest, NegativeBarsHangFromZero) {
    chart.setType(ChartType::Bar);
    fill({{-20, 80}});

    // From -20 to 80: zero stands at 211; a row is 175 pixels wide.
    EXPECT_EQ(polygons(lineColours[0]),
              (std::vector<Points>{rectangle(51, 211, 191, 251), rectangle(226, 51, 366, 211)}));
    EXPECT_EQ(lines(axis), (std::vector<Points>{down(33), across(211)}));
}

TEST_F(ChartPainterTest, AllNegativeBarsHangFromTheUpperEdge) {
    chart.setType(ChartType::Bar);
    fill({{-50, -100}});
    draw();
    // "-100" is a character wider: 40 to 383, 171.5 a row.
    ASSERT_EQ(plot().left, 40);

    EXPECT_EQ(polygons(lineColours[0]),
              (std::vector<Points>{rectangle(57, 51, 194, 151), rectangle(229, 51, 366, 251)}));
}

TEST_F(ChartPainterTest, FilledRoomLiesBelowAllLines) {
    chart.setType(ChartType::Area);
    for (const std::size_t rows : {10U, 5000U}) {
        fill({Values(rows, 50), Values(rows, 70)});
        bool lineSeen = false;
        int fillsSeen = 0;
        for (const Drawn& one : draw().drawn) {
            lineSeen = lineSeen || one.colour == lineColours[0] || one.colour == lineColours[1];
            if (one.colour == fillColours[0] || one.colour == fillColours[1]) {
                ++fillsSeen;
                EXPECT_FALSE(lineSeen) << rows;
            }
        }
        EXPECT_EQ(fillsSeen, 2) << rows;
    }
}

TEST_F(ChartPainterTest, CrowdedBarsThatAreHiddenShowTheirEdge) {
    chart.setType(ChartType::Bar);
    fill({Values(5000, 50), Values(5000, 100)});

    std::vector<Drawn> inPlot;
    for (const Drawn& one : draw().of(Kind::Polygon)) {
        if (one.box().top >= top) {
            inPlot.push_back(one);
        }
    }
    EXPECT_EQ(inPlot.back().colour, lineColours[0]);
    EXPECT_EQ(inPlot.back().box(), (DrawnBox{left, 151, right, 152}));
}

TEST_F(ChartPainterTest, ASingleRecordReachesOverAllItsRoom) {
    fill({{50}});

    for (const ChartType type : {ChartType::Line, ChartType::Step, ChartType::Area}) {
        chart.setType(type);
        draw();
        const double y = rowOf(50, 0, 50);
        EXPECT_EQ(lines(lineColours[0]),
                  (std::vector<Points>{{{plot().left, y}, {plot().right, y}}}));
    }
    EXPECT_EQ(polygons(fillColours[0]), (std::vector<Points>{{{plot().left, plot().top},
                                                              {plot().right, plot().top},
                                                              {plot().right, plot().bottom},
                                                              {plot().left, plot().bottom}}}));
    EXPECT_EQ(rowLabels(draw()).size(), 1U);
}

TEST_F(ChartPainterTest, AnEmptyChartHasItsTitlesAndAxesAndNoNumbers) {
    fill({{}});

    const RecordingCanvas canvas = draw();

    EXPECT_NE(canvas.textThatReads("Traffic"), nullptr);
    EXPECT_NE(canvas.textThatReads("Bytes"), nullptr);
    EXPECT_NE(canvas.textThatReads("Days"), nullptr);
    EXPECT_EQ(canvas.of(Kind::Line, axis).size(), 2U);
    EXPECT_TRUE(valueLabels(canvas).empty());
    EXPECT_TRUE(rowLabels(canvas).empty());
    EXPECT_TRUE(canvas.of(Kind::Line, lineColours[0]).empty());
    EXPECT_EQ(painter.rowAt(200), Chart::none);
}

TEST_F(ChartPainterTest, ValuesThatAreAllZeroLieOnTheAxis) {
    fill({{0, 0}});

    draw();

    EXPECT_EQ(lines(lineColours[0])[0].front().y, plot().bottom);
    EXPECT_NE(draw().textThatReads("1.0"), nullptr);
}

TEST_F(ChartPainterTest, TwoColumnsHaveAKeyThoughTheLegendIsOff) {
    fill({tens, tens});

    const RecordingCanvas canvas = draw();

    // At the right: "Sent" and 28 pixels, its sign and 16, between them 4; 12 to the next.
    EXPECT_EQ(canvas.textThatReads("Sent")->points[0], (CanvasPoint{355, 26}));
    EXPECT_EQ(canvas.textThatReads("Rcvd")->points[0], (CanvasPoint{295, 26}));
    EXPECT_EQ(canvas.of(Kind::Line, lineColours[1]).back().points, (Points{{335, 33}, {351, 33}}));
    EXPECT_EQ(canvas.of(Kind::Line, lineColours[0]).back().points, (Points{{275, 33}, {291, 33}}));
}

TEST_F(ChartPainterTest, OneColumnHasAKeyOnlyWithTheLegend) {
    EXPECT_EQ(draw().textThatReads("Rcvd"), nullptr);

    chart.setShowsLegend(true);

    EXPECT_NE(draw().textThatReads("Rcvd"), nullptr);
    EXPECT_EQ(draw().textThatReads("Sent"), nullptr);
}

TEST_F(ChartPainterTest, WhatIsReadOffIsMarkedAndSaid) {
    chart.setReadRow(2);

    const RecordingCanvas canvas = draw();

    // Row 2 has its middle at 120.5, the value 30 at 191.
    const std::vector<Drawn> drawnLines = canvas.of(Kind::Line, text);
    ASSERT_EQ(drawnLines.size(), 2U);
    EXPECT_EQ(drawnLines[0].points, down(121));
    EXPECT_EQ(pointsOf(canvas.of(Kind::Polygon, text)),
              (std::vector<Points>{rectangle(118, 188, 125, 195)}));
    // "Rcvd 30" is 49 pixels wide; with 4 on both sides its box begins 4 beside the line.
    ASSERT_NE(canvas.textThatReads("Rcvd 30"), nullptr);
    EXPECT_EQ(canvas.textThatReads("Rcvd 30")->points[0], (CanvasPoint{129, 67}));
    EXPECT_EQ(drawnLines[1].box(), (DrawnBox{125, 51, 182, 83}));
}

TEST_F(ChartPainterTest, WhereThereIsNoRoomTheReadingStandsOnTheOtherSide) {
    chart.setReadRow(9);

    // Row 9 has its middle at 365.5; "Rcvd 100" is 56 pixels wide.
    EXPECT_EQ(draw().textThatReads("Rcvd 100")->points[0], (CanvasPoint{302, 67}));
}

TEST_F(ChartPainterTest, NothingIsMarkedWhereNothingIsReadOff) {
    const RecordingCanvas canvas = draw();

    EXPECT_TRUE(canvas.of(Kind::Line, text).empty());
    EXPECT_TRUE(canvas.of(Kind::Polygon, text).empty());
}

TEST_F(ChartPainterTest, NewValuesTakeThePlaceOfOldOnes) {
    chart.setType(ChartType::Bar);
    for (const std::size_t rows : {2U, 2000U, 1000U, 2U}) {
        fill({Values(rows, 40)});
        draw();
        fill({Values(rows, 20)});

        const auto columns = filled(draw(), lineColours[0]);

        EXPECT_FALSE(columns.empty());
        for (const auto& [x, column] : columns) {
            ASSERT_EQ(column.top, rowOf(20, 0, 20)) << rows;
        }
    }
}

TEST_F(ChartPainterTest, AnotherNumberOfColumnsIsDrawnAsSuch) {
    const Values low(3000, 10);
    const Values high(3000, 100);
    fill({low});
    draw();
    fill({low, high});
    EXPECT_EQ(filled(draw(), lineColours[1]).size(), 350U);

    fill({high});

    EXPECT_TRUE(filled(draw(), lineColours[1]).empty());
    EXPECT_EQ(filled(draw(), lineColours[0]).at(200).top, top);
}

TEST_F(ChartPainterTest, AnotherSizeIsDrawnAsSuch) {
    Values rising(5000);
    for (std::size_t row = 0; row < rising.size(); ++row) {
        rising[row] = static_cast<double>(row);
    }
    fill({rising});
    for (const double width : {300, 900, 400}) {
        ChartOnSheet::draw(1, 1);

        const auto columns = filled(ChartOnSheet::draw(width, 300), lineColours[0]);

        EXPECT_EQ(columns.begin()->first, plot().left);
        EXPECT_EQ(columns.begin()->second.bottom, rowOf(0, 0, 5000) + 1);
        EXPECT_EQ(columns.rbegin()->first, plot().right - 1);
        EXPECT_EQ(columns.rbegin()->second.top, rowOf(4999, 0, 5000));
    }
}

} // namespace
} // namespace tarvik
