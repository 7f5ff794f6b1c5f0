#include "monitor/mdlCodeMonitor.h"

#include "monitor/mdlCodeToggle.h"
#include "state/mdlTransfers.h"
#include "support/WorldTest.h"

#include <cstring>

namespace tarvik {
namespace {

class MonitorTest : public WorldTest {
protected:
    MonitorTest() { startQuietly("/r"); }

    static RAS_STATS statistics(std::uint32_t rcvd, std::uint32_t sent, std::uint32_t duration) {
        RAS_STATS result{};
        result.dwSize = RAS_STATS::size;
        result.dwBytesRcved = rcvd;
        result.dwBytesXmited = sent;
        result.dwConnectDuration = duration;
        return result;
    }
};

TEST_F(MonitorTest, ATickTakesTheCountersOfTheLine) {
    line().transfer(dialledConnection(), 5000, 700, 1500);

    EXPECT_TRUE(UpdateStats());

    EXPECT_TRUE(state().ConnectionActive);
    EXPECT_EQ(state().BytesRcvdCurrent, Long(5000));
    EXPECT_EQ(state().BytesSentCurrent, Long(700));
    EXPECT_EQ(state().DurationCurrent, Long(1500));
}

TEST_F(MonitorTest, OnePastTheLastConnectionIsNoneAndItsReadingIsTaken) {
    const std::uint32_t handle = dialledConnection();
    line().connection(handle)->totals = Traffic{.rcvd = 77};
    state().RasConnections.assign(2, RASCONNA{});
    state().RasConnections.back().hrasconn = handle;
    state().RasConnections.pop_back();
    expectError("9 (Subscript out of range)", "SetActiveConnection");

    EXPECT_TRUE(HandleOnline(1, statistics(5000, 0, 1)));

    EXPECT_EQ(state().BytesRcvdCurrent, Long(5000));
}

TEST_F(MonitorTest, TheTimerTicksAtTheRefreshInterval) {
    line().transfer(dialledConnection(), 1, 1, 1);
    EXPECT_EQ(frmMain().timUpdateStats.interval(), 1000);
    machine.desktop.advance(999);
    EXPECT_FALSE(state().ConnectionActive);

    machine.desktop.advance(1);

    EXPECT_TRUE(state().ConnectionActive);
}

TEST_F(MonitorTest, AnOfflineTickIsNotOnline) {
    EXPECT_FALSE(UpdateStats());

    EXPECT_FALSE(state().ConnectionActive);
}

TEST_F(MonitorTest, TheFirstOfflineTickAddsTheSessionAndTheNextAddsNothing) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 5000, 700, 1500);
    tick();
    line().disconnect(handle);

    tick();
    tick();

    EXPECT_EQ(state().BytesRcvdTotal, Currency(5000));
    EXPECT_EQ(state().BytesSentTotal, Currency(700));
    EXPECT_EQ(state().DurationTotal, Currency(1500));
    EXPECT_EQ(state().BytesRcvdCurrent, Long(0));
}

