#include "settings/mdlSettings.h"
#include "settings/mdlSettingsLoad.h"
#include "settings/mdlSettingsLog.h"
#include "startup/mdlStartUp.h"
#include "support/WorldTest.h"

namespace tarvik {
namespace {

/// The settings as they are written after a first start, in order.
const std::vector<std::string> settingLines{
    "UnitTransferCurrent=0",        "UnitTransferTotal=0",    "TransferLimit=0",
    "TransferLimitValue=0",         "DurationLimit=0",        "DurationLimitHr=0",
    "DurationLimitMin=0",           "TransferLimitWarning=0", "TransferLimitHangUp=0",
    "TransferResetEnable=0",        "TransferReset=0",        "TransferResetBackup=0",
    "TransferResetLast=01.01.2001", "StartUpMinimise=0",      "StartUpRunMonitoring=0",
    "RefreshInterval=1000",         "LogIPAddress=0",         "TransferTicker=0",
    "TransferTickerValue=100"};

class SaveChainTest : public WorldTest {
protected:
    SaveChainTest() {
        setIni("[Settings]\r\n");
        InitApplicationStatus();
        machine.files.replacements = 0;
    }

    static std::string joined(std::size_t count) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            text += settingLines[i] + "\r\n";
        }
        return text;
    }
};

class SettingFailsTest : public SaveChainTest, public testing::WithParamInterface<std::size_t> {
protected:
    static std::string keyOf(std::size_t position) {
        return settingLines[position].substr(0, settingLines[position].find('='));
    }
};

TEST_P(SettingFailsTest, WhatCameBeforeIsWrittenAndNothingAfter) {
    machine.profile.failingKeys = {keyOf(GetParam())};

    EXPECT_FALSE(SaveSettings());

    EXPECT_EQ(ini(), "[Settings]\r\n" + joined(GetParam()));
    EXPECT_EQ(machine.profile.written.size(), GetParam() + 1);
}

TEST_P(SettingFailsTest, TheSaveFailsAndKeepsItsRecord) {
    setTotals(1, 2, 3);
    machine.profile.failingKeys = {keyOf(GetParam())};

    EXPECT_FALSE(SaveState());

    EXPECT_EQ(ini(), "[Settings]\r\nLastState=16.11.2026|08:15:22\r\n"
                     "DateStamp1=16.11.2026|08:15:22\r\nLastDateStamp=1\r\n" +
                         joined(GetParam()) +
                         "[16.11.2026|08:15:22]\r\nSent=1\r\nRcvd=2\r\nDuration=3\r\n"
                         "IPAddress=\r\n");
    EXPECT_EQ(machine.files.replacements, 1);
}

INSTANTIATE_TEST_SUITE_P(Each, SettingFailsTest, testing::Range<std::size_t>(0, 19));

TEST_F(SaveChainTest, TheSettingsThatDoNotFailAreAllThere) {
    EXPECT_TRUE(SaveSettings());

    EXPECT_EQ(ini(), "[Settings]\r\n" + joined(19));
}

struct RecordStepCase {
    const char* name;
    const char* failing;
    bool sectionFails;
    const char* left;
};

class RecordStepTest : public SaveChainTest, public testing::WithParamInterface<RecordStepCase> {};

TEST_P(RecordStepTest, LeavesWhatWasWrittenBeforeAndNoSettings) {
    setTotals(1, 2, 3);
    machine.profile.sectionsFail = GetParam().sectionFails;
    machine.profile.failingKeys = {GetParam().failing};

    EXPECT_FALSE(SaveState());

    EXPECT_EQ(ini(), GetParam().left);
}

