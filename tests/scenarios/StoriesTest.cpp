#include "Story.h"

namespace tarvik::scenarios {
namespace {

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
    answer("This desktop has no notification area.\rThe main window is minimised instead of being "
           "hidden.",
           MsgBoxButtons::OkOnly, MsgBoxAnswer::Ok);

    driver->closeWindow("frmMain");

    EXPECT_TRUE(driver->minimised("frmMain"));
}

TEST_F(Story, ASecondInstanceIsDeclined) {
    setIni("[Settings]\r\n");
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
