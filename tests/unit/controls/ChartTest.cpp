#include "controls/Chart.h"

#include "controls/TestForm.h"
#include "types/RunTimeError.h"

#include <gtest/gtest.h>

#include <limits>

namespace tarvik {
namespace {

class ChartTest : public testing::Test {
protected:
    BareForm form;
    Chart chart{form, "chtValues", {.title = "Traffic", .toolTip = "Shows the traffic"}};

    void fill(std::initializer_list<double> values) {
        chart.setRowCount(static_cast<int>(values.size()));
        int row = 0;
        for (const double value : values) {
            chart.setData(0, row++, value);
        }
        chart.showData();
    }
    /// What is read off a single value.
    std::string readingOf(double value) {
        fill({value});
        chart.setReadRow(0);
        return chart.reading();
    }
    template <class Action>
    static void expectOutOfRange(Action action) {
        try {
            action();
            ADD_FAILURE() << "no error";
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number(), ErrorNumber::SubscriptOutOfRange);
        }
    }
};

TEST_F(ChartTest, StartsEmpty) {
    EXPECT_EQ(chart.kind(), ControlKind::Chart);
    EXPECT_EQ(chart.title(), "Traffic");
    EXPECT_EQ(chart.toolTip(), "Shows the traffic");
    EXPECT_EQ(chart.type(), ChartType::Line);
    EXPECT_EQ(chart.columnCount(), 1);
    EXPECT_EQ(chart.rowCount(), 0);
    EXPECT_EQ(chart.readRow(), Chart::none);
    EXPECT_EQ(chart.reading(), "");
}

TEST_F(ChartTest, HasTenPartsWithALineInEach) {
    for (const ChartAxisId id : {ChartAxisId::X, ChartAxisId::Y, ChartAxisId::SecondY}) {
        EXPECT_EQ(chart.axis(id).majorDivisions, 10);
        EXPECT_EQ(chart.axis(id).minorDivisions, 1);
    }
}

TEST_F(ChartTest, TellsWhatHasChanged) {
    RecordingView view(chart);

    chart.setTitle("Duration");
    chart.setType(ChartType::Bar);
    chart.setShowsLegend(false);
    chart.setAxis(ChartAxisId::Y, {.title = "Bytes"});
    chart.setColumnLabel(0, "Sent");

    EXPECT_EQ(view.told, (Told{Property::Caption, Property::Drawing, Property::Drawing,
                               Property::Drawing, Property::Drawing}));
    EXPECT_EQ(chart.title(), "Duration");
    EXPECT_EQ(chart.type(), ChartType::Bar);
    EXPECT_FALSE(chart.showsLegend());
    EXPECT_EQ(chart.axis(ChartAxisId::Y).title, "Bytes");
    EXPECT_EQ(chart.columnLabel(0), "Sent");
}

TEST_F(ChartTest, TellsNothingOfWhatItHas) {
    chart.setColumnLabel(1, "Sent");
    RecordingView view(chart);

    chart.setTitle("Traffic");
    chart.setType(ChartType::Line);
    chart.setShowsLegend(true);
    chart.setAxis(ChartAxisId::Y, {});
    chart.setColumnLabel(1, "Sent");

    EXPECT_EQ(view.told, Told{});
}

TEST_F(ChartTest, TellsOfValuesWhenTheyAreShown) {
    RecordingView view(chart);
    chart.setRowCount(2);
    chart.setData(0, 1, 5);
    EXPECT_EQ(view.told, Told{});
    const auto before = chart.generation();

    chart.showData();

    EXPECT_EQ(view.told, Told{Property::Drawing});
    EXPECT_EQ(chart.generation(), before + 1);
}

TEST_F(ChartTest, NewRowsAreZeroAndOldOnesStay) {
    fill({7, 8, 9});

    chart.setRowCount(2);
    chart.setRowCount(4);

    EXPECT_EQ(chart.values(0), (std::vector<double>{7, 8, 0, 0}));
}

TEST_F(ChartTest, ASecondColumnHasAsManyRows) {
    fill({7, 8});

    chart.setColumnCount(2);
    chart.setData(1, 1, 3);

    EXPECT_EQ(chart.values(0), (std::vector<double>{7, 8}));
    EXPECT_EQ(chart.values(1), (std::vector<double>{0, 3}));
}

TEST_F(ChartTest, HasOneColumnOrTwo) {
    expectOutOfRange([this] { chart.setColumnCount(0); });
    expectOutOfRange([this] { chart.setColumnCount(3); });
    expectOutOfRange([this] { chart.setColumnCount(-1); });
    EXPECT_EQ(chart.columnCount(), 1);
}

TEST_F(ChartTest, CannotHaveLessThanNoRows) {
    fill({7});

    expectOutOfRange([this] { chart.setRowCount(-1); });

    EXPECT_EQ(chart.rowCount(), 1);
}

TEST_F(ChartTest, TakesNoValueBesideItsRowsAndColumns) {
    fill({7, 8});

    expectOutOfRange([this] { chart.setData(-1, 0, 1); });
    expectOutOfRange([this] { chart.setData(1, 0, 1); });
    expectOutOfRange([this] { chart.setData(0, -1, 1); });
    expectOutOfRange([this] { chart.setData(0, 2, 1); });
    EXPECT_EQ(chart.values(0), (std::vector<double>{7, 8}));
}

TEST_F(ChartTest, RowsAreNumberedFromOne) {
    fill({7, 8});

    EXPECT_EQ(chart.rowLabel(0), "1");
    EXPECT_EQ(chart.rowLabel(1), "2");
}

TEST_F(ChartTest, RowsAreNumberedFromTheFirst) {
    fill({7, 8});

    chart.setFirstRow(1'000'000);

    EXPECT_EQ(chart.rowNumber(1), 1'000'001);
    EXPECT_EQ(chart.rowLabel(1), "1000001");
    EXPECT_EQ(chart.rowName(1), "1,000,001");
}

TEST_F(ChartTest, NotesAreAskedForWhenTheyAreRead) {
    int asked = 0;
    chart.setRowNotes([&](int row) { return "note " + std::to_string(row + 10 * ++asked); });
    fill({7, 8, 9});
    EXPECT_EQ(asked, 0);

    chart.setReadRow(1);
    EXPECT_EQ(chart.reading(), "2 (note 11): 8");
}

TEST_F(ChartTest, RowsWithoutValuesAreNotReadOff) {
    fill({7, 8, 9});
    chart.setReadRow(2);

    chart.setFilledRows(2);

    EXPECT_EQ(chart.readRow(), Chart::none);
    chart.setReadRow(2);
    EXPECT_EQ(chart.readRow(), Chart::none);
    chart.moveReading(-1);
    EXPECT_EQ(chart.readRow(), 1);
    EXPECT_EQ(chart.rowCount(), 3);
}

TEST_F(ChartTest, AllRowsHaveValuesAgainWhenTheyAreCountedAnew) {
    fill({7, 8, 9});
    chart.setFilledRows(0);

    chart.setRowCount(2);

    EXPECT_EQ(chart.filledRows(), 2);
}

TEST_F(ChartTest, NoMoreRowsHaveValuesThanThereAre) {
    fill({7, 8});

    expectOutOfRange([this] { chart.setFilledRows(3); });
    expectOutOfRange([this] { chart.setFilledRows(-1); });
    EXPECT_EQ(chart.filledRows(), 2);
}

TEST_F(ChartTest, TitlesOfValuesStayWithTheValues) {
    chart.setAxis(ChartAxisId::Y, {.title = "Bytes"});
    fill({7, 8});

    chart.setTitle("Duration");
    chart.setAxis(ChartAxisId::Y, {.title = "Seconds"});

    EXPECT_EQ(chart.drawnTitle(), "Traffic");
    EXPECT_EQ(chart.drawnValueTitle(), "Bytes");
    chart.showData();
    EXPECT_EQ(chart.drawnTitle(), "Duration");
    EXPECT_EQ(chart.drawnValueTitle(), "Seconds");
}

TEST_F(ChartTest, WithoutValuesTitlesAreThePresentOnes) {
    fill({7});
    chart.setRowCount(0);
    chart.showData();

    chart.setTitle("Duration");
    chart.setAxis(ChartAxisId::Y, {.title = "Seconds"});

    EXPECT_EQ(chart.drawnTitle(), "Duration");
    EXPECT_EQ(chart.drawnValueTitle(), "Seconds");
}

TEST_F(ChartTest, TellsWhatIsReadOff) {
    fill({7, 8, 9});
    RecordingView view(chart);

    chart.setReadRow(1);
    chart.setReadRow(1);
    chart.setReadRow(Chart::none);

    EXPECT_EQ(view.told, (Told{Property::Reading, Property::Reading}));
}

TEST_F(ChartTest, ReadsNothingBesideItsRows) {
    fill({7, 8, 9});
    for (const int beside : {-1, -2, 3, std::numeric_limits<int>::max()}) {
        chart.setReadRow(1);

        chart.setReadRow(beside);

        EXPECT_EQ(chart.readRow(), Chart::none) << beside;
        EXPECT_EQ(chart.reading(), "") << beside;
    }
}

TEST_F(ChartTest, ReadsNothingOffNewValues) {
    fill({7, 8, 9});
    chart.setReadRow(1);

    chart.showData();

    EXPECT_EQ(chart.readRow(), Chart::none);
    EXPECT_EQ(chart.reading(), "");
}

TEST_F(ChartTest, ReadsNothingOffARowThatHasGone) {
    fill({7, 8, 9});
    chart.setReadRow(2);

    chart.setRowCount(2);

    EXPECT_EQ(chart.reading(), "");
}

TEST_F(ChartTest, TheFirstStepLeadsToTheFirstRowOrTheLast) {
    fill({7, 8, 9});

    chart.moveReading(1);
    EXPECT_EQ(chart.readRow(), 0);
    chart.setReadRow(Chart::none);
    chart.moveReading(-1);
    EXPECT_EQ(chart.readRow(), 2);
}

TEST_F(ChartTest, TheFirstLongStepLeadsThereToo) {
    fill({7, 8, 9});

    chart.moveReading(2);
    EXPECT_EQ(chart.readRow(), 0);
    chart.setReadRow(Chart::none);
    chart.moveReading(-2);
    EXPECT_EQ(chart.readRow(), 2);
}

TEST_F(ChartTest, StepsEndAtTheEnds) {
    fill({7, 8, 9, 10});
    chart.setReadRow(1);

    chart.moveReading(1);
    EXPECT_EQ(chart.readRow(), 2);
    chart.moveReading(-2);
    EXPECT_EQ(chart.readRow(), 0);
    chart.moveReading(-1);
    EXPECT_EQ(chart.readRow(), 0);
    chart.moveReading(std::numeric_limits<int>::max());
    EXPECT_EQ(chart.readRow(), 3);
    chart.moveReading(1);
    EXPECT_EQ(chart.readRow(), 3);
    chart.moveReading(std::numeric_limits<int>::min());
    EXPECT_EQ(chart.readRow(), 0);
}

TEST_F(ChartTest, NoStepIsNoReading) {
    fill({7, 8});

    chart.moveReading(0);

    EXPECT_EQ(chart.readRow(), Chart::none);
}

TEST_F(ChartTest, AnEmptyChartIsNotReadOff) {
    chart.moveReading(1);
    chart.moveReading(-1);
    chart.setReadRow(0);

    EXPECT_EQ(chart.readRow(), Chart::none);
}

TEST_F(ChartTest, AReadingNamesTheRowAndTheColumn) {
    chart.setColumnLabel(0, "Sent");
    chart.setFirstRow(17);

    EXPECT_EQ(readingOf(1234), "17: Sent 1,234");
}

TEST_F(ChartTest, AReadingNamesBothColumns) {
    chart.setColumnCount(2);
    chart.setColumnLabel(0, "Rcvd");
    chart.setColumnLabel(1, "Sent");
    fill({0.5, 2.25});
    chart.setData(1, 1, -3);

    chart.setReadRow(1);

    EXPECT_EQ(chart.reading(), "2: Rcvd 2.25; Sent -3");
}

TEST_F(ChartTest, AReadingTellsUnitAndMoment) {
    chart.setColumnLabel(0, "Sent");
    chart.setFirstRow(12'345);
    chart.setUnit("bytes");
    chart.setRowNotes([](int) { return std::string("16.11.2026 08:15:22"); });

    EXPECT_EQ(readingOf(1234), "12,345 (16.11.2026 08:15:22): Sent 1,234 bytes");
}

TEST_F(ChartTest, AReadingInPercentHasItsSign) {
    chart.setUnit("%");

    EXPECT_EQ(readingOf(12.5), "1: 12.5%");
}

TEST_F(ChartTest, AReadingHasALineForTheRowAndForEachColumn) {
    chart.setColumnCount(2);
    chart.setColumnLabel(0, "Rcvd");
    chart.setColumnLabel(1, "Sent");
    chart.setUnit("bytes");
    fill({1, 2});
    EXPECT_TRUE(chart.readingLines().empty());

    chart.setReadRow(1);

    EXPECT_EQ(chart.readingLines(),
              (std::vector<std::string>{"2", "Rcvd 2 bytes", "Sent 0 bytes"}));
}

TEST_F(ChartTest, ASummaryTellsKindCountAndRange) {
    chart.setAxis(ChartAxisId::X, {.title = "connections"});
    chart.setAxis(ChartAxisId::Y, {.title = "transfer (bytes)"});
    chart.setColumnCount(2);
    chart.setColumnLabel(0, "Rcvd");
    chart.setColumnLabel(1, "Sent");
    chart.setUnit("bytes");
    chart.setFirstRow(998);
    fill({4096, 1'000'000, 2048});

    EXPECT_EQ(chart.summary(),
              "Line chart of transfer (bytes); connections 998 to 1,000, 3 in all; "
              "Rcvd from 2,048 to 1,000,000 bytes; Sent from 0 to 0 bytes");
}

TEST_F(ChartTest, ASummaryTellsEachKind) {
    fill({1});
    for (const auto& [type, wanted] :
         {std::pair(ChartType::Bar, "Bar chart; 1 to 1, 1 in all; from 1 to 1"),
          std::pair(ChartType::Area, "Area chart; 1 to 1, 1 in all; from 1 to 1"),
          std::pair(ChartType::Step, "Step chart; 1 to 1, 1 in all; from 1 to 1"),
          std::pair(ChartType::Line, "Line chart; 1 to 1, 1 in all; from 1 to 1")}) {
        chart.setType(type);

        EXPECT_EQ(chart.summary(), wanted);
    }
}

TEST_F(ChartTest, ASummaryLeavesOutRowsWithoutValues) {
    fill({5, 6, 900});
    chart.setFilledRows(2);

    EXPECT_EQ(chart.summary(), "Line chart; 1 to 2, 2 in all; from 5 to 6");
}

TEST_F(ChartTest, WithoutValuesTheSummaryIsTheTextOnTheSheet) {
    chart.setEmptyText("Nothing yet.");

    EXPECT_EQ(chart.summary(), "Nothing yet.");
}

TEST_F(ChartTest, AReadingHasTheDecimalsOfTheValue) {
    EXPECT_EQ(readingOf(0), "1: 0");
    EXPECT_EQ(readingOf(10), "1: 10");
    EXPECT_EQ(readingOf(1.5), "1: 1.5");
    EXPECT_EQ(readingOf(0.0001), "1: 0.0001");
    EXPECT_EQ(readingOf(-0.0101), "1: -0.0101");
    EXPECT_EQ(readingOf(100'000.01), "1: 100,000.01");
    EXPECT_EQ(readingOf(-1'000'000), "1: -1,000,000");
    EXPECT_EQ(readingOf(900'000'000'000'000), "1: 900,000,000,000,000");
}

TEST_F(ChartTest, AReadingIsWrittenAsTheUserWritesNumbers) {
    LocaleData locale;
    locale.decimalSeparator = ",";
    locale.thousandsSeparator = "\xC2\xA0";
    chart.setLocale(locale);

    EXPECT_EQ(readingOf(12'345.25), "1: 12\xC2\xA0"
                                    "345,25");
    EXPECT_EQ(readingOf(12'000), "1: 12\xC2\xA0"
                                 "000");
}

TEST_F(ChartTest, SeparatorsMayBeLongerThanACharacter) {
    LocaleData locale;
    locale.decimalSeparator = "\xD9\xAB";
    locale.thousandsSeparator = "\xD9\xAC";
    chart.setLocale(locale);

    EXPECT_EQ(readingOf(1.5), "1: 1\xD9\xAB"
                              "5");
    EXPECT_EQ(readingOf(7), "1: 7");
}

} // namespace
} // namespace tarvik
