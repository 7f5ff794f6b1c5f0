#include "controls/ChartOnSheet.h"

namespace tarvik {
namespace {

/// Ten rows of values up to 100. On a sheet of 399 by 295 pixels the plot reaches from 33 to 383
/// and from 51 down to 251, so that a row is 35 pixels wide.
class ChartSheetTest : public ChartOnSheet {
protected:
    static constexpr double left = 33;
    static constexpr double top = 51;
    static constexpr double right = 383;
    static constexpr double bottom = 251;

    ChartSheetTest() { fill({tens}); }

    RecordingCanvas draw() { return ChartOnSheet::draw(399, 295); }

    std::vector<Points> lines(const Colour& colour) {
        std::vector<Points> points;
        for (const Drawn& one : draw().of(Kind::Line, colour)) {
            points.push_back(one.points);
        }
        return points;
    }
    static Points down(double x) { return {{x, top}, {x, bottom}}; }

    const Values tens{10, 20, 30, 40, 50, 60, 70, 80, 90, 100};
};

TEST_F(ChartSheetTest, AReadingTooWideForEitherSideStandsOverTheLine) {
    chart.setRowNotes([](int) { return std::string("a note of many words, wider than half"); });
    chart.setReadRow(5);

    // "6 (...)" is 41 characters or 287 pixels wide, the line stands at 226.
    const RecordingCanvas canvas = draw();
    const Drawn* note = canvas.textThatReads("6 (a note of many words, wider than half)");
    ASSERT_NE(note, nullptr);
    EXPECT_TRUE(note->box().within(canvas.sheet()));
}

TEST_F(ChartSheetTest, RowsAreNamedAtRoundNumbersAndAtBothEnds) {
    const auto names = [this](int first, int count) {
        chart.setFirstRow(first);
        fill({Values(static_cast<std::size_t>(count), 50)});
        std::vector<std::string> texts;
        for (const Drawn& one : rowLabels(draw())) {
            texts.push_back(one.text);
        }
        return texts;
    };
    using Texts = std::vector<std::string>;

    EXPECT_EQ(names(1, 30), (Texts{"1", "5", "10", "15", "20", "25", "30"}));
    EXPECT_EQ(names(1, 99),
              (Texts{"1", "10", "20", "30", "40", "50", "60", "70", "80", "90", "99"}));
    EXPECT_EQ(names(1, 1096), (Texts{"1", "200", "400", "600", "800", "1,096"}));
    EXPECT_EQ(names(37, 27), (Texts{"37", "40", "45", "50", "55", "60", "63"}));
    EXPECT_EQ(names(1, 1'000'000), (Texts{"1", "500,000", "1,000,000"}));
}

TEST_F(ChartSheetTest, LinesStandAtTheRowsThatAreNamed) {
    setAxis(ChartAxisId::Y, "Bytes", GridPen::None, GridPen::None);
    fill({Values(100, 100)});

    std::vector<Points> expected{down(35)}; // 33 + 1.75, rounded
    for (const double x : {66, 101, 136, 171, 206, 241, 276, 311, 346, 381}) {
        expected.push_back(down(x)); // 33 + 3.5 * (number - 0.5), rounded
    }
    EXPECT_EQ(lines(majorGrid), expected);
}

TEST_F(ChartSheetTest, RowsWithoutValuesHaveTheirPlaceAndNothingInIt) {
    for (const ChartType type :
         {ChartType::Line, ChartType::Bar, ChartType::Area, ChartType::Step}) {
        chart.setType(type);
        fill({tens});
        chart.setFilledRows(4);
        chart.showData();

        const RecordingCanvas canvas = draw();

        EXPECT_EQ(rowLabels(canvas).size(), 10U);
        for (const Colour& colour : {lineColours[0], fillColours[0]}) {
            for (const Drawn& one : canvas.drawn) {
                if (one.colour == colour) {
                    EXPECT_LE(one.box().right, left + 4 * 35);
                }
            }
        }
        EXPECT_NE(canvas.textThatReads("40"), nullptr); // the scale ends where the values do
        EXPECT_EQ(canvas.textThatReads("100"), nullptr);
    }
}

TEST_F(ChartSheetTest, CrowdedRowsWithoutValuesStayEmptyToo) {
    fill({Values(3000, 50)});
    chart.setFilledRows(1500);
    chart.showData();

    const auto columns = filled(draw(), lineColours[0]);

    ASSERT_FALSE(columns.empty());
    EXPECT_NEAR(columns.rbegin()->first, (left + right) / 2, 5);
}

TEST_F(ChartSheetTest, AnEmptyChartTellsInItsMiddleHowToFillIt) {
    chart.setEmptyText("Press a button to fill it.");
    fill({{}});

    const RecordingCanvas canvas = draw();

    const Drawn* words = canvas.textThatReads("Press a button to fill it.");
    ASSERT_NE(words, nullptr);
    EXPECT_NEAR((words->box().left + words->box().right) / 2, (plot().left + plot().right) / 2, 1);
    EXPECT_NEAR((words->box().top + words->box().bottom) / 2, (top + bottom) / 2, 1);
    fill({tens});
    EXPECT_EQ(draw().textThatReads("Press a button to fill it."), nullptr);
}

TEST_F(ChartSheetTest, WordsWithoutRoomInOneLineStandInSeveral) {
    chart.setEmptyText("Press a button to fill it.");
    fill({{}});

    const RecordingCanvas canvas = ChartOnSheet::draw(160, 295);

    EXPECT_NE(canvas.textThatReads("Press a button"), nullptr);
    EXPECT_NE(canvas.textThatReads("to fill it."), nullptr);
}

TEST_F(ChartSheetTest, TitlesAreThoseOfTheValues) {
    chart.setTitle("Duration");
    setAxis(ChartAxisId::Y, "Seconds", GridPen::Ditted, GridPen::Ditted);

    EXPECT_NE(draw().textThatReads("Traffic"), nullptr);
    EXPECT_NE(draw().textThatReads("Bytes"), nullptr);
    chart.showData();
    EXPECT_NE(draw().textThatReads("Duration"), nullptr);
    EXPECT_NE(draw().textThatReads("Seconds"), nullptr);
}

} // namespace
} // namespace tarvik
