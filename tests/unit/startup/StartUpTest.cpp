#include "startup/mdlArguments.h"
#include "startup/mdlStartUp.h"

#include "startup/mdlSingleInstance.h"
#include "support/WorldTest.h"

namespace tarvik {
namespace {

constexpr const char* minimisedInstead =
    "This desktop has no notification area.\rThe main window is minimised instead of being hidden.";

class StartUpTest : public WorldTest {};

TEST_F(StartUpTest, ThePlainStartShowsTheMainWindowInFront) {
    startQuietly();

    EXPECT_TRUE(frmMain().visible());
    EXPECT_EQ(machine.desktop.broughtToFront, std::vector<std::string>{"frmMain"});
    EXPECT_FALSE(state().MonitoringActive);
    EXPECT_TRUE(state().AppInitialised);
}

TEST_F(StartUpTest, TheWindowsAreLoadedInOrderAndHidden) {
    startQuietly("/min");

    std::vector<std::string> names;
    for (const Form* form : machine.desktop.realisedForms()) {
        names.push_back(form->name());
        EXPECT_FALSE(form->visible());
    }
    EXPECT_EQ(names, (std::vector<std::string>{"frmMain", "frmHistory", "frmOptions",
                                               "frmStatistics", "frmWarning", "frmSysTray"}));
}

TEST_F(StartUpTest, AFirstRunShowsTwoWarnings) {
    phoneBook({"Harbour"});
    expectFirstRunBoxes();

    start();

    EXPECT_TRUE(frmMain().visible());
}

TEST_F(StartUpTest, TheFileSaysThatAnInstanceRuns) {
    startQuietly();

    EXPECT_EQ(ini(), "[Settings]\r\nIsLocked=1\r\n");
}

TEST_F(StartUpTest, ASecondInstanceIsAskedAboutAndNoEndsItBeforeAnythingHappens) {
    setIni("[Settings]\r\n");
    machine.instances.error = 183;
    expectInstanceQuestion(MsgBoxAnswer::No);

    start();

    EXPECT_TRUE(machine.desktop.realisedForms().empty());
    EXPECT_EQ(ini(), "[Settings]\r\n");
    EXPECT_EQ(machine.files.replacements, 0);
}

TEST_F(StartUpTest, ASecondInstanceMayRunIfTheUserSaysYes) {
    machine.instances.error = 183;
    expectInstanceQuestion(MsgBoxAnswer::Yes);

    startQuietly();

    EXPECT_TRUE(frmMain().visible());
}

TEST_F(StartUpTest, AfterACrashTheFlagInTheFileRaisesTheSameQuestion) {
    setIni("[Settings]\r\nIsLocked=1\r\n");
    expectInstanceQuestion(MsgBoxAnswer::Yes);

    startQuietly();

    EXPECT_TRUE(frmMain().visible());
}

TEST_F(StartUpTest, TheFlagIsReadAlsoWhenAnotherInstanceHoldsTheName) {
    setIni("[Settings]\r\nIsLocked=1\r\n");
    machine.instances.error = 183;
    expectInstanceQuestion(MsgBoxAnswer::No);

    start();

    EXPECT_EQ(state().IniFileName, iniPath);
}

TEST_F(StartUpTest, ALockFlagThatCannotBeSetIsOnlyAWarning) {
    phoneBook({"Harbour"});
    setIni("[Settings]\r\n");
    machine.profile.failingKeys = {"IsLocked"};
    expectWarning("Warning: Unable to set \"IsLocked\"-flag in INI-file!");

    start();

    EXPECT_TRUE(frmMain().visible());
}

TEST_F(StartUpTest, SwitchesInCapitalsRunAndHide) {
    startQuietly("/R /MIN");

    EXPECT_TRUE(state().MonitoringActive);
    EXPECT_FALSE(frmMain().visible());
}

TEST_F(StartUpTest, SwitchesInSmallLettersRunAndHide) {
    startQuietly("/r /m");

    EXPECT_TRUE(state().MonitoringActive);
    EXPECT_FALSE(frmMain().visible());
}

TEST_F(StartUpTest, TheStoredSettingsRunAndHide) {
    setIni("[Settings]\r\nStartUpMinimise=1\r\nStartUpRunMonitoring=1\r\n");

    startQuietly();

    EXPECT_TRUE(state().MonitoringActive);
    EXPECT_FALSE(frmMain().visible());
}

TEST_F(StartUpTest, WithoutANotificationAreaTheWindowIsMinimisedInsteadOfHidden) {
    machine.notificationArea.present = false;
    expectBox(minimisedInstead, MsgBoxButtons::OkOnly, MsgBoxIcon::Information);

    startQuietly("/min");

    EXPECT_TRUE(frmMain().visible());
    EXPECT_TRUE(frmMain().minimised());
}

TEST_F(StartUpTest, ThatTheWindowIsMinimisedInsteadIsSaidOnce) {
    machine.notificationArea.present = false;
    expectBox(minimisedInstead, MsgBoxButtons::OkOnly, MsgBoxIcon::Information);
    startQuietly("/min");
    frmMain().setVisible(true);

    frmMain().unload(UnloadMode::FormControlMenu);

    EXPECT_TRUE(frmMain().minimised());
}

TEST_F(StartUpTest, ThatTheWindowIsMinimisedInsteadIsSaidInANoteWhereTheDesktopShowsNotes) {
    machine.notificationArea.onlyNotes = true;

    startQuietly("/min");

    ASSERT_FALSE(machine.notificationArea.requests.empty());
    const NOTIFYICONDATAA& note = machine.notificationArea.requests.back().data;
    EXPECT_EQ(note.uFlags, 16U);
    EXPECT_STREQ(note.szInfo, minimisedInstead);
    EXPECT_STREQ(note.szInfoTitle, "Velmars Tarvik");
}

TEST_F(StartUpTest, UnknownSwitchesAreListedAndTheValidOneStillCounts) {
    expectWarning("Warning:\rInvalid command-line switches detected:\r/x\r/y\rTry /? or /h for "
                  "help.");

    startQuietly("/x /run /y");

    EXPECT_TRUE(state().MonitoringActive);
}

TEST_F(StartUpTest, OfTwelveSwitchesOnlyTenAreExamined) {
    startQuietly("/m /m /m /m /m /m /m /m /m /m /run /x");

    EXPECT_FALSE(state().MonitoringActive);
    EXPECT_FALSE(frmMain().visible());
}

TEST_F(StartUpTest, HelpIsShownAndTheProgramRunsOn) {
    expectBox("Available command-line arguments:\r\r/?, /h, /help\r\t- Show this help\r/m, "
              "/min\r\t- Minmise after startup\r/r, /run\r\t- Run after startup",
              MsgBoxButtons::OkOnly, MsgBoxIcon::Information);

    startQuietly("/?");

    EXPECT_TRUE(frmMain().visible());
    EXPECT_FALSE(state().MonitoringActive);
}

TEST_F(StartUpTest, NoHelpIsShownUnlessItWasAskedFor) {
    OperateArgs();

    EXPECT_TRUE(machine.desktop.boxesShown.empty());
}

constexpr const char* noEntries =
    "Error: The following errors occured during initialisation:\r- Obtaining available connections "
    "failed.\r  (No RAS connections seem to be setup on this system.)";
constexpr const char* runAnyway =
    "\r\rA lot of functionality will not work therefore.\rThe program maybe in an inoperatable "
    "state.\r\rPress OK to shutdown the application or Cancel to run anyway.";

TEST_F(StartUpTest, WithoutEntriesCancelKeepsTheProgramRunning) {
    setIni("[Settings]\r\n");
    expectBox(std::string(noEntries) + runAnyway, MsgBoxButtons::OkCancel, MsgBoxIcon::Critical,
              MsgBoxAnswer::Cancel);

    start();

    EXPECT_TRUE(frmMain().visible());
    EXPECT_TRUE(state().AppInitialised);
}

TEST_F(StartUpTest, WithoutEntriesOkShutsTheProgramDown) {
    setIni("[Settings]\r\n");
    expectBox(std::string(noEntries) + runAnyway, MsgBoxButtons::OkCancel, MsgBoxIcon::Critical,
              MsgBoxAnswer::Ok);

    start();

    EXPECT_TRUE(machine.desktop.realisedForms().empty());
    EXPECT_NE(ini().find("IsLocked=0"), std::string::npos);
    EXPECT_EQ(machine.instances.handlesClosed, std::vector<std::int32_t>{41});
}

TEST_F(StartUpTest, AFailedEnumerationIsToldTogetherWithMissingEntries) {
    setIni("[Settings]\r\n");
    machine.connections.failNext("RasEnumConnectionsA", 651);
    expectFailure("Error: RasEnumConnections failed with 651:\rThe modem or other device has "
                  "reported an error.");
    expectBox(std::string(noEntries) +
                  "\r- Enumerating RAS connections failed.\r  (OS may not support function needed "
                  "to operate.)" +
                  runAnyway,
              MsgBoxButtons::OkCancel, MsgBoxIcon::Critical, MsgBoxAnswer::Cancel);

    start();
}

TEST_F(StartUpTest, AFailedEnumerationAloneDoesNotStopTheStart) {
    machine.connections.failNext("RasEnumConnectionsA", 651);
    expectFailure("Error: RasEnumConnections failed with 651:\rThe modem or other device has "
                  "reported an error.");

    startQuietly();

    EXPECT_TRUE(frmMain().visible());
}

TEST_F(StartUpTest, TheTrayIconIsAddedWithBothStatesZero) {
    startQuietly();

    ASSERT_GE(machine.notificationArea.requests.size(), 2U);
    const auto& added = machine.notificationArea.requests[0];
    EXPECT_EQ(added.request, 0U);
    EXPECT_EQ(added.data.cbSize, 488U);
    EXPECT_EQ(added.data.hIcon, 0U);
    EXPECT_STREQ(added.data.szTip, "Velmars Tarvik: Not monitoring.");
    EXPECT_EQ(machine.notificationArea.requests[1].request, 4U);
}

TEST_F(StartUpTest, RegisteringUsesTheProgramsOwnNameUnlessAnotherIsGiven) {
    EXPECT_TRUE(RegisterApp());
    EXPECT_TRUE(RegisterApp("other"));

    EXPECT_EQ(machine.instances.namesAsked,
              (std::vector<std::string>{"{EDA91F59-8432-4013-BFB4-5430CB8BF636}", "other"}));
    EXPECT_EQ(state().InstanceMutex, 42) << "the one that was made last";
}

TEST_F(StartUpTest, ANameThatIsTakenMeansAnotherInstance) {
    machine.instances.error = 183;

    EXPECT_FALSE(RegisterApp());
}

TEST_F(StartUpTest, AnObjectThatCannotBeMadeCountsAsNoOtherInstance) {
    machine.instances.handle = 0;
    machine.instances.error = 5;

    EXPECT_TRUE(RegisterApp());
}

TEST_F(StartUpTest, OnlyAHeldObjectIsReleased) {
    ReleaseApp();
    EXPECT_TRUE(machine.instances.handlesClosed.empty());
    state().InstanceMutex = 7;

    ReleaseApp();

    EXPECT_EQ(machine.instances.handlesClosed, std::vector<std::int32_t>{7});
    EXPECT_EQ(state().InstanceMutex, 0);
}

} // namespace
} // namespace tarvik
