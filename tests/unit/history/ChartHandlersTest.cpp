#include "history/ChartWorld.h"
#include "wiring/frmHistoryEvents.h"

namespace tarvik {
namespace {

using Texts = std::vector<std::string>;

const Texts transferUnits{"Bytes", "Kilo-Bytes", "Mega-Bytes", "Giga-Bytes"};
const Texts durationUnits{"Milli-Seconds", "Seconds", "Minutes", "Hours"};

class ChartHandlersTest : public ChartWorld {
protected:
    static ChartAxis grid(std::string title, GridPen pen) {
        return {.title = std::move(title),
                .majorPen = pen,
                .minorPen = pen,
                .majorDivisions = 10,
                .minorDivisions = 1};
    }
};

TEST_F(ChartHandlersTest, TheListsOfferWhatCanBeDrawn) {
    EXPECT_EQ(window().cboChartType.items(),
              (Texts{"plot as line", "plot as bars", "plot as area", "plot as step"}));
    EXPECT_EQ(window().cboDataType.items(),
              (Texts{"total transfer", "differential transfer", "percentual"}));
    EXPECT_EQ(window().cboDataToShow.items(), (Texts{"Rcvd and Sent", "Received only", "Sent only",
                                                     "Total (rcvd+sent)", "Duration"}));
    EXPECT_EQ(window().cboTransferUnit.items(), transferUnits);
}

TEST_F(ChartHandlersTest, TheControlsSayWhatTheyAreFor) {
    EXPECT_EQ(window().cboChartType.toolTip(), "Select the type (layout) of the chart");
    EXPECT_EQ(window().cboDataType.toolTip(),
              "Select the data type (representation) within the chart");
    EXPECT_EQ(window().cboDataToShow.toolTip(), "Select the type of data to show within the chart");
    EXPECT_EQ(window().cboTransferUnit.toolTip(), "Select the transfer unit within the chart");
    EXPECT_EQ(window().chkShowXLines.caption(), "Show X-lines");
    EXPECT_EQ(window().chkShowXLines.toolTip(), "Show x-axis in detail (with more lines)");
    EXPECT_EQ(window().chkShowYLines.caption(), "Show Y-lines");
    EXPECT_EQ(window().chkShowYLines.toolTip(), "Show y-axis in detail (with more lines)");
    EXPECT_EQ(chart().toolTip(),
              "This shows the history (recorded so far) of the bytes sent/received or the "
              "duration");
}

TEST_F(ChartHandlersTest, TheChartIsDesignedWithATitleForAll) {
    const FrmHistory designed;

    EXPECT_EQ(designed.mscHistory.title(), "Data sent/received or duration");
}

TEST_F(ChartHandlersTest, InitDiagramSetsTheChartUp) {
    chart().setShowsLegend(true);
    for (const ChartAxisId id : {ChartAxisId::X, ChartAxisId::Y, ChartAxisId::SecondY}) {
        chart().setAxis(id,
                        {.title = "?",
                         .majorPen = id == ChartAxisId::SecondY ? GridPen::Ditted : GridPen::None,
                         .minorPen = id == ChartAxisId::SecondY ? GridPen::Ditted : GridPen::None,
                         .majorDivisions = 3,
                         .minorDivisions = 4});
    }

    InitDiagram();

    EXPECT_FALSE(chart().showsLegend());
    EXPECT_EQ(chart().axis(ChartAxisId::X), grid("connections", GridPen::Ditted));
    EXPECT_EQ(chart().axis(ChartAxisId::Y), grid("transfer (bytes)", GridPen::Ditted));
    EXPECT_EQ(chart().axis(ChartAxisId::SecondY).majorPen, GridPen::None);
    EXPECT_EQ(chart().axis(ChartAxisId::SecondY).minorPen, GridPen::None);
}

TEST_F(ChartHandlersTest, TheChartIsSetUpWhenTheWindowIsLoaded) {
    EXPECT_FALSE(chart().showsLegend());
    EXPECT_EQ(chart().axis(ChartAxisId::X), grid("connections", GridPen::Ditted));
    EXPECT_EQ(chart().axis(ChartAxisId::Y), grid("transfer (bytes)", GridPen::Ditted));
}

TEST_F(ChartHandlersTest, TheNumbersOfTypesAndPensAreThoseOfChartingLibraries) {
    EXPECT_EQ(static_cast<int>(ChartType::Bar), 1);
    EXPECT_EQ(static_cast<int>(ChartType::Line), 3);
    EXPECT_EQ(static_cast<int>(ChartType::Area), 5);
    EXPECT_EQ(static_cast<int>(ChartType::Step), 7);
    EXPECT_EQ(static_cast<int>(GridPen::None), 0);
    EXPECT_EQ(static_cast<int>(GridPen::Ditted), 6);
    EXPECT_EQ(static_cast<int>(ChartAxisId::X), 0);
    EXPECT_EQ(static_cast<int>(ChartAxisId::Y), 1);
    EXPECT_EQ(static_cast<int>(ChartAxisId::SecondY), 2);
}

TEST_F(ChartHandlersTest, AChartTypeIsDrawnAsSoonAsItIsChosen) {
    EXPECT_EQ(chart().type(), ChartType::Line);
    window().cboChartType.setListIndex(1);
    EXPECT_EQ(chart().type(), ChartType::Bar);
    window().cboChartType.setListIndex(2);
    EXPECT_EQ(chart().type(), ChartType::Area);
    window().cboChartType.setListIndex(3);
    EXPECT_EQ(chart().type(), ChartType::Step);
    window().cboChartType.setListIndex(0);
    EXPECT_EQ(chart().type(), ChartType::Line);
}

TEST_F(ChartHandlersTest, NoChartTypeLeavesTheTypeAlone) {
    window().cboChartType.setListIndex(2);

    window().cboChartType.setListIndex(none);

    EXPECT_EQ(chart().type(), ChartType::Area);
}

TEST_F(ChartHandlersTest, AChartTypeBehindTheLastLeavesTheTypeAlone) {
    window().cboChartType.setListIndex(2);
    window().cboChartType.addItem("plot as pie");

    window().cboChartType.setListIndex(4);

    EXPECT_EQ(chart().type(), ChartType::Area);
}

TEST_F(ChartHandlersTest, AnotherChartTypeDoesNotRecomputeValues) {
    holdRising(30);
    EXPECT_EQ(plotted(received).front(), 100);
    data().log.rcvd.front() = 5;
    const auto before = chart().generation();
    machine.desktop.eventRounds = 0;

    window().cboChartType.setListIndex(1);

    EXPECT_EQ(column(0).front(), 100);
    EXPECT_EQ(chart().generation(), before);
    EXPECT_EQ(machine.desktop.eventRounds, 0);
}

TEST_F(ChartHandlersTest, PercentNeedsNoUnit) {
    holdRising(2);

    window().cboDataType.setListIndex(percentual);
    EXPECT_FALSE(window().cboTransferUnit.enabled());
    window().cboDataType.setListIndex(differential);
    EXPECT_TRUE(window().cboTransferUnit.enabled());
}

TEST_F(ChartHandlersTest, NoDataTypeNeedsAUnit) {
    holdRising(2);
    window().cboDataType.setListIndex(percentual);

    window().cboDataType.setListIndex(none);

    EXPECT_TRUE(window().cboTransferUnit.enabled());
}

TEST_F(ChartHandlersTest, BeforeAnImportThereIsNoUnitToChoose) {
    for (const int type : std::initializer_list<int>{differential, percentual, asRecorded, none}) {
        window().cboTransferUnit.setEnabled(true);

        window().cboDataType.setListIndex(type);

        EXPECT_FALSE(window().cboTransferUnit.enabled()) << type;
    }
}

TEST_F(ChartHandlersTest, ADataTypeIsDrawnAsSoonAsItIsChosen) {
    holdRising(4);

    window().cboDataType.setListIndex(percentual);
    EXPECT_EQ(column(0), (Values{25, 50, 75, 100}));
    EXPECT_EQ(valueTitle(), "transfer (percent)");
    window().cboDataType.setListIndex(differential);
    EXPECT_EQ(column(0), (Values{100, 100, 100, 100}));
    EXPECT_EQ(valueTitle(), "transfer (bytes)");
    window().cboDataType.setListIndex(asRecorded);
    EXPECT_EQ(column(0), (Values{100, 200, 300, 400}));
}

TEST_F(ChartHandlersTest, AUnitIsDrawnAsSoonAsItIsChosen) {
    hold({{0, 1'048'576, 0}});

    window().cboTransferUnit.setListIndex(1);
    EXPECT_EQ(column(0), (Values{1024}));
    EXPECT_EQ(valueTitle(), "transfer (kilo-bytes)");
    window().cboTransferUnit.setListIndex(2);
    EXPECT_EQ(column(0), (Values{1}));
    EXPECT_EQ(valueTitle(), "transfer (mega-bytes)");
}

TEST_F(ChartHandlersTest, EveryKindOfDataHasATitle) {
    window().cboDataToShow.setListIndex(4);
    EXPECT_EQ(chart().title(), "Duration of connections");
    window().cboDataToShow.setListIndex(3);
    EXPECT_EQ(chart().title(), "Data total (received+sent)");
    window().cboDataToShow.setListIndex(2);
    EXPECT_EQ(chart().title(), "Data sent");
    window().cboDataToShow.setListIndex(1);
    EXPECT_EQ(chart().title(), "Data received");
    window().cboDataToShow.setListIndex(0);
    EXPECT_EQ(chart().title(), "Data sent/received");
}

TEST_F(ChartHandlersTest, NoDataLeavesTheTitleAlone) {
    window().cboDataToShow.setListIndex(2);

    window().cboDataToShow.setListIndex(none);

    EXPECT_EQ(chart().title(), "Data sent");
}

TEST_F(ChartHandlersTest, DurationsAreChosenInUnitsOfTime) {
    hold({{0, 0, 3'600'000}});

    window().cboDataToShow.setListIndex(duration);

    EXPECT_EQ(window().cboTransferUnit.items(), durationUnits);
    EXPECT_EQ(window().cboTransferUnit.listIndex(), 0);
    EXPECT_EQ(valueTitle(), "duration (milli-secs)");
    EXPECT_EQ(column(0), (Values{3'600'000}));
    window().cboTransferUnit.setListIndex(3);
    EXPECT_EQ(column(0), (Values{1}));
    EXPECT_EQ(valueTitle(), "duration (hours)");
}

TEST_F(ChartHandlersTest, BytesAreChosenInUnitsOfBytesAgain) {
    hold({{0, 1, 1}});
    window().cboDataToShow.setListIndex(duration);
    window().cboTransferUnit.setListIndex(3);

    window().cboDataToShow.setListIndex(total);

    EXPECT_EQ(window().cboTransferUnit.items(), transferUnits);
    EXPECT_EQ(window().cboTransferUnit.listIndex(), 0);
    EXPECT_EQ(valueTitle(), "transfer (bytes)");
}

TEST_F(ChartHandlersTest, NoDataIsChosenInUnitsOfBytes) {
    hold({{0, 1, 1}});
    window().cboDataToShow.setListIndex(duration);

    window().cboDataToShow.setListIndex(none);

    EXPECT_EQ(window().cboTransferUnit.items(), transferUnits);
}

TEST_F(ChartHandlersTest, OtherBytesStartWithTheFirstUnitToo) {
    hold({{0, 1024, 0}});
    window().cboTransferUnit.setListIndex(1);

    window().cboDataToShow.setListIndex(received);

    EXPECT_EQ(window().cboTransferUnit.listIndex(), 0);
    EXPECT_EQ(column(0), (Values{1024}));
}

TEST_F(ChartHandlersTest, BeforeAnImportTheUnitsStay) {
    window().cboTransferUnit.setListIndex(2);

    window().cboDataToShow.setListIndex(duration);

    EXPECT_EQ(window().cboTransferUnit.items(), transferUnits);
    EXPECT_EQ(window().cboTransferUnit.listIndex(), 2);
}

TEST_F(ChartHandlersTest, AUnitListThatIsDisabledIsFilledAnewAndStaysDisabled) {
    holdRising(4);
    window().cboDataType.setListIndex(percentual);

    window().cboDataToShow.setListIndex(duration);

    EXPECT_EQ(window().cboTransferUnit.items(), durationUnits);
    EXPECT_FALSE(window().cboTransferUnit.enabled());
    EXPECT_EQ(column(0), (Values{25, 50, 75, 100}));
    EXPECT_EQ(valueTitle(), "duration (percent)");
}

TEST_F(ChartHandlersTest, OtherDataIsDrawnOnce) {
    holdRising(30);
    const auto before = chart().generation();
    machine.desktop.eventRounds = 0;

    window().cboDataToShow.setListIndex(sent);

    EXPECT_EQ(chart().generation(), before + 1);
    EXPECT_EQ(machine.desktop.eventRounds, 3);
}

TEST_F(ChartHandlersTest, OtherDataWithAZeroReferenceIsReportedOnce) {
    hold({{1, 10, 5}, {2, 20, 0}});
    window().cboDataType.setListIndex(percentual);
    expectError("11 (Division by zero)", "GetTransferNthRow");

    window().cboDataToShow.setListIndex(duration);

    EXPECT_EQ(chart().filledRows(), 0);
    EXPECT_EQ(chart().drawnTitle(), "Duration of connections");
    EXPECT_EQ(chart().drawnValueTitle(), "duration (percent)");
}

TEST_F(ChartHandlersTest, PercentWithAZeroReferenceIsReportedOnce) {
    hold({{1, 10, 0}, {2, 0, 0}});
    window().cboTransferUnit.setListIndex(1);
    expectError("11 (Division by zero)", "GetTransferNthRow");

    window().cboDataType.setListIndex(percentual);

    EXPECT_EQ(chart().filledRows(), 0);
    EXPECT_EQ(chart().drawnValueTitle(), "transfer (percent)");
    EXPECT_FALSE(window().cboTransferUnit.enabled());
}

TEST_F(ChartHandlersTest, RecordsThatDoNotFitAreToldOfOnceWhenOtherDataIsChosen) {
    holdRising(3);
    data().log.sent.pop_back();
    expectWarning(corruptText());

    window().cboDataToShow.setListIndex(sent);
}

TEST_F(ChartHandlersTest, LinesOfRowsComeAndGo) {
    window().chkShowXLines.setValue(0);
    EXPECT_EQ(chart().axis(ChartAxisId::X), grid("connections", GridPen::None));
    EXPECT_EQ(chart().axis(ChartAxisId::Y), grid("transfer (bytes)", GridPen::Ditted));
    window().chkShowXLines.setValue(1);
    EXPECT_EQ(chart().axis(ChartAxisId::X), grid("connections", GridPen::Ditted));
}

TEST_F(ChartHandlersTest, LinesOfValuesComeAndGo) {
    window().chkShowYLines.setValue(0);
    EXPECT_EQ(chart().axis(ChartAxisId::Y), grid("transfer (bytes)", GridPen::None));
    EXPECT_EQ(chart().axis(ChartAxisId::X), grid("connections", GridPen::Ditted));
    window().chkShowYLines.setValue(1);
    EXPECT_EQ(chart().axis(ChartAxisId::Y), grid("transfer (bytes)", GridPen::Ditted));
}

TEST_F(ChartHandlersTest, LinesStayAwayWhenOtherValuesAreDrawn) {
    holdRising(2);
    window().chkShowYLines.setValue(0);

    window().cboTransferUnit.setListIndex(1);

    EXPECT_EQ(chart().axis(ChartAxisId::Y), grid("transfer (kilo-bytes)", GridPen::None));
}

/// What the title of the values is in each unit, and in percent.
struct AxisTitle {
    const char* name;
    int show;
    const char* units[4];
    const char* percent;
};

class AxisTitleTest : public ChartHandlersTest, public testing::WithParamInterface<AxisTitle> {
protected:
    std::string titleAfter(int type, int unit) {
        ChartAxis axis = chart().axis(ChartAxisId::Y);
        axis.title = "as it was";
        chart().setAxis(ChartAxisId::Y, axis);
        choose(GetParam().show, type, unit);
        SetAxis();
        return valueTitle();
    }
};

TEST_P(AxisTitleTest, NamesTheUnit) {
    for (int unit = 0; unit < 4; ++unit) {
        for (const int type : std::initializer_list<int>{asRecorded, differential, none}) {
            EXPECT_EQ(titleAfter(type, unit), GetParam().units[unit]) << type;
        }
    }
}

TEST_P(AxisTitleTest, IsPercentInAnyUnit) {
    for (int unit = none; unit < 4; ++unit) {
        EXPECT_EQ(titleAfter(percentual, unit), GetParam().percent) << unit;
    }
}

TEST_P(AxisTitleTest, StaysWhereNoUnitIsChosen) {
    EXPECT_EQ(titleAfter(asRecorded, none), "as it was");
}

TEST_P(AxisTitleTest, StaysWhereThereIsNoSuchUnit) {
    window().cboTransferUnit.addItem("other");

    EXPECT_EQ(titleAfter(asRecorded, 4), "as it was");
}

constexpr AxisTitle transfer(const char* name, int show) {
    return {name,
            show,
            {"transfer (bytes)", "transfer (kilo-bytes)", "transfer (mega-bytes)",
             "transfer (giga-bytes)"},
            "transfer (percent)"};
}

INSTANTIATE_TEST_SUITE_P(All, AxisTitleTest,
                         testing::Values(transfer("Both", 0), transfer("Received", 1),
                                         transfer("Sent", 2), transfer("Total", 3),
                                         AxisTitle{"Duration",
                                                   4,
                                                   {"duration (milli-secs)", "duration (seconds)",
                                                    "duration (minutes)", "duration (hours)"},
                                                   "duration (percent)"}),
                         [](const auto& given) { return std::string(given.param.name); });

TEST_F(ChartHandlersTest, SetAxisLeavesTheGridAlone) {
    window().chkShowYLines.setValue(0);
    choose(received, asRecorded, 3);

    SetAxis();

    EXPECT_EQ(chart().axis(ChartAxisId::Y), grid("transfer (giga-bytes)", GridPen::None));
}

TEST_F(ChartHandlersTest, WhereNothingIsShownTheTitleStays) {
    choose(none, asRecorded, 2);

    SetAxis();

    EXPECT_EQ(valueTitle(), "transfer (bytes)");
}

} // namespace
} // namespace tarvik
