#include "startup/mdlStartUp.h"
#include "support/WorldTest.h"

namespace tarvik {
namespace {

constexpr const char* initialisationFailed =
    "Error: The following errors occured during initialisation:\r- Obtaining available connections "
    "failed.\r  (No RAS connections seem to be setup on this system.)\r- Enumerating RAS "
    "connections failed.\r  (OS may not support function needed to operate.)\r\rA lot of "
    "functionality will not work therefore.\rThe program maybe in an inoperatable state.\r\rPress "
    "OK to shutdown the application or Cancel to run anyway.";
constexpr const char* onlyEntriesFailed =
    "Error: The following errors occured during initialisation:\r- Obtaining available connections "
    "failed.\r  (No RAS connections seem to be setup on this system.)\r\rA lot of functionality "
    "will not work therefore.\rThe program maybe in an inoperatable state.\r\rPress OK to shutdown "
    "the application or Cancel to run anyway.";

class StartUpOrderTest : public WorldTest {
protected:
    void expectLockWarning(std::function<void()> meanwhile = {}) {
        expectBox("Warning: Unable to set \"IsLocked\"-flag in INI-file!", MsgBoxButtons::OkOnly,
                  MsgBoxIcon::Exclamation, MsgBoxAnswer::Ok, std::move(meanwhile));
    }

    void expectOldSettingsWarning(std::function<void()> meanwhile = {}) {
        expectBox("Warning: Old settings could not be loaded.\rAssuming first run.",
                  MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation, MsgBoxAnswer::Ok,
                  std::move(meanwhile));
    }

    void expectInvalidSwitch(std::function<void()> meanwhile) {
        expectBox("Warning:\rInvalid command-line switches detected:\r/x\rTry /? or /h for help.",
                  MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation, MsgBoxAnswer::Ok,
                  std::move(meanwhile));
    }

    void expectHelp(std::function<void()> meanwhile) {
        expectBox("Available command-line arguments:\r\r/?, /h, /help\r\t- Show this help\r/m, "
                  "/min\r\t- Minmise after startup\r/r, /run\r\t- Run after startup",
                  MsgBoxButtons::OkOnly, MsgBoxIcon::Information, MsgBoxAnswer::Ok,
                  std::move(meanwhile));
    }

    std::vector<std::string> loadedForms() const {
        std::vector<std::string> names;
        for (const Form* form : machine.desktop.realisedForms()) {
            names.push_back(form->name() + (form->visible() ? " seen" : ""));
        }
        return names;
    }

