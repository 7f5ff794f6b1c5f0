#include "connection/mdlCode.h"
#include "connection/mdlObtainIP.h"
#include "dialogs/clsFileDialog.h"
#include "history/mdlHistoryChart.h"
#include "history/mdlHistoryImport.h"
#include "history/mdlListViewEx.h"
#include "settings/mdlSettingsControls.h"
#include "state/Faults.h"
#include "ui/mdlGUI.h"
#include "ui/mdlGUIFigures.h"
#include "ui/mdlGUILists.h"
#include "ui/mdlGUIWindows.h"
#include "ui/mdlInternetState.h"
#include "ui/mdlSysTray.h"
#include "wiring/frmHistoryEvents.h"
#include "wiring/frmMainEvents.h"
#include "wiring/frmOptionsEvents.h"
#include "wiring/frmStatisticsEvents.h"
#include "wiring/frmSysTrayEvents.h"
#include "wiring/frmWarningEvents.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tarvik {
namespace {

/// A fault inside one procedure. Each report fails in its turn, so that every procedure that called
/// the one before it reports itself too: the innermost first.
struct NameCase {
    const char* name;
    std::vector<std::string> reported;
    std::function<void(Faults&)> fail;
};

class ReportedNamesTest : public WorldTest, public testing::WithParamInterface<NameCase> {
protected:
    ReportedNamesTest() {
        startQuietly();
        faults_ = std::make_unique<Faults>(machine, *world);
        machine.desktop.answerAny = [this](const MsgBoxRequest& box) -> MsgBoxAnswer {
            take(box.text);
            if (reported.size() == GetParam().reported.size()) {
                return MsgBoxAnswer::Ok;
            }
            fault();
        };
    }
    ~ReportedNamesTest() override {
        // The windows go while their broken views are still there.
        machine.desktop.answerAny = [](const MsgBoxRequest&) { return MsgBoxAnswer::Ok; };
        world.reset();
    }

    Faults& faults() { return *faults_; }

    std::vector<std::string> reported;

private:
    /// A box that is no report fails as any other call may.
    void take(const std::string& text) {
        const std::string before = ")\roccured in function \"";
        const std::string after = "\".\rPlease contact the author for support.";
        const std::size_t place = text.find(before);
        if (text.starts_with("Error ") && place != std::string::npos && text.ends_with(after)) {
            const std::size_t name = place + before.size();
            reported.push_back(text.substr(name, text.size() - name - after.size()));
        }
    }

