#include "Driver.h"

#include "startup/World.h"
#include "startup/mdlStartUp.h"

#include <gtest/gtest.h>

#include <optional>

namespace tarvik::scenarios {
namespace {

constexpr const char* iniPath = "C:\\Prog\\Tarvik.ini";

/// One user, one face, and the program from its start to its end.
class Story : public testing::Test {
protected:
    Story() {
        for (const char* name : {"Harbour", "Ridge"}) {
            line().entries.push_back({.name = name});
        }
        startWorld();
    }

    ~Story() override { EXPECT_EQ(driver->boxTrouble(), ""); }

    ScriptedConnections& line() { return driver->machine().connections; }
    std::string ini() { return driver->machine().files.file(iniPath); }
    void setIni(const std::string& text) { driver->machine().files.setFile(iniPath, text); }

    void startWorld() { world.emplace(driver->platform()); }

    void start() { Main(); }
    void startQuietly() {
        setIni("[Settings]\r\nRefreshInterval=100\r\n");
        start();
    }

    void restart() {
        world.reset();
        startWorld();
        start();
    }

    void answer(const std::string& text, MsgBoxButtons buttons, MsgBoxAnswer reply) {
        driver->answerNext(text, buttons, reply);
    }

    /// What the face shows equals what the model says, control by control.
    void expectFaceAsModel() {
        EXPECT_EQ(driver->controls("frmMain"), modelControls(world->forms.frmMain));
    }

    void waitFor(const std::string& control, const std::string& text) {
        EXPECT_TRUE(driver->waitUntil([&] { return driver->read(control) == text; }))
            << control << " reads " << driver->read(control);
    }

    /// Dials and counts 5,000 bytes received and 200 sent in 3 seconds.
    void connectAndTransfer() {
        driver->choose("frmMain.cboConnections", "Ridge");
        driver->click("frmMain.cmdMonitor");
        driver->click("frmMain.cmdConnect");
        ASSERT_EQ(line().connections.size(), 1U);
        line().transfer(line().connections[0].handle, 5000, 200, 3000);
        waitFor("frmMain.txtBytesRcvd", "5,000");
    }

