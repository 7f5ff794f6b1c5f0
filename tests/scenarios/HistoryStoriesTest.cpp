#include "Story.h"

#include <array>

namespace tarvik::scenarios {
namespace {

constexpr const char* importQuestion =
    "Ok to import recorded transfers from the\rINI-file located in the application folder?\r\r"
    "(Press \"No\" to select another file.)";
constexpr const char* noRecords = "Error: The INI-File does not contain any recorded transfers.";
constexpr const char* diagramUpdated = "History diagram has been updated.";
constexpr const char* exported = "All records have been successfully exported.";
constexpr const char* otherIni = "C:\\Old\\Tarvik.2005-5-31.ini";
constexpr const char* csvPath = "C:\\Old\\history";

/// The log of an earlier run, and the window that shows it.
class HistoryStory : public Story {
protected:
    static std::string record(const std::string& name, const std::string& values) {
        return "[" + name + "]\r\n" + values;
    }

    /// Four records: totals that grow, a reset, and one that was logged without an address.
    static std::string logOfFour() {
        return "[Settings]\r\nRefreshInterval=100\r\nDateStamp1=12.05.2005|14:03:11\r\n"
               "DateStamp2=13.05.2005|09:10:00\r\nDateStamp3=14.05.2005|20:00:01\r\n"
               "DateStamp4=1.6.2005|07:30:00\r\nLastDateStamp=4\r\n" +
               record("12.05.2005|14:03:11",
                      "Sent=1024\r\nRcvd=4096\r\nDuration=60000\r\nIPAddress=10.0.0.10\r\n") +
               record("13.05.2005|09:10:00",
                      "Sent=2048\r\nRcvd=10240\r\nDuration=120000\r\nIPAddress=9.1.1.1\r\n") +
               record("14.05.2005|20:00:01",
                      "Sent=4096\r\nRcvd=20480\r\nDuration=3600000\r\nIPAddress=\r\n") +
               record("1.6.2005|07:30:00",
                      "Sent=512\r\nRcvd=1536\r\nDuration=30000\r\nIPAddress=10.0.0.10\r\n");
    }

    void openHistory(const std::string& iniText) {
        setIni(iniText);
        start();
        driver->click("frmMain.cmdHistory");
        EXPECT_TRUE(driver->visible("frmHistory"));
    }

    void import(MsgBoxAnswer reply = MsgBoxAnswer::Yes) {
        answer(importQuestion, MsgBoxButtons::YesNoCancel, reply);
        driver->click("frmHistory.cmdImport");
    }

    void expectHistoryAsModel() { expectFaceAsModel(world->forms.frmHistory); }