    const std::vector<std::string> fiveForms{"frmMain", "frmHistory", "frmOptions", "frmStatistics",
                                             "frmWarning"};
};

TEST_F(StartUpOrderTest, EveryStepFollowsTheOneBefore) {
    machine.instances.error = 183;
    setIni("[Settings]\r\nIsLocked=1\r\nUnitTransferCurrent=256\r\n");
    machine.profile.failingKeys = {"IsLocked"};
    machine.connections.failNext("RasEnumConnectionsA", 651);
    expectInstanceQuestion(MsgBoxAnswer::Yes, [this] {
        EXPECT_EQ(machine.instances.namesAsked.size(), 1U);
        EXPECT_TRUE(machine.profile.written.empty());
        EXPECT_TRUE(loadedForms().empty());
    });
    expectLockWarning([this] {
        EXPECT_EQ(machine.profile.written, std::vector<std::string>{"Settings/IsLocked"});
        EXPECT_TRUE(loadedForms().empty());
    });
    expectInvalidSwitch([this] {
        EXPECT_EQ(loadedForms(), fiveForms);
        EXPECT_TRUE(state().ArgHelp);
    });
    expectHelp([this] { EXPECT_TRUE(machine.connections.calls.empty()); });
    expectError("6 (Overflow)", "LoadState", [this] {
        EXPECT_GT(machine.connections.countOf("RasEnumEntriesA"), 0);
        EXPECT_EQ(state().RefreshInterval, Long(1000));
        EXPECT_TRUE(machine.notificationArea.requests.empty());
    });
    expectOldSettingsWarning([this] {
        EXPECT_EQ(frmMain().timUpdateStats.interval(), 0);
        EXPECT_TRUE(machine.notificationArea.requests.empty());
    });
    expectBox("Error: RasEnumConnections failed with 651:\rThe modem or other device has reported "
              "an error.",
              MsgBoxButtons::OkOnly, MsgBoxIcon::Critical, MsgBoxAnswer::Ok, [this] {
                  EXPECT_EQ(frmMain().timUpdateStats.interval(), 1000);
                  EXPECT_EQ(machine.notificationArea.requests.size(), 2U);
              });
    expectBox(initialisationFailed, MsgBoxButtons::OkCancel, MsgBoxIcon::Critical,
              MsgBoxAnswer::Cancel, [this] {
                  EXPECT_FALSE(frmMain().visible());
                  EXPECT_FALSE(state().AppInitialised);
                  EXPECT_FALSE(state().MonitoringActive);
              });

    start("/run /x /min /?");

    EXPECT_EQ(machine.desktop.broughtToFront, std::vector<std::string>{"frmMain"});
    EXPECT_TRUE(state().MonitoringActive);
    EXPECT_FALSE(frmMain().visible());
}

TEST_F(StartUpOrderTest, TheSwitchesOverruleSettingsThatAreOff) {
    setIni("[Settings]\r\nStartUpMinimise=0\r\nStartUpRunMonitoring=0\r\n");

    startQuietly("/run /min");

    EXPECT_TRUE(state().MonitoringActive);
    EXPECT_FALSE(frmMain().visible());
}

TEST_F(StartUpOrderTest, TheSwitchesAreNotStoredAsSettings) {
    startQuietly("/run /min");

    EXPECT_EQ(state().StartUpRunMonitoring, 0);
    EXPECT_EQ(state().StartUpMinimise, 0);
}

TEST_F(StartUpOrderTest, TheObjectIsMadeAlsoWhenTheFlagIsSetAndOneQuestionIsAsked) {
    setIni("[Settings]\r\nIsLocked=1\r\n");
    machine.instances.error = 183;
    expectInstanceQuestion(MsgBoxAnswer::No);

    start();

    EXPECT_EQ(machine.instances.namesAsked,
              std::vector<std::string>{"{EDA91F59-8432-4013-BFB4-5430CB8BF636}"});
}

TEST_F(StartUpOrderTest, NoAfterACrashLeavesTheFlagAndLoadsNoWindow) {
    setIni("[Settings]\r\nIsLocked=1\r\n");
    expectInstanceQuestion(MsgBoxAnswer::No);

    start("/run");

    EXPECT_TRUE(machine.desktop.realisedForms().empty());
    EXPECT_TRUE(machine.profile.written.empty());
    EXPECT_EQ(ini(), "[Settings]\r\nIsLocked=1\r\n");
    EXPECT_FALSE(state().ArgRun);
    EXPECT_TRUE(machine.notificationArea.requests.empty());
}

TEST_F(StartUpOrderTest, AStartAfterACrashAsksAndARunWithItsEndDoesNot) {
    startQuietly();
    newWorld();
    expectInstanceQuestion(MsgBoxAnswer::Yes);
    startQuietly();
    frmMain().cmdQuit.press();
    newWorld();

    startQuietly();

    EXPECT_EQ(machine.desktop.boxesShown.size(), 1U);
}

TEST_F(StartUpOrderTest, AnObjectThatCannotBeMadeRaisesNoQuestionAndIsNotReleased) {
    machine.instances.handle = 0;
    machine.instances.error = 5;
    startQuietly();

    frmMain().cmdQuit.press();

    EXPECT_TRUE(machine.instances.handlesClosed.empty());
}

TEST_F(StartUpOrderTest, ASecondInitialisationTouchesNothing) {
    startQuietly();
    state().TransferLimitValue = 7;
    const std::size_t calls = machine.connections.calls.size();
    const std::size_t requests = machine.notificationArea.requests.size();

    EXPECT_FALSE(InitApplication());

    EXPECT_EQ(machine.connections.calls.size(), calls);
    EXPECT_EQ(machine.notificationArea.requests.size(), requests);
    EXPECT_EQ(state().TransferLimitValue, Currency(7));
    EXPECT_EQ(frmMain().cboConnections.listCount(), 1);
}

TEST_F(StartUpOrderTest, AnEndAfterAFailureLeavesTheProgramUninitialised) {
    setIni("[Settings]\r\n");
    expectBox(onlyEntriesFailed, MsgBoxButtons::OkCancel, MsgBoxIcon::Critical, MsgBoxAnswer::Ok);

    start("/run");

    EXPECT_FALSE(state().AppInitialised);
    EXPECT_FALSE(state().MonitoringActive);
    EXPECT_TRUE(machine.desktop.broughtToFront.empty());
    EXPECT_EQ(machine.notificationArea.requests.back().request, 2U);
}

TEST_F(StartUpOrderTest, LoadedTotalsAreShownAtOnce) {
    setIni("[Settings]\r\nLastState=r\r\n[r]\r\nSent=12\r\nRcvd=34\r\nDuration=61001\r\n");

    startQuietly();

    EXPECT_EQ(frmMain().txtBytesSentTotal.text(), "12");
    EXPECT_EQ(frmMain().txtBytesRcvdTotal.text(), "34");
    EXPECT_EQ(frmMain().txtDurationTotal.text(), "00:01:01:001");
}

TEST_F(StartUpOrderTest, WithoutLoadedSettingsTheFiguresAreNotRefreshed) {
    frmMain().txtBytesSentTotal.setText("untouched");
    expectOldSettingsWarning();

    InitApplicationStatus();

    EXPECT_EQ(frmMain().txtBytesSentTotal.text(), "untouched");
}

TEST_F(StartUpOrderTest, TheWindowIsSetUpBeforeTheIconIsAdded) {
    int interval = 0;
    frmSysTray().Initialize.connect(
        [this, &interval] { interval = frmMain().timUpdateStats.interval(); });

    startQuietly();

    EXPECT_EQ(interval, 1000);
}

TEST_F(StartUpOrderTest, TheStoredIntervalSetsTheTimer) {
    setIni("[Settings]\r\nRefreshInterval=250\r\n");

    startQuietly();

    EXPECT_EQ(frmMain().timUpdateStats.interval(), 250);
    EXPECT_FALSE(frmMain().timUpdateStats.enabled());
}

TEST_F(StartUpOrderTest, TheEndOfTheSessionAtTheLastStartUpBoxLeavesNoWindowAndNoLock) {
    setIni("[Settings]\r\nDurationLimitHr=7\r\n");
    expectBox(onlyEntriesFailed, MsgBoxButtons::OkCancel, MsgBoxIcon::Critical,
              MsgBoxAnswer::Cancel, [this] { machine.desktop.endSession(); });

    start("/run");

    EXPECT_TRUE(machine.desktop.realisedForms().empty());
    EXPECT_NE(ini().find("IsLocked=0\r\n"), std::string::npos);
    EXPECT_NE(ini().find("DurationLimitHr=7\r\n"), std::string::npos);
}

TEST_F(StartUpOrderTest, TheEndOfTheSessionAtAFailedPhoneBookKeepsTheStoredSettings) {
    setIni("[Settings]\r\nDurationLimitHr=7\r\n");
    machine.connections.failNext("RasEnumEntriesA", 651);
    machine.connections.failNext("RasEnumEntriesA", 651);
    expectBox("Error: RasEnumEntries failed with 651:\rThe modem or other device has reported an "
              "error.",
              MsgBoxButtons::OkOnly, MsgBoxIcon::Critical, MsgBoxAnswer::Ok,
              [this] { machine.desktop.endSession(); });

    start();

    EXPECT_TRUE(machine.desktop.realisedForms().empty());
    EXPECT_EQ(ini(), "[Settings]\r\nDurationLimitHr=7\r\nIsLocked=0\r\n");
}

TEST_F(StartUpOrderTest, TheEndOfTheSessionAtTheHelpKeepsTheStoredSettings) {
    setIni("[Settings]\r\nDurationLimitHr=7\r\nRefreshInterval=250\r\n");
    expectHelp([this] { machine.desktop.endSession(); });

    startQuietly("/?");

    EXPECT_TRUE(machine.desktop.realisedForms().empty());
    EXPECT_NE(ini().find("IsLocked=0\r\n"), std::string::npos);
    EXPECT_NE(ini().find("DurationLimitHr=7\r\n"), std::string::npos);
    EXPECT_NE(ini().find("RefreshInterval=250\r\n"), std::string::npos);
}

} // namespace
} // namespace tarvik
