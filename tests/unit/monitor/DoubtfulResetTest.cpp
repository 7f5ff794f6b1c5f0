#include "monitor/mdlCodeReset.h"

#include "settings/mdlSettings.h"
#include "settings/mdlSettingsLog.h"
#include "support/WorldTest.h"

namespace tarvik {
namespace {

constexpr const char* copyPath = "C:\\Prog\\Tarvik.2026-11-22.ini";
constexpr const char* secondCopyPath = "C:\\Prog\\Tarvik.2026-11-22.1.ini";

/// A program that resets at the end of each month, started on a file whose date of the last reset
/// another language may have written. It is 22 November 2026.
class DoubtfulResetTest : public WorldTest {
protected:
    DoubtfulResetTest() {
        phoneBook({"Harbour"});
        machine.clock.set({2026, 11, 22, 9, 30, 0});
    }

    static std::string file(const std::string& reset) {
        return "[Settings]\r\nIsLocked=0\r\nLastState=r\r\nDateStamp1=r\r\nLastDateStamp=1\r\n"
               "TransferResetEnable=1\r\nTransferReset=8\r\nTransferResetLast=" +
               reset + "\r\n[r]\r\nSent=5\r\nRcvd=7\r\nDuration=9\r\n";
    }

    /// Starts on that date of the last reset, as a program of that language.
    void startOn(const std::string& reset, const LocaleData& locale) {
        machine.locale.conventions = locale;
        setIni(file(reset));
        start("/r");
        onDisk = ini();
    }

    /// A connection that the program dialled itself comes up.
    void goOnline() {
        dialledConnection();
        tick();
    }

    bool wasReset() { return state().BytesRcvdTotal == Currency(0); }

    std::string onDisk;
    const std::string note =
        "The date of the last reset may be misread: another language writes it differently. "
        "Before the reset of the totals the file was copied to \rTarvik.2026-11-22.ini";
};

TEST_F(DoubtfulResetTest, ADateThatIsNoneHereKeepsTheFileBeforeTheTotalsAreCleared) {
    startOn("15.11.2026", americanLocale());
    EXPECT_EQ(state().TransferResetLast.serial(), 36892.0);

    goOnline();

    EXPECT_TRUE(wasReset());
    EXPECT_EQ(machine.files.file(copyPath), onDisk);
    EXPECT_NE(onDisk.find("Rcvd=7\r\n"), std::string::npos);
    EXPECT_EQ(notes(), std::vector<std::string>{note});
}

TEST_F(DoubtfulResetTest, ADateThatIsAnotherDayHereKeepsTheFileToo) {
    startOn("03.11.2026", americanLocale());
    EXPECT_EQ(state().TransferResetLast, Date::fromCivil({2026, 3, 11}));

    goOnline();

    EXPECT_TRUE(wasReset());
    EXPECT_EQ(machine.files.file(copyPath), onDisk);
    EXPECT_EQ(notes(), std::vector<std::string>{note});
}

TEST_F(DoubtfulResetTest, ADateToComeKeepsTheFileWhenItsResetComes) {
    startOn("10.12.2026", germanLocale());
    goOnline();
    EXPECT_FALSE(wasReset());
    EXPECT_FALSE(machine.files.exists(copyPath));
    machine.clock.set({2027, 1, 2, 9, 30, 0});

    tick();

    EXPECT_TRUE(wasReset());
    EXPECT_EQ(machine.files.file("C:\\Prog\\Tarvik.2027-1-2.ini"), onDisk);
}

TEST_F(DoubtfulResetTest, ADateOfThisLanguageIsResetWithoutAWord) {
    startOn("03.10.2026", germanLocale());

    goOnline();

    EXPECT_TRUE(wasReset());
    EXPECT_FALSE(machine.files.exists(copyPath));
    EXPECT_TRUE(notes().empty());
}

TEST_F(DoubtfulResetTest, ADateThatIsNotThereIsResetWithoutAWord) {
    startOn("", germanLocale());

    goOnline();

    EXPECT_TRUE(wasReset());
    EXPECT_FALSE(machine.files.exists(copyPath));
}

TEST_F(DoubtfulResetTest, TheDayItselfAtAnyTimeIsNoDateToCome) {
    startOn("22.11.2026 23:59:51", germanLocale());

    EXPECT_EQ(state().FileOfDoubtfulReset, "");
}

TEST_F(DoubtfulResetTest, NoFileOfThatNameIsWrittenOver) {
    startOn("15.11.2026", americanLocale());
    machine.files.setFile(copyPath, "the backup of this morning");

    goOnline();

    EXPECT_EQ(machine.files.file(copyPath), "the backup of this morning");
    EXPECT_EQ(machine.files.file(secondCopyPath), onDisk);
}

TEST_F(DoubtfulResetTest, TheDateWrittenByTheResetIsDoubtedNoMore) {
    startOn("15.11.2026", americanLocale());
    goOnline();
    machine.clock.set({2026, 12, 22, 9, 30, 0});
    state().BytesRcvdTotal = 3;

    tick();

    EXPECT_TRUE(wasReset());
    EXPECT_FALSE(machine.files.exists("C:\\Prog\\Tarvik.2026-12-22.ini"));
    EXPECT_EQ(notes().size(), 1U);
}

TEST_F(DoubtfulResetTest, WithABackupThatIsTheCopy) {
    startOn("15.11.2026", americanLocale());
    state().TransferResetBackup = 1;

    goOnline();

    EXPECT_TRUE(wasReset());
    EXPECT_NE(machine.files.file(copyPath).find("DateStamp1=r\r\n"), std::string::npos);
    EXPECT_FALSE(machine.files.exists(secondCopyPath));
    EXPECT_EQ(notes(), std::vector<std::string>{
                           "The date of the last reset may be misread: another language writes it "
                           "differently. The file as it was before the reset of the totals is the "
                           "backup of today."});
}

TEST_F(DoubtfulResetTest, WithoutRoomForTheCopyTheResetWaitsAndThatIsToldOnce) {
    startOn("15.11.2026", americanLocale());
    machine.files.replaceFailure = ErrorNumber::DiskFull;
    goOnline();
    tick();
    EXPECT_EQ(state().BytesRcvdTotal, Currency(7));
    EXPECT_EQ(notes(), std::vector<std::string>{
                           "The date of the last reset may be misread. The totals are not reset "
                           "before a copy of the file can be made.\rTarvik.ini"});
    machine.files.replaceFailure = std::nullopt;

    tick();

    EXPECT_TRUE(wasReset());
    EXPECT_EQ(machine.files.file(copyPath), onDisk);
}

TEST_F(DoubtfulResetTest, AFileThatIsGoneHoldsNoResetUp) {
    startOn("15.11.2026", americanLocale());
    machine.files.remove(iniPath);

    goOnline();

    EXPECT_TRUE(wasReset());
    EXPECT_TRUE(notes().empty());
}

TEST_F(DoubtfulResetTest, WhatTheHistoryWasImportedFromIsNotWhatIsKept) {
    startOn("15.11.2026", americanLocale());
    machine.files.setFile("D:\\Other.ini", "[Settings]\r\n");
    state().IniFileName = "D:\\Other.ini";

    goOnline();

    EXPECT_EQ(machine.files.file(copyPath), onDisk);
}

} // namespace
} // namespace tarvik