    /// The values of a column of the chart.
    std::vector<double> plotted(int column) {
        const Chart& chart = world->forms.frmHistory.mscHistory;
        std::vector<double> values;
        for (int row = 0; row < chart.rowCount(); ++row) {
            values.push_back(chart.data(column, row));
        }
        return values;
    }
};

TEST_F(HistoryStory, TheWindowOpensEmptyAndClosesAgain) {
    openHistory("[Settings]\r\n");
    expectHistoryAsModel();

    driver->click("frmHistory.cmdCancel");
    EXPECT_FALSE(driver->visible("frmHistory"));
    driver->click("frmMain.cmdHistory");
    EXPECT_TRUE(driver->visible("frmHistory"));
    driver->closeWindow("frmHistory");
    EXPECT_FALSE(driver->visible("frmHistory"));
}

TEST_F(HistoryStory, AnImportFillsAllThreeViews) {
    openHistory(logOfFour());
    import();

    EXPECT_EQ(plotted(0), (std::vector<double>{4096, 10240, 20480, 1536}));
    EXPECT_EQ(plotted(1), (std::vector<double>{1024, 2048, 4096, 512}));
    expectHistoryAsModel();

    driver->click("frmHistory.optStatistics");
    EXPECT_EQ(driver->read("frmHistory.txtCurrentStart"),
              "1.) 12.05.2005/14:03:11 (00:01:00:000) S:1024; R:4096 (IP: 10.0.0.10)");
    EXPECT_EQ(driver->read("frmHistory.txtCurrentStop"),
              "4.) 1.6.2005/07:30:00 (00:00:30:000) S:512; R:1536 (IP: 10.0.0.10)");
    expectHistoryAsModel();

    driver->click("frmHistory.optStatisticsIP");
    EXPECT_EQ(driver->read("frmHistory.txtStatisticsIP"), "10.0.0.10\r\n9.1.1.1\r\n");
    driver->click("frmHistory.cmdSortByIP");
    EXPECT_EQ(driver->read("frmHistory.txtStatisticsIP"), "9.1.1.1\r\n10.0.0.10\r\n");
    expectHistoryAsModel();
    driver->click("frmHistory.cmdSortByTime");
    EXPECT_EQ(driver->read("frmHistory.txtStatisticsIP"), "10.0.0.10\r\n9.1.1.1\r\n");

    driver->click("frmHistory.optHistory");
    expectHistoryAsModel();
}

TEST_F(HistoryStory, EveryChoiceIsPlotted) {
    openHistory(logOfFour());
    import();

    for (const char* type : {"plot as bars", "plot as area", "plot as step", "plot as line"}) {
        driver->choose("frmHistory.cboChartType", type);
        for (const char* what :
             {"Received only", "Sent only", "Total (rcvd+sent)", "Duration", "Rcvd and Sent"}) {
            driver->choose("frmHistory.cboDataToShow", what);
            for (const char* data : {"differential transfer", "percentual", "total transfer"}) {
                driver->choose("frmHistory.cboDataType", data);
                expectHistoryAsModel();
            }
        }
    }

    driver->choose("frmHistory.cboTransferUnit", "Kilo-Bytes");
    EXPECT_EQ(plotted(0), (std::vector<double>{4, 10, 20, 1.5}));
    driver->choose("frmHistory.cboDataToShow", "Duration");
    EXPECT_EQ(driver->read("frmHistory.mscHistory"), "Duration of connections");
    driver->choose("frmHistory.cboTransferUnit", "Minutes");
    EXPECT_EQ(plotted(0), (std::vector<double>{1, 2, 60, 0.5}));
    expectHistoryAsModel();
}

TEST_F(HistoryStory, TheRangeFollowsTheSelectedRecords) {
    openHistory(logOfFour());
    import();
    driver->click("frmHistory.optStatistics");

    driver->select("frmHistory.lvwCompleteLog", 2);
    answer(diagramUpdated, MsgBoxButtons::OkOnly, MsgBoxAnswer::Ok);
    driver->click("frmHistory.cmdSetStart");
    EXPECT_EQ(plotted(0), (std::vector<double>{20480, 1536}));

    driver->select("frmHistory.lvwCompleteLog", 1);
    answer("Stop value was less than start value.\rStart value has been adjusted to stop value.",
           MsgBoxButtons::OkOnly, MsgBoxAnswer::Ok);
    answer(diagramUpdated, MsgBoxButtons::OkOnly, MsgBoxAnswer::Ok);
    driver->click("frmHistory.cmdSetStop");
    EXPECT_EQ(plotted(0), (std::vector<double>{10240}));
    expectHistoryAsModel();
}

TEST_F(HistoryStory, ARecordIsShownInFull) {
    openHistory(logOfFour());
    import();
    driver->click("frmHistory.optStatistics");
    driver->select("frmHistory.lvwCompleteLog", 3);

    answer("This records data:\r\rID:  \t\t4\rDate:\t\t1.6.2005\rTime:\t\t07:30:00\r"
           "Duration:  \t00:00:30:000\rBytes sent:\t512\rBytes rcvd:\t1536\rIP address:\t10.0.0.10",
           MsgBoxButtons::OkOnly, MsgBoxAnswer::Ok);
    driver->open("frmHistory.lvwCompleteLog");
}

TEST_F(HistoryStory, AllRecordsAreExported) {
    openHistory(logOfFour());
    import();
    driver->click("frmHistory.optStatistics");
    driver->machine().dialogs.chosen = csvPath;

    answer(exported, MsgBoxButtons::OkOnly, MsgBoxAnswer::Ok);
    driver->click("frmHistory.cmdExport");

    EXPECT_EQ(
        driver->machine().files.file(std::string(csvPath) + ".csv"),
        "\"ID\";\"Date\";\"Time\";\"Duration\";\"Bytes sent\";\"Bytes rcvd\";\"IP address\"\r\n"
        "1;12.05.2005;14:03:11;00:01:00:000;1024;4096;10.0.0.10\r\n"
        "2;13.05.2005;09:10:00;00:02:00:000;2048;10240;9.1.1.1\r\n"
        "3;14.05.2005;20:00:01;01:00:00:000;4096;20480;\r\n"
        "4;1.6.2005;07:30:00;00:00:30:000;512;1536;10.0.0.10\r\n");
}

TEST_F(HistoryStory, AnotherFileIsImportedAndAnEmptyOneSwitchesTheViewsOff) {
    openHistory("[Settings]\r\n");
    import(MsgBoxAnswer::Cancel);
    expectHistoryAsModel();
    answer(importQuestion, MsgBoxButtons::YesNoCancel, MsgBoxAnswer::Yes);
    answer(noRecords, MsgBoxButtons::OkOnly, MsgBoxAnswer::Ok);
    driver->click("frmHistory.cmdImport");
    expectHistoryAsModel();

    driver->machine().files.setFile(otherIni, logOfFour());
    driver->machine().dialogs.chosen = otherIni;
    import(MsgBoxAnswer::No);

    EXPECT_EQ(plotted(1), (std::vector<double>{1024, 2048, 4096, 512}));
    expectHistoryAsModel();
    driver->click("frmMain.cmdQuit");
    EXPECT_EQ(driver->machine().files.file(otherIni), logOfFour());
}

TEST_F(HistoryStory, TheProgramsOwnSessionsAreInTheHistory) {
    startQuietly();
    connectAndTransfer();
    driver->click("frmMain.cmdDisconnect");
    waitFor("frmMain.txtActiveConnection", "");
    driver->click("frmMain.cmdMonitor");
    driver->click("frmMain.cmdQuit");
    restart();

    driver->click("frmMain.cmdHistory");
    import();

    EXPECT_EQ(plotted(0), (std::vector<double>{5000}));
    EXPECT_EQ(plotted(1), (std::vector<double>{200}));
    expectHistoryAsModel();
}

} // namespace
} // namespace tarvik::scenarios
