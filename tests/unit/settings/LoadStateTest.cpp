#include "settings/mdlSettingsLoad.h"
#include "support/WorldTest.h"
#include "ui/mdlGUILists.h"

namespace tarvik {
namespace {

/// Every setting with a value that is not its default.
constexpr const char* everySetting =
    "UnitTransferCurrent=1\r\nUnitTransferTotal=2\r\nTransferLimit=1\r\n"
    "TransferLimitValue=5000000\r\nDurationLimit=1\r\nDurationLimitHr=12\r\n"
    "DurationLimitMin=30\r\nTransferLimitWarning=1\r\nTransferLimitHangUp=1\r\n"
    "TransferResetEnable=1\r\nTransferReset=8\r\nTransferResetBackup=1\r\n"
    "TransferResetLast=16.11.2026\r\nStartUpMinimise=1\r\nStartUpRunMonitoring=1\r\n"
    "RefreshInterval=250\r\nLogIPAddress=1\r\nTransferTicker=1\r\nTransferTickerValue=7\r\n";

/// The controls in the order in which loading fills them.
const std::vector<std::string> filled{
    "frmOptions.cboUnitTransferCurrent",  "frmMain.lblTransferCurrent",
    "frmOptions.cboUnitTransferTotal",    "frmMain.lblTransferTotal",
    "frmOptions.chkStartupRunMonitoring", "frmOptions.chkStartUpMinimise",
    "frmOptions.chkTransferLimit",        "frmOptions.txtTransferLimit",
    "frmOptions.chkDurationLimit",        "frmOptions.txtDurationLimitHr",
    "frmOptions.txtDurationLimitMin",     "frmOptions.chkTransferLimitWarning",
    "frmOptions.chkTransferLimitHangUp",  "frmOptions.chkTransferResetEnable",
    "frmOptions.cboTransferReset",        "frmOptions.chkTransferResetBackup",
    "frmOptions.txtRefreshInterval",      "frmOptions.chkLogIPAddress",
    "frmOptions.chkTransferTicker",       "frmOptions.txtTransferTicker"};

class LoadStateTest : public WorldTest {
protected:
    /// Loads the forms, so that what their controls tell is seen. What ticked boxes do to others is
    /// left out.
    void showForms() {
        frmMain().load();
        frmOptions().load();
        PreInitOptions();
        for (CheckBox* box :
             {&frmOptions().chkTransferLimit, &frmOptions().chkDurationLimit,
              &frmOptions().chkTransferResetEnable, &frmOptions().chkTransferTicker}) {
            box->Click.connect({});
        }
        machine.desktop.changesTold.clear();
    }
};

TEST_F(LoadStateTest, TheControlsAreFilledInTheOrderOfReading) {
    showForms();
    setIni(std::string("[Settings]\r\n") + everySetting);

    EXPECT_TRUE(LoadState());

    EXPECT_EQ(machine.desktop.changesTold, filled);
}

TEST_F(LoadStateTest, TheOptionsDialogIsLoadedIfItIsNot) {
    setIni("[Settings]\r\n");

    LoadState();

    EXPECT_TRUE(frmOptions().loaded());
    EXPECT_FALSE(frmOptions().visible());
}

TEST_F(LoadStateTest, WithoutAFileTheOptionsDialogStaysUnloaded) {
    LoadState();

    EXPECT_FALSE(frmOptions().loaded());
}

TEST_F(LoadStateTest, WithoutAFileNoControlChanges) {
    showForms();

    LoadState();

    EXPECT_TRUE(machine.desktop.changesTold.empty());
}

struct ByteCase {
    const char* key;
    /// How many controls were filled before.
    std::size_t filledBefore;
};

class ByteSettingTest : public LoadStateTest, public testing::WithParamInterface<ByteCase> {};

TEST_P(ByteSettingTest, ThatDoesNotFitEndsTheLoadingThere) {
    showForms();
    setIni(std::string("[Settings]\r\n") + GetParam().key + "=256\r\n" + everySetting);
    expectError("6 (Overflow)", "LoadState");

    EXPECT_FALSE(LoadState());

    EXPECT_EQ(machine.desktop.changesTold,
              std::vector<std::string>(filled.begin(),
                                       filled.begin() +
                                           static_cast<std::ptrdiff_t>(GetParam().filledBefore)));
}

TEST_P(ByteSettingTest, MayBeAsLargeAsAByte) {
    setIni(std::string("[Settings]\r\n") + GetParam().key + "=255\r\n");

    EXPECT_TRUE(LoadState());
    EXPECT_TRUE(SaveSettings());

    EXPECT_NE(ini().find(std::string(GetParam().key) + "=255\r\n"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(
    Each, ByteSettingTest,
    testing::Values(ByteCase{"UnitTransferCurrent", 0}, ByteCase{"UnitTransferTotal", 2},
                    ByteCase{"StartUpRunMonitoring", 4}, ByteCase{"StartUpMinimise", 5},
                    ByteCase{"TransferLimit", 6}, ByteCase{"DurationLimit", 8},
                    ByteCase{"TransferLimitWarning", 11}, ByteCase{"TransferLimitHangUp", 12},
                    ByteCase{"TransferResetEnable", 13}, ByteCase{"TransferReset", 14},
                    ByteCase{"TransferResetBackup", 15}, ByteCase{"LogIPAddress", 17},
                    ByteCase{"TransferTicker", 18}),
    [](const auto& given) { return given.param.key; });

TEST_F(LoadStateTest, AFileWhoseLoadEndsHalfwayIsCopiedBeforeAnythingIsSaved) {
    machine.clock.set({2026, 11, 22, 9, 30, 0});
    const std::string damaged = "[Settings]\r\nUnitTransferCurrent=300\r\nRefreshInterval=500\r\n";
    setIni(damaged);
    expectError("6 (Overflow)", "LoadState");

    EXPECT_FALSE(LoadState());

    EXPECT_EQ(machine.files.file("C:\\Prog\\Tarvik.2026-11-22.ini"), damaged);
    EXPECT_EQ(ini(), damaged);
}

TEST_F(LoadStateTest, TheTotalsAreReadBeforeASettingThatDoesNotFit) {
    setIni("[Settings]\r\nLastState=r\r\nUnitTransferCurrent=300\r\n[r]\r\nSent=7\r\n");
    expectError("6 (Overflow)", "LoadState");

    LoadState();

    EXPECT_EQ(state().BytesSentTotal, Currency(7));
}

TEST_F(LoadStateTest, AListPositionBeyondTheListLeavesTheList) {
    showForms();
    setIni("[Settings]\r\nUnitTransferCurrent=4\r\nUnitTransferTotal=200\r\nTransferReset=12\r\n");

    EXPECT_TRUE(LoadState());

    EXPECT_EQ(frmOptions().cboUnitTransferCurrent.text(), "Bytes");
    EXPECT_EQ(frmOptions().cboUnitTransferTotal.text(), "Bytes");
    EXPECT_EQ(frmOptions().cboTransferReset.text(), "middle of day");
    EXPECT_EQ(static_cast<int>(state().UnitTransferTotal), 200);
    EXPECT_EQ(static_cast<int>(state().TransferReset), 12);
}

TEST_F(LoadStateTest, EverySettingThatIsMissingReadsAsTheFilesRulesSay) {
    showForms();
    setIni("[Settings]\r\n");
    state().TransferLimitValue = 9;

    EXPECT_TRUE(LoadState());

    EXPECT_EQ(state().TransferLimitValue, Currency(0));
    EXPECT_EQ(frmOptions().txtTransferLimit.text(), "0");
    EXPECT_EQ(frmOptions().txtDurationLimitHr.text(), "0");
    EXPECT_EQ(frmOptions().txtDurationLimitMin.text(), "0");
    EXPECT_EQ(frmOptions().txtRefreshInterval.text(), "1000");
    EXPECT_EQ(frmOptions().txtTransferTicker.text(), "100");
    EXPECT_EQ(frmMain().lblTransferCurrent.caption(), "current (bytes):");
    EXPECT_EQ(frmMain().lblTransferTotal.caption(), "total (bytes):");
}

TEST_F(LoadStateTest, ARangeRuleIsShownInTheControlToo) {
    setIni("[Settings]\r\nRefreshInterval=50001\r\nTransferTickerValue=10000\r\n");

    LoadState();

    EXPECT_EQ(frmOptions().txtRefreshInterval.text(), "1000");
    EXPECT_EQ(frmOptions().txtTransferTicker.text(), "100");
}

TEST_F(LoadStateTest, ALastStateThatPointsNowhereGivesTotalsOfZero) {
    setIni("[Settings]\r\nLastState=gone\r\n");
    state().BytesRcvdTotal = 5;
    state().BytesSentOffset = 3;

    EXPECT_TRUE(LoadState());

    EXPECT_EQ(state().BytesRcvdTotal, Currency(0));
    EXPECT_EQ(state().BytesSentOffset, Long(0));
}

TEST_F(LoadStateTest, TotalsBeyond32BitsAreRestored) {
    setIni("[Settings]\r\nLastState=r\r\n[r]\r\nSent=4294967296\r\nRcvd=922337203685477\r\n"
           "Duration=2147483648.5\r\n");

    LoadState();

    EXPECT_EQ(state().BytesSentTotal.scaled(), 42'949'672'960'000);
    EXPECT_EQ(state().BytesRcvdTotal.scaled(), 9'223'372'036'854'770'000);
    EXPECT_EQ(state().DurationTotal.scaled(), 21'474'836'485'000);
}

TEST_F(LoadStateTest, SectionsAndKeysAreFoundInAnyCase) {
    setIni("[SETTINGS]\r\nlaststate=R\r\nrefreshINTERVAL=250\r\n[r]\r\nSENT=7\r\n");

    LoadState();

    EXPECT_EQ(state().RefreshInterval, Long(250));
    EXPECT_EQ(state().BytesSentTotal, Currency(7));
}

struct MomentCase {
    const char* name;
    const char* text;
    double serial;
    const char* savedAs;
};

class MomentTest : public WorldTest, public testing::WithParamInterface<MomentCase> {};

TEST_P(MomentTest, IsRoundedToFourDecimalsOfADay) {
    setIni(std::string("[Settings]\r\nTransferResetLast=") + GetParam().text + "\r\n");

    LoadState();
    SaveSettings();

    EXPECT_DOUBLE_EQ(state().TransferResetLast.serial(), GetParam().serial);
    EXPECT_NE(ini().find(std::string("TransferResetLast=") + GetParam().savedAs + "\r\n"),
              std::string::npos)
        << ini();
}

INSTANTIATE_TEST_SUITE_P(
    Each, MomentTest,
    testing::Values(
        MomentCase{"FourSeconds", "16.11.2026 12:00:04", 46342.5, "16.11.2026 12:00:00"},
        MomentCase{"FiveSeconds", "16.11.2026 12:00:05", 46342.5001, "16.11.2026 12:00:09"},
        MomentCase{"NineSeconds", "16.11.2026 12:00:09", 46342.5001, "16.11.2026 12:00:09"},
        MomentCase{"TwelveSeconds", "16.11.2026 12:00:12", 46342.5001, "16.11.2026 12:00:09"},
        MomentCase{"ThirteenSeconds", "16.11.2026 12:00:13", 46342.5002, "16.11.2026 12:00:17"},
        MomentCase{"BeforeMidnight", "16.11.2026 23:59:55", 46342.9999, "16.11.2026 23:59:51"},
        MomentCase{"NearestMidnight", "16.11.2026 23:59:56", 46343.0, "17.11.2026"},
        MomentCase{"DateAlone", "16.11.2026", 46342.0, "16.11.2026"},
        MomentCase{"TimeAlone", "06:00:00", 0.25, "06:00:00"},
        MomentCase{"Default", "01.01.01", 36892.0, "01.01.2001"},
        MomentCase{"NoDateOfTheCalendar", "31.02.2026", 36892.0, "01.01.2001"}),
    [](const auto& given) { return given.param.name; });

struct GroupedCase {
    const char* name;
    LocaleData locale;
    std::string text;
};

class GroupedNumberTest : public WorldTest, public testing::WithParamInterface<GroupedCase> {};

TEST_P(GroupedNumberTest, IsReadWithTheUsersSeparators) {
    machine.locale.conventions = GetParam().locale;
    setIni("[Settings]\r\nTransferLimitValue=" + GetParam().text + "\r\n");

    EXPECT_TRUE(LoadState());

    EXPECT_EQ(state().TransferLimitValue.scaled(), 12'345'678'250);
    EXPECT_DOUBLE_EQ(state().TransferResetLast.serial(), 36892.0);
}

INSTANTIATE_TEST_SUITE_P(Each, GroupedNumberTest,
                         testing::Values(GroupedCase{"German", germanLocale(), "1.234.567,825"},
                                         GroupedCase{"American", americanLocale(), "1,234,567.825"},
                                         GroupedCase{"Swedish", swedishLocale(),
                                                     "1\xC2\xA0"
                                                     "234\xC2\xA0"
                                                     "567,825"},
                                         GroupedCase{"French", frenchLocale(),
                                                     "1\xE2\x80\xAF"
                                                     "234\xE2\x80\xAF"
                                                     "567,825"},
                                         GroupedCase{"Finnish", finnishLocale(),
                                                     "1\xC2\xA0"
                                                     "234567,825"},
                                         GroupedCase{"Japanese", japaneseLocale(),
                                                     "1,234,567.825"}),
                         [](const auto& given) { return given.param.name; });

TEST_F(LoadStateTest, TheLimitIsShownInTheUsersForm) {
    machine.locale.conventions = germanLocale();
    setIni("[Settings]\r\nTransferLimitValue=1.234,5\r\n");

    LoadState();

    EXPECT_EQ(frmOptions().txtTransferLimit.text(), "1234,5");
}

} // namespace
} // namespace tarvik
