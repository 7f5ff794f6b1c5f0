#include "settings/mdlSettingsLog.h"

#include "state/mdlTransfers.h"

#include "settings/mdlSettingsLoad.h"
#include "startup/mdlStartUp.h"
#include "support/WorldTest.h"

namespace tarvik {
namespace {

class RecordLogTest : public WorldTest {
protected:
    RecordLogTest() {
        setIni("[Settings]\r\n");
        InitApplicationStatus();
        machine.files.replacements = 0;
    }

    bool contains(const std::string& text) const { return ini().find(text) != std::string::npos; }
};

TEST_F(RecordLogTest, ASaveAppendsARecordAndItsIndex) {
    setTotals(1'204'455, 9'876'501, 3600);
    state().IPAddress = "10.0.0.17";

    EXPECT_TRUE(SaveState());

    EXPECT_TRUE(
        contains("[16.11.2026|08:15:22]\r\nSent=1204455\r\nRcvd=9876501\r\nDuration=3600\r\n"
                 "IPAddress=10.0.0.17\r\n"));
    EXPECT_TRUE(contains("LastState=16.11.2026|08:15:22\r\nDateStamp1=16.11.2026|08:15:22\r\n"
                         "LastDateStamp=1\r\nUnitTransferCurrent=0\r\n"));
}

TEST_F(RecordLogTest, ASaveReplacesTheFileOnce) {
    setTotals(1, 2, 3);

    EXPECT_TRUE(SaveState());

    EXPECT_EQ(machine.files.replacements, 1);
}

TEST_F(RecordLogTest, TheRunningSessionIsInTheRecordWithoutItsOffset) {
    setTotals(100, 1000, 10'000);
    state().BytesSentCurrent = 50;
    state().BytesSentOffset = 20;
    state().BytesRcvdCurrent = 600;
    state().BytesRcvdOffset = 100;
    state().DurationCurrent = 5000;
    state().DurationOffset = 1000;

    SaveState();

    EXPECT_EQ(GetBytesSent(1), Currency(130));
    EXPECT_EQ(GetBytesRcvd(1), Currency(1500));
    EXPECT_EQ(GetDuration(1), Currency(14'000));
}

TEST_F(RecordLogTest, NothingCountedMakesNoRecordButSavesTheSettings) {
    EXPECT_TRUE(SaveState());

    EXPECT_FALSE(contains("DateStamp"));
    EXPECT_FALSE(contains("LastState"));
    EXPECT_TRUE(contains("TransferTickerValue=100\r\n"));
}

TEST_F(RecordLogTest, TimeOnlineAloneIsWorthARecord) {
    setTotals(0, 0, 1);

    SaveState();

    EXPECT_EQ(GetNumRecords(), Long(1));
}

TEST_F(RecordLogTest, SavingTwiceWithUnchangedTotalsWritesOneRecord) {
    setTotals(1, 2, 3);

    SaveState();
    machine.clock.advanceSeconds(60);
    SaveState();

    EXPECT_EQ(GetNumRecords(), Long(1));
}

TEST_F(RecordLogTest, AChangedTotalMakesTheNextRecord) {
    setTotals(1, 2, 3);
    SaveState();
    setTotals(1, 2, 4);
    machine.clock.set({2026, 11, 16, 18, 40, 5});

    SaveState();

    EXPECT_EQ(GetNumRecords(), Long(2));
    EXPECT_EQ(GetDate(2), "16.11.2026|18:40:05");
    EXPECT_EQ(GetDuration(2), Currency(4));
}

TEST_F(RecordLogTest, TwoSavesWithinOneSecondShareASection) {
    setTotals(1, 2, 3);
    SaveState();
    setTotals(4, 5, 6);

    SaveState();

    EXPECT_EQ(GetDate(1), "16.11.2026|08:15:22");
    EXPECT_EQ(GetDate(2), "16.11.2026|08:15:22");
    EXPECT_EQ(GetBytesSent(1), Currency(4));
    EXPECT_EQ(GetBytesSent(2), Currency(4));
}

TEST_F(RecordLogTest, MidnightBetweenTheReadingsGivesTheOldDateAndTheNewTime) {
    machine.clock.set({2026, 11, 16, 23, 59, 59});
    machine.clock.secondsPerReading = 2;
    setTotals(1, 2, 3);

    SaveState();

    EXPECT_EQ(GetDate(1), "16.11.2026|00:00:01");
}

struct NewestCase {
    const char* name;
    const char* line;
};

class NewestRecordTest : public RecordLogTest, public testing::WithParamInterface<NewestCase> {};

TEST_P(NewestRecordTest, CountsAsNoneSoThatTheFirstRecordGetsNumberOne) {
    setIni(std::string("[Settings]\r\n") + GetParam().line);
    setTotals(1, 2, 3);

    SaveState();

    EXPECT_EQ(GetNumRecords(), Long(1));
    EXPECT_EQ(GetDate(1), "16.11.2026|08:15:22");
}

INSTANTIATE_TEST_SUITE_P(All, NewestRecordTest,
                         testing::Values(NewestCase{"Missing", ""},
                                         NewestCase{"Zero", "LastDateStamp=0\r\n"},
                                         NewestCase{"Negative", "LastDateStamp=-3\r\n"},
                                         NewestCase{"NoNumber", "LastDateStamp=x\r\n"}),
                         [](const auto& given) { return given.param.name; });

TEST_F(RecordLogTest, BytesWhoseSumDoesNotFitAreSavedAllTheSame) {
    state().BytesSentTotal = Currency::fromWhole(500'000'000'000'000);
    state().BytesRcvdTotal = Currency::fromWhole(500'000'000'000'000);

    EXPECT_TRUE(SaveState());

    EXPECT_EQ(GetBytesSent(1), state().BytesSentTotal);
    EXPECT_EQ(GetBytesRcvd(1), state().BytesRcvdTotal);
}

TEST_F(RecordLogTest, ASumThatOverflowsIsReported) {
    state().BytesSentTotal = Currency::fromScaled(INT64_MAX);
    state().BytesSentCurrent = 1;
    expectError("6 (Overflow)", "SaveState");

    EXPECT_FALSE(SaveState());
}

TEST_F(RecordLogTest, AfterAResetARecordMayBeSmaller) {
    setTotals(100, 100, 100);
    SaveState();
    ResetTransfers(true);
    setTotals(1, 0, 0);
    machine.clock.advanceSeconds(5);

    SaveState();

    EXPECT_EQ(GetBytesSent(2), Currency(1));
    EXPECT_EQ(GetBytesRcvd(2), Currency(0));
}

TEST_F(RecordLogTest, ADirectoryInTheFilesPlaceCannotBeSavedTo) {
    state().IniFileName.clear();
    machine.files.setKind(iniPath, FileKind::Directory);
    expectWarning("Error: INI file exists as directory.");

    EXPECT_FALSE(SaveState());
}

TEST_F(RecordLogTest, AMissingFileIsMade) {
    machine.files.remove(iniPath);
    state().IniFileName.clear();
    setTotals(1, 2, 3);

    EXPECT_TRUE(SaveState());

    EXPECT_TRUE(contains("LastDateStamp=1\r\n"));
}

TEST_F(RecordLogTest, AFullDiskLeavesTheFileAsItWas) {
    const std::string before = ini();
    setTotals(1, 2, 3);
    machine.files.replaceFailure = ErrorNumber::DiskFull;

    EXPECT_FALSE(SaveState());

    EXPECT_EQ(ini(), before);
}

TEST_F(RecordLogTest, ReadersGiveNothingForRecordsThatAreNotThere) {
    EXPECT_EQ(GetNumRecords(), Long(0));
    EXPECT_EQ(GetBytesSent(1), Currency(0));
    EXPECT_EQ(GetBytesRcvd(0), Currency(0));
    EXPECT_EQ(GetDuration(-1), Currency(0));
    EXPECT_EQ(GetIPAddress(1), "");
    EXPECT_EQ(GetDate(1), "");
}

TEST_F(RecordLogTest, ReadersGiveNothingWithoutAFileName) {
    setTotals(1, 2, 3);
    SaveState();
    state().IniFileName.clear();

    EXPECT_EQ(GetNumRecords(), Long(0));
    EXPECT_EQ(GetBytesSent(1), Currency(0));
    EXPECT_EQ(GetIPAddress(1), "");
    EXPECT_EQ(GetDate(1), "");
}

TEST_F(RecordLogTest, MalformedValuesReadAsZero) {
    setIni("[Settings]\r\nDateStamp1=r\r\nDateStamp2=gone\r\n[r]\r\nSent=x\r\nDuration=\r\n");

    EXPECT_EQ(GetBytes("Sent", 1), Currency(0));
    EXPECT_EQ(GetBytes("Rcvd", 1), Currency(0));
    EXPECT_EQ(GetDuration(1), Currency(0));
    EXPECT_EQ(GetBytesSent(2), Currency(0));
    EXPECT_EQ(GetDate(2), "gone");
}

TEST_F(RecordLogTest, TheAddressOfARecordIsItsText) {
    setTotals(1, 2, 3);
    state().IPAddress = "192.168.0.5;10.0.0.2";
    SaveState();

    EXPECT_EQ(GetIPAddress(1), "192.168.0.5;10.0.0.2");
}

TEST_F(RecordLogTest, TheTotalsComeBackAtTheNextStart) {
    setTotals(11, 22, 33);
    SaveState();
    newWorld();

    EXPECT_TRUE(LoadState());

    EXPECT_EQ(state().BytesSentTotal, Currency(11));
    EXPECT_EQ(state().BytesRcvdTotal, Currency(22));
    EXPECT_EQ(state().DurationTotal, Currency(33));
}

} // namespace
} // namespace tarvik