TEST_F(MonitorTest, ADeclinedSessionCountsFromTheAnswerOn) {
    const std::uint32_t handle = line().connect("Harbour");
    line().transfer(handle, 4000, 1000, 60'000);
    expectSessionQuestion("5000", MsgBoxAnswer::No);
    tick();
    EXPECT_EQ(frmMain().txtBytesRcvd.text(), "0");
    line().transfer(handle, 300, 20, 2000);
    tick();
    line().disconnect(handle);

    tick();

    EXPECT_EQ(state().BytesRcvdTotal, Currency(300));
    EXPECT_EQ(state().BytesSentTotal, Currency(20));
    EXPECT_EQ(state().DurationTotal, Currency(2000));
}

TEST_F(MonitorTest, AnAcceptedSessionCountsAsAWhole) {
    const std::uint32_t handle = line().connect("Harbour");
    line().transfer(handle, 4000, 1000, 60'000);
    expectSessionQuestion("5000", MsgBoxAnswer::Yes);
    tick();
    line().transfer(handle, 300, 20, 2000);
    tick();
    line().disconnect(handle);

    tick();

    EXPECT_EQ(state().BytesRcvdTotal, Currency(4300));
    EXPECT_EQ(state().BytesSentTotal, Currency(1020));
    EXPECT_EQ(state().DurationTotal, Currency(62'000));
}

TEST_F(MonitorTest, AConnectionDialledByTheProgramIsNotAskedAbout) {
    line().transfer(dialledConnection(), 4000, 1000, 60'000);

    tick();

    EXPECT_EQ(state().BytesRcvdOffset, Long(0));
    EXPECT_FALSE(state().DialInStarted);
    EXPECT_FALSE(state().FirstOnlineUpdate);
}

TEST_F(MonitorTest, AnUntouchedConnectionIsNotAskedAbout) {
    line().connect("Harbour");

    tick();

    EXPECT_FALSE(state().FirstOnlineUpdate);
}

TEST_F(MonitorTest, TimeAloneIsEnoughToAsk) {
    line().transfer(line().connect("Harbour"), 0, 0, 1);
    expectSessionQuestion("0", MsgBoxAnswer::Yes);

    tick();
}

TEST_F(MonitorTest, TheQuestionComesOncePerRun) {
    const std::uint32_t handle = line().connect("Harbour");
    line().transfer(handle, 1, 1, 1);
    expectSessionQuestion("2", MsgBoxAnswer::Yes);
    tick();
    line().disconnect(handle);
    tick();
    line().transfer(line().connect("Harbour"), 50, 50, 50);
    ToggleMonitoringActive(false);
    ToggleMonitoringActive(true);

    tick();

    EXPECT_EQ(state().BytesRcvdCurrent, Long(50));
}

TEST_F(MonitorTest, ASumBeyond32BitsIsReportedAndTheSessionCounts) {
    line().transfer(line().connect("Harbour"), 2'000'000'000, 2'000'000'000, 1);
    expectError("6 (Overflow)", "HandleOnline");

    tick();

    EXPECT_EQ(state().BytesRcvdOffset, Long(0));
    EXPECT_EQ(state().BytesRcvdCurrent, Long(2'000'000'000));
}

TEST_F(MonitorTest, TotalsWhoseSumDoesNotFitKeepNoSessionFromCounting) {
    SetFinishedTotals({.rcvd = Currency::fromWhole(500'000'000'000'000),
                       .sent = Currency::fromWhole(500'000'000'000'000),
                       .duration = 1});
    state().DialInStarted = true;
    line().transfer(line().connect("Harbour"), 50, 60, 70);

    tick();

    EXPECT_EQ(frmMain().txtBytesRcvd.text(), "50");
    EXPECT_EQ(frmMain().txtBytesRcvdTotal.text(), "500,000,000,000,050");
}

TEST_F(MonitorTest, ACounterBeyond31BitsStopsAtTheLargestLong) {
    line().transfer(dialledConnection(), 4'000'000'000, 1, 1);

    tick();

    EXPECT_EQ(state().BytesRcvdCurrent.figure(), Long(2'147'483'647));
}

TEST_F(MonitorTest, TheTickerBaseIsSetAtTheFirstOnlineTick) {
    state().BytesRcvdTotal = 30;
    state().BytesSentTotal = 12;
    dialledConnection();

    tick();

    EXPECT_EQ(state().TickerBase, Currency(42));
}

TEST_F(MonitorTest, OfSeveralConnectionsTheLastOnesCountersStay) {
    line().transfer(dialledConnection(), 10, 1, 100);
    line().transfer(line().connect("Ridge"), 20, 2, 200);

    EXPECT_TRUE(UpdateStats());

    EXPECT_EQ(state().BytesRcvdCurrent, Long(20));
    EXPECT_EQ(frmMain().txtActiveConnection.text(), "modem: Ridge - Line 1");
}

TEST_F(MonitorTest, AConnectionThatIsNotYetUpFoldsTheCounters) {
    line().transfer(dialledConnection(), 10, 1, 100);
    const std::uint32_t dialling = line().connect("Ridge");
    line().connection(dialling)->state = 3;

    EXPECT_TRUE(UpdateStats());

    EXPECT_EQ(state().BytesRcvdTotal, Currency(10));
    EXPECT_EQ(state().BytesRcvdCurrent, Long(0));
}

TEST_F(MonitorTest, RecordsOfTheOldestFormsAreUsed) {
    // The scripted line refuses any other size, so that figures mean that the sizes were right.
    line().transfer(dialledConnection(), 10, 1, 100);

    EXPECT_TRUE(UpdateStats());
}

TEST_F(MonitorTest, AFailedEnumerationShowsTwoBoxesAndStopsMonitoring) {
    line().failNext("RasEnumConnectionsA", 619);
    expectFailure("Error: RasEnumConnections failed with 619:\rThe port is disconnected.");
    expectFailure("Error: RasEnumConnections failed with 619:\rThe port is disconnected.");

    EXPECT_FALSE(UpdateStats());

    EXPECT_FALSE(state().MonitoringActive);
    EXPECT_FALSE(frmMain().timUpdateStats.enabled());
}

TEST_F(MonitorTest, AFailedStateShowsOneBoxAndStopsMonitoring) {
    line().connect("Harbour");
    line().failNext("RasGetConnectStatusA", 601);
    expectFailure("Error: RasGetConnectStatus failed with 601:\rThe port handle is invalid.");

    EXPECT_FALSE(UpdateStats());

    EXPECT_FALSE(state().MonitoringActive);
}

TEST_F(MonitorTest, FailedStatisticsShowOneBoxAndStopMonitoring) {
    line().connect("Harbour");
    line().failNext("RasGetConnectionStatistics", 601);
    expectFailure("Error: RasGetConnectionStatistics failed with 601:\rThe port handle is "
                  "invalid.");

    EXPECT_FALSE(UpdateStats());

    EXPECT_FALSE(state().MonitoringActive);
}

TEST_F(MonitorTest, OfSeveralFailuresInATickTheLastIsShown) {
    line().connect("Harbour");
    line().connect("Ridge");
    line().failNext("RasGetConnectStatusA", 601);
    line().failNext("RasGetConnectionStatistics", 628);
    expectFailure("Error: RasGetConnectionStatistics failed with 628:\rThe port was "
                  "disconnected.");

    UpdateStats();
}

TEST_F(MonitorTest, AFailureBesideALineThatIsUpAsksBeforeItStops) {
    line().connect("Harbour");
    dialledConnection();
    line().failNext("RasGetConnectStatusA", 601);
    expectFailure("Error: RasGetConnectStatus failed with 601:\rThe port handle is invalid.");
    expectStopQuestion(MsgBoxAnswer::Cancel);

    EXPECT_TRUE(UpdateStats());

    EXPECT_TRUE(state().MonitoringActive);
}

TEST_F(MonitorTest, TheActiveConnectionIsShownAndSelected) {
    frmMain().cboConnections.addItem("Ridge");
    dialledConnection();
    frmMain().cboConnections.setListIndex(1);

    tick();

    EXPECT_EQ(frmMain().txtActiveConnection.text(), "modem: Harbour - Line 1");
    EXPECT_EQ(frmMain().cboConnections.listIndex(), 0);
}

TEST_F(MonitorTest, AConnectionThatIsNoEntryLeavesTheSelection) {
    frmMain().cboConnections.setListIndex(0);
    dialledConnection("Elsewhere");

    tick();

    EXPECT_EQ(frmMain().cboConnections.listIndex(), 0);
}

TEST_F(MonitorTest, FieldsWithoutANulAreReported) {
    dialledConnection();
    line().namesWithoutNul = true;
    for (int field = 0; field < 3; ++field) {
        expectError("5 (Invalid procedure call or argument)", "StripNull");
    }

    tick();

    EXPECT_EQ(frmMain().txtActiveConnection.text(), ":  - ");
}

TEST_F(MonitorTest, AnIndexBeyondTheListIsReported) {
    expectError("9 (Subscript out of range)", "SetActiveConnection");

    SetActiveConnection(77);
}

TEST_F(MonitorTest, StatisticsAreHandedOnOnlyWhileTheirBoxIsTicked) {
    const FrmStatistics& window = world->forms.frmStatistics;
    state().DialInStarted = true;
    HandleOnline(0, statistics(1, 0, 8));
    EXPECT_EQ(window.txtConnectDuration.text(), "");
    world->forms.frmStatistics.chkActiveConnection.setValue(1);

    HandleOnline(0, statistics(5, 0, 9));

    EXPECT_EQ(window.txtConnectDuration.text(), "9");
}

TEST_F(MonitorTest, SwitchingOnShowsAndStarts) {
    ToggleMonitoringActive(false);

    ToggleMonitoringActive(true);

    EXPECT_TRUE(state().MonitoringActive);
    EXPECT_TRUE(frmMain().timUpdateStats.enabled());
    EXPECT_EQ(frmMain().lblMonitoring.caption(), "Monitoring: active");
    EXPECT_EQ(frmMain().lblMonitoring.foreColour(), (Colour{0, 0, 0}));
    EXPECT_EQ(frmMain().cmdMonitor.caption(), "Stop Monitoring");
    EXPECT_EQ(frmSysTray().mnuPopUp.entry(1).caption, "Stop Monitoring");
    EXPECT_EQ(frmMain().picStatus.accessibleName(), "Monitoring, no active connection");
}

TEST_F(MonitorTest, SwitchingOffShowsAndStops) {
    dialledConnection();
    tick();
    expectStopQuestion(MsgBoxAnswer::Ok);

    frmMain().cmdMonitor.press();

    EXPECT_FALSE(state().MonitoringActive);
    EXPECT_FALSE(state().ConnectionActive);
    EXPECT_FALSE(frmMain().timUpdateStats.enabled());
    EXPECT_EQ(frmMain().lblMonitoring.caption(), "Monitoring: inactive");
    EXPECT_EQ(frmMain().lblMonitoring.foreColour(), (Colour{192, 0, 0}));
    EXPECT_EQ(frmMain().cmdMonitor.caption(), "Start Monitoring");
    EXPECT_EQ(frmSysTray().mnuPopUp.entry(1).caption, "Start Monitoring");
    EXPECT_FALSE(frmSysTray().mnuPopUp.entry(3).enabled);
    EXPECT_FALSE(frmSysTray().mnuPopUp.entry(4).enabled);
    EXPECT_STREQ(machine.notificationArea.requests.back().data.szTip,
                 "Velmars Tarvik: Not monitoring.");
    EXPECT_EQ(frmMain().picStatus.accessibleName(), "Not monitoring");
}

TEST_F(MonitorTest, StoppingWithinASessionCanBeCancelled) {
    dialledConnection();
    tick();
    expectStopQuestion(MsgBoxAnswer::Cancel);

    frmMain().cmdMonitor.press();

    EXPECT_TRUE(state().MonitoringActive);
    EXPECT_TRUE(frmMain().timUpdateStats.enabled());
    EXPECT_EQ(frmMain().cmdMonitor.caption(), "Stop Monitoring");
}

TEST_F(MonitorTest, StoppingKeepsTheRunningSessionForTheNextStart) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 100, 0, 0);
    tick();
    expectStopQuestion(MsgBoxAnswer::Ok);
    ToggleMonitoringActive(false);
    line().disconnect(handle);
    ToggleMonitoringActive(true);

    tick();

    EXPECT_EQ(state().BytesRcvdTotal, Currency(100));
}

TEST_F(MonitorTest, WhileABoxOfATickIsOpenNoOtherTickIsHandled) {
    const std::uint32_t handle = line().connect("Harbour");
    line().transfer(handle, 1, 1, 1);
    expectBox("Monitoring has been started and an active connection with transfer has been "
              "detected.\r\rIf you have already monitored this online-session with Tarvik "
              "then\rthis may result in an unwanted offset of the recorded transfer.\r\rDo you "
              "want to use (record) the this online-session (2 bytes)?\r(Press NO if you "
              "restarted Tarvik.)",
              MsgBoxButtons::YesNo, MsgBoxIcon::Question, MsgBoxAnswer::Yes,
              [&] { machine.desktop.advance(5000); });
    const int before = line().countOf("RasEnumConnectionsA");

    machine.desktop.advance(1000);

    EXPECT_EQ(line().countOf("RasEnumConnectionsA"), before + 2);
    EXPECT_EQ(machine.desktop.ticksDropped, 5);
}

} // namespace
} // namespace tarvik
