#include "history/HistoryTest.h"
#include "history/mdlHistoryLog.h"
#include "wiring/frmHistoryEvents.h"

namespace tarvik {
namespace {

constexpr const char* updated = "History diagram has been updated.";
constexpr const char* stopAdjusted =
    "Start value was greater than stop value.\rStop value has been adjusted to start value.";
constexpr const char* startAdjusted =
    "Stop value was less than start value.\rStart value has been adjusted to stop value.";

/// Nine records have been imported.
class RangeTest : public HistoryTest {
protected:
    RangeTest() { import(numberedLog(9)); }

    void setRange(int start, int stop) {
        data().start = start;
        data().stop = stop;
        UpdateStartStop();
        machine.desktop.boxesShown.clear();
    }

    static std::string text(int number) {
        const Row row = numberedRow(number);
        return row[0] + ".) " + row[1] + "/" + row[2] + " (" + row[3] + ") S:" + row[4] +
               "; R:" + row[5] + " (IP: " + row[6] + ")";
    }
};

struct Move {
    const char* name;
    int start;
    int stop;
    bool setsStart;
    int selected;
    int newStart;
    int newStop;
    const char* adjustment;
};

class MoveTest : public RangeTest, public testing::WithParamInterface<Move> {
protected:
    void move() {
        setRange(GetParam().start, GetParam().stop);
        select(GetParam().selected);
        if (GetParam().adjustment != nullptr) {
            expectInformation(GetParam().adjustment, [this] { textsAtAdjustment = texts(); });
        }
        expectInformation(updated, [this] {
            textsAtUpdate = texts();
            pointsAtUpdate = window().mscHistory.rowCount();
        });
        (GetParam().setsStart ? window().cmdSetStart : window().cmdSetStop).press();
    }

    Texts texts() { return {window().txtCurrentStart.text(), window().txtCurrentStop.text()}; }

