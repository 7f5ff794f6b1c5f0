#include "settings/mdlSettings.h"
#include "settings/mdlSettingsLoad.h"

#include "settings/Setting.h"
#include "startup/mdlStartUp.h"
#include "support/WorldTest.h"
#include "types/Convert.h"
#include "ui/mdlGUILists.h"

#include <string>
#include <utility>
#include <variant>

namespace tarvik {
namespace {

class SettingsTest : public WorldTest {
protected:
    /// Loads a file with these lines in its settings.
    bool load(const std::string& lines) {
        setIni("[Settings]\r\n" + lines);
        InitApplicationStatus();
        return !state().IniFileName.empty();
    }
};

TEST_F(SettingsTest, ThePathIsTheFolderAndTheName) {
    SetIniFileName(true, false);

    EXPECT_EQ(state().IniFileName, "C:\\Prog\\Tarvik.ini");
}

TEST_F(SettingsTest, ADriveRootGetsNoSecondSeparator) {
    machine.program.folderPath = "C:\\";

    SetIniFileName(true, false);

    EXPECT_EQ(state().IniFileName, "C:\\Tarvik.ini");
}

TEST_F(SettingsTest, TheOtherKindOfRootGetsNoSecondSeparatorEither) {
    machine.program.folderPath = "/";
    machine.program.separator = '/';

    SetIniFileName(true, false);

    EXPECT_EQ(state().IniFileName, "/Tarvik.ini");
}

TEST_F(SettingsTest, AMissingFileIsOnlyNamedWhenItMayBeMade) {
    SetIniFileName(false, false);

    EXPECT_EQ(state().IniFileName, "");
}

TEST_F(SettingsTest, AnExistingFileIsNamed) {
    setIni("");

    SetIniFileName(false, false);

    EXPECT_EQ(state().IniFileName, iniPath);
}

TEST_F(SettingsTest, ADirectoryInItsPlaceIsToldAndChangesNothing) {
    machine.files.setKind(iniPath, FileKind::Directory);
    state().IniFileName = "before";
    expectWarning("Error: INI file exists as directory.");

    SetIniFileName(true, false);

    EXPECT_EQ(state().IniFileName, "before");
}

TEST_F(SettingsTest, AskingTakesTheFileThatTheUserPicks) {
    machine.dialogs.chosen = "C:\\Old\\Tarvik.2026-5-3.ini";

    SetIniFileName(false, true);

    EXPECT_EQ(state().IniFileName, "C:\\Old\\Tarvik.2026-5-3.ini");
    EXPECT_EQ(machine.dialogs.seen.lStructSize, 76U);
    EXPECT_EQ(machine.dialogs.seen.Flags, 0x8100DU);
    EXPECT_EQ(machine.dialogs.seen.nMaxFile, 2048U);
    EXPECT_EQ(machine.dialogs.seen.nMaxFileTitle, 260U);
    EXPECT_EQ(machine.dialogs.title, "Import history...");
    EXPECT_EQ(machine.dialogs.initialFolder, "C:\\Prog");
    EXPECT_EQ(machine.dialogs.filter,
              std::string("INI files *.ini\0*.ini\0All files *.*\0*.*\0\0", 41));
}

TEST_F(SettingsTest, TheDialogIsCentredOverItsOwner) {
    SetIniFileName(false, true);

    EXPECT_EQ(machine.dialogs.placed.left, 350);
    EXPECT_EQ(machine.dialogs.placed.top, 400);
    EXPECT_EQ(machine.dialogs.placed.width, 100);
    EXPECT_EQ(machine.dialogs.placed.height, 50);
}

TEST_F(SettingsTest, ACancelledDialogLeavesNoFileAndSaysNothing) {
    state().IniFileName = "before";

    SetIniFileName(false, true);

    EXPECT_EQ(state().IniFileName, "");
}

TEST_F(SettingsTest, AFailedDialogIsToldAndLeavesNoFile) {
    machine.dialogs.extendedError = 0x3003;
    expectWarning("Assertion failure in function \"ShowIniFileDialog\".");

    SetIniFileName(false, true);

    EXPECT_EQ(state().IniFileName, "");
}

TEST_F(SettingsTest, WithoutAFileNameReadersGiveNothing) {
    EXPECT_EQ(GetStringFromINI("Settings", "A"), "");
    EXPECT_EQ(GetLongFromINI("Settings", "A"), Currency(0));
    EXPECT_EQ(GetCurrencyFromINI("Settings", "A"), Currency(0));
    EXPECT_FALSE(GetLocked());
}

TEST_F(SettingsTest, WithoutAFileNameNothingIsLockedAndNothingIsWritten) {
    EXPECT_FALSE(SetLocked(true));

    EXPECT_EQ(machine.files.replacements, 0);
}

TEST_F(SettingsTest, ALongValueIsCutTo127Characters) {
    load("Long=" + std::string(128, 'x') + "\r\nFits=" + std::string(127, 'y') + "\r\n");

    EXPECT_EQ(GetStringFromINI("Settings", "Long"), std::string(127, 'x'));
    EXPECT_EQ(GetStringFromINI("Settings", "Fits"), std::string(127, 'y'));
}

TEST_F(SettingsTest, WholeNumbersBelowOneReadAsZero) {
    load("A=-1\r\nB=0\r\nC=abc\r\nD=12x\r\nE=\r\nF=2147483647\r\nG=2147483648\r\n");

    EXPECT_EQ(GetLongFromINI("Settings", "A"), Currency(0));
    EXPECT_EQ(GetLongFromINI("Settings", "B"), Currency(0));
    EXPECT_EQ(GetLongFromINI("Settings", "C"), Currency(0));
    EXPECT_EQ(GetLongFromINI("Settings", "D"), Currency(12));
    EXPECT_EQ(GetLongFromINI("Settings", "E"), Currency(0));
    EXPECT_EQ(GetLongFromINI("Settings", "F"), Currency(2'147'483'647));
    EXPECT_EQ(GetLongFromINI("Settings", "G"), Currency(0));
    EXPECT_EQ(GetLongFromINI("Settings", "Missing"), Currency(0));
}

TEST_F(SettingsTest, AFlagOfMinusOneIsNotLocked) {
    setIni("[Settings]\r\nIsLocked=-1\r\n");

    EXPECT_FALSE(GetLocked());
}

TEST_F(SettingsTest, AFlagOfOneIsLocked) {
    setIni("[Settings]\r\nIsLocked=1\r\n");

    EXPECT_TRUE(GetLocked());
}

TEST_F(SettingsTest, LockingWritesOneOrZero) {
    setIni("[Settings]\r\n");
    SetIniFileName(false, false);

    EXPECT_TRUE(SetLocked(true));
    EXPECT_EQ(ini(), "[Settings]\r\nIsLocked=1\r\n");
    EXPECT_TRUE(SetLocked(false));
    EXPECT_EQ(ini(), "[Settings]\r\nIsLocked=0\r\n");
}

TEST_F(SettingsTest, WithoutAFileLoadingChangesNothing) {
    state().BytesRcvdTotal = 5;
    state().BytesRcvdCurrent = 3;

    EXPECT_FALSE(LoadState());

    EXPECT_EQ(state().BytesRcvdTotal, Currency(5));
    EXPECT_EQ(state().BytesRcvdCurrent, Long(3));
}

TEST_F(SettingsTest, AFileThatIsReadToItsEndIsTrue) {
    setIni("[Settings]\r\n");

    EXPECT_TRUE(LoadState());
}

TEST_F(SettingsTest, WithoutALastStateTheTotalsAreZero) {
    setIni("[Settings]\r\n");
    state().BytesRcvdTotal = 5;
    state().DurationCurrent = 3;

    EXPECT_TRUE(LoadState());

    EXPECT_EQ(state().BytesRcvdTotal, Currency(0));
    EXPECT_EQ(state().DurationCurrent, Long(0));
}

TEST_F(SettingsTest, TheLastStatesTotalsAreRestored) {
    setIni("[Settings]\r\nLastState=r\r\n[r]\r\nSent=12\r\nRcvd=34\r\nDuration=56\r\n");
    state().BytesRcvdCurrent = 3;

    LoadState();

    EXPECT_EQ(state().BytesSentTotal, Currency(12));
    EXPECT_EQ(state().BytesRcvdTotal, Currency(34));
    EXPECT_EQ(state().DurationTotal, Currency(56));
    EXPECT_EQ(state().BytesRcvdCurrent, Long(0));
}

TEST_F(SettingsTest, EverySettingIsLoaded) {
    load("UnitTransferCurrent=1\r\nUnitTransferTotal=2\r\nTransferLimit=1\r\n"
         "TransferLimitValue=5000000\r\nDurationLimit=1\r\nDurationLimitHr=12\r\n"
         "DurationLimitMin=30\r\nTransferLimitWarning=1\r\nTransferLimitHangUp=1\r\n"
         "TransferResetEnable=1\r\nTransferReset=8\r\nTransferResetBackup=1\r\n"
         "TransferResetLast=16.11.2026\r\nStartUpMinimise=1\r\nStartUpRunMonitoring=1\r\n"
         "RefreshInterval=250\r\nLogIPAddress=1\r\nTransferTicker=1\r\nTransferTickerValue=7\r\n");

    const State& s = state();
    EXPECT_EQ(s.UnitTransferCurrent, TransferUnit::KiloBytes);
    EXPECT_EQ(s.UnitTransferTotal, TransferUnit::MegaBytes);
    EXPECT_EQ(s.TransferLimit, 1);
    EXPECT_EQ(s.TransferLimitValue, Currency(5'000'000));
    EXPECT_EQ(s.DurationLimit, 1);
    EXPECT_EQ(s.DurationLimitHr, Long(12));
    EXPECT_EQ(s.DurationLimitMin, Long(30));
    EXPECT_EQ(s.TransferLimitWarning, 1);
    EXPECT_EQ(s.TransferLimitHangUp, 1);
    EXPECT_EQ(s.TransferResetEnable, 1);
    EXPECT_EQ(s.TransferReset, enDateCalc::EndOfMonth);
    EXPECT_EQ(s.TransferResetBackup, 1);
    EXPECT_EQ(s.TransferResetLast.serial(), 46342.0);
    EXPECT_EQ(s.StartUpMinimise, 1);
    EXPECT_EQ(s.StartUpRunMonitoring, 1);
    EXPECT_EQ(s.RefreshInterval, Long(250));
    EXPECT_EQ(s.LogIPAddress, 1);
    EXPECT_EQ(s.TransferTicker, 1);
    EXPECT_EQ(s.TransferTickerValue, Long(7));
}

TEST_F(SettingsTest, EverySettingIsPushedIntoItsControl) {
    PreInitOptions();
    load("UnitTransferCurrent=1\r\nUnitTransferTotal=2\r\nTransferLimit=1\r\n"
         "TransferLimitValue=5000000\r\nDurationLimit=1\r\nDurationLimitHr=12\r\n"
         "DurationLimitMin=30\r\nTransferLimitWarning=1\r\nTransferLimitHangUp=1\r\n"
         "TransferResetEnable=1\r\nTransferReset=8\r\nTransferResetBackup=1\r\n"
         "StartUpMinimise=1\r\nStartUpRunMonitoring=1\r\n"
         "RefreshInterval=250\r\nLogIPAddress=1\r\nTransferTicker=1\r\nTransferTickerValue=7\r\n");

    const FrmOptions& options = frmOptions();
    EXPECT_TRUE(options.loaded());
    EXPECT_EQ(options.cboUnitTransferCurrent.text(), "Kilo-Bytes");
    EXPECT_EQ(options.cboUnitTransferTotal.text(), "Mega-Bytes");
    EXPECT_EQ(frmMain().lblTransferCurrent.caption(), "current (KBytes):");
    EXPECT_EQ(frmMain().lblTransferTotal.caption(), "total (MBytes):");
    EXPECT_EQ(options.txtTransferLimit.text(), "5000000");
    EXPECT_EQ(options.txtDurationLimitHr.text(), "12");
    EXPECT_EQ(options.txtDurationLimitMin.text(), "30");
    EXPECT_EQ(options.cboTransferReset.text(), "end of month");
    EXPECT_EQ(options.txtRefreshInterval.text(), "250");
    EXPECT_EQ(options.txtTransferTicker.text(), "7");
    for (const CheckBox* box :
         {&options.chkStartupRunMonitoring, &options.chkStartUpMinimise, &options.chkTransferLimit,
          &options.chkDurationLimit, &options.chkTransferLimitWarning,
          &options.chkTransferLimitHangUp, &options.chkTransferResetEnable,
          &options.chkTransferResetBackup, &options.chkLogIPAddress, &options.chkTransferTicker}) {
        EXPECT_TRUE(box->ticked()) << box->name();
    }
}

TEST_F(SettingsTest, MissingSettingsReadAsTheTableSays) {
    load("");

    EXPECT_EQ(state().TransferLimitValue, Currency(0));
    EXPECT_EQ(state().DurationLimitHr, Long(0));
    EXPECT_EQ(state().RefreshInterval, Long(1000));
    EXPECT_EQ(state().TransferTickerValue, Long(100));
    EXPECT_EQ(state().TransferResetLast.serial(), 36892.0);
}

struct RangeCase {
    const char* text;
    int value;
};

class RefreshIntervalTest : public SettingsTest, public testing::WithParamInterface<RangeCase> {};

TEST_P(RefreshIntervalTest, IsKeptWithinItsRangeOnly) {
    load("RefreshInterval=" + std::string(GetParam().text) + "\r\n");

    EXPECT_EQ(state().RefreshInterval, Long(GetParam().value));
}

INSTANTIATE_TEST_SUITE_P(Edges, RefreshIntervalTest,
                         testing::Values(RangeCase{"99", 1000}, RangeCase{"100", 100},
                                         RangeCase{"50000", 50000}, RangeCase{"50001", 1000},
                                         RangeCase{"-5", 1000}, RangeCase{"x", 1000}));

class TickerValueTest : public SettingsTest, public testing::WithParamInterface<RangeCase> {};

TEST_P(TickerValueTest, IsKeptWithinItsRangeOnly) {
    load("TransferTickerValue=" + std::string(GetParam().text) + "\r\n");

    EXPECT_EQ(state().TransferTickerValue, Long(GetParam().value));
}

INSTANTIATE_TEST_SUITE_P(Edges, TickerValueTest,
                         testing::Values(RangeCase{"0", 100}, RangeCase{"1", 1},
                                         RangeCase{"9999", 9999}, RangeCase{"10000", 100}));

TEST_F(SettingsTest, AnUnreadableLimitIsZeroWithoutAMessage) {
    load("TransferLimitValue=abc\r\n");

    EXPECT_EQ(state().TransferLimitValue, Currency(0));
}

TEST_F(SettingsTest, AnEmptyOrUnreadableResetDateIsTheFirstOfJanuary2001) {
    load("TransferResetLast=\r\n");
    EXPECT_EQ(state().TransferResetLast.serial(), 36892.0);

    load("TransferResetLast=soon\r\n");
    EXPECT_EQ(state().TransferResetLast.serial(), 36892.0);
}

TEST_F(SettingsTest, ATimeOfDayIsRoundedToFourDecimalsOfADay) {
    machine.locale.conventions = germanLocale();
    load("TransferResetLast=16.11.2026 12:00:05\r\n");

    EXPECT_EQ(state().TransferResetLast.serial(), 46342.5001);
    EXPECT_EQ(GetDateFromINI("Settings", "TransferResetLast").scaled(), 463'425'001);
}

TEST_F(SettingsTest, AByteThatDoesNotFitEndsTheLoadingWithOneReport) {
    setIni("[Settings]\r\nUnitTransferCurrent=256\r\nStartUpMinimise=1\r\n");
    expectError("6 (Overflow)", "LoadState");

    EXPECT_FALSE(LoadState());

    EXPECT_EQ(state().StartUpMinimise, 0);
}

TEST_F(SettingsTest, AFailedLoadingAtTheStartIsTakenForAFirstRun) {
    phoneBook({"Harbour"});
    setIni("[Settings]\r\nTransferReset=999\r\n");
    expectError("6 (Overflow)", "LoadState");
    expectWarning("Warning: Old settings could not be loaded.\rAssuming first run.");

    start();

    EXPECT_TRUE(frmMain().visible());
}

TEST_F(SettingsTest, SettingsAreWrittenInTheirOrder) {
    setIni("[Settings]\r\n");
    InitApplicationStatus();

    EXPECT_TRUE(SaveSettings());

    EXPECT_EQ(ini(), "[Settings]\r\nUnitTransferCurrent=0\r\nUnitTransferTotal=0\r\n"
                     "TransferLimit=0\r\nTransferLimitValue=0\r\nDurationLimit=0\r\n"
                     "DurationLimitHr=0\r\nDurationLimitMin=0\r\nTransferLimitWarning=0\r\n"
                     "TransferLimitHangUp=0\r\nTransferResetEnable=0\r\nTransferReset=0\r\n"
                     "TransferResetBackup=0\r\nTransferResetLast=01.01.2001\r\n"
                     "StartUpMinimise=0\r\nStartUpRunMonitoring=0\r\nRefreshInterval=1000\r\n"
                     "LogIPAddress=0\r\nTransferTicker=0\r\nTransferTickerValue=100\r\n");
}

TEST_F(SettingsTest, WhatWasSavedIsLoadedAgain) {
    const std::string lines =
        "UnitTransferCurrent=3\r\nUnitTransferTotal=2\r\nTransferLimit=1\r\n"
        "TransferLimitValue=5000000.5\r\nDurationLimit=1\r\nDurationLimitHr=12\r\n"
        "DurationLimitMin=30\r\nTransferLimitWarning=1\r\nTransferLimitHangUp=1\r\n"
        "TransferResetEnable=1\r\nTransferReset=11\r\nTransferResetBackup=1\r\n"
        "TransferResetLast=16.11.2026\r\nStartUpMinimise=1\r\nStartUpRunMonitoring=1\r\n"
        "RefreshInterval=250\r\nLogIPAddress=1\r\nTransferTicker=1\r\nTransferTickerValue=7\r\n";
    load(lines);

    EXPECT_TRUE(SaveSettings());

    EXPECT_EQ(ini(), "[Settings]\r\n" + lines);
}

struct LocaleCase {
    const char* name;
    LocaleData locale;
    const char* limit;
    const char* reset;
};

class LocaleFormTest : public SettingsTest, public testing::WithParamInterface<LocaleCase> {};

TEST_P(LocaleFormTest, IsReadAndWrittenBackTheSame) {
    machine.locale.conventions = GetParam().locale;
    load(std::string("TransferLimitValue=") + GetParam().limit +
         "\r\nTransferResetLast=" + GetParam().reset + "\r\n");

    EXPECT_EQ(state().TransferLimitValue.scaled(), 12'345'678'250);
    EXPECT_EQ(state().TransferResetLast.serial(), 46345.75);
    SaveSettings();

    EXPECT_NE(ini().find(std::string("TransferLimitValue=") + GetParam().limit + "\r\n"),
              std::string::npos);
    EXPECT_NE(ini().find(std::string("TransferResetLast=") + GetParam().reset + "\r\n"),
              std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(
    All, LocaleFormTest,
    testing::Values(
        LocaleCase{"German", germanLocale(), "1234567,825", "19.11.2026 18:00:00"},
        LocaleCase{"American", americanLocale(), "1234567.825", "11/19/2026 6:00:00 PM"},
        LocaleCase{"Swedish", swedishLocale(), "1234567,825", "2026-11-19 18:00:00"},
        LocaleCase{"French", frenchLocale(), "1234567,825", "19/11/2026 18:00:00"},
        LocaleCase{"Finnish", finnishLocale(), "1234567,825", "19.11.2026 18.00.00"},
        LocaleCase{"Japanese", japaneseLocale(), "1234567.825", "2026年11月19日 午後6時00分00秒"}),
    [](const auto& given) { return given.param.name; });

/// What stands in the field of a number in a form that nothing was done with yet, and what the
/// setting is unless set.
std::pair<std::string, std::string> textsBeforeTheStart(const Setting& setting) {
    const FrmOptions options;
    if (const auto* const bytes = std::get_if<BytesSetting>(&setting.kind)) {
        return {(options.*bytes->field).text(), toText(bytes->standard)};
    }
    if (const auto* const number = std::get_if<NumberSetting>(&setting.kind)) {
        return {(options.*number->field).text(), toText(number->standard)};
    }
    return {};
}

TEST(SettingTest, AFieldThatIsNotEmptyBeforeTheStartHasTheStandardValue) {
    for (const Setting& setting : settings()) {
        const auto [text, standard] = textsBeforeTheStart(setting);

        EXPECT_TRUE(text.empty() || text == standard) << setting.key << ": " << text;
    }
}

} // namespace
} // namespace tarvik
