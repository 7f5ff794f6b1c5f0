#include "Story.h"

namespace tarvik::scenarios {
namespace {

constexpr const char* resetQuestion = "Are you really sure you want to reset the (overall) values?";
constexpr const char* backupQuestion =
    "The criteria to reset the transfer records has been reached.\rHowever - An error occured "
    "while "
    "trying to create the backup-file.\rDo you want to reset the transfers recorded anyway?";
constexpr const char* backupOfToday = "C:\\Prog\\Tarvik.2026-11-16.ini";
constexpr const char* firstBackupOfToday = "C:\\Prog\\Tarvik.2026-11-16.1.ini";

/// Totals of an earlier run, and monitoring of a session that the program dialled.
class LimitStory : public Story {
protected:
    void startWith(const std::string& settings) {
        setIni("[Settings]\r\nRefreshInterval=100\r\n" + settings);
        start();
    }

    void dial() {
        driver->choose("frmMain.cboConnections", "Ridge");
        if (!world->state.MonitoringActive) {
            driver->click("frmMain.cmdMonitor");
        }
        driver->click("frmMain.cmdConnect");
    }
    void connect() {
        dial();
        ASSERT_EQ(line().connections.size(), 1U);
    }

    bool waitUntilHungUp() {
        return driver->waitUntil([&] { return line().connections.empty(); });
    }
};

TEST_F(LimitStory, ALimitWarnsIsSilencedAndIsArmedAgain) {
    startWith("TransferLimit=1\r\nTransferLimitValue=1000\r\nTransferLimitWarning=1\r\n");
    connect();

    receive(1000);
    EXPECT_FALSE(driver->visible("frmWarning"));
    receive(1);
    EXPECT_TRUE(driver->visible("frmWarning"));
    expectFaceAsModel(world->forms.frmWarning);

    driver->click("frmWarning.cmdCancel");
    receive(1);
    EXPECT_FALSE(driver->visible("frmWarning"));

    driver->click("frmMain.cmdOptions");
    driver->click("frmOptions.cmdOK");
    receive(1);
    EXPECT_TRUE(driver->visible("frmWarning"));

    answer(resetQuestion, MsgBoxButtons::YesNo, MsgBoxAnswer::No);
    driver->click("frmWarning.cmdReset");
    driver->click("frmWarning.cmdDisconnect");
    EXPECT_TRUE(line().connections.empty());
    EXPECT_TRUE(driver->visible("frmWarning"));
    expectFaceAsModel(world->forms.frmWarning);
}

TEST_F(LimitStory, ALimitHangsUpEveryNewConnection) {
    startWith("TransferLimit=1\r\nTransferLimitValue=1000\r\nTransferLimitHangUp=1\r\n");
    connect();
    line().transfer(line().connections[0].handle, 1001, 0, 100);
    EXPECT_TRUE(waitUntilHungUp());
    // The session becomes part of the totals with the next tick.
    EXPECT_TRUE(driver->waitUntil([&] { return world->state.BytesRcvdTotal == Currency(1001); }));

    dial(); // the next tick hangs up, which may come before anybody looks

    EXPECT_TRUE(waitUntilHungUp());
    EXPECT_EQ(line().dialled.size(), 2U);
    EXPECT_FALSE(driver->visible("frmWarning"));
}

TEST_F(LimitStory, TheCloseBoxAndEscapePutTheWarningAsideUntilTheNextTick) {
    startWith("DurationLimit=1\r\nDurationLimitMin=1\r\nTransferLimitWarning=1\r\n");
    connect();
    line().transfer(line().connections[0].handle, 1, 1, 60'001);
    const auto warned = [&] { return driver->visible("frmWarning"); };
    EXPECT_TRUE(driver->waitUntil(warned));

    Timer& ticks = world->forms.frmMain.timUpdateStats;
    ticks.setEnabled(false);

    driver->closeWindow("frmWarning");

    EXPECT_TRUE(driver->waitUntil([&] { return !warned(); }));
    ticks.setEnabled(true);
    EXPECT_TRUE(driver->waitUntil(warned));
    ticks.setEnabled(false);
    driver->press("frmWarning", Key::Escape);
    EXPECT_TRUE(driver->waitUntil([&] { return !warned(); }));
    ticks.setEnabled(true);
    EXPECT_TRUE(driver->waitUntil(warned));
    EXPECT_TRUE(world->state.LimitWarningArmed);
}

TEST_F(LimitStory, TheTickerTellsOfEachStep) {
    startWith("TransferTicker=1\r\nTransferTickerValue=1\r\n");
    connect();
    receive(1);

    receive(1'048'576);

    const NOTIFYICONDATAA& note = driver->machine().notificationArea.requests.back().data;
    ASSERT_TRUE(driver->waitUntil([&] {
        return driver->machine().notificationArea.requests.back().data.uFlags ==
               NotificationArea::info;
    }));
    EXPECT_STREQ(note.szInfo, "Another 1048577 bytes transferred (1MB were setup).\r1048577 bytes "
                              "transferred in total.");
    EXPECT_STREQ(note.szInfoTitle, "Tarvik - transfer ticker");
}

class ResetStory : public LimitStory {
protected:
    static constexpr const char* monthly =
        "TransferResetEnable=1\r\nTransferReset=8\r\nTransferResetBackup=1\r\nTransferResetLast="
        "15.10.2026\r\nLastState=r\r\nLastDateStamp=1\r\nDateStamp1=r\r\n[r]\r\nSent=5\r\nRcvd="
        "7\r\nDuration=9\r\n";
    std::string backup() { return driver->machine().files.file(backupOfToday); }
};

TEST_F(ResetStory, AResetWithBackupLeavesTheDatedCopyAndAFreshFile) {
    startWith(monthly);

    connect();
    receive(70);

    EXPECT_NE(backup().find("[r]\r\nSent=5\r\nRcvd=7\r\n"), std::string::npos);
    waitFor("frmMain.txtBytesSentTotal", "0");
    driver->click("frmMain.cmdDisconnect");
    waitFor("frmMain.txtBytesRcvdTotal", "70");
    driver->click("frmMain.cmdMonitor");
    driver->click("frmMain.cmdQuit");
    EXPECT_EQ(ini().find("[r]"), std::string::npos);
    EXPECT_NE(ini().find("Rcvd=70\r\n"), std::string::npos);
    EXPECT_NE(ini().find("TransferResetLast=16.11.2026\r\n"), std::string::npos);
    EXPECT_NE(ini().find("LastDateStamp=1\r\n"), std::string::npos);
    backups = {"Tarvik.2026-11-16.ini"};
}

TEST_F(ResetStory, AFailingBackupAsksBeforeAnythingIsReset) {
    startWith(monthly);
    driver->machine().files.setReadOnly(iniPath);
    answer(backupQuestion, MsgBoxButtons::YesNo, MsgBoxAnswer::No);
    answer(backupQuestion, MsgBoxButtons::YesNo, MsgBoxAnswer::Yes);

    connect();

    waitFor("frmMain.txtBytesSentTotal", "0");
    EXPECT_EQ(backup(), "");
    EXPECT_NE(ini().find("[r]\r\nSent=5\r\n"), std::string::npos);
    setIni(ini()); // it can be written again
    resetIsLast = true;
}

TEST_F(ResetStory, ASecondBackupOnTheSameDayHasItsNameAndTheFirstANumber) {
    startWith(monthly);
    connect();
    receive(70);
    EXPECT_NE(backup().find("Rcvd=7\r\n"), std::string::npos);
    world->state.TransferResetLast = Date::fromCivil({2026, 10, 15});

    receive(1);

    ASSERT_TRUE(
        driver->waitUntil([&] { return backup().find("Rcvd=71\r\n") != std::string::npos; }));
    EXPECT_EQ(backup().find("Rcvd=7\r\n"), std::string::npos);
    EXPECT_NE(driver->machine().files.file(firstBackupOfToday).find("Rcvd=7\r\n"),
              std::string::npos);
    backups = {"Tarvik.2026-11-16.ini", "Tarvik.2026-11-16.1.ini"};
}

using OptionsStory = Story;

TEST_F(OptionsStory, OptionsSurviveOkReopeningAndARestart) {
    startQuietly();
    driver->click("frmMain.cmdOptions");
    expectFaceAsModel(world->forms.frmOptions);
    driver->choose("frmOptions.cboUnitTransferTotal", "Mega-Bytes");
    driver->click("frmOptions.chkTransferLimit");
    driver->type("frmOptions.txtTransferLimit", "25000");
    driver->click("frmOptions.chkTransferLimitHangUp");
    driver->click("frmOptions.chkTransferResetEnable");
    driver->choose("frmOptions.cboTransferReset", "end of month");
    driver->type("frmOptions.txtRefreshInterval", "99");
    expectFaceAsModel(world->forms.frmOptions);

    driver->click("frmOptions.cmdOK");
    EXPECT_FALSE(driver->visible("frmOptions"));
    EXPECT_EQ(driver->read("frmMain.lblTransferTotal"), "total (MBytes):");
    EXPECT_EQ(driver->read("frmMain.txtBytesSentTotal"), "0.00");
    driver->click("frmMain.cmdOptions");
    EXPECT_EQ(driver->read("frmOptions.txtRefreshInterval"), "1000");
    expectFaceAsModel(world->forms.frmOptions);

    driver->click("frmOptions.cmdCancel");
    driver->click("frmMain.cmdQuit");
    restart();
    driver->click("frmMain.cmdOptions");
    EXPECT_EQ(driver->read("frmOptions.txtTransferLimit"), "25000");
    EXPECT_EQ(driver->read("frmOptions.cboTransferReset"), "end of month");
    EXPECT_EQ(driver->read("frmOptions.chkTransferLimitHangUp"), "[x] Hang up connection");
    expectFaceAsModel(world->forms.frmOptions);
}

TEST_F(OptionsStory, CancelLeavesTheSettingsAndReopeningShowsThem) {
    startQuietly();
    driver->click("frmMain.cmdOptions");
    driver->click("frmOptions.chkLogIPAddress");
    driver->type("frmOptions.txtRefreshInterval", "500");

    driver->closeWindow("frmOptions");
    EXPECT_FALSE(driver->visible("frmOptions"));
    EXPECT_EQ(world->state.LogIPAddress, 0);
    driver->click("frmMain.cmdOptions");

    EXPECT_EQ(driver->read("frmOptions.chkLogIPAddress"), "[ ] Log IP addresses");
    EXPECT_EQ(driver->read("frmOptions.txtRefreshInterval"), "100");
    expectFaceAsModel(world->forms.frmOptions);
}

TEST_F(OptionsStory, AKeyThatSpoilsANumberIsUndone) {
    startQuietly();
    driver->click("frmMain.cmdOptions");

    driver->type("frmOptions.txtRefreshInterval", "25x");
    EXPECT_EQ(driver->read("frmOptions.txtRefreshInterval"), "25");
    driver->type("frmOptions.txtRefreshInterval", "\b");
    EXPECT_EQ(driver->read("frmOptions.txtRefreshInterval"), "25");

    driver->type("frmOptions.txtRefreshInterval", "4\b7");
    EXPECT_EQ(driver->read("frmOptions.txtRefreshInterval"), "47");
}

TEST_F(OptionsStory, ALimitBeyondTheLargestLongIsTypedPastItsErrorBox) {
    startQuietly();
    driver->click("frmMain.cmdOptions");
    driver->click("frmOptions.chkTransferLimit");
    for (int i = 0; i < 2; ++i) {
        answer("Error 6 (Overflow)\roccured in function \"txtTransferLimit_KeyDown\".\rPlease "
               "contact the author for support.",
               MsgBoxButtons::OkOnly, MsgBoxAnswer::Ok);
    }

    driver->type("frmOptions.txtTransferLimit", "300000000000");
    EXPECT_EQ(driver->read("frmOptions.txtTransferLimit"), "300000000000");
    driver->click("frmOptions.cmdOK");
    driver->click("frmMain.cmdOptions");

    EXPECT_EQ(driver->read("frmOptions.txtTransferLimit"), "300000000000");
}

using StatisticsStory = LimitStory;

TEST_F(StatisticsStory, ThePanelsFollowTheLineWhileTheirBoxesAreTicked) {
    startQuietly();
    driver->machine().internet.connected = true;
    driver->machine().internet.flagWord = InternetState::modem | InternetState::configured;
    driver->machine().internet.name = "Ridge";
    connect();
    driver->click("frmMain.cmdStatistics");
    expectFaceAsModel(world->forms.frmStatistics);

    // Before the box is ticked: without any time online there is no throughput.
    line().transfer(line().connections[0].handle, 1'000'000, 24'000, 512'000);
    driver->click("frmStatistics.chkActiveConnection");
    driver->click("frmStatistics.chkInternetState");
    waitFor("frmStatistics.txtAverageThroughput", "2.00 / 16.00");
    waitFor("frmStatistics.txtConnectionName", "Ridge");
    expectFaceAsModel(world->forms.frmStatistics);

    // What is shown only cannot be changed.
    driver->click("frmStatistics.chkModemUsed");
    EXPECT_EQ(driver->read("frmStatistics.chkModemUsed"),
              "[x] A modem is used to connect to the Internet");
    driver->click("frmStatistics.cmdCancel");
    EXPECT_FALSE(driver->visible("frmStatistics"));
}

using TrayStory = Story;

TEST_F(TrayStory, TheMenuHidesShowsAndStarts) {
    startQuietly();

    driver->chooseTrayEntry(FrmSysTray::showHide);
    EXPECT_FALSE(driver->visible("frmMain"));
    driver->chooseTrayEntry(FrmSysTray::monitoring);
    EXPECT_TRUE(world->state.MonitoringActive);
    driver->chooseTrayEntry(FrmSysTray::showHide);

    EXPECT_TRUE(driver->visible("frmMain"));
    EXPECT_EQ(driver->read("frmMain.cmdMonitor"), "Stop Monitoring");
}

TEST_F(TrayStory, TheMenuQuits) {
    startQuietly();

    driver->chooseTrayEntry(FrmSysTray::quit);

    EXPECT_FALSE(driver->visible("frmMain"));
    EXPECT_FALSE(world->forms.frmMain.loaded());
}

} // namespace
} // namespace tarvik::scenarios