    std::unique_ptr<Driver> driver = makeDriver();
    std::optional<World> world;
};

constexpr const char* stopQuestion =
    "Warning: An active connection has been detected.\rIf monitoring is stopped the transfer of "
    "this connection\rwill no longer be recorded.\rPress OK to stop monitoring now.";

TEST_F(Story, ASessionIsCountedSavedAndShownAgain) {
    answer("Warning: Unable to set \"IsLocked\"-flag in INI-file!", MsgBoxButtons::OkOnly,
           MsgBoxAnswer::Ok);
    answer("Warning: Old settings could not be loaded.\rAssuming first run.", MsgBoxButtons::OkOnly,
           MsgBoxAnswer::Ok);
    start();
    EXPECT_TRUE(driver->visible("frmMain"));
    connectAndTransfer();
    EXPECT_EQ(driver->read("frmMain.txtActiveConnection"), "modem: Ridge - Line 1");
    EXPECT_EQ(driver->read("frmMain.txtDurationCurrent"), "00:00:03:000");
    expectFaceAsModel();

    driver->click("frmMain.cmdDisconnect");
    waitFor("frmMain.txtActiveConnection", "");
    EXPECT_EQ(driver->read("frmMain.txtBytesRcvd"), "0");
    EXPECT_EQ(driver->read("frmMain.txtBytesRcvdTotal"), "5,000");
    driver->click("frmMain.cmdMonitor");
    EXPECT_EQ(driver->read("frmMain.lblMonitoring"), "Monitoring: inactive");
    expectFaceAsModel();
    driver->click("frmMain.cmdQuit");
    EXPECT_FALSE(driver->visible("frmMain"));
    EXPECT_NE(ini().find("Sent=200\r\nRcvd=5000\r\nDuration=3000\r\n"), std::string::npos);

    restart();
    EXPECT_EQ(driver->read("frmMain.txtBytesRcvdTotal"), "5,000");
    EXPECT_EQ(driver->read("frmMain.txtBytesSentTotal"), "200");
    EXPECT_EQ(driver->read("frmMain.txtDurationTotal"), "00:00:03:000");
    expectFaceAsModel();
}

TEST_F(Story, QuitIsRefusedWhileMonitoring) {
    startQuietly();
    driver->click("frmMain.cmdMonitor");
    answer("Warning: Monitoring is still active.\rPlease de-activate monitoring before quit.",
           MsgBoxButtons::OkOnly, MsgBoxAnswer::Ok);

    driver->click("frmMain.cmdQuit");

    EXPECT_TRUE(driver->visible("frmMain"));
    expectFaceAsModel();
}

TEST_F(Story, StoppingWithinASessionCanBeCancelledOrAgreedTo) {
    startQuietly();
    connectAndTransfer();
    answer(stopQuestion, MsgBoxButtons::OkCancel, MsgBoxAnswer::Cancel);
    driver->click("frmMain.cmdMonitor");
    EXPECT_EQ(driver->read("frmMain.cmdMonitor"), "Stop Monitoring");

    answer(stopQuestion, MsgBoxButtons::OkCancel, MsgBoxAnswer::Ok);
    driver->click("frmMain.cmdMonitor");

    EXPECT_EQ(driver->read("frmMain.cmdMonitor"), "Start Monitoring");
    expectFaceAsModel();
}

TEST_F(Story, AWrongPasswordIsToldAndTheNextDialWorks) {
    startQuietly();
    line().errorTexts[691] = "Access denied.";
    line().failNext("RasDialA", 691);
    driver->choose("frmMain.cboConnections", "Harbour");
    answer("Error: RasDial failed with 691:\rAccess denied.", MsgBoxButtons::OkOnly,
           MsgBoxAnswer::Ok);
    driver->click("frmMain.cmdConnect");
    EXPECT_TRUE(line().connections.empty());

    driver->click("frmMain.cmdConnect");

    EXPECT_EQ(line().connections.size(), 1U);
    expectFaceAsModel();
}

TEST_F(Story, ASessionFromBeforeTheRestartIsNotCountedTwice) {
    startQuietly();
    connectAndTransfer();
    answer(stopQuestion, MsgBoxButtons::OkCancel, MsgBoxAnswer::Ok);
    driver->click("frmMain.cmdMonitor");
    driver->click("frmMain.cmdQuit");

    restart();
    answer("Monitoring has been started and an active connection with transfer has been "
           "detected.\r\rIf you have already monitored this online-session with Tarvik then\rthis "
           "may result in an unwanted offset of the recorded transfer.\r\rDo you want to use "
           "(record) the this online-session (5200 bytes)?\r(Press NO if you restarted Tarvik.)",
           MsgBoxButtons::YesNo, MsgBoxAnswer::No);
    driver->click("frmMain.cmdMonitor");
    waitFor("frmMain.txtActiveConnection", "modem: Ridge - Line 1");
    line().transfer(line().connections[0].handle, 70, 1, 500);

    waitFor("frmMain.txtBytesRcvd", "70");
    EXPECT_EQ(driver->read("frmMain.txtBytesRcvdTotal"), "5,070");
    expectFaceAsModel();
}

TEST_F(Story, TheCloseBoxHidesAndTheTrayIconBringsBack) {
    startQuietly();

    driver->closeWindow("frmMain");
    EXPECT_FALSE(driver->visible("frmMain"));
    EXPECT_TRUE(world->forms.frmMain.loaded());

    driver->clickTrayIcon();
    EXPECT_TRUE(driver->visible("frmMain"));
    expectFaceAsModel();

    driver->clickTrayIcon();
    EXPECT_FALSE(driver->visible("frmMain"));
}

TEST_F(Story, TheCloseBoxMinimisesWhereNothingWouldBringBack) {
    driver->machine().notificationArea.present = false;
    startQuietly();

    driver->closeWindow("frmMain");

    EXPECT_TRUE(driver->minimised("frmMain"));
}

TEST_F(Story, ASecondInstanceIsDeclined) {
    driver->machine().instances.error = 183;
    answer("Warning: Another instance of Velmars Tarvik seems to be running.\rAre you sure that "
           "you want to start another instance?\r(This could cause the protocol file to become "
           "corrupt!)",
           MsgBoxButtons::YesNo, MsgBoxAnswer::No);

    start();

    EXPECT_FALSE(driver->visible("frmMain"));
}

} // namespace
} // namespace tarvik::scenarios
