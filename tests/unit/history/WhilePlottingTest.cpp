#include "history/ChartWorld.h"

namespace tarvik {
namespace {

/// What the user does while a chart of 25 records is being filled.
class WhilePlottingTest : public ChartWorld {
protected:
    WhilePlottingTest() {
        log(25);
        import();
        before = chart().generation();
    }

    /// Writes a log into the program's own file: record r has sent r and received 10 * r.
    void log(int count) {
        std::string index = "[Settings]\r\nLastDateStamp=" + std::to_string(count) + "\r\n";
        std::string records;
        for (int r = 1; r <= count; ++r) {
            const std::string stamp = "16.11.2026|" + std::to_string(r);
            index += "DateStamp" + std::to_string(r) + "=" + stamp + "\r\n";
            records += "[" + stamp + "]\r\nSent=" + std::to_string(r) +
                       "\r\nRcvd=" + std::to_string(10 * r) + "\r\nDuration=1000\r\n";
        }
        setIni(index + records);
    }
    /// The user imports from the program's own file.
    void import() {
        expectQuestion();
        window().cmdImport.press();
    }
    void expectQuestion() {
        expectBox("Ok to import recorded transfers from the\rINI-file located in the application "
                  "folder?\r\r(Press \"No\" to select another file.)",
                  MsgBoxButtons::YesNoCancel, MsgBoxIcon::Question, MsgBoxAnswer::Yes);
    }
    /// The user makes a record of the list the last or the first one of the chart.
    void setStop(int record) {
        window().lvwCompleteLog.setSelectedRow(record - 1);
        expectUpdated();
        window().cmdSetStop.press();
    }
    void setStart(int record) {
        window().lvwCompleteLog.setSelectedRow(record - 1);
        expectUpdated();
        window().cmdSetStart.press();
    }
    void expectUpdated() {
        expectBox("History diagram has been updated.", MsgBoxButtons::OkOnly,
                  MsgBoxIcon::Information);
    }

    /// The chart was filled once more, and shows these records and nothing else.
    void expectShown(int columns, int first, int last, double factor) {
        EXPECT_EQ(chart().generation(), before + 1);
        EXPECT_EQ(chart().columnCount(), columns);
        ASSERT_EQ(chart().rowCount(), last - first + 1);
        for (int row = 0; row < chart().rowCount(); ++row) {
            EXPECT_EQ(chart().rowLabel(row), std::to_string(first + row));
            EXPECT_EQ(chart().data(0, row), factor * (first + row));
        }
    }

    std::uint32_t before = 0;
};

TEST_F(WhilePlottingTest, AnotherUnitIsWhatIsSeenInTheEnd) {
    whileFilling([this] { window().cboTransferUnit.setListIndex(0); });

    window().cboTransferUnit.setListIndex(1);

    expectShown(2, 1, 25, 10);
    EXPECT_EQ(valueTitle(), "transfer (bytes)");
}

TEST_F(WhilePlottingTest, ADataTypeIsWhatIsSeenInTheEnd) {
    whileFilling([this] { window().cboDataType.setListIndex(percentual); });

    PlotRows();

    expectShown(2, 1, 25, 4);
    EXPECT_EQ(valueTitle(), "transfer (percent)");
}

TEST_F(WhilePlottingTest, FewerColumnsAreWhatIsSeenInTheEnd) {
    whileFilling([this] {
        window().cboDataToShow.setListIndex(sent);
        before = chart().generation() - 1;
    });

    PlotRows();

    expectShown(1, 1, 25, 1);
    EXPECT_EQ(chart().title(), "Data sent");
    EXPECT_EQ(chart().columnLabel(0), "Sent");
}

TEST_F(WhilePlottingTest, MoreColumnsAreWhatIsSeenInTheEnd) {
    window().cboDataToShow.setListIndex(sent);
    whileFilling([this] {
        window().cboDataToShow.setListIndex(both);
        before = chart().generation() - 1;
    });

    PlotRows();

    expectShown(2, 1, 25, 10);
    EXPECT_EQ(chart().data(1, 24), 25);
}

TEST_F(WhilePlottingTest, ANewImportIsWhatIsSeenInTheEnd) {
    log(12);
    whileFilling([this] { import(); });

    PlotRows();

    expectShown(2, 1, 12, 10);
}

TEST_F(WhilePlottingTest, AnImportOfMoreRecordsIsWhatIsSeenInTheEnd) {
    log(112);
    whileFilling([this] { import(); });

    PlotRows();

    expectShown(2, 1, 112, 10);
}

TEST_F(WhilePlottingTest, AnImportWithinAnImportIsWhatIsSeenInTheEnd) {
    whileFilling([this] {
        log(11);
        import();
    });

    import();

    expectShown(2, 1, 11, 10);
    EXPECT_EQ(window().lvwCompleteLog.rowCount(), 11);
}

TEST_F(WhilePlottingTest, AnEarlierStopIsWhatIsSeenInTheEnd) {
    whileFilling([this] { setStop(4); });

    PlotRows();

    expectShown(2, 1, 4, 10);
}

TEST_F(WhilePlottingTest, ALaterStartIsWhatIsSeenInTheEnd) {
    whileFilling([this] { setStart(22); });

    PlotRows();

    expectShown(2, 22, 25, 10);
}

TEST_F(WhilePlottingTest, AnEmptyFileLeavesTheChartAsItWas) {
    const auto old = shown();
    setIni("[Settings]\r\n");
    whileFilling([this] {
        expectQuestion();
        expectWarning("Error: The INI-File does not contain any recorded transfers.");
        window().cmdImport.press();
    });

    window().cboTransferUnit.setListIndex(1);

    EXPECT_EQ(shown(), old);
    EXPECT_EQ(chart().generation(), before);
}

TEST_F(WhilePlottingTest, AnErrorIsReportedOnceAndIsWhatIsSeenInTheEnd) {
    data().log.rcvd.back() = 0;
    whileFilling([this] {
        expectError("11 (Division by zero)", "GetTransferNthRow");
        window().cboDataType.setListIndex(percentual);
    });

    PlotRows();

    EXPECT_EQ(chart().generation(), before + 1);
    EXPECT_EQ(chart().filledRows(), 0);
    EXPECT_EQ(chart().drawnValueTitle(), "transfer (percent)");
}

TEST_F(WhilePlottingTest, ClosingTheWindowDoesNoHarm) {
    window().setVisible(true);
    whileFilling([this] { window().cmdCancel.press(); });

    PlotRows();

    EXPECT_FALSE(window().visible());
    expectShown(2, 1, 25, 10);
}

TEST_F(WhilePlottingTest, EachRoundMayStartANewOne) {
    int rounds = 0;
    machine.desktop.whileProcessing = [this, &rounds] {
        if (++rounds <= 6) {
            window().cboTransferUnit.setListIndex(rounds % 2);
        }
    };

    PlotRows();

    expectShown(2, 1, 25, 10);
}

} // namespace
} // namespace tarvik