    std::unique_ptr<Faults> faults_;
};

TEST_P(ReportedNamesTest, AreThoseOfTheProcedures) {
    GetParam().fail(faults());

    EXPECT_EQ(reported, GetParam().reported);
}

constexpr auto nameOf = [](const auto& given) { return std::string(given.param.name); };

INSTANTIATE_TEST_SUITE_P(
    Line, ReportedNamesTest,
    testing::Values(NameCase{"Tick",
                             {"InitRas", "UpdateStats", "timUpdateStats_Timer"},
                             [](Faults& f) {
                                 f.breakServices();
                                 timUpdateStats_Timer();
                             }},
                    NameCase{"Entries",
                             {"RasGetAllEntries", "RefreshEntries", "cboConnections_DropDown"},
                             [](Faults& f) {
                                 f.breakServices();
                                 cboConnections_DropDown();
                             }},
                    NameCase{"ErrorText",
                             {"RasErrorMessage", "ShowRasErrorMessage"},
                             [](Faults& f) {
                                 f.breakServices();
                                 ShowRasErrorMessage("RasDial", 691);
                             }},
                    NameCase{"Connect",
                             {"DialIn", "cmdHistory_Click"},
                             [](Faults& f) {
                                 f.forms.frmMain.cboConnections.setListIndex(0);
                                 f.breakServices();
                                 f.forms.frmMain.cmdConnect.press();
                             }},
                    NameCase{"Disconnect",
                             {"InitRas", "HangUp", "cmdHistory_Click"},
                             [](Faults& f) {
                                 f.forms.frmMain.cmdDisconnect.setEnabled(true);
                                 f.breakServices();
                                 cmdDisconnect_Click();
                             }},
                    NameCase{"SocketsBegin",
                             {"SocketsInitialize", "ObtainIP"},
                             [](Faults& f) {
                                 f.breakServices();
                                 std::string host;
                                 EXPECT_EQ(ObtainIP(host), "");
                             }},
                    NameCase{"SocketsEnd",
                             {"SocketsCleanup"},
                             [](Faults& f) {
                                 f.breakServices();
                                 EXPECT_FALSE(SocketsCleanup());
                             }},
                    NameCase{"InternetState",
                             {"SetConnectedState", "UpdateGUI"},
                             [](Faults& f) {
                                 f.forms.frmStatistics.chkInternetState.setValue(1);
                                 f.breakServices();
                                 UpdateGUI();
                             }},
                    NameCase{"FileDialog",
                             {"ShowFileDialog"},
                             [](Faults& f) {
                                 f.breakServices();
                                 clsFileDialog().ShowOpen();
                             }}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Main, ReportedNamesTest,
    testing::Values(NameCase{"Monitoring",
                             {"ToggleMonitoringActive", "cmdMonitor_Click"},
                             [](Faults& f) {
                                 f.breakView(f.forms.frmMain.lblMonitoring);
                                 f.forms.frmMain.cmdMonitor.press();
                             }},
                    NameCase{"Options",
                             {"ToggleFormVisibility", "cmdOptions_Click"},
                             [](Faults& f) {
                                 f.breakView(f.forms.frmOptions);
                                 f.forms.frmMain.cmdOptions.press();
                             }},
                    NameCase{"History",
                             {"ToggleFormVisibility", "cmdHistory_Click"},
                             [](Faults& f) {
                                 f.breakView(f.forms.frmHistory);
                                 f.forms.frmMain.cmdHistory.press();
                             }},
                    NameCase{"Statistics",
                             {"ToggleFormVisibility", "cmdStatistics_Click"},
                             [](Faults& f) {
                                 f.breakView(f.forms.frmStatistics);
                                 f.forms.frmMain.cmdStatistics.press();
                             }},
                    NameCase{"Unload",
                             {"ShutDown", "Form_Unload"},
                             [](Faults& f) {
                                 f.forms.frmMain.timUpdateStats.setEnabled(true);
                                 f.breakView(f.forms.frmMain.timUpdateStats);
                                 Form_Unload();
                             }},
                    NameCase{"Controls",
                             {"InitControls", "InitGUI"},
                             [](Faults& f) {
                                 f.state.TransferLimitValue = 5;
                                 f.breakView(f.forms.frmOptions.txtTransferLimit);
                                 InitGUI();
                             }},
                    NameCase{"Units",
                             {"FillTransferUnitComboBox", "PreInitOptions", "PreInitGUI"},
                             [](Faults& f) {
                                 f.breakView(f.forms.frmOptions.cboUnitTransferCurrent);
                                 EXPECT_FALSE(PreInitGUI());
                             }},
                    NameCase{"HistoryLists",
                             {"PreInitHistory", "PreInitGUI"},
                             [](Faults& f) {
                                 f.breakView(f.forms.frmHistory.cboChartType);
                                 EXPECT_FALSE(PreInitGUI());
                             }},
                    NameCase{"Durations",
                             {"FillDurationUnitComboBox"},
                             [](Faults& f) {
                                 f.breakView(f.forms.frmHistory.cboTransferUnit);
                                 FillDurationUnitComboBox(f.forms.frmHistory.cboTransferUnit);
                             }},
                    NameCase{"Lamp",
                             {"ShowStatus", "UpdateGUI"},
                             [](Faults& f) {
                                 f.forms.frmMain.picStatus.setAccessibleName("");
                                 f.breakView(f.forms.frmMain.picStatus);
                                 UpdateGUI();
                             }},
                    NameCase{"UnitLabel",
                             {"SetLabelUnitTransfer"},
                             [](Faults& f) {
                                 f.breakView(f.forms.frmMain.lblTransferCurrent);
                                 SetLabelUnitTransfer(f.forms.frmMain.lblTransferCurrent,
                                                      "current ", TransferUnit::MegaBytes);
                             }}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Tray, ReportedNamesTest,
    testing::Values(NameCase{"Made",
                             {"Form_Initialize"},
                             [](Faults& f) {
                                 f.breakServices();
                                 frmSysTray_Form_Initialize();
                             }},
                    NameCase{"Added",
                             {"AddToSysTray"},
                             [](Faults& f) {
                                 f.breakServices();
                                 EXPECT_FALSE(AddToSysTray(TrayState::NoConnection,
                                                           TrayState::NoConnection));
                             }},
                    NameCase{"Changed",
                             {"ToggleSysTray"},
                             [](Faults& f) {
                                 f.breakServices();
                                 EXPECT_FALSE(ToggleSysTray(TrayState::ActiveConnection,
                                                            TrayState::ActiveConnection));
                             }},
                    NameCase{"Note",
                             {"ShowBalloonTip"},
                             [](Faults& f) {
                                 f.forms.frmSysTray.balloonSupport = true;
                                 f.breakServices();
                                 EXPECT_FALSE(ShowBalloonTip("text", "title", 1, 10'000));
                             }},
                    NameCase{"Removed",
                             {"RemoveFromSysTray"},
                             [](Faults& f) {
                                 f.breakServices();
                                 EXPECT_FALSE(RemoveFromSysTray());
                             }},
                    NameCase{"Click",
                             {"IsInSysTray", "ToggleFormVisibility", "picSysTrayHook_MouseMove"},
                             [](Faults& f) {
                                 f.breakServices();
                                 picSysTrayHook_MouseMove(514);
                             }},
                    NameCase{"MenuEntry",
                             {"IsInSysTray", "ToggleFormVisibility", "mnuPopUpEntry_Click"},
                             [](Faults& f) {
                                 f.breakServices();
                                 mnuPopUpEntry_Click(0);
                             }}),
    nameOf);

/// What a button that hides its window does when that cannot be hidden.
template <class Window>
NameCase hiding(const char* name, Window Forms::*window) {
    return {name, {"cmdCancel_Click"}, [window](Faults& f) {
                (f.forms.*window).setVisible(true);
                f.breakView(f.forms.*window);
                (f.forms.*window).cmdCancel.press();
            }};
}

INSTANTIATE_TEST_SUITE_P(
    Windows, ReportedNamesTest,
    testing::Values(hiding("Warning", &Forms::frmWarning), hiding("Options", &Forms::frmOptions),
                    hiding("Statistics", &Forms::frmStatistics),
                    hiding("History", &Forms::frmHistory),
                    NameCase{"CloseBox",
                             {"cmdCancel_Click", "Form_QueryUnload"},
                             [](Faults& f) {
                                 f.forms.frmStatistics.setVisible(true);
                                 f.breakView(f.forms.frmStatistics);
                                 bool cancel = false;
                                 f.forms.frmStatistics.QueryUnload.raise(
                                     cancel, UnloadMode::FormControlMenu);
                             }},
                    NameCase{"WarningMade",
                             {"Form_Initialize"},
                             [](Faults& f) {
                                 f.forms.frmWarning.lblDescription.setCaption("");
                                 f.breakView(f.forms.frmWarning.lblDescription);
                                 frmWarning_Form_Initialize();
                             }},
                    NameCase{"WarningDisconnect",
                             {"InitRas", "HangUp", "cmdDisconnect_Click"},
                             [](Faults& f) {
                                 f.breakServices();
                                 f.forms.frmWarning.cmdDisconnect.press();
                             }},
                    NameCase{"WarningReset",
                             {"ResetTransfersRequest", "cmdReset_Click"},
                             [](Faults& f) { f.forms.frmWarning.cmdReset.press(); }},
                    NameCase{"OptionsReset",
                             {"ResetTransfersRequest", "cmdResetValues_Click"},
                             [](Faults& f) { f.forms.frmOptions.cmdResetValues.press(); }},
                    NameCase{"Limits",
                             {"ToggleLimitControls"},
                             [](Faults& f) {
                                 f.forms.frmOptions.txtTransferLimit.setEnabled(
                                     !f.forms.frmOptions.chkTransferLimit.ticked());
                                 f.breakView(f.forms.frmOptions.txtTransferLimit);
                                 ToggleLimitControls();
                             }},
                    NameCase{"Reset",
                             {"ToggleResetControls"},
                             [](Faults& f) {
                                 f.forms.frmOptions.cboTransferReset.setEnabled(
                                     !f.forms.frmOptions.chkTransferResetEnable.ticked());
                                 f.breakView(f.forms.frmOptions.cboTransferReset);
                                 ToggleResetControls();
                             }},
                    NameCase{"Ticker",
                             {"ToggleTickerControls"},
                             [](Faults& f) {
                                 f.forms.frmOptions.txtTransferTicker.setEnabled(
                                     !f.forms.frmOptions.chkTransferTicker.ticked());
                                 f.breakView(f.forms.frmOptions.txtTransferTicker);
                                 ToggleTickerControls();
                             }},
                    NameCase{"FieldEntered",
                             {"txtTransferLimit_GotFocus"},
                             [](Faults& f) {
                                 f.forms.frmOptions.txtTransferLimit.setText(" 5 ");
                                 f.breakView(f.forms.frmOptions.txtTransferLimit);
                                 f.forms.frmOptions.txtTransferLimit.GotFocus.raise();
                             }},
                    NameCase{"KeyDown",
                             {"txtTransferLimit_KeyDown"},
                             [](Faults& f) {
                                 f.breakLocale();
                                 f.forms.frmOptions.txtTransferLimit.KeyDown.raise();
                             }},
                    NameCase{"KeyUp",
                             {"ValidValue", "txtTransferLimit_KeyUp"},
                             [](Faults& f) {
                                 f.breakLocale();
                                 f.forms.frmOptions.txtTransferLimit.KeyUp.raise();
                             }},
                    NameCase{"LineFigures",
                             {"chkActiveConnection_Click"},
                             [](Faults& f) {
                                 f.forms.frmStatistics.lblTimeStamp.setCaption("");
                                 f.breakView(f.forms.frmStatistics.lblTimeStamp);
                                 chkActiveConnection_Click();
                             }},
                    NameCase{"InternetFigures",
                             {"chkInternetState_Click"},
                             [](Faults& f) {
                                 f.forms.frmStatistics.lblTimeStamp.setCaption("");
                                 f.breakView(f.forms.frmStatistics.lblTimeStamp);
                                 chkInternetState_Click();
                             }}),
    nameOf);

/// The history says that it holds records; it holds none.
void pretendAnImport(Faults& f) {
    f.forms.frmHistory.data.imported = true;
    f.forms.frmHistory.lvwCompleteLog.setRows(1, {}, {});
    f.forms.frmHistory.lvwCompleteLog.setSelectedRow(0);
}

NameCase plotting(const char* handler, void (*call)()) {
    return {handler, {"PlotRows", handler}, [call](Faults& f) {
                pretendAnImport(f);
                call();
            }};
}

/// A chart that everything drawn into it changes, and that cannot be changed.
void breakTheChart(Faults& f) {
    Chart& chart = f.forms.frmHistory.mscHistory;
    chart.setType(ChartType::Line);
    chart.setAxis(ChartAxisId::X, {.title = "other"});
    chart.setAxis(ChartAxisId::Y, {.title = "other"});
    f.breakView(chart);
}

NameCase drawing(const char* procedure, void (*call)()) {
    return {procedure, {procedure}, [call](Faults& f) {
                f.forms.frmHistory.cboChartType.setListIndex(1);
                breakTheChart(f);
                call();
            }};
}

NameCase sorting(const char* handler, void (*call)()) {
    return {handler, {"UpdateIPAddresses", handler}, [call](Faults& f) {
                f.forms.frmHistory.txtStatisticsIP.setText("");
                f.breakView(f.forms.frmHistory.txtStatisticsIP);
                call();
            }};
}

NameCase choosingAView(const char* handler, void (*call)()) {
    return {handler, {handler}, [call](Faults& f) {
                f.forms.frmHistory.frameHistory.setVisible(false);
                f.breakView(f.forms.frmHistory.frameHistory);
                call();
            }};
}

INSTANTIATE_TEST_SUITE_P(
    History, ReportedNamesTest,
    testing::Values(NameCase{"Made",
                             {"InitDiagram", "Form_Initialize"},
                             [](Faults& f) {
                                 breakTheChart(f);
                                 frmHistory_Form_Initialize();
                             }},
                    drawing("SetAxis", SetAxis),
                    drawing("cboChartType_Change", cboChartType_Change),
                    drawing("chkShowXLines_Click", chkShowXLines_Click),
                    drawing("chkShowYLines_Click", chkShowYLines_Click),
                    plotting("cboDataType_Click", cboDataType_Click),
                    plotting("cboTransferUnit_Click", cboTransferUnit_Click),
                    plotting("cmdSetStop_Click", cmdSetStop_Click),
                    NameCase{"cboDataToShow_Click",
                             {"FillTransferUnitComboBox", "cboDataToShow_Click"},
                             [](Faults& f) {
                                 pretendAnImport(f);
                                 f.breakView(f.forms.frmHistory.cboTransferUnit);
                                 cboDataToShow_Click();
                             }},
                    NameCase{"cmdSetStart_Click",
                             {"cmdSetStart_Click"},
                             [](Faults& f) {
                                 pretendAnImport(f);
                                 cmdSetStart_Click();
                             }},
                    NameCase{"lvwCompleteLog_DblClick",
                             {"lvwCompleteLog_DblClick"},
                             [](Faults& f) {
                                 pretendAnImport(f);
                                 lvwCompleteLog_DblClick();
                             }},
                    NameCase{"GetTransfer",
                             {"GetTransfer1stRow", "GetTransfer"},
                             [](Faults& f) {
                                 pretendAnImport(f);
                                 EXPECT_EQ(GetTransfer(2, false), Currency(0));
                             }},
                    NameCase{
                        "cmdImport_Click", {"cmdImport_Click"}, [](Faults&) { cmdImport_Click(); }},
                    sorting("cmdSortByIP_Click", cmdSortByIP_Click),
                    sorting("cmdSortByTime_Click", cmdSortByTime_Click),
                    choosingAView("optHistory_Click", optHistory_Click),
                    choosingAView("optStatistics_Click", optStatistics_Click),
                    choosingAView("optStatisticsIP_Click", optStatisticsIP_Click),
                    NameCase{"Widths",
                             {"SetOptimalHeaderWidth", "ToggleControls"},
                             [](Faults& f) {
                                 f.forms.frmHistory.lvwCompleteLog.setEnabled(false);
                                 f.breakView(f.forms.frmHistory.lvwCompleteLog);
                                 ToggleControls(false);
                             }},
                    NameCase{"SetSortHeader",
                             {"SetSortHeader"},
                             [](Faults& f) {
                                 f.breakView(f.forms.frmHistory.lvwCompleteLog);
                                 SetSortHeader(f.forms.frmHistory.lvwCompleteLog, true);
                             }}),
    nameOf);

} // namespace
} // namespace tarvik
