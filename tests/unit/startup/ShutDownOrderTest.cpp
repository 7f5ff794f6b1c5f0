#include "startup/mdlShutDown.h"
#include "startup/mdlSingleInstance.h"
#include "support/WorldTest.h"

namespace tarvik {
namespace {

class ShutDownOrderTest : public WorldTest {
protected:
    std::vector<std::string> realisedNames() const {
        std::vector<std::string> names;
        for (const Form* form : machine.desktop.realisedForms()) {
            names.push_back(form->name());
        }
        return names;
    }

    std::uint32_t lastTrayRequest() const {
        return machine.notificationArea.requests.back().request;
    }

    static constexpr std::uint32_t removed = 2;
};

TEST_F(ShutDownOrderTest, BothWarningsComeInOrderWhileEverythingIsStillThere) {
    startQuietly();
    frmMain().timUpdateStats.setEnabled(true);
    machine.profile.failingKeys = {"UnitTransferTotal", "IsLocked"};
    expectBox("Warning: State could not be saved.", MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation,
              MsgBoxAnswer::Ok, [this] {
                  EXPECT_FALSE(frmMain().timUpdateStats.enabled());
                  EXPECT_EQ(machine.profile.written.back(), "Settings/UnitTransferTotal");
                  EXPECT_EQ(realisedNames().size(), 6U);
              });
    expectBox("Warning: Unable to unset \"IsLocked\"-flag in INI-file!", MsgBoxButtons::OkOnly,
              MsgBoxIcon::Exclamation, MsgBoxAnswer::Ok, [this] {
                  EXPECT_EQ(machine.profile.written.back(), "Settings/IsLocked");
                  EXPECT_EQ(realisedNames().size(), 6U);
                  EXPECT_NE(lastTrayRequest(), removed);
              });

    frmMain().cmdQuit.press();

    EXPECT_TRUE(realisedNames().empty());
}

TEST_F(ShutDownOrderTest, TheIconGoesAfterTheWindowsAndTheObjectLast) {
    startQuietly();
    std::vector<std::string> order;
    Forms& forms = world->forms;
    for (Form* form : std::vector<Form*>{&forms.frmHistory, &forms.frmOptions, &forms.frmStatistics,
                                         &forms.frmWarning, &forms.frmSysTray}) {
        form->Unload.connect([this, &order, form] {
            order.push_back(form->name() + (lastTrayRequest() == removed ? " after" : " before"));
            EXPECT_NE(ini().find("IsLocked=0"), std::string::npos);
            EXPECT_TRUE(machine.instances.handlesClosed.empty());
            EXPECT_TRUE(frmMain().loaded());
        });
    }

    frmMain().cmdQuit.press();

    EXPECT_EQ(order, (std::vector<std::string>{"frmWarning before", "frmStatistics before",
                                               "frmOptions before", "frmHistory before",
                                               "frmSysTray after"}));
    EXPECT_EQ(machine.instances.handlesClosed, std::vector<std::int32_t>{41});
}

TEST_F(ShutDownOrderTest, NoTickRunsAnyMore) {
    startQuietly("/run");
    machine.desktop.endSession();
    const std::size_t calls = machine.connections.calls.size();

    machine.desktop.advance(60'000);

    EXPECT_EQ(machine.connections.calls.size(), calls);
}

TEST_F(ShutDownOrderTest, ARefusedQuitChangesNothing) {
    startQuietly("/run");
    const std::string before = ini();
    machine.desktop.broughtToFront.clear();
    expectWarning("Warning: Monitoring is still active.\rPlease de-activate monitoring before "
                  "quit.");

    frmMain().cmdQuit.press();

    EXPECT_EQ(ini(), before);
    EXPECT_EQ(realisedNames().size(), 6U);
    EXPECT_TRUE(frmMain().timUpdateStats.enabled());
    EXPECT_EQ(machine.desktop.broughtToFront, std::vector<std::string>{"frmMain"});
    EXPECT_TRUE(machine.instances.handlesClosed.empty());
}

TEST_F(ShutDownOrderTest, AQuitAfterMonitoringWasStoppedEnds) {
    startQuietly("/run");
    frmMain().cmdMonitor.press();

    frmMain().cmdQuit.press();

    EXPECT_TRUE(realisedNames().empty());
}

TEST_F(ShutDownOrderTest, TheCloseBoxEndsNothingWhileMonitoring) {
    startQuietly("/run");

    EXPECT_FALSE(frmMain().unload(UnloadMode::FormControlMenu));

    EXPECT_FALSE(frmMain().visible());
    EXPECT_TRUE(state().MonitoringActive);
    EXPECT_TRUE(frmMain().timUpdateStats.enabled());
}

TEST_F(ShutDownOrderTest, ASecondShutDownWritesNoSecondRecordAndReleasesNothingTwice) {
    startQuietly();
    state().BytesRcvdTotal = 5;

    ShutDown();
    ShutDown();

    EXPECT_NE(ini().find("LastDateStamp=1\r\n"), std::string::npos);
    EXPECT_EQ(machine.instances.handlesClosed, std::vector<std::int32_t>{41});
}

TEST_F(ShutDownOrderTest, AFirstRunLeavesAllDefaultsAndTheFlagBehind) {
    phoneBook({"Harbour"});
    expectFirstRunBoxes();
    start();
    EXPECT_FALSE(machine.files.exists(iniPath));

    frmMain().cmdQuit.press();

    EXPECT_EQ(ini(), "[Settings]\r\nUnitTransferCurrent=0\r\nUnitTransferTotal=0\r\n"
                     "TransferLimit=0\r\nTransferLimitValue=1000000\r\nDurationLimit=0\r\n"
                     "DurationLimitHr=600\r\nDurationLimitMin=0\r\nTransferLimitWarning=0\r\n"
                     "TransferLimitHangUp=0\r\nTransferResetEnable=0\r\nTransferReset=0\r\n"
                     "TransferResetBackup=0\r\nTransferResetLast=01.01.2001\r\n"
                     "StartUpMinimise=0\r\nStartUpRunMonitoring=0\r\nRefreshInterval=1000\r\n"
                     "LogIPAddress=0\r\nTransferTicker=0\r\nTransferTickerValue=100\r\n"
                     "IsLocked=0\r\n");
}

TEST_F(ShutDownOrderTest, WhatAFirstRunLeftIsReadAtTheNextStartWithoutABox) {
    phoneBook({"Harbour"});
    expectFirstRunBoxes();
    start();
    frmMain().cmdQuit.press();
    newWorld();

    start();

    EXPECT_EQ(state().TransferLimitValue, Currency(1'000'000));
    EXPECT_EQ(state().DurationLimitHr, Long(600));
    EXPECT_NE(ini().find("IsLocked=1\r\n"), std::string::npos);
}

TEST_F(ShutDownOrderTest, ADirectoryInTheFilesPlaceIsToldAtEachStep) {
    phoneBook({"Harbour"});
    machine.files.setKind(iniPath, FileKind::Directory);
    expectWarning("Error: INI file exists as directory.");
    expectWarning("Warning: Unable to set \"IsLocked\"-flag in INI-file!");
    expectWarning("Error: INI file exists as directory.");
    expectWarning("Warning: Old settings could not be loaded.\rAssuming first run.");
    start();
    expectWarning("Error: INI file exists as directory.");
    expectWarning("Warning: State could not be saved.");
    expectWarning("Warning: Unable to unset \"IsLocked\"-flag in INI-file!");

    frmMain().cmdQuit.press();

    EXPECT_EQ(state().IniFileName, "");
    EXPECT_EQ(machine.files.replacements, 0);
}

TEST_F(ShutDownOrderTest, AFileThatCannotBeReadIsLeftAsItIs) {
    phoneBook({"Harbour"});
    setIni("[Settings]\r\nDurationLimitHr=7\r\n");
    machine.files.readFailure = ErrorNumber::PermissionDenied;
    expectWarning("Warning: Unable to set \"IsLocked\"-flag in INI-file!");
    expectWarning("Warning: Old settings could not be loaded.\rAssuming first run.");
    start();
    expectWarning("Warning: State could not be saved.");
    expectWarning("Warning: Unable to unset \"IsLocked\"-flag in INI-file!");

    frmMain().cmdQuit.press();

    EXPECT_EQ(ini(), "[Settings]\r\nDurationLimitHr=7\r\n");
}

TEST_F(ShutDownOrderTest, AFileThatCannotBeWrittenIsReadAndLeftAsItIs) {
    phoneBook({"Harbour"});
    setIni("[Settings]\r\nDurationLimitHr=7\r\n");
    machine.files.replaceFailure = ErrorNumber::PathFileAccess;
    expectWarning("Warning: Unable to set \"IsLocked\"-flag in INI-file!");
    start();
    EXPECT_EQ(state().DurationLimitHr, Long(7));
    expectWarning("Warning: State could not be saved.");
    expectWarning("Warning: Unable to unset \"IsLocked\"-flag in INI-file!");

    frmMain().cmdQuit.press();

    EXPECT_EQ(ini(), "[Settings]\r\nDurationLimitHr=7\r\n");
}

struct HandleCase {
    std::int32_t handle;
    std::vector<std::int32_t> closed;
};

class HandleTest : public WorldTest, public testing::WithParamInterface<HandleCase> {};

TEST_P(HandleTest, IsClosedFromOneUpwards) {
    state().InstanceMutex = GetParam().handle;

    ReleaseApp();

    EXPECT_EQ(machine.instances.handlesClosed, GetParam().closed);
}

INSTANTIATE_TEST_SUITE_P(Edges, HandleTest,
                         testing::Values(HandleCase{-1, {}}, HandleCase{0, {}}, HandleCase{1, {1}},
                                         HandleCase{2'147'483'647, {2'147'483'647}}));

} // namespace
} // namespace tarvik
