#include "support/WorldTest.h"

namespace tarvik {
namespace {

using ShutDownTest = WorldTest;

TEST_F(ShutDownTest, QuitSavesUnlocksAndLeavesNoWindow) {
    startQuietly();

    frmMain().cmdQuit.press();

    EXPECT_TRUE(machine.desktop.realisedForms().empty());
    EXPECT_NE(ini().find("IsLocked=0\r\n"), std::string::npos);
    EXPECT_NE(ini().find("TransferTickerValue=100\r\n"), std::string::npos);
    EXPECT_EQ(machine.instances.handlesClosed, std::vector<std::int32_t>{41});
    EXPECT_EQ(machine.notificationArea.requests.back().request, 2U);
}

TEST_F(ShutDownTest, EverythingHappensInOrder) {
    startQuietly();
    std::vector<std::string> order;
    for (Form* form : machine.desktop.realisedForms()) {
        if (form->name() != "frmMain") {
            form->Unload.connect([&order, form] { order.push_back(form->name()); });
        }
    }
    machine.profile.written.clear();

    frmMain().cmdQuit.press();

    EXPECT_EQ(order, (std::vector<std::string>{"frmWarning", "frmStatistics", "frmOptions",
                                               "frmHistory", "frmSysTray"}));
    EXPECT_EQ(machine.profile.written.front(), "Settings/UnitTransferCurrent");
    EXPECT_EQ(machine.profile.written.back(), "Settings/IsLocked");
}

TEST_F(ShutDownTest, TheTimerStopsFirst) {
    startQuietly();
    state().MonitoringActive = false;
    frmMain().timUpdateStats.setEnabled(true);

    frmMain().cmdQuit.press();

    EXPECT_FALSE(frmMain().timUpdateStats.enabled());
}

TEST_F(ShutDownTest, AStateThatCannotBeSavedIsOnlyAWarning) {
    startQuietly();
    machine.profile.failingKeys = {"TransferReset"};
    expectWarning("Warning: State could not be saved.");

    frmMain().cmdQuit.press();

    EXPECT_TRUE(machine.desktop.realisedForms().empty());
    EXPECT_NE(ini().find("IsLocked=0"), std::string::npos);
}

TEST_F(ShutDownTest, ALockFlagThatCannotBeClearedIsOnlyAWarning) {
    startQuietly();
    machine.profile.failingKeys = {"IsLocked"};
    expectWarning("Warning: Unable to unset \"IsLocked\"-flag in INI-file!");

    frmMain().cmdQuit.press();

    EXPECT_TRUE(machine.desktop.realisedForms().empty());
}

TEST_F(ShutDownTest, AFullDiskLeavesTheOldFileAndTellsBoth) {
    startQuietly();
    const std::string before = ini();
    machine.files.replaceFailure = ErrorNumber::DiskFull;
    expectWarning("Warning: State could not be saved.");
    expectWarning("Warning: Unable to unset \"IsLocked\"-flag in INI-file!");

    frmMain().cmdQuit.press();

    EXPECT_EQ(ini(), before);
}

TEST_F(ShutDownTest, QuitIsRefusedWhileMonitoring) {
    startQuietly("/r /m");
    expectWarning("Warning: Monitoring is still active.\rPlease de-activate monitoring before "
                  "quit.");

    frmMain().cmdQuit.press();

    EXPECT_TRUE(frmMain().loaded());
    EXPECT_TRUE(frmMain().visible());
}

TEST_F(ShutDownTest, TheCloseBoxOnlyHidesTheWindow) {
    startQuietly();

    EXPECT_FALSE(frmMain().unload(UnloadMode::FormControlMenu));

    EXPECT_TRUE(frmMain().loaded());
    EXPECT_FALSE(frmMain().visible());
}

TEST_F(ShutDownTest, TheCloseCommandOfAHiddenWindowShowsIt) {
    startQuietly("/m");

    frmMain().unload(UnloadMode::FormControlMenu);

    EXPECT_TRUE(frmMain().visible());
}

class EndingModeTest : public WorldTest, public testing::WithParamInterface<UnloadMode> {};

TEST_P(EndingModeTest, EndsEvenWhileMonitoringAndSaves) {
    startQuietly("/r");
    const std::uint32_t handle = machine.connections.connect("Harbour");
    state().DialInStarted = true;
    machine.connections.transfer(handle, 500, 20, 3000);
    tick();

    EXPECT_TRUE(frmMain().unload(GetParam()));

    EXPECT_NE(ini().find("Sent=20\r\nRcvd=500\r\nDuration=3000\r\n"), std::string::npos);
    EXPECT_NE(ini().find("IsLocked=0"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(All, EndingModeTest,
                         testing::Values(UnloadMode::AppWindows, UnloadMode::AppTaskManager,
                                         UnloadMode::FormOwner));

TEST_F(ShutDownTest, TheEndOfTheSessionUnloadsEverything) {
    startQuietly("/r");

    machine.desktop.endSession();

    EXPECT_TRUE(machine.desktop.realisedForms().empty());
    EXPECT_NE(ini().find("IsLocked=0"), std::string::npos);
}

class EndWithinQuestionTest : public WorldTest {
protected:
    /// A session of 5000 bytes, which the totals hold already, is asked about; the user's own
    /// session ends instead of an answer.
    void endWithinTheQuestion(const std::string& settings = "", const char* second = nullptr) {
        setIni("[Settings]\r\nLastState=a|1\r\nDateStamp1=a|1\r\nLastDateStamp=1\r\n" + settings +
               "[a|1]\r\nSent=0\r\nRcvd=5000\r\nDuration=1000\r\nIPAddress=\r\n");
        startQuietly("/r");
        machine.connections.transfer(machine.connections.connect("Harbour"), 5000, 0, 1000);
        if (second != nullptr) {
            machine.connections.transfer(machine.connections.connect(second), 70, 0, 1000);
        }
        expectBox("Monitoring has been started and an active connection with transfer has been "
                  "detected.\r\rIf you have already monitored this online-session with Tarvik "
                  "then\rthis may result in an unwanted offset of the recorded transfer.\r\rDo you "
                  "want to use (record) the this online-session (5000 bytes)?\r(Press NO if you "
                  "restarted Tarvik.)",
                  MsgBoxButtons::YesNo, MsgBoxIcon::Question, MsgBoxAnswer::No,
                  [this] { machine.desktop.endSession(); });
        tick();
    }
};

TEST_F(EndWithinQuestionTest, TheSessionIsSavedAsDeclinedAndNothingMoreIsShown) {
    endWithinTheQuestion();

    EXPECT_EQ(ini().find("Rcvd=10000\r\n"), std::string::npos);
    EXPECT_NE(ini().find("LastState=a|1\r\n"), std::string::npos);
    EXPECT_NE(ini().find("LastDateStamp=1\r\n"), std::string::npos);
    EXPECT_NE(ini().find("IsLocked=0\r\n"), std::string::npos);
    EXPECT_TRUE(machine.desktop.realisedForms().empty());
}

TEST_F(EndWithinQuestionTest, AResetThatIsDueDoesNotMoveTheSavedFileAway) {
    endWithinTheQuestion("TransferResetEnable=1\r\nTransferReset=1\r\nTransferResetBackup=1\r\n");

    EXPECT_NE(ini().find("Rcvd=5000\r\n"), std::string::npos);
    EXPECT_NE(ini().find("IsLocked=0\r\n"), std::string::npos);
}

TEST_F(EndWithinQuestionTest, ASecondLineIsNotHandledAfterTheEnd) {
    endWithinTheQuestion("TransferResetEnable=1\r\nTransferReset=1\r\nTransferResetBackup=1\r\n",
                         "Ridge");

    EXPECT_NE(ini().find("Rcvd=5000\r\n"), std::string::npos);
    EXPECT_NE(ini().find("IsLocked=0\r\n"), std::string::npos);
    EXPECT_TRUE(machine.desktop.realisedForms().empty());
}

TEST_F(ShutDownTest, ASessionThatIsAcceptedCountsWithAllItsBytes) {
    startQuietly("/r");
    machine.connections.transfer(machine.connections.connect("Harbour"), 5000, 0, 1000);
    expectSessionQuestion("5000", MsgBoxAnswer::Yes);
    tick();

    machine.desktop.endSession();

    EXPECT_NE(ini().find("Sent=0\r\nRcvd=5000\r\nDuration=1000\r\n"), std::string::npos);
}

} // namespace
} // namespace tarvik