INSTANTIATE_TEST_SUITE_P(
    Each, RecordStepTest,
    testing::Values(
        RecordStepCase{"Section", "", true, "[Settings]\r\n"},
        RecordStepCase{"LastState", "LastState", false,
                       "[Settings]\r\n[16.11.2026|08:15:22]\r\nSent=1\r\nRcvd=2\r\nDuration=3\r\n"
                       "IPAddress=\r\n"},
        RecordStepCase{"DateStamp", "DateStamp1", false,
                       "[Settings]\r\nLastState=16.11.2026|08:15:22\r\n[16.11.2026|08:15:22]\r\n"
                       "Sent=1\r\nRcvd=2\r\nDuration=3\r\nIPAddress=\r\n"},
        RecordStepCase{"LastDateStamp", "LastDateStamp", false,
                       "[Settings]\r\nLastState=16.11.2026|08:15:22\r\n"
                       "DateStamp1=16.11.2026|08:15:22\r\n[16.11.2026|08:15:22]\r\nSent=1\r\n"
                       "Rcvd=2\r\nDuration=3\r\nIPAddress=\r\n"}),
    [](const auto& given) { return given.param.name; });

TEST_F(SaveChainTest, TheKeysAreWrittenInOrder) {
    setTotals(1, 2, 3);
    machine.profile.written.clear();

    SaveState();

    const std::vector<std::string>& written = machine.profile.written;
    ASSERT_EQ(written.size(), 23U);
    EXPECT_EQ(std::vector<std::string>(written.begin(), written.begin() + 5),
              (std::vector<std::string>{"16.11.2026|08:15:22", "Settings/LastState",
                                        "Settings/DateStamp1", "Settings/LastDateStamp",
                                        "Settings/UnitTransferCurrent"}));
}

TEST_F(SaveChainTest, ANumberBeyond32BitsLeavesTheSectionAndItsPointer) {
    setIni("[Settings]\r\nLastDateStamp=2147483647\r\n");
    setTotals(1, 2, 3);
    expectError("6 (Overflow)", "SaveState");

    EXPECT_FALSE(SaveState());

    EXPECT_EQ(ini(), "[Settings]\r\nLastDateStamp=2147483647\r\nLastState=16.11.2026|08:15:22\r\n"
                     "[16.11.2026|08:15:22]\r\nSent=1\r\nRcvd=2\r\nDuration=3\r\nIPAddress=\r\n");
}

