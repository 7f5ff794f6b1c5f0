#include "support/WorldTest.h"
#include "ui/mdlSysTray.h"

namespace tarvik {
namespace {

constexpr int leftButtonReleased = 514;
constexpr int rightButtonReleased = 517;
constexpr const char* multiplePossible =
    "Multiple connections possible.\rPlease use main dialog to select which\rconnection shall be "
    "established.";

class SysTrayTest : public WorldTest {
protected:
    SysTrayTest() { startQuietly(); }

    /// A mouse message of the icon, as the desktop delivers it.
    void iconTells(int message) { frmSysTray().picSysTrayHook.MouseMove.raise(message); }
    void choose(int entry) { frmSysTray().mnuPopUp.choose(entry); }

    /// The desktop shows no notes; monitoring is on.
    void hideDesktop() {
        choose(FrmSysTray::monitoring);
        machine.notificationArea.present = false;
    }
    /// It does; what was asked for in vain is forgotten.
    void showDesktop() {
        machine.notificationArea.present = true;
        machine.notificationArea.requests.clear();
    }
    void tickAfter(int seconds) {
        machine.clock.advanceSeconds(seconds);
        tick();
    }
};

TEST_F(SysTrayTest, TheIconsRecordNamesThePictureThatReceivesItsMessages) {
    const NOTIFYICONDATAA& record = machine.notificationArea.requests.front().data;

    EXPECT_NE(record.hWnd, 0U);
    EXPECT_EQ(record.hWnd, frmSysTray().picSysTrayHook.hWnd());
    EXPECT_EQ(record.uCallbackMessage, 512U);
    EXPECT_EQ(record.uID, 1U);
    EXPECT_EQ(record.uFlags, 7U);
}

TEST_F(SysTrayTest, TheLeftButtonHidesAndShowsTheMainWindow) {
    iconTells(leftButtonReleased);
    EXPECT_FALSE(frmMain().visible());

    iconTells(leftButtonReleased);
    EXPECT_TRUE(frmMain().visible());
    EXPECT_EQ(machine.desktop.broughtToFront.back(), "frmMain");
}

TEST_F(SysTrayTest, TheLeftButtonBringsAMinimisedWindowBack) {
    frmMain().setMinimised(true);

    iconTells(leftButtonReleased);

    EXPECT_TRUE(frmMain().visible());
    EXPECT_FALSE(frmMain().minimised());
    EXPECT_EQ(machine.desktop.broughtToFront.back(), "frmMain");
}

TEST_F(SysTrayTest, TheFirstEntryBringsAMinimisedWindowBack) {
    frmMain().setMinimised(true);

    choose(0);

    EXPECT_TRUE(frmMain().visible());
    EXPECT_FALSE(frmMain().minimised());
}

TEST_F(SysTrayTest, TheRightButtonOpensTheMenuOfTheMainWindowInTheForeground) {
    iconTells(rightButtonReleased);

    EXPECT_EQ(machine.notificationArea.foregroundWindows,
              std::vector<std::uint32_t>{frmMain().hWnd()});
    EXPECT_EQ(machine.desktop.menusOpened, std::vector<std::string>{"frmMain.mnuPopUp"});
}

TEST_F(SysTrayTest, EveryOtherMouseMessageIsIgnored) {
    for (const int message : {0, 512, 513, 515, 516, 518, -1}) {
        iconTells(message);
    }

    EXPECT_TRUE(frmMain().visible());
    EXPECT_TRUE(machine.desktop.menusOpened.empty());
}

TEST_F(SysTrayTest, TheFirstEntryShowsOrHidesTheMainWindow) {
    choose(0);
    EXPECT_FALSE(frmMain().visible());

    choose(0);
    EXPECT_TRUE(frmMain().visible());
}

TEST_F(SysTrayTest, TheSecondEntryStartsAndStopsMonitoring) {
    choose(1);
    EXPECT_TRUE(state().MonitoringActive);

    choose(1);
    EXPECT_FALSE(state().MonitoringActive);
}

TEST_F(SysTrayTest, TheConnectEntryDialsTheOnlyEntry) {
    ASSERT_EQ(frmMain().cboConnections.listCount(), 1);

    choose(FrmSysTray::connect);

    ASSERT_EQ(machine.connections.connections.size(), 1U);
}

class TrayConnectTest : public WorldTest, public testing::WithParamInterface<int> {};

TEST_P(TrayConnectTest, AnyOtherNumberOfEntriesSendsTheUserToTheMainWindow) {
    startQuietly();
    frmMain().cboConnections.clear();
    for (int i = 0; i < GetParam(); ++i) {
        frmMain().cboConnections.addItem("Entry");
    }
    expectWarning(multiplePossible);

    frmSysTray().mnuPopUp.choose(FrmSysTray::connect);

    EXPECT_TRUE(machine.connections.connections.empty());
}

INSTANTIATE_TEST_SUITE_P(NoneAndTwo, TrayConnectTest, testing::Values(0, 2));

TEST_F(SysTrayTest, TheDisconnectEntryHangsUp) {
    choose(FrmSysTray::connect);
    frmSysTray().mnuPopUp.setEntryEnabled(FrmSysTray::disconnect, true);

    choose(FrmSysTray::disconnect);

    EXPECT_TRUE(machine.connections.connections.empty());
}

TEST_F(SysTrayTest, TheSeparatorsDoNothing) {
    choose(2);
    choose(5);

    EXPECT_TRUE(frmMain().visible());
    EXPECT_FALSE(state().MonitoringActive);
}

TEST_F(SysTrayTest, TheLastEntryQuits) {
    choose(FrmSysTray::quit);

    EXPECT_FALSE(frmMain().loaded());
}

TEST_F(SysTrayTest, TheLastEntryIsRefusedWhileMonitoring) {
    choose(1);
    expectWarning("Warning: Monitoring is still active.\rPlease de-activate monitoring before "
                  "quit.");

    choose(FrmSysTray::quit);

    EXPECT_TRUE(frmMain().loaded());
}

TEST_F(SysTrayTest, ANoteThatTheDesktopCannotShowYetIsShownWhenItCan) {
    hideDesktop();
    TellSoon("what matters");
    showDesktop();

    tickAfter(5);
    tickAfter(5);

    EXPECT_EQ(notes(), std::vector<std::string>{"what matters"});
}

TEST_F(SysTrayTest, ADesktopThatShowsNoNotesIsAskedEveryFiveSeconds) {
    hideDesktop();
    TellSoon("what matters");

    for (int second = 1; second <= 10; ++second) {
        tickAfter(1);
    }

    EXPECT_EQ(notes().size(), 3U);
}

TEST_F(SysTrayTest, WhileMonitoringASecondNoteDoesNotTakeThePlaceOfTheFirstAtOnce) {
    choose(FrmSysTray::monitoring);
    TellSoon("first");
    TellSoon("second");

    EXPECT_EQ(notes(), std::vector<std::string>{"first"});
    tickAfter(5);
    EXPECT_EQ(notes(), (std::vector<std::string>{"first", "second"}));
}

TEST_F(SysTrayTest, NotesThatWaitComeOneAfterTheOther) {
    hideDesktop();
    TellSoon("first");
    TellSoon("second");
    showDesktop();

    tickAfter(5);
    EXPECT_EQ(notes(), std::vector<std::string>{"first"});
    tickAfter(5);

    EXPECT_EQ(notes(), (std::vector<std::string>{"first", "second"}));
}

TEST_F(SysTrayTest, AnErrorOfTheMenuIsReportedUnderItsName) {
    frmMain().cboConnections.clear();
    expectBox(multiplePossible, MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation, MsgBoxAnswer::Ok,
              [] { raise(ErrorNumber::PermissionDenied); });
    expectError("70 (Permission denied)", "mnuPopUpEntry_Click");

    choose(FrmSysTray::connect);
}

} // namespace
} // namespace tarvik
