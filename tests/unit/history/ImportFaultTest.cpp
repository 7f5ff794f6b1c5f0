#include "history/HistoryTest.h"
#include "history/mdlIPAddresses.h"
#include "wiring/frmHistoryEvents.h"

namespace tarvik {
namespace {

/// The second record of a log has a time stamp without "|".
class ImportFaultTest : public HistoryTest {
protected:
    static Log faultyLog() {
        return {{"1.1.26|8:00", "1", "2", "3", "10.0.0.1"},
                {"2.1.26 8:00", "7", "8", "5", "10.0.0.9"},
                {"3.1.26|8:00", "11", "12", "13", "10.0.0.3"}};
    }

    void expectFault() { expectError("5 (Invalid procedure call or argument)", "ImportHistory"); }
    void expectNoSuchRecord() { expectError("9 (Subscript out of range)", "UpdateStartStop"); }

    void importFaulty() {
        setIni(fileOf(faultyLog()));
        expectQuestion(MsgBoxAnswer::Yes);
        expectFault();
        window().cmdImport.press();
    }

    /// The same as the first import: there is no range yet that could be shown.
    void importFaultyFirst() {
        setIni(fileOf(faultyLog()));
        expectQuestion(MsgBoxAnswer::Yes);
        expectFault();
        expectNoSuchRecord();
        window().cmdImport.press();
    }
};

TEST_F(ImportFaultTest, EndsTheImportAtThatRecord) {
    importFaultyFirst();

    EXPECT_EQ(rows(),
              (std::vector<Row>{{"1", "1.1.26", "8:00", "00:00:00:003", "1", "2", "10.0.0.1"}}));
}

TEST_F(ImportFaultTest, LeavesTheArraysWithRoomForAllRecords) {
    importFaultyFirst();

    const ImportedHistory& log = data().log;
    EXPECT_EQ(log.sent.size(), 3U);
    EXPECT_EQ(log.rcvd.size(), 3U);
    EXPECT_EQ(log.duration.size(), 3U);
    EXPECT_EQ(log.address.size(), 3U);
    EXPECT_EQ(log.date.size(), 3U);
    EXPECT_EQ(log.time.size(), 3U);
}

TEST_F(ImportFaultTest, LeavesTheRangeAndTheControlsAsAfterNoImport) {
    importFaultyFirst();

    EXPECT_FALSE(data().imported);
    EXPECT_EQ(data().start, Long(0));
    EXPECT_EQ(data().stop, Long(0));
    EXPECT_EQ(window().txtCurrentStart.text(), "");
    EXPECT_FALSE(window().lvwCompleteLog.enabled());
    EXPECT_FALSE(window().cmdExport.enabled());
    EXPECT_TRUE(window().cmdImport.enabled());
}

TEST_F(ImportFaultTest, DisablesWhatAnEarlierImportEnabled) {
    import(numberedLog(3));

    importFaulty();

    EXPECT_FALSE(data().imported);
    EXPECT_FALSE(window().lvwCompleteLog.enabled());
    EXPECT_FALSE(window().cmdSetStart.enabled());
}

TEST_F(ImportFaultTest, LeavesTheEarlierRangeOverTheNewRecords) {
    import(numberedLog(3));
    data().start = 1;
    data().stop = 3;

    importFaulty();

    EXPECT_EQ(data().start, Long(1));
    EXPECT_EQ(data().stop, Long(3));
    EXPECT_EQ(window().txtCurrentStart.text(),
              "1.) 1.1.26/8:00 (00:00:00:003) S:1; R:2 (IP: 10.0.0.1)");
    EXPECT_EQ(window().txtCurrentStop.text(), "3.) / (00:00:00:000) S:0; R:0 (IP: )");
}

TEST_F(ImportFaultTest, LeavesWhatWasReadOfTheRecordItself) {
    import(numberedLog(2));

    importFaulty();

    EXPECT_EQ(window().txtCurrentStop.text(), "2.) / (00:00:00:005) S:7; R:8 (IP: 10.0.0.9)");
}

TEST_F(ImportFaultTest, LeavesTheEarlierStopInItsBoxWhereThereIsNoSuchRecord) {
    import(numberedLog(5));
    setIni(fileOf(faultyLog()));
    expectQuestion(MsgBoxAnswer::Yes);
    expectFault();
    expectNoSuchRecord();

    window().cmdImport.press();

    EXPECT_EQ(window().txtCurrentStart.text(),
              "1.) 1.1.26/8:00 (00:00:00:003) S:1; R:2 (IP: 10.0.0.1)");
    EXPECT_EQ(window().txtCurrentStop.text(),
              "5.) d5/t5 (00:00:00:005) S:8005; R:9005 (IP: 10.0.0.5)");
}

TEST_F(ImportFaultTest, DoesNotUpdateTheListOfAddresses) {
    import(numberedLog(2));

    importFaulty();

    EXPECT_EQ(window().txtStatisticsIP.text(), "10.0.0.1\r\n10.0.0.2\r\n");
}

TEST_F(ImportFaultTest, LeavesTheAddressesOfTheRecordsBeforeIt) {
    import(numberedLog(2));
    importFaulty();

    cmdSortByTime_Click();

    EXPECT_EQ(window().txtStatisticsIP.text(), "10.0.0.1\r\n");
}

TEST_F(ImportFaultTest, LeavesNothingOfTheFileBeforeInTheChart) {
    import(numberedLog(2));

    importFaulty();

    EXPECT_EQ(window().mscHistory.rowCount(), 0);
    EXPECT_EQ(window().mscHistory.emptyText(), FrmHistory::chartHint);
}

TEST_F(ImportFaultTest, OfTheFirstRecordLeavesAnEmptyList) {
    import(numberedLog(2));
    setIni(fileOf({faultyLog()[1], faultyLog()[2]}));
    expectQuestion(MsgBoxAnswer::Yes);
    expectFault();

    window().cmdImport.press();

    EXPECT_EQ(window().lvwCompleteLog.rowCount(), 0);
}

TEST_F(ImportFaultTest, ARecordMissingFromTheIndexIsOne) {
    import(numberedLog(3));
    setIni("[Settings]\r\nDateStamp1=a|b\r\nLastDateStamp=3\r\n[a|b]\r\nSent=1\r\n");
    expectQuestion(MsgBoxAnswer::Yes);
    expectFault();

    window().cmdImport.press();

    EXPECT_EQ(rows(),
              (std::vector<Row>{{"1", "a", "b", "00:00:00:000", "1", "0", "[no IP logged]"}}));
}

TEST_F(ImportFaultTest, IsOverAtTheNextImport) {
    importFaultyFirst();

    import(numberedLog(2));

    EXPECT_TRUE(data().imported);
    EXPECT_EQ(rows(), (std::vector<Row>{numberedRow(1), numberedRow(2)}));
    EXPECT_TRUE(window().cmdExport.enabled());
}

TEST_F(ImportFaultTest, WhatIsListedCanStillBeLookedAt) {
    import(numberedLog(3));
    importFaulty();
    select(1);
    expectInformation("This records data:\r\rID:  \t\t1\rDate:\t\t1.1.26\rTime:\t\t8:00\r"
                      "Duration:  \t00:00:00:003\rBytes sent:\t1\rBytes rcvd:\t2\r"
                      "IP address:\t10.0.0.1");

    lvwCompleteLog_DblClick();

    EXPECT_EQ(machine.desktop.boxesShown.back().icon, MsgBoxIcon::Information);
}

TEST_F(ImportFaultTest, ASenselessNumberOfRecordsEndsAfterTheLastOneThatThereIs) {
    std::string file = fileOf(numberedLog(3));
    file.replace(file.find("LastDateStamp=3"), 15, "LastDateStamp=2147483647");
    setIni(file);
    expectQuestion(MsgBoxAnswer::Yes);
    expectFault();
    expectNoSuchRecord();

    window().cmdImport.press();

    EXPECT_EQ(rows(), (std::vector<Row>{numberedRow(1), numberedRow(2), numberedRow(3)}));
    EXPECT_LE(data().log.sent.capacity(), 100'000U);
}

TEST_F(ImportFaultTest, RecordsBeyondTheOnesThatAreGrantedARoomAreReadWhereTheFileHoldsThem) {
    constexpr int count = 150'000;
    std::string file = "[Settings]\r\nLastDateStamp=" + std::to_string(count) + "\r\n";
    for (int number = 1; number <= count; ++number) {
        file += "DateStamp" + std::to_string(number) + "=|\n";
    }
    setIni(file);
    expectQuestion(MsgBoxAnswer::Yes);

    window().cmdImport.press();

    EXPECT_TRUE(data().imported);
    EXPECT_EQ(data().log.sent.size(), 150'000U);
    EXPECT_EQ(data().log.sent.capacity(), 150'000U);
}

} // namespace
} // namespace tarvik