TEST_F(SaveChainTest, TheNextToLastNumberIsStillUsed) {
    setIni("[Settings]\r\nLastDateStamp=2147483646\r\n");
    setTotals(1, 2, 3);

    EXPECT_TRUE(SaveState());

    EXPECT_EQ(GetNumRecords(), Long(2'147'483'647));
    EXPECT_EQ(GetDate(2'147'483'647), "16.11.2026|08:15:22");
}

TEST_F(SaveChainTest, ACountWithoutItsRecordIsCountedOn) {
    setIni("[Settings]\r\nLastDateStamp=5\r\n");
    setTotals(1, 2, 3);

    EXPECT_TRUE(SaveState());

    EXPECT_EQ(GetDate(5), "");
    EXPECT_EQ(GetDate(6), "16.11.2026|08:15:22");
    EXPECT_EQ(GetNumRecords(), Long(6));
}

struct TotalsCase {
    const char* name;
    int sent;
    int rcvd;
    int duration;
    int records;
};

class FirstRecordTest : public SaveChainTest, public testing::WithParamInterface<TotalsCase> {};

TEST_P(FirstRecordTest, IsMadeWhenAnythingWasCounted) {
    setTotals(GetParam().sent, GetParam().rcvd, GetParam().duration);

    EXPECT_TRUE(SaveState());

    EXPECT_EQ(GetNumRecords(), Long(GetParam().records));
    EXPECT_NE(ini().find("TransferTickerValue=100\r\n"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(
    Each, FirstRecordTest,
    testing::Values(TotalsCase{"Nothing", 0, 0, 0, 0}, TotalsCase{"Sent", 1, 0, 0, 1},
                    TotalsCase{"Received", 0, 1, 0, 1}, TotalsCase{"Time", 0, 0, 1, 1},
                    TotalsCase{"NoSum", 5, -5, 0, 0}, TotalsCase{"Negative", -1, -1, -1, 0},
                    TotalsCase{"NegativeBytesAndTime", -1, 0, 1, 1},
                    TotalsCase{"BytesAndNegativeTime", 1, 0, -1, 1}),
    [](const auto& given) { return given.param.name; });

TEST_F(SaveChainTest, TheSmallestFractionIsWorthARecord) {
    setTotals(0, 0, Currency::fromScaled(1));

    SaveState();

    EXPECT_EQ(GetDuration(1).scaled(), 1);
}

class NextRecordTest : public SaveChainTest, public testing::WithParamInterface<TotalsCase> {};

TEST_P(NextRecordTest, IsMadeWhenAnythingDiffersFromTheNewest) {
    setTotals(10, 20, 30);
    SaveState();
    machine.clock.advanceSeconds(60);
    setTotals(GetParam().sent, GetParam().rcvd, GetParam().duration);

    EXPECT_TRUE(SaveState());

    EXPECT_EQ(GetNumRecords(), Long(GetParam().records));
}

INSTANTIATE_TEST_SUITE_P(
    Each, NextRecordTest,
    testing::Values(TotalsCase{"Same", 10, 20, 30, 1}, TotalsCase{"Sent", 11, 20, 30, 2},
                    TotalsCase{"Received", 10, 19, 30, 2}, TotalsCase{"Time", 10, 20, 31, 2},
                    TotalsCase{"Swapped", 20, 10, 30, 2}, TotalsCase{"Zero", 0, 0, 0, 1}),
    [](const auto& given) { return given.param.name; });

TEST_F(SaveChainTest, OnlyTheNewestRecordIsCompared) {
    setTotals(1, 2, 3);
    SaveState();
    machine.clock.advanceSeconds(60);
    setTotals(4, 5, 6);
    SaveState();
    machine.clock.advanceSeconds(60);
    setTotals(1, 2, 3);

    SaveState();

    EXPECT_EQ(GetNumRecords(), Long(3));
    EXPECT_EQ(GetDate(3), "16.11.2026|08:17:22");
}

TEST_F(SaveChainTest, AChangedAddressAloneMakesNoRecord) {
    setTotals(1, 2, 3);
    SaveState();
    machine.clock.advanceSeconds(60);
    state().IPAddress = "10.0.0.1";

    SaveState();

    EXPECT_EQ(GetNumRecords(), Long(1));
    EXPECT_EQ(GetIPAddress(1), "");
}

TEST_F(SaveChainTest, ASecondSaveInTheSameSecondReplacesTheWholeSection) {
    setTotals(1, 2, 3);
    state().IPAddress = "10.0.0.17";
    SaveState();
    setTotals(4, 5, 6);
    state().IPAddress = "";

    SaveState();

    EXPECT_EQ(ini(), "[Settings]\r\nLastState=16.11.2026|08:15:22\r\n"
                     "DateStamp1=16.11.2026|08:15:22\r\nLastDateStamp=2\r\n" +
                         joined(19) +
                         "DateStamp2=16.11.2026|08:15:22\r\n[16.11.2026|08:15:22]\r\nSent=4\r\n"
                         "Rcvd=5\r\nDuration=6\r\nIPAddress=\r\n");
}

TEST_F(SaveChainTest, ASmallFileAfterTwoSavesIsCompleteAndInOrder) {
    setIni("[Settings]\r\nIsLocked=0\r\n");
    state().UnitTransferCurrent = TransferUnit::KiloBytes;
    setTotals(1'204'455, 9'876'501, 3600);
    state().IPAddress = "10.0.0.17";
    SaveState();
    machine.clock.set({2026, 11, 16, 18, 40, 5});
    setTotals(2'533'001, 20'110'037, 7250);
    state().IPAddress = "";

    SaveState();

    EXPECT_EQ(
        ini(),
        "[Settings]\r\nIsLocked=0\r\nLastState=16.11.2026|18:40:05\r\n"
        "DateStamp1=16.11.2026|08:15:22\r\nLastDateStamp=2\r\nUnitTransferCurrent=1\r\n"
        "UnitTransferTotal=0\r\nTransferLimit=0\r\nTransferLimitValue=0\r\nDurationLimit=0\r\n"
        "DurationLimitHr=0\r\nDurationLimitMin=0\r\nTransferLimitWarning=0\r\n"
        "TransferLimitHangUp=0\r\nTransferResetEnable=0\r\nTransferReset=0\r\n"
        "TransferResetBackup=0\r\nTransferResetLast=01.01.2001\r\nStartUpMinimise=0\r\n"
        "StartUpRunMonitoring=0\r\nRefreshInterval=1000\r\nLogIPAddress=0\r\nTransferTicker=0\r\n"
        "TransferTickerValue=100\r\nDateStamp2=16.11.2026|18:40:05\r\n[16.11.2026|08:15:22]\r\n"
        "Sent=1204455\r\nRcvd=9876501\r\nDuration=3600\r\nIPAddress=10.0.0.17\r\n"
        "[16.11.2026|18:40:05]\r\nSent=2533001\r\nRcvd=20110037\r\nDuration=7250\r\n"
        "IPAddress=\r\n");
}

struct RecordFormCase {
    const char* name;
    LocaleData locale;
    const char* section;
    const char* sent;
};

class RecordFormTest : public SaveChainTest, public testing::WithParamInterface<RecordFormCase> {};

TEST_P(RecordFormTest, IsTheUsersAndIsReadAgain) {
    machine.locale.conventions = GetParam().locale;
    machine.clock.set({2026, 11, 16, 18, 40, 5});
    setTotals(Currency::fromScaled(42'949'672'965'000), 2, 3);

    EXPECT_TRUE(SaveState());

    EXPECT_EQ(GetDate(1), GetParam().section);
    EXPECT_NE(
        ini().find("[" + std::string(GetParam().section) + "]\r\nSent=" + GetParam().sent + "\r\n"),
        std::string::npos);
    newWorld();
    EXPECT_TRUE(LoadState());
    EXPECT_EQ(state().BytesSentTotal.scaled(), 42'949'672'965'000);
    EXPECT_EQ(state().BytesRcvdTotal, Currency(2));
}

INSTANTIATE_TEST_SUITE_P(
    Each, RecordFormTest,
    testing::Values(
        RecordFormCase{"German", germanLocale(), "16.11.2026|18:40:05", "4294967296,5"},
        RecordFormCase{"American", americanLocale(), "11/16/2026|6:40:05 PM", "4294967296.5"},
        RecordFormCase{"Swedish", swedishLocale(), "2026-11-16|18:40:05", "4294967296,5"},
        RecordFormCase{"French", frenchLocale(), "16/11/2026|18:40:05", "4294967296,5"},
        RecordFormCase{"Finnish", finnishLocale(), "16.11.2026|18.40.05", "4294967296,5"},
        RecordFormCase{"Japanese", japaneseLocale(), "2026年11月16日|午後6時40分05秒",
                       "4294967296.5"}),
    [](const auto& given) { return given.param.name; });

TEST_F(SaveChainTest, BlanksAroundDateAndTimeAreLeftOut) {
    machine.locale.conventions.shortDate = " dd.MM.yyyy  ";
    machine.locale.conventions.longTime = "  HH:mm:ss ";
    setTotals(1, 2, 3);

    SaveState();

    EXPECT_EQ(GetDate(1), "16.11.2026|08:15:22");
}

TEST_F(SaveChainTest, ReadersDoNotDependOnTheOrderOfKeys) {
    setIni("[r2]\r\nIPAddress=a\r\nDuration=6\r\nSent=4\r\nRcvd=5\r\n[Settings]\r\n"
           "DateStamp2=r2\r\nLastDateStamp=2\r\nDateStamp1=r1\r\n[r1]\r\nRcvd=2\r\nSent=1\r\n");

    EXPECT_EQ(GetNumRecords(), Long(2));
    EXPECT_EQ(GetBytesSent(2), Currency(4));
    EXPECT_EQ(GetBytesRcvd(2), Currency(5));
    EXPECT_EQ(GetDuration(2), Currency(6));
    EXPECT_EQ(GetIPAddress(2), "a");
    EXPECT_EQ(GetBytesRcvd(1), Currency(2));
    EXPECT_EQ(GetDuration(1), Currency(0));
}

TEST_F(SaveChainTest, AnAddressIsReadAsItsFirst127Characters) {
    setIni("[Settings]\r\nDateStamp1=r\r\n[r]\r\nIPAddress=" + std::string(200, 'x') + "\r\n");

    EXPECT_EQ(GetIPAddress(1), std::string(127, 'x'));
}

} // namespace
} // namespace tarvik
