#include "settings/mdlSettingsControls.h"
#include "ui/mdlGUI.h"
#include "ui/mdlGUIFigures.h"
#include "ui/mdlGUILists.h"
#include "ui/mdlGUIWindows.h"

#include "controls/TestForm.h"
#include "forms/StatusLamp.h"
#include "support/WorldTest.h"

namespace tarvik {
namespace {

using GuiTest = WorldTest;
using Texts = std::vector<std::string>;

TEST_F(GuiTest, EveryFixedListIsFilledAndItsFirstEntrySelected) {
    PreInitOptions();
    PreInitHistory();

    const Texts units{"Bytes", "Kilo-Bytes", "Mega-Bytes", "Giga-Bytes"};
    FrmHistory& history = world->forms.frmHistory;
    EXPECT_EQ(frmOptions().cboUnitTransferCurrent.items(), units);
    EXPECT_EQ(frmOptions().cboUnitTransferTotal.items(), units);
    EXPECT_EQ(history.cboTransferUnit.items(), units);
    EXPECT_EQ(frmOptions().cboTransferReset.items(),
              (Texts{"middle of day", "middle of week", "middle of month", "middle of 1/4 year",
                     "middle of 1/2 year", "middle of year", "end of day", "end of week",
                     "end of month", "end of 1/4 year", "end of 1/2 year", "end of year"}));
    EXPECT_EQ(history.cboChartType.items(),
              (Texts{"plot as line", "plot as bars", "plot as area", "plot as step"}));
    EXPECT_EQ(history.cboDataType.items(),
              (Texts{"total transfer", "differential transfer", "percentual"}));
    EXPECT_EQ(history.cboDataToShow.items(), (Texts{"Rcvd and Sent", "Received only", "Sent only",
                                                    "Total (rcvd+sent)", "Duration"}));
    for (ComboBox* combo :
         {&frmOptions().cboUnitTransferCurrent, &frmOptions().cboUnitTransferTotal,
          &frmOptions().cboTransferReset, &history.cboChartType, &history.cboDataType,
          &history.cboTransferUnit, &history.cboDataToShow}) {
        EXPECT_EQ(combo->listIndex(), 0) << combo->name();
    }
}

TEST_F(GuiTest, DurationUnitsReplaceWhatTheListHeld) {
    ComboBox& combo = world->forms.frmHistory.cboTransferUnit;
    FillTransferUnitComboBox(combo);
    combo.setListIndex(2);

    FillDurationUnitComboBox(combo);

    EXPECT_EQ(combo.items(), (Texts{"Milli-Seconds", "Seconds", "Minutes", "Hours"}));
    EXPECT_EQ(combo.listIndex(), 0);
}

TEST_F(GuiTest, TheEntriesAreListedInTheirOrder) {
    phoneBook({"Zeta", "Alpha"});

    EXPECT_TRUE(PreInitGUI());

    EXPECT_EQ(frmMain().cboConnections.items(), (Texts{"Zeta", "Alpha"}));
}

TEST_F(GuiTest, AnOpenedListShowsTheEntriesThatHaveComeAndKeepsTheChosenOne) {
    phoneBook({"Alpha", "Beta"});
    startQuietly();
    phoneBook({"Alpha", "Beta"});
    PreInitGUI();
    frmMain().cboConnections.setListIndex(1);
    phoneBook({"New", "Beta"});

    frmMain().cboConnections.DropDown.raise();

    EXPECT_EQ(frmMain().cboConnections.text(), "Beta");
    EXPECT_NE(ElementIsInComboBox(frmMain().cboConnections, "New"), -1);
}

TEST_F(GuiTest, AChosenEntryThatIsGoneIsNotChosenAnyMore) {
    phoneBook({"Alpha"});
    PreInitGUI();
    frmMain().cboConnections.setListIndex(0);
    machine.connections.entries.clear();

    RefreshEntries();

    EXPECT_EQ(frmMain().cboConnections.listCount(), 0);
    EXPECT_EQ(frmMain().cboConnections.listIndex(), -1);
}

TEST_F(GuiTest, ThousandsOfOtherEntriesAreShownAtOnceAndNotOneByOne) {
    phoneBook({"Alpha", "Beta"});
    PreInitGUI();
    frmMain().cboConnections.setListIndex(1);
    for (int number = 0; number < 10'000; ++number) {
        machine.connections.entries.push_back({.name = "Entry " + std::to_string(number)});
    }
    const RecordingView view(frmMain().cboConnections);

    RefreshEntries();

    EXPECT_EQ(frmMain().cboConnections.listCount(), 10'002);
    EXPECT_EQ(frmMain().cboConnections.text(), "Beta");
    EXPECT_EQ(view.told, (Told{Property::Items, Property::ListIndex}));
}

TEST_F(GuiTest, AnOpenedListOfTheSameEntriesIsLeftAlone) {
    phoneBook({"Alpha"});
    PreInitGUI();
    int chosen = 0;
    frmMain().cboConnections.setListIndex(0);
    frmMain().cboConnections.Click.connect([&] { ++chosen; });

    RefreshEntries();

    EXPECT_EQ(chosen, 0);
    EXPECT_EQ(frmMain().cboConnections.listIndex(), 0);
}

TEST_F(GuiTest, WithoutEntriesTheListIsEmpty) {
    frmMain().cboConnections.addItem("old");

    EXPECT_FALSE(PreInitGUI());

    EXPECT_TRUE(frmMain().cboConnections.items().empty());
}

TEST_F(GuiTest, InitGuiCopiesSettingsIntoOptionsAndTimer) {
    state().RefreshInterval = 250;
    state().MonitoringActive = true;
    state().TransferLimitValue = 42;
    state().DurationLimitHr = 7;
    state().DurationLimitMin = 8;
    state().TransferTickerValue = 9;
    state().LogIPAddress = 1;

    InitGUI();

    EXPECT_EQ(frmMain().timUpdateStats.interval(), 250);
    EXPECT_TRUE(frmMain().timUpdateStats.enabled());
    EXPECT_EQ(frmOptions().txtTransferLimit.text(), "42");
    EXPECT_EQ(frmOptions().txtDurationLimitHr.text(), "7");
    EXPECT_EQ(frmOptions().txtDurationLimitMin.text(), "8");
    EXPECT_EQ(frmOptions().txtRefreshInterval.text(), "250");
    EXPECT_EQ(frmOptions().txtTransferTicker.text(), "9");
    EXPECT_TRUE(frmOptions().chkLogIPAddress.ticked());
    EXPECT_FALSE(frmOptions().chkTransferTicker.ticked());
}

TEST_F(GuiTest, OnlineTheWindowAndTheTrayShowIt) {
    startQuietly();
    state().MonitoringActive = true;
    state().ConnectionActive = true;
    state().BytesRcvdCurrent = 10;
    machine.notificationArea.requests.clear();

    UpdateGUI();

    EXPECT_EQ(frmMain().txtBytesRcvd.text(), "10");
    EXPECT_EQ(frmMain().lblActiveConnection.foreColour(), (Colour{192, 0, 0}));
    EXPECT_FALSE(frmSysTray().mnuPopUp.entry(3).enabled);
    EXPECT_TRUE(frmSysTray().mnuPopUp.entry(4).enabled);
    ASSERT_EQ(machine.notificationArea.requests.size(), 1U);
    EXPECT_EQ(machine.notificationArea.requests[0].request, 1U);
    EXPECT_EQ(machine.notificationArea.requests[0].data.hIcon, 1U);
    EXPECT_STREQ(machine.notificationArea.requests[0].data.szTip,
                 "Velmars Tarvik: Active connection.");
    EXPECT_EQ(frmMain().picStatus.drawing(), statusLamp(LampState::Online));
}

TEST_F(GuiTest, OfflineTheWindowAndTheTrayShowIt) {
    startQuietly();
    state().MonitoringActive = true;
    state().BytesRcvdCurrent = 10;
    frmMain().txtActiveConnection.setText("something");
    frmMain().lblActiveConnection.setForeColour({192, 0, 0});
    machine.notificationArea.requests.clear();

    UpdateGUI();

    EXPECT_EQ(frmMain().txtBytesRcvd.text(), "0");
    EXPECT_EQ(frmMain().txtActiveConnection.text(), "");
    EXPECT_EQ(frmMain().lblActiveConnection.foreColour(), (Colour{0, 0, 0}));
    EXPECT_TRUE(frmSysTray().mnuPopUp.entry(3).enabled);
    EXPECT_FALSE(frmSysTray().mnuPopUp.entry(4).enabled);
    EXPECT_EQ(machine.notificationArea.requests.at(0).data.hIcon, 2U);
    EXPECT_STREQ(machine.notificationArea.requests[0].data.szTip,
                 "Velmars Tarvik: No active connection.");
    EXPECT_EQ(frmMain().picStatus.drawing(), statusLamp(LampState::Waiting));
}

TEST_F(GuiTest, WithoutMonitoringTheTrayIsLeftAlone) {
    startQuietly();
    frmSysTray().mnuPopUp.setEntryEnabled(3, false);
    machine.notificationArea.requests.clear();

    UpdateGUI();

    EXPECT_FALSE(frmSysTray().mnuPopUp.entry(3).enabled);
    EXPECT_TRUE(machine.notificationArea.requests.empty());
    EXPECT_EQ(frmMain().picStatus.drawing(), statusLamp(LampState::NotMonitoring));
}

TEST_F(GuiTest, TheSameTrayStatesMakeOnlyOneCall) {
    startQuietly("/r");
    machine.notificationArea.requests.clear();

    UpdateGUI();
    UpdateGUI();

    EXPECT_EQ(machine.notificationArea.requests.size(), 1U);
}

TEST_F(GuiTest, AnOldDesktopGetsTheOldestTrayRecord) {
    machine.notificationArea.version = 4;

    startQuietly();

    ASSERT_EQ(machine.notificationArea.requests.size(), 1U);
    EXPECT_EQ(machine.notificationArea.requests[0].data.cbSize, 88U);
}

TEST_F(GuiTest, TheInternetPanelFollowsOnlyWhileItsBoxIsTicked) {
    machine.internet.connected = true;
    UpdateGUI();
    EXPECT_FALSE(world->forms.frmStatistics.chkConnected.ticked());
    world->forms.frmStatistics.chkInternetState.setValue(1);

    UpdateGUI();

    EXPECT_TRUE(world->forms.frmStatistics.chkConnected.ticked());
}

TEST_F(GuiTest, TotalsAreStoredPlusCurrentLessOffset) {
    state().BytesRcvdTotal = 1'000'000;
    state().BytesRcvdCurrent = 300'000;
    state().BytesRcvdOffset = 65'433;
    state().BytesSentTotal = 5;
    state().DurationTotal = 3'600'000;
    state().DurationCurrent = 5000;
    state().DurationOffset = 1000;

    UpdateValuesInGUI(true, false, false);

    EXPECT_EQ(frmMain().txtBytesRcvdTotal.text(), "1,234,567");
    EXPECT_EQ(frmMain().txtBytesSentTotal.text(), "5");
    EXPECT_EQ(frmMain().txtDurationTotal.text(), "01:00:04:000");
    EXPECT_EQ(frmMain().txtBytesRcvd.text(), "");
}

TEST_F(GuiTest, CurrentFiguresAreCurrentLessOffset) {
    state().BytesRcvdCurrent = 2000;
    state().BytesRcvdOffset = 500;
    state().BytesSentCurrent = 80;
    state().DurationCurrent = 1500;
    state().DurationOffset = 500;

    UpdateValuesInGUI(false, true, false);

    EXPECT_EQ(frmMain().txtBytesRcvd.text(), "1,500");
    EXPECT_EQ(frmMain().txtBytesSent.text(), "80");
    EXPECT_EQ(frmMain().txtDurationCurrent.text(), "00:00:01:000");
    EXPECT_EQ(frmMain().txtBytesRcvdTotal.text(), "");
}

TEST_F(GuiTest, ResettingTheCurrentFiguresLeavesTheTotals) {
    state().BytesRcvdCurrent = 2000;
    UpdateValuesInGUI(true, true, false);

    UpdateValuesInGUI(false, false, true);

    EXPECT_EQ(frmMain().txtBytesRcvd.text(), "0");
    EXPECT_EQ(frmMain().txtBytesSent.text(), "0");
    EXPECT_EQ(frmMain().txtDurationCurrent.text(), "00:00:00:000");
    EXPECT_EQ(frmMain().txtBytesRcvdTotal.text(), "2,000");
}

TEST_F(GuiTest, WithoutAnyFlagNothingIsWritten) {
    UpdateValuesInGUI(false, false, false);

    EXPECT_EQ(frmMain().txtBytesRcvd.text(), "");
    EXPECT_EQ(frmMain().txtBytesRcvdTotal.text(), "");
}

TEST_F(GuiTest, OtherUnitsHaveTwoDecimals) {
    state().UnitTransferCurrent = TransferUnit::KiloBytes;
    state().UnitTransferTotal = TransferUnit::MegaBytes;
    state().BytesRcvdCurrent = 1536;
    state().BytesRcvdTotal = Currency::fromWhole(1'234'567'890'123);

    UpdateValuesInGUI(true, true, false);

    EXPECT_EQ(frmMain().txtBytesRcvd.text(), "1.50");
    EXPECT_EQ(frmMain().txtBytesRcvdTotal.text(), "1,177,375.69");
}

struct FormatCase {
    const char* name;
    LocaleData locale;
    const char* bytes;
    const char* kiloBytes;
};

class FigureFormatTest : public WorldTest, public testing::WithParamInterface<FormatCase> {};

TEST_P(FigureFormatTest, FollowsTheUsersSeparators) {
    machine.locale.conventions = GetParam().locale;
    state().BytesRcvdTotal = 1'234'567;
    UpdateValuesInGUI(true, false, false);
    EXPECT_EQ(frmMain().txtBytesRcvdTotal.text(), GetParam().bytes);
    state().UnitTransferTotal = TransferUnit::KiloBytes;

    UpdateValuesInGUI(true, false, false);

    EXPECT_EQ(frmMain().txtBytesRcvdTotal.text(), GetParam().kiloBytes);
}

INSTANTIATE_TEST_SUITE_P(
    All, FigureFormatTest,
    testing::Values(FormatCase{"German", germanLocale(), "1.234.567", "1.205,63"},
                    FormatCase{"American", americanLocale(), "1,234,567", "1,205.63"},
                    FormatCase{"Swedish", swedishLocale(),
                               "1\xC2\xA0"
                               "234\xC2\xA0"
                               "567",
                               "1\xC2\xA0"
                               "205,63"},
                    FormatCase{"French", frenchLocale(),
                               "1\xE2\x80\xAF"
                               "234\xE2\x80\xAF"
                               "567",
                               "1\xE2\x80\xAF"
                               "205,63"}),
    [](const auto& given) { return given.param.name; });

TEST_F(GuiTest, ADifferenceThatOverflowsIsReported) {
    state().BytesRcvdCurrent = 2'147'483'647;
    state().BytesRcvdOffset = -1;
    expectError("6 (Overflow)", "UpdateValuesInGUI");

    UpdateValuesInGUI(false, true, false);

    EXPECT_EQ(frmMain().txtBytesRcvd.text(), "");
}

TEST_F(GuiTest, EachUnitStepDividesBy1024) {
    state().UnitTransferCurrent = TransferUnit::GigaBytes;
    state().UnitTransferTotal = TransferUnit::KiloBytes;

    EXPECT_EQ(FinaliseTransfer(3'221'225'472.0, true), 3.0);
    EXPECT_EQ(FinaliseTransfer(512.0, false), 0.5);
}

struct TimeCase {
    std::int64_t milliseconds;
    const char* text;
};

class FinaliseTimeTest : public WorldTest, public testing::WithParamInterface<TimeCase> {};

TEST_P(FinaliseTimeTest, WritesHoursMinutesSecondsMilliseconds) {
    EXPECT_EQ(FinaliseTime(Currency::fromWhole(GetParam().milliseconds)), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(All, FinaliseTimeTest,
                         testing::Values(TimeCase{0, "00:00:00:000"}, TimeCase{7, "00:00:00:007"},
                                         TimeCase{3'723'004, "01:02:03:004"},
                                         TimeCase{86'400'000, "24:00:00:000"},
                                         TimeCase{359'999'999, "99:59:59:999"},
                                         TimeCase{360'000'000, "100:00:00:000"},
                                         TimeCase{922'337'203'685'477, "256204778:48:05:477"}));

TEST_F(GuiTest, FractionsOfAMillisecondAreDropped) {
    EXPECT_EQ(FinaliseTime(Currency::fromScaled(19'999)), "00:00:00:001");
}

class ListTest : public WorldTest {
protected:
    ComboBox& list = frmMain().cboConnections;
};

TEST_F(ListTest, AnElementIsFoundWithoutRegardToCaseAndBlanks) {
    list.addItem("MIDDLE OF DAY");
    list.addItem("END OF DAY");

    EXPECT_EQ(ElementIsInComboBox(list, "  end of day "), 1);
}

TEST_F(ListTest, AnAbsentElementIsMinusOne) {
    list.addItem("END OF DAY");

    EXPECT_EQ(ElementIsInComboBox(list, "end of"), -1);
}

TEST_F(ListTest, OfSeveralTheLastIsFound) {
    list.addItem("a");
    list.addItem(" A ");
    list.addItem("b");

    EXPECT_EQ(ElementIsInComboBox(list, "a"), 1);
}

TEST_F(ListTest, OnlyListsOfUpTo32000AreSearched) {
    for (int i = 0; i < 32'000; ++i) {
        list.addItem("x");
    }
    EXPECT_EQ(ElementIsInComboBox(list, "x"), 31'999);
    list.addItem("x");

    EXPECT_EQ(ElementIsInComboBox(list, "x"), -1);
}

TEST_F(ListTest, APositionBeyondTheListChangesNothing) {
    list.addItem("a");
    list.addItem("b");
    SetComboBox(list, 1);

    SetComboBox(list, 2);

    EXPECT_EQ(list.listIndex(), 1);
}

TEST_F(ListTest, APositionThatNoListHasIsReported) {
    expectError("9 (Subscript out of range)", "SetComboBox");

    SetComboBox(list, -2);
}

struct UnitCase {
    int unit;
    const char* caption;
};

class UnitLabelTest : public WorldTest, public testing::WithParamInterface<UnitCase> {};

TEST_P(UnitLabelTest, NamesTheUnitBehindThePrefix) {
    SetLabelUnitTransfer(frmMain().lblTransferCurrent, "current ",
                         static_cast<TransferUnit>(GetParam().unit));

    EXPECT_EQ(frmMain().lblTransferCurrent.caption(), GetParam().caption);
}

INSTANTIATE_TEST_SUITE_P(All, UnitLabelTest,
                         testing::Values(UnitCase{0, "current (bytes):"},
                                         UnitCase{1, "current (KBytes):"},
                                         UnitCase{2, "current (MBytes):"},
                                         UnitCase{3, "current (GBytes):"}));

TEST_F(GuiTest, AnotherUnitLeavesTheCaption) {
    SetLabelUnitTransfer(frmMain().lblTransferTotal, "x ", static_cast<TransferUnit>(4));

    EXPECT_EQ(frmMain().lblTransferTotal.caption(), "total (bytes):");
}

TEST_F(GuiTest, AShownFormComesToTheFront) {
    ToggleFormVisibility(frmMain(), true);

    EXPECT_TRUE(frmMain().visible());
    EXPECT_EQ(machine.desktop.broughtToFront, Texts{"frmMain"});
}

TEST_F(GuiTest, AHiddenFormDoesNot) {
    startQuietly();
    machine.desktop.broughtToFront.clear();

    ToggleFormVisibility(frmMain(), false);

    EXPECT_FALSE(frmMain().visible());
    EXPECT_TRUE(machine.desktop.broughtToFront.empty());
}

TEST_F(GuiTest, AnotherFormIsHiddenEvenWithoutANotificationArea) {
    machine.notificationArea.present = false;
    startQuietly();
    frmOptions().setVisible(true);

    ToggleFormVisibility(frmOptions(), false);

    EXPECT_FALSE(frmOptions().visible());
}

} // namespace
} // namespace tarvik
