#include "settings/mdlSettingsBackup.h"

#include "settings/mdlSettings.h"
#include "settings/mdlSettingsLog.h"
#include "startup/mdlStartUp.h"
#include "state/mdlVar.h"
#include "support/WorldTest.h"
#include "types/Text.h"

namespace tarvik {
namespace {

constexpr const char* backupPath = "C:\\Prog\\Tarvik.2026-11-16.ini";
constexpr const char* numberedPath = "C:\\Prog\\Tarvik.2026-11-16.1.ini";

class BackupTest : public WorldTest {
protected:
    BackupTest() {
        setIni("[Settings]\r\nIsLocked=1\r\n");
        InitApplicationStatus();
        machine.files.replacements = 0;
    }

    /// What a save puts into the file.
    std::string saved() {
        EXPECT_TRUE(SaveState());
        return ini();
    }

    std::string backup() const { return machine.files.file(backupPath); }
};

TEST_F(BackupTest, TheFileIsMovedAsItWasSaved) {
    setTotals(1, 2, 3);
    const std::string content = saved();

    EXPECT_TRUE(BackupINIFile());

    EXPECT_EQ(backup(), content);
    EXPECT_FALSE(machine.files.exists(iniPath));
}

TEST_F(BackupTest, TheStateIsSavedBeforeTheFileIsMoved) {
    setTotals(1, 2, 3);
    state().BytesSentCurrent = 10;
    state().TransferTickerValue = 7;

    EXPECT_TRUE(BackupINIFile());

    EXPECT_EQ(backup().substr(0, backup().find("UnitTransferCurrent")),
              "[Settings]\r\nIsLocked=1\r\nLastState=16.11.2026|08:15:22\r\n"
              "DateStamp1=16.11.2026|08:15:22\r\nLastDateStamp=1\r\n");
    EXPECT_NE(backup().find("TransferTickerValue=7\r\n[16.11.2026|08:15:22]\r\nSent=11\r\nRcvd=2\r"
                            "\nDuration=3\r\nIPAddress=\r\n"),
              std::string::npos);
}

TEST_F(BackupTest, TotalsOfZeroAreNoRecordButTheFileIsMoved) {
    EXPECT_TRUE(BackupINIFile());

    EXPECT_NE(backup().find("TransferTickerValue=100\r\n"), std::string::npos);
    EXPECT_EQ(backup().find("LastState"), std::string::npos);
    EXPECT_FALSE(machine.files.exists(iniPath));
}

TEST_F(BackupTest, AMissingFileIsMadeAndMoved) {
    machine.files.remove(iniPath);
    setTotals(1, 2, 3);

    EXPECT_TRUE(BackupINIFile());

    EXPECT_NE(backup().find("LastDateStamp=1\r\n"), std::string::npos);
    EXPECT_FALSE(machine.files.exists(iniPath));
}

TEST_F(BackupTest, ASecondBackupOfTheDayHasTheNameAndTheFirstANumber) {
    setTotals(1, 2, 3);
    BackupINIFile();
    const std::string first = backup();
    setTotals(4, 5, 6);
    const std::string content = saved();

    EXPECT_TRUE(BackupINIFile());

    EXPECT_EQ(backup(), content);
    EXPECT_EQ(machine.files.file(numberedPath), first);
    EXPECT_FALSE(machine.files.exists(iniPath));
}

TEST_F(BackupTest, EachFurtherBackupGivesTheOneBeforeTheNextFreeNumber) {
    machine.files.setFile("C:\\Prog\\Tarvik.2026-11-16.2.ini", "another's");
    std::vector<std::string> contents;
    for (int i = 1; i <= 4; ++i) {
        setTotals(i, i, i);
        contents.push_back(saved());
        EXPECT_TRUE(BackupINIFile());
    }

    EXPECT_EQ(backup(), contents[3]);
    EXPECT_EQ(machine.files.file(numberedPath), contents[0]);
    EXPECT_EQ(machine.files.file("C:\\Prog\\Tarvik.2026-11-16.2.ini"), "another's");
    EXPECT_EQ(machine.files.file("C:\\Prog\\Tarvik.2026-11-16.3.ini"), contents[1]);
    EXPECT_EQ(machine.files.file("C:\\Prog\\Tarvik.2026-11-16.4.ini"), contents[2]);
}

TEST_F(BackupTest, ABackupWhoseRecordsAreAllInTheNewOneIsReplaced) {
    setTotals(1, 2, 3);
    machine.files.setFile(backupPath, saved());
    machine.clock.advanceSeconds(60);
    setTotals(4, 5, 6);

    EXPECT_TRUE(BackupINIFile());

    EXPECT_NE(backup().find("LastDateStamp=2\r\n"), std::string::npos);
    EXPECT_FALSE(machine.files.exists(numberedPath));
}

TEST_F(BackupTest, ARecordThatDiffersInOneValueIsAnotherRecord) {
    setTotals(1, 2, 3);
    std::string other = saved();
    other.replace(other.find("Duration=3"), 10, "Duration=4");
    machine.files.setFile(backupPath, other);

    EXPECT_TRUE(BackupINIFile());

    EXPECT_EQ(machine.files.file(numberedPath), other);
}

TEST_F(BackupTest, ABackupWithoutRecordsIsReplaced) {
    machine.files.setFile(backupPath, "[Settings]\r\nLastDateStamp=2147483647\r\n");
    setTotals(1, 2, 3);

    EXPECT_TRUE(BackupINIFile());

    EXPECT_FALSE(machine.files.exists(numberedPath));
}

TEST_F(BackupTest, ABackupThatCannotBeReadIsNotReplacedAndThatIsReported) {
    machine.files.setFile(backupPath, "who knows");
    machine.files.setUnreadable(backupPath);
    setTotals(1, 2, 3);
    const std::string content = saved();
    expectError("75 (Path/File access error)", "BackupINIFile");

    EXPECT_FALSE(BackupINIFile());

    EXPECT_EQ(backup(), "who knows");
    EXPECT_EQ(ini(), content);
}

TEST_F(BackupTest, ABackupThatCannotBeLookedAtIsNotReplacedAndThatIsReported) {
    machine.files.setKind(backupPath, FileKind::Other);
    setTotals(1, 2, 3);
    const std::string content = saved();
    expectError("75 (Path/File access error)", "BackupINIFile");

    EXPECT_FALSE(BackupINIFile());

    EXPECT_EQ(ini(), content);
}

TEST_F(BackupTest, BackupsOfTwoDaysStandBesideEachOther) {
    setTotals(1, 2, 3);
    BackupINIFile();
    const std::string first = backup();
    machine.clock.advanceSeconds(86'400);

    EXPECT_TRUE(BackupINIFile());

    EXPECT_EQ(backup(), first);
    EXPECT_TRUE(machine.files.exists("C:\\Prog\\Tarvik.2026-11-17.ini"));
}

TEST_F(BackupTest, TheBackupIsFoundWhereTheProgramStands) {
    machine.program.folderPath = "D:\\Own.ini folder";

    EXPECT_TRUE(BackupINIFile());

    EXPECT_TRUE(machine.files.exists("D:\\Own.ini folder\\Tarvik.2026-11-16.ini"));
}

// The name. A directory in the place of the usual file leaves the one that is in use.

struct NameCase {
    const char* name;
    const char* file;
    CivilTime today;
    const char* backup;
};

class BackupNameTest : public BackupTest, public testing::WithParamInterface<NameCase> {};

TEST_P(BackupNameTest, HoldsTheDate) {
    machine.clock.set(GetParam().today);
    machine.files.setKind(iniPath, FileKind::Directory);
    expectWarning("Error: INI file exists as directory.");
    machine.files.setFile(GetParam().file, "[Other]\r\n");
    state().IniFileName = GetParam().file;

    EXPECT_TRUE(BackupINIFile());

    EXPECT_EQ(machine.files.file(GetParam().backup).substr(0, 9), "[Other]\r\n");
    EXPECT_FALSE(machine.files.exists(GetParam().file));
}

constexpr CivilTime may{2026, 5, 3, 23, 59, 59};

TEST_P(BackupNameTest, TheNumberStandsBehindTheDate) {
    machine.clock.set(GetParam().today);
    const std::string file = GetParam().file;
    const std::string aside = GetParam().backup;
    const bool usual = file.size() > 4 && upperCase(file).ends_with(".INI");
    const std::string numbered =
        usual ? aside.substr(0, aside.size() - 4) + ".1" + aside.substr(aside.size() - 4)
              : aside + ".1";
    machine.files.setKind(iniPath, FileKind::Directory);
    expectWarning("Error: INI file exists as directory.");
    machine.files.setFile(file, "[Other]\r\n");
    machine.files.setFile(aside, "[Settings]\r\nLastDateStamp=1\r\nDateStamp1=r\r\n");
    state().IniFileName = file;

    EXPECT_TRUE(BackupINIFile());

    EXPECT_TRUE(machine.files.exists(numbered)) << numbered;
}

INSTANTIATE_TEST_SUITE_P(
    Each, BackupNameTest,
    testing::Values(
        NameCase{"ShortNumbers", "D:\\P\\Tarvik.ini", may, "D:\\P\\Tarvik.2026-5-3.ini"},
        NameCase{
            "LongNumbers", "D:\\P\\Tarvik.ini", {2026, 11, 16}, "D:\\P\\Tarvik.2026-11-16.ini"},
        NameCase{"YearOfThreeDigits", "D:\\Tarvik.ini", {987, 1, 31}, "D:\\Tarvik.987-1-31.ini"},
        NameCase{"UpperCase", "D:\\P\\TARVIK.INI", may, "D:\\P\\TARVIK.2026-5-3.INI"},
        NameCase{"MixedCase", "D:\\P\\Tarvik.Ini", may, "D:\\P\\Tarvik.2026-5-3.Ini"},
        NameCase{"OtherEnding", "D:\\P\\Tarvik.cfg", may, "D:\\P\\Tarvik.cfg.2026-5-3"},
        NameCase{"LongerEnding", "D:\\P\\Tarvik.init", may, "D:\\P\\Tarvik.init.2026-5-3"},
        NameCase{"NoEnding", "D:\\P\\Tarvik", may, "D:\\P\\Tarvik.2026-5-3"},
        NameCase{"NoPoint", "D:\\P\\Tarvikini", may, "D:\\P\\Tarvikini.2026-5-3"},
        NameCase{"EndingWithin", "D:\\P.ini\\Tarvik", may, "D:\\P.ini\\Tarvik.2026-5-3"},
        NameCase{"TwoEndings", "D:\\Tarvik.ini.ini", may, "D:\\Tarvik.ini.2026-5-3.ini"},
        NameCase{"FiveCharacters", "a.ini", may, "a.2026-5-3.ini"},
        NameCase{"OnlyTheEnding", ".ini", may, ".ini.2026-5-3"},
        NameCase{"ThreeCharacters", "ini", may, "ini.2026-5-3"}),
    [](const auto& given) { return given.param.name; });

// What may go wrong.

TEST_F(BackupTest, WhatCannotBeSavedIsNotMovedAndNothingIsSaid) {
    setTotals(1, 2, 3);
    machine.files.replaceFailure = ErrorNumber::DiskFull;

    EXPECT_FALSE(BackupINIFile());

    EXPECT_EQ(ini(), "[Settings]\r\nIsLocked=1\r\n");
    EXPECT_FALSE(machine.files.exists(backupPath));
}

TEST_F(BackupTest, ASettingThatCannotBeWrittenIsNotASave) {
    machine.profile.failingKeys = {"TransferTickerValue"};

    EXPECT_FALSE(BackupINIFile());

    EXPECT_TRUE(machine.files.exists(iniPath));
    EXPECT_FALSE(machine.files.exists(backupPath));
}

TEST_F(BackupTest, AnErrorOfTheSaveIsReportedOnceAndNothingIsMoved) {
    state().BytesSentTotal = Currency::fromScaled(INT64_MAX);
    state().BytesSentCurrent = 1;
    expectError("6 (Overflow)", "SaveState");

    EXPECT_FALSE(BackupINIFile());

    EXPECT_TRUE(machine.files.exists(iniPath));
    EXPECT_FALSE(machine.files.exists(backupPath));
}

TEST_F(BackupTest, AFullDiskLeavesTheFileAndIsReported) {
    setTotals(1, 2, 3);
    const std::string content = saved();
    machine.files.replacements = 0;
    machine.files.replaceFailure = ErrorNumber::DiskFull;
    machine.files.replacementsLeft = 1;
    expectError("61 (Disk full)", "BackupINIFile");

    EXPECT_FALSE(BackupINIFile());

    EXPECT_EQ(ini(), content);
    EXPECT_FALSE(machine.files.exists(backupPath));
}

TEST_F(BackupTest, ABackupThatIsReadOnlyStaysAndIsReported) {
    machine.files.setFile(backupPath, "old");
    machine.files.setReadOnly(backupPath);
    setTotals(1, 2, 3);
    const std::string content = saved();
    expectError("70 (Permission denied)", "BackupINIFile");

    EXPECT_FALSE(BackupINIFile());

    EXPECT_EQ(backup(), "old");
    EXPECT_EQ(ini(), content);
}

TEST_F(BackupTest, ADirectoryOfTheBackupsNameIsReported) {
    machine.files.setKind(backupPath, FileKind::Directory);
    setTotals(1, 2, 3);
    const std::string content = saved();
    expectError("75 (Path/File access error)", "BackupINIFile");

    EXPECT_FALSE(BackupINIFile());

    EXPECT_EQ(ini(), content);
}

TEST_F(BackupTest, AFileThatCannotBeDeletedStaysBesideItsBackupAndIsReported) {
    setTotals(1, 2, 3);
    const std::string content = saved();
    machine.files.killFailure = ErrorNumber::PermissionDenied;
    expectError("70 (Permission denied)", "BackupINIFile");

    EXPECT_FALSE(BackupINIFile());

    EXPECT_EQ(ini(), content);
    EXPECT_EQ(backup(), content);
}

/// Files whose writing makes the program forget the name of the one in use.
class ForgettingFiles : public ScriptedFiles {
public:
    FileResult replaceIf(const std::string& path, const std::vector<std::string_view>& pieces,
                         const LastLook& stillRight) override {
        const FileResult result = ScriptedFiles::replaceIf(path, pieces, stillRight);
        state().IniFileName.clear();
        return result;
    }
};

TEST_F(BackupTest, ANameThatIsLostAfterTheSaveIsToldAndNothingIsMoved) {
    ForgettingFiles files;
    ScriptedProfile profile(files, "\r\n");
    Platform forgetting = machine.withFiles(profile, files);
    const PlatformScope scope(forgetting);
    expectWarning("Assertion failure detected in \"BackupINIFile\".");

    EXPECT_FALSE(BackupINIFile());

    EXPECT_TRUE(files.exists(iniPath));
    EXPECT_FALSE(files.exists(backupPath));
}

// The file after it.

TEST_F(BackupTest, TheNameInUseStaysTheSame) {
    BackupINIFile();

    EXPECT_EQ(state().IniFileName, iniPath);
}

TEST_F(BackupTest, TheNextSaveBeginsANewLogWithAllSettingsAndNoLock) {
    setTotals(1, 2, 3);
    SaveState();
    setTotals(4, 5, 6);
    BackupINIFile();
    machine.clock.advanceSeconds(60);
    setTotals(7, 8, 9);

    EXPECT_TRUE(SaveState());

    EXPECT_EQ(ini(), "[16.11.2026|08:16:22]\r\nSent=7\r\nRcvd=8\r\nDuration=9\r\nIPAddress=\r\n"
                     "[Settings]\r\nLastState=16.11.2026|08:16:22\r\n"
                     "DateStamp1=16.11.2026|08:16:22\r\nLastDateStamp=1\r\n"
                     "UnitTransferCurrent=0\r\nUnitTransferTotal=0\r\nTransferLimit=0\r\n"
                     "TransferLimitValue=0\r\nDurationLimit=0\r\nDurationLimitHr=0\r\n"
                     "DurationLimitMin=0\r\nTransferLimitWarning=0\r\nTransferLimitHangUp=0\r\n"
                     "TransferResetEnable=0\r\nTransferReset=0\r\nTransferResetBackup=0\r\n"
                     "TransferResetLast=01.01.2001\r\nStartUpMinimise=0\r\n"
                     "StartUpRunMonitoring=0\r\nRefreshInterval=1000\r\nLogIPAddress=0\r\n"
                     "TransferTicker=0\r\nTransferTickerValue=100\r\n");
    EXPECT_EQ(GetNumRecords(), Long(1));
}

TEST_F(BackupTest, TotalsThatAreInTheBackupAreLoggedAgainInTheNewFile) {
    setTotals(1, 2, 3);
    BackupINIFile();

    EXPECT_TRUE(SaveState());

    EXPECT_EQ(GetNumRecords(), Long(1));
    EXPECT_EQ(GetBytesRcvd(1), Currency(2));
}

TEST_F(BackupTest, TheNextLockWritesItsFlagIntoTheNewFile) {
    BackupINIFile();
    SaveState();
    EXPECT_FALSE(GetLocked());

    EXPECT_TRUE(SetLocked(true));

    EXPECT_TRUE(GetLocked());
}

TEST_F(BackupTest, TheNextLockMakesANewFileIfThereIsNone) {
    BackupINIFile();

    EXPECT_TRUE(SetLocked(false));

    EXPECT_EQ(ini(), "[Settings]\r\nIsLocked=0\r\n");
}

} // namespace
} // namespace tarvik