    Texts textsAtAdjustment;
    Texts textsAtUpdate;
    int pointsAtUpdate = 0;
};

TEST_P(MoveTest, MovesTheRange) {
    move();

    EXPECT_EQ(data().start, Long(GetParam().newStart));
    EXPECT_EQ(data().stop, Long(GetParam().newStop));
}

TEST_P(MoveTest, TellsOfTheUpdateWhenAllIsShown) {
    move();

    EXPECT_EQ(textsAtUpdate, (Texts{text(GetParam().newStart), text(GetParam().newStop)}));
    EXPECT_EQ(pointsAtUpdate, GetParam().newStop - GetParam().newStart + 1);
    EXPECT_EQ(window().mscHistory.rowLabel(0), std::to_string(GetParam().newStart));
}

TEST_P(MoveTest, TellsOfTheAdjustmentBeforeItIsShown) {
    move();

    EXPECT_EQ(textsAtAdjustment, GetParam().adjustment == nullptr
                                     ? Texts{}
                                     : (Texts{text(GetParam().start), text(GetParam().stop)}));
}

TEST_P(MoveTest, KeepsTheRecordsAndTheSelection) {
    const std::vector<Row> before = rows();

    move();

    EXPECT_EQ(rows(), before);
    EXPECT_EQ(window().lvwCompleteLog.selectedRow(), GetParam().selected - 1);
    EXPECT_EQ(data().log.sent.size(), 9U);
    EXPECT_TRUE(data().imported);
}

INSTANTIATE_TEST_SUITE_P(
    Each, MoveTest,
    testing::Values(Move{"StartDown", 4, 6, true, 2, 2, 6, nullptr},
                    Move{"StartUp", 4, 6, true, 5, 5, 6, nullptr},
                    Move{"StartWhereItIs", 4, 6, true, 4, 4, 6, nullptr},
                    Move{"StartToTheStop", 4, 6, true, 6, 6, 6, nullptr},
                    Move{"StartJustBeyondTheStop", 4, 6, true, 7, 7, 7, stopAdjusted},
                    Move{"StartToTheLastRecord", 4, 6, true, 9, 9, 9, stopAdjusted},
                    Move{"StartToTheFirstRecord", 4, 6, true, 1, 1, 6, nullptr},
                    Move{"StopUp", 4, 6, false, 8, 4, 8, nullptr},
                    Move{"StopDown", 4, 6, false, 5, 4, 5, nullptr},
                    Move{"StopWhereItIs", 4, 6, false, 6, 4, 6, nullptr},
                    Move{"StopToTheStart", 4, 6, false, 4, 4, 4, nullptr},
                    Move{"StopJustBelowTheStart", 4, 6, false, 3, 3, 3, startAdjusted},
                    Move{"StopToTheFirstRecord", 4, 6, false, 1, 1, 1, startAdjusted},
                    Move{"StopToTheLastRecord", 4, 6, false, 9, 4, 9, nullptr}),
    [](const auto& given) { return given.param.name; });

TEST_F(RangeTest, SetStopAboveTheStartMovesTheStartDownToIt) {
    setRange(5, 7);
    select(3);
    expectInformation(
        "Stop value was less than start value.\rStart value has been adjusted to stop value.");
    expectInformation("History diagram has been updated.");

    window().cmdSetStop.press();

    EXPECT_EQ(data().start, Long(3));
    EXPECT_EQ(data().stop, Long(3));
}

TEST_F(RangeTest, WithoutASelectionNothingHappens) {
    setRange(4, 6);
    machine.desktop.changesTold.clear();
    ASSERT_EQ(window().lvwCompleteLog.selectedRow(), -1);

    window().cmdSetStart.press();
    window().cmdSetStop.press();

    EXPECT_EQ(data().start, Long(4));
    EXPECT_EQ(data().stop, Long(6));
    EXPECT_EQ(machine.desktop.changesTold, Texts{});
    EXPECT_TRUE(machine.desktop.boxesShown.empty());
}

TEST_F(RangeTest, WithoutImportedRecordsTheRangeMovesAndTheChartStays) {
    setIni("[Settings]\r\n");
    importNothing();
    select(4);
    expectInformation(updated);

    cmdSetStart_Click();

    EXPECT_EQ(data().start, Long(4));
    EXPECT_EQ(window().txtCurrentStart.text(), text(4));
    EXPECT_EQ(window().mscHistory.rowCount(), 9);
}

TEST_F(RangeTest, ARangeOutsideTheRecordsIsToldAsCorruptAndNotShown) {
    setRange(1, 9);
    data().stop = 10;
    select(2);
    expectBox("The data imported seems to be corrupt.\rTherefore it cannot be plotted.",
              MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation);
    expectError("9 (Subscript out of range)", "UpdateStartStop");
    expectInformation(updated);

    window().cmdSetStart.press();

    EXPECT_EQ(window().txtCurrentStart.text(), text(2));
    EXPECT_EQ(window().txtCurrentStop.text(), text(9));
    EXPECT_EQ(window().mscHistory.rowCount(), 9);
}

class EmptyListTest : public HistoryTest {};

TEST_F(EmptyListTest, TheButtonsDoNothing) {
    const Texts before = everything();

    window().cmdSetStart.press();
    window().cmdSetStop.press();

    EXPECT_EQ(everything(), before);
}

TEST_F(EmptyListTest, TheirHandlersDoNothing) {
    const Texts before = everything();

    cmdSetStart_Click();
    cmdSetStop_Click();

    EXPECT_EQ(everything(), before);
    EXPECT_TRUE(machine.desktop.boxesShown.empty());
}

TEST_F(EmptyListTest, ThereIsNoRangeToShow) {
    expectError("9 (Subscript out of range)", "UpdateStartStop");

    UpdateStartStop();

    EXPECT_EQ(window().txtCurrentStart.text(), "");
    EXPECT_EQ(window().txtCurrentStop.text(), "");
}

struct TextCase {
    const char* name;
    LoggedRecord record;
    const char* text;
};

class RangeTextTest : public HistoryTest, public testing::WithParamInterface<TextCase> {};

TEST_P(RangeTextTest, StandsInBothBoxes) {
    machine.locale.conventions = germanLocale();
    Log log = numberedLog(4);
    log[2] = GetParam().record;
    import(log);
    data().start = data().stop = 3;

    UpdateStartStop();

    EXPECT_EQ(window().txtCurrentStart.text(), GetParam().text);
    EXPECT_EQ(window().txtCurrentStop.text(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Each, RangeTextTest,
    testing::Values(
        TextCase{"Usual",
                 {"12.05.2005|14:03:11", "123456", "987654", "760000", "10.0.0.1"},
                 "3.) 12.05.2005/14:03:11 (00:12:40:000) S:123456; R:987654 (IP: 10.0.0.1)"},
        TextCase{"WithNeitherDateNorTime",
                 {"|", "1", "2", "3", "x"},
                 "3.) / (00:00:00:003) S:1; R:2 (IP: x)"},
        TextCase{
            "WithoutDate", {"|t", "1", "2", "3", "x"}, "3.) /t (00:00:00:003) S:1; R:2 (IP: x)"},
        TextCase{
            "WithoutTime", {"d|", "1", "2", "3", "x"}, "3.) d/ (00:00:00:003) S:1; R:2 (IP: x)"},
        TextCase{
            "WithoutAddress", {"d|t", "1", "2", "3", ""}, "3.) d/t (00:00:00:003) S:1; R:2 (IP: )"},
        TextCase{"WithDecimals",
                 {"d|t", "1,5", "1234567,25", "3", "x"},
                 "3.) d/t (00:00:00:003) S:1,5; R:1234567,25 (IP: x)"}),
    [](const auto& given) { return given.param.name; });

TEST_F(RangeTest, StartAndStopHaveTheirOwnTexts) {
    data().start = 2;
    data().stop = 8;

    UpdateStartStop();

    EXPECT_EQ(window().txtCurrentStart.text(),
              "2.) d2/t2 (00:00:00:002) S:8002; R:9002 (IP: 10.0.0.2)");
    EXPECT_EQ(window().txtCurrentStop.text(),
              "8.) d8/t8 (00:00:00:008) S:8008; R:9008 (IP: 10.0.0.8)");
}

} // namespace
} // namespace tarvik
