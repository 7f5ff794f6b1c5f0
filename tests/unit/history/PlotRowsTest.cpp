#include "history/ChartWorld.h"

#include <limits>

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
    EXPECT_EQ(chart().reading(), "2: Rcvd 200; Sent 2");
}

TEST_F(PlotRowsTest, NumbersAreReadOffAsTheUserWritesThem) {
    machine.locale.conventions = germanLocale();
    hold({{0, 1'234'567, 0}});

    plotted(received, asRecorded, 1);

    chart().setReadRow(0);
    EXPECT_EQ(chart().reading(), "1: Rcvd 1.205,6318");
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

TEST_F(PlotRowsTest, AZeroReferenceIsReportedOnceAndTheChartKeepsWhatItDrew) {
    hold({{0, 10, 1}, {0, 20, 2}, {0, 0, 3}});
    plotted(duration);
    choose(both, percentual);
    const auto before = shown();
    expectError("11 (Division by zero)", "GetTransferNthRow");

    PlotRows();

    EXPECT_EQ(shown(), before);
    EXPECT_EQ(valueTitle(), "transfer (percent)");
}

TEST_F(PlotRowsTest, AZeroReferenceOfTheSecondColumnIsReportedOnceToo) {
    hold({{1, 10, 0}, {1, 20, 0}, {0, 30, 0}});
    range(2, 3);
    plotted(received);
    choose(both, percentual);
    const auto before = shown();
    expectError("11 (Division by zero)", "GetTransfer1stRow");

    PlotRows();

    EXPECT_EQ(shown(), before);
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

    EXPECT_EQ(chart().rowCount(), 0);
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
        EXPECT_EQ(chart().reading(), "5: Rcvd 500; Sent 5");
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
        EXPECT_TRUE(reading == "1000: Duration 1,000,000" || reading.empty()) << reading;
    }
}

} // namespace
} // namespace tarvik
