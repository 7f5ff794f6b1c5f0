#include "history/ChartWorld.h"

#include <limits>
#include <utility>

namespace tarvik {
namespace {

using Labels = std::vector<std::string>;

using PlotRowsTest = ChartWorld;

TEST_F(PlotRowsTest, OneRecordAsADifferenceIsTheRecordItself) {
    hold({{0, 1234, 0}});

    EXPECT_EQ(plotted(received, differential), (Values{1234}));
}

TEST_F(PlotRowsTest, TheFirstDifferenceOfALaterRangeReachesBackBeyondIt) {
    hold({{0, 1, 0}, {0, 2, 0}, {0, 4, 0}, {0, 8, 0}, {0, 108, 0}, {0, 58, 0}, {0, 358, 0}});
    range(5, 7);

    EXPECT_EQ(plotted(received, differential), (Values{100, -50, 300}));
    EXPECT_EQ(rowLabels(), (Labels{"5", "6", "7"}));
}

TEST_F(PlotRowsTest, PercentOfARangeThatEndsBeforeTheLogStaysBelowAHundred) {
    hold({{0, 10, 0}, {0, 20, 0}, {0, 800, 0}});
    range(1, 2);

    EXPECT_EQ(plotted(received, percentual), (Values{1.25, 2.5}));
}

TEST_F(PlotRowsTest, BothColumnsHoldReceivedBytesAndSentOnes) {
    hold({{1, 10, 0}, {2, 20, 0}});

    plotted(both);

    EXPECT_EQ(chart().columnCount(), 2);
    EXPECT_EQ(column(0), (Values{10, 20}));
    EXPECT_EQ(column(1), (Values{1, 2}));
    EXPECT_EQ(chart().title(), "Data sent/received");
    EXPECT_EQ(rowLabels(), (Labels{"1", "2"}));
}

TEST_F(PlotRowsTest, AnythingElseIsOneColumn) {
    hold({{1, 10, 100}, {2, 20, 200}});

    EXPECT_EQ(plotted(received), (Values{10, 20}));
    EXPECT_EQ(chart().columnCount(), 1);
    EXPECT_EQ(plotted(sent), (Values{1, 2}));
    EXPECT_EQ(chart().columnCount(), 1);
    EXPECT_EQ(plotted(total), (Values{11, 22}));
    EXPECT_EQ(chart().columnCount(), 1);
    EXPECT_EQ(plotted(duration), (Values{100, 200}));
    EXPECT_EQ(chart().columnCount(), 1);
    EXPECT_EQ(plotted(none), (Values{0, 0}));
    EXPECT_EQ(chart().columnCount(), 1);
}

TEST_F(PlotRowsTest, OneAndAHalfKiloBytesAreDrawnSo) {
    hold({{0, 1536, 0}});

    EXPECT_EQ(plotted(received, asRecorded, 1), (Values{1.5}));
}

TEST_F(PlotRowsTest, AByteIsDrawnAsNothingInGigaBytes) {
    hold({{0, 1, 0}});

    EXPECT_EQ(plotted(received, asRecorded, 3), (Values{0}));
}

TEST_F(PlotRowsTest, RowsAreCalledByTheirRecords) {
    holdRising(1200);
    range(998, 1001);

    EXPECT_EQ(plotted(sent), (Values{998, 999, 1000, 1001}));
    EXPECT_EQ(rowLabels(), (Labels{"998", "999", "1000", "1001"}));
}

TEST_F(PlotRowsTest, TheValuesAreNamed) {
    hold({{0, 1536, 0}});

    plotted(received, asRecorded, 1);

    EXPECT_EQ(valueTitle(), "transfer (kilo-bytes)");
}

TEST_F(PlotRowsTest, BeforeAnImportNothingIsDrawn) {
    hold({{0, 1536, 0}});
    choose(received, asRecorded, 1);
    data().imported = false;
    const auto before = chart().generation();

    PlotRows();

    EXPECT_EQ(chart().generation(), before);
    EXPECT_EQ(chart().rowCount(), 0);
    EXPECT_EQ(valueTitle(), "transfer (bytes)");
}

TEST_F(PlotRowsTest, WhatTheUserReadsOffIsOfTheNewValues) {
    holdRising(3);
    plotted(both);
    chart().setReadRow(2);

    PlotRows();

    EXPECT_EQ(chart().readRow(), Chart::none);
    chart().setReadRow(1);
    EXPECT_EQ(chart().reading(), "2 (16.11.2026 08:15:22): Rcvd 200 bytes; Sent 2 bytes");
}

TEST_F(PlotRowsTest, NumbersAreReadOffAsTheUserWritesThem) {
    machine.locale.conventions = germanLocale();
    hold({{0, 1'234'567, 0}});

    plotted(received, asRecorded, 1);

    chart().setReadRow(0);
    EXPECT_EQ(chart().reading(), "1 (16.11.2026 08:15:22): Rcvd 1.205,6318 kilo-bytes");
}

/// Records that do not fit each other, or a range that does not fit them.
struct Corruption {
    const char* name;
    void (*spoil)(HistoryData& data);
};

class CorruptTest : public PlotRowsTest, public testing::WithParamInterface<Corruption> {};

TEST_P(CorruptTest, IsToldAndTheChartKeepsWhatItShowed) {
    holdRising(5);
    plotted(both);
    choose(duration, asRecorded, 1);
    const auto before = shown();
    const auto generation = chart().generation();
    GetParam().spoil(data());
    expectWarning(corruptText());

    PlotRows();

    EXPECT_EQ(shown(), before);
    EXPECT_EQ(valueTitle(), "transfer (bytes)");
    EXPECT_EQ(chart().generation(), generation);
}

INSTANTIATE_TEST_SUITE_P(
    All, CorruptTest,
    testing::Values(
        Corruption{"MoreSentThanReceived", [](HistoryData& data) { data.log.sent.push_back(1); }},
        Corruption{"FewerSentThanReceived", [](HistoryData& data) { data.log.sent.pop_back(); }},
        Corruption{"StartBeforeTheFirstRecord", [](HistoryData& data) { data.start = 0; }},
        Corruption{"StopBehindTheLastRecord", [](HistoryData& data) { data.stop = 6; }},
        Corruption{"RecordsGoneFromTheEnd",
                   [](HistoryData& data) {
                       data.log.sent.pop_back();
                       data.log.rcvd.pop_back();
                   }},
        Corruption{"NoRecords",
                   [](HistoryData& data) {
                       data.log.sent.clear();
                       data.log.rcvd.clear();
                   }}),
    [](const auto& given) { return std::string(given.param.name); });

TEST_F(PlotRowsTest, TheLastRecordIsWithinTheRange) {
    holdRising(5);
    range(5, 5);

    EXPECT_EQ(plotted(sent), (Values{5}));
}

TEST_F(PlotRowsTest, AZeroReferenceIsReportedOnceAndLeavesAllPlacesEmpty) {
    hold({{0, 10, 1}, {0, 20, 2}, {0, 0, 3}});
    plotted(duration);
    choose(both, percentual);
    expectError("11 (Division by zero)", "GetTransferNthRow");

    PlotRows();

    EXPECT_EQ(chart().columnCount(), 2);
    EXPECT_EQ(rowLabels(), (Labels{"1", "2", "3"}));
    EXPECT_EQ(chart().filledRows(), 0);
    EXPECT_EQ(chart().drawnValueTitle(), "transfer (percent)");
    EXPECT_EQ(chart().emptyText(), "Record 1 could not be calculated.");
}

TEST_F(PlotRowsTest, AZeroReferenceOfTheSecondColumnIsReportedOnceToo) {
    hold({{1, 10, 0}, {1, 20, 0}, {0, 30, 0}});
    range(2, 3);
    plotted(received);
    choose(both, percentual);
    expectError("11 (Division by zero)", "GetTransfer1stRow");

    PlotRows();

    EXPECT_EQ(rowLabels(), (Labels{"2", "3"}));
    EXPECT_EQ(chart().filledRows(), 0); // the first column alone would be half a record
    EXPECT_EQ(chart().emptyText(), "Record 2 could not be calculated.");
}

TEST_F(PlotRowsTest, NothingOfOtherRecordsStaysWhenNoneCanBeCalculated) {
    holdRising(30);
    plotted(both, percentual);
    hold({{1, 10, 1}, {2, 20, 2}, {0, 0, 3}});
    expectError("11 (Division by zero)", "GetTransferNthRow");

    PlotRows();

    EXPECT_EQ(chart().rowCount(), 3);
    EXPECT_EQ(column(0), (Values{0, 0, 0}));
    EXPECT_EQ(column(1), (Values{0, 0, 0}));
    EXPECT_EQ(chart().filledRows(), 0);
}

TEST_F(PlotRowsTest, RecordsBeforeTheOneThatCannotBeCalculatedAreDrawn) {
    holdRising(12);
    data().log.rcvd[6] = Currency::fromScaled(std::numeric_limits<std::int64_t>::max());
    choose(total);
    expectError("6 (Overflow)", "GetTransfer1stRow");

    PlotRows();

    EXPECT_EQ(chart().filledRows(), 6);
    EXPECT_EQ(column(0), (Values{101, 202, 303, 404, 505, 606, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(chart().drawnTitle(), "Data total (received+sent)");
}

TEST_F(PlotRowsTest, ReadingsTellNoMomentOfAnotherImport) {
    holdRising(3);
    plotted(sent);

    ++data().imports;

    chart().setReadRow(1);
    EXPECT_EQ(chart().reading(), "2: Sent 2 bytes");
}

TEST_F(PlotRowsTest, ReadingsTellUnitDateAndTime) {
    hold({{7, 2048, 90'000}, {14, 4096, 45'000}});
    const auto readingOf = [this](int show, int type, int unit) {
        plotted(show, type, unit);
        chart().setReadRow(0);
        return chart().reading();
    };
    const std::string moment = "1 (16.11.2026 08:15:22): ";

    EXPECT_EQ(readingOf(received, asRecorded, 0), moment + "Rcvd 2,048 bytes");
    EXPECT_EQ(readingOf(received, asRecorded, 1), moment + "Rcvd 2 kilo-bytes");
    EXPECT_EQ(readingOf(received, asRecorded, 2), moment + "Rcvd 0.002 mega-bytes");
    EXPECT_EQ(readingOf(received, asRecorded, 3), moment + "Rcvd 0 giga-bytes");
    EXPECT_EQ(readingOf(both, percentual, 1), moment + "Rcvd 50%; Sent 50%");
    EXPECT_EQ(readingOf(duration, differential, 0), moment + "Duration 90,000 milli-seconds");
    EXPECT_EQ(readingOf(duration, asRecorded, 1), moment + "Duration 90 seconds");
    EXPECT_EQ(readingOf(duration, asRecorded, 2), moment + "Duration 1.5 minutes");
    EXPECT_EQ(readingOf(duration, asRecorded, 3), moment + "Duration 0.025 hours");
    EXPECT_EQ(readingOf(duration, percentual, 3), moment + "Duration 200%");
}

TEST_F(PlotRowsTest, ReadingsTellNoMomentThatWasNotRecorded) {
    hold({{0, 1, 0}, {0, 2, 0}, {0, 3, 0}});
    data().log.date = {};
    data().log.time = {};
    for (const auto& [date, time] :
         {std::pair("", ""), std::pair("1.2.2026", ""), std::pair("", "8:00")}) {
        data().log.date.add(date);
        data().log.time.add(time);
    }
    plotted(received);

    Labels readings;
    for (int row = 0; row < 3; ++row) {
        chart().setReadRow(row);
        readings.push_back(chart().reading());
    }

    EXPECT_EQ(readings,
              (Labels{"1: Rcvd 1 bytes", "2 (1.2.2026): Rcvd 2 bytes", "3 (8:00): Rcvd 3 bytes"}));
}

TEST_F(PlotRowsTest, WhileItIsFilledItsTitlesAreThoseOfItsValues) {
    holdRising(30);
    plotted(both);
    bool looked = false;
    whileFilling([&] {
        looked = true;
        EXPECT_EQ(chart().drawnTitle(), "Data sent/received");
        EXPECT_EQ(chart().drawnValueTitle(), "transfer (bytes)");
    });

    window().cboDataToShow.setListIndex(duration);

    EXPECT_TRUE(looked);
    EXPECT_EQ(chart().drawnTitle(), "Duration of connections");
    EXPECT_EQ(chart().drawnValueTitle(), "duration (milli-secs)");
}

TEST_F(PlotRowsTest, AClearedChartTellsHowToFillIt) {
    holdRising(3);
    plotted(both);

    ClearDiagram();

    EXPECT_EQ(chart().rowCount(), 0);
    EXPECT_EQ(chart().summary(),
              "Nothing to show yet. Press \"Import...\" to read the recorded connections.");
}

TEST_F(PlotRowsTest, TheDrawingStopsAtTheRecordThatCannotBeCalculated) {
    holdRising(40);
    const Currency most = Currency::fromScaled(std::numeric_limits<std::int64_t>::max());
    data().log.rcvd[14] = most;
    data().log.rcvd[34] = most;
    choose(total);
    machine.desktop.eventRounds = 0;
    expectError("6 (Overflow)", "GetTransfer1stRow");

    PlotRows();

    EXPECT_EQ(machine.desktop.eventRounds, 1);
}

TEST_F(PlotRowsTest, AMissingDurationIsAnErrorAndNotACorruption) {
    holdRising(3);
    data().log.duration.pop_back();
    choose(duration);
    expectError("9 (Subscript out of range)", "GetTransfer1stRow");

    PlotRows();

    EXPECT_EQ(chart().rowCount(), 3);
    EXPECT_EQ(chart().filledRows(), 2);
}

struct EventRounds {
    int start;
    int stop;
    int rounds;
};

class EventRoundsTest : public PlotRowsTest, public testing::WithParamInterface<EventRounds> {};

TEST_P(EventRoundsTest, ComeWithEachTenthRecordByItsNumber) {
    holdRising(200);
    range(GetParam().start, GetParam().stop);
    choose(both);
    machine.desktop.eventRounds = 0;

    PlotRows();

    EXPECT_EQ(machine.desktop.eventRounds, GetParam().rounds);
}

INSTANTIATE_TEST_SUITE_P(Ranges, EventRoundsTest,
                         testing::Values(EventRounds{1, 9, 0}, EventRounds{1, 10, 1},
                                         EventRounds{10, 10, 1}, EventRounds{11, 19, 0},
                                         EventRounds{5, 14, 1}, EventRounds{9, 30, 3},
                                         EventRounds{1, 200, 20}, EventRounds{100, 100, 1}),
                         [](const auto& given) {
                             return "From" + std::to_string(given.param.start) + "To" +
                                    std::to_string(given.param.stop);
                         });

TEST_F(PlotRowsTest, EventsAreHandledBeforeTheTenthRecordIsRead) {
    holdRising(12);
    whileFilling([this] {
        data().log.rcvd[8] = 1;
        data().log.rcvd[9] = 2;
    });

    EXPECT_EQ(plotted(received),
              (Values{100, 200, 300, 400, 500, 600, 700, 800, 900, 2, 1100, 1200}));
}

TEST_F(PlotRowsTest, WhileItIsFilledTheChartShowsWhatItShowed) {
    holdRising(5);
    plotted(both);
    chart().setReadRow(4);
    const auto before = shown();
    holdRising(30);
    bool looked = false;
    whileFilling([&] {
        looked = true;
        EXPECT_EQ(shown(), before);
        EXPECT_EQ(chart().reading(), "5 (16.11.2026 08:15:22): Rcvd 500 bytes; Sent 5 bytes");
    });

    PlotRows();

    EXPECT_TRUE(looked);
    EXPECT_EQ(chart().rowCount(), 30);
}

/// Reads off whatever the chart tells of, as a face does.
class ReadingView : public ControlView {
public:
    explicit ReadingView(Chart& chart) : chart_(chart) {}

    void refresh(Property) override { readings.push_back(chart_.reading()); }

    Labels readings;

private:
    Chart& chart_;
};

TEST_F(PlotRowsTest, FewerRowsWithOtherLabelsAreNotReadOffBeyondTheirEnd) {
    holdRising(1000);
    plotted(duration);
    chart().setReadRow(999);
    ReadingView view(chart());
    chart().attach(&view);
    range(1, 3);
    choose(sent);

    PlotRows();

    chart().attach(nullptr);
    for (const std::string& reading : view.readings) {
        EXPECT_TRUE(reading == "1,000 (16.11.2026 08:15:22): Duration 1,000,000 milli-seconds" ||
                    reading.empty())
            << reading;
    }
}

} // namespace
} // namespace tarvik
