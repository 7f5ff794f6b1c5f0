#include "wiring/frmHistoryEvents.h"

#include "forms/Forms.h"
#include "history/ChartValues.h"
#include "history/mdlHistoryChart.h"
#include "history/mdlHistoryExport.h"
#include "history/mdlHistoryImport.h"
#include "history/mdlHistoryLog.h"
#include "history/mdlHistoryWork.h"
#include "history/mdlIPAddresses.h"
#include "history/mdlListViewEx.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsLog.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "ui/mdlGUILists.h"
#include "wiring/CloseBox.h"

#include <array>
#include <string>

namespace tarvik {

namespace {

FrmHistory& window() {
    return forms().frmHistory;
}

void inform(const std::string& text) {
    MsgBox(text, MsgBoxButtons::OkOnly, MsgBoxIcon::Information);
}

/// Points at the file to import from; false when the user does not want to.
bool chooseSource() {
    const MsgBoxAnswer answer = MsgBox(std::string("Ok to import recorded transfers from the") +
                                           CR + "INI-file located in the application folder?" + CR +
                                           CR + "(Press \"No\" to select another file.)",
                                       MsgBoxButtons::YesNoCancel, MsgBoxIcon::Question);
    if (answer != MsgBoxAnswer::Cancel) {
        SetIniFileName(false, answer == MsgBoxAnswer::No);
    }
    return answer != MsgBoxAnswer::Cancel;
}

void importRecords(Long count) {
    window().data.stopped = false; // an earlier stop is not this one's
    const bool imported = ImportHistory(count);
    if (HistoryWork::wasStopped()) {
        return;
    }
    window().data.imported = imported;
    ToggleControls(imported);
    PlotRows();
    UpdateStartStop();
}

/// The record that is selected in the list, from 1; 0 for none.
Long selectedRecord() {
    return Long(window().lvwCompleteLog.selectedRow()) + 1;
}

void showRange() {
    PlotRows();
    UpdateStartStop();
    inform("History diagram has been updated.");
}

void showChosenView(const char* name) {
    guarded(name, [] {
        const bool log = !window().optHistory.value() && window().optStatistics.value();
        const bool addresses =
            !window().optHistory.value() && !log && window().optStatisticsIP.value();
        Frame* const chosen = log         ? &window().frameStatistics
                              : addresses ? &window().frameStatisticsIP
                                          : &window().frameHistory;
        // The one that was shown goes first: there is room for one at a time.
        for (Frame* view :
             {&window().frameHistory, &window().frameStatistics, &window().frameStatisticsIP}) {
            if (view != chosen) {
                view->setVisible(false);
            }
        }
        chosen->setVisible(true);
    });
}

void setGrid(ChartAxisId id, const CheckBox& box) {
    ChartAxis axis = window().mscHistory.axis(id);
    axis.majorPen = axis.minorPen = box.ticked() ? GridPen::Ditted : GridPen::None;
    window().mscHistory.setAxis(id, std::move(axis));
}

} // namespace

void frmHistory_Form_Initialize() {
    guarded("Form_Initialize", [] {
        HistoryData& data = window().data;
        data.imported = false;
        InitDiagram();
        data.start = 0;
        data.stop = 0;
        SetSortHeader(window().lvwCompleteLog, false);
    });
}

void cmdImport_Click() {
    guarded("cmdImport_Click", [] {
        if (window().data.working || !chooseSource()) {
            return;
        }
        const Long count = GetNumRecords();
        if (count >= Long(1)) {
            importRecords(count);
            return;
        }
        window().data.imported = false;
        ToggleControls(false);
        MsgBox("Error: The INI-File does not contain any recorded transfers.",
               MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation);
    });
}

void cmdSetStart_Click() {
    guarded("cmdSetStart_Click", [] {
        const Long record = selectedRecord();
        if (record <= Long(0)) {
            return;
        }
        HistoryData& data = window().data;
        data.start = record;
        if (data.start > data.stop) {
            data.stop = record;
            inform(std::string("Start value was greater than stop value.") + CR +
                   "Stop value has been adjusted to start value.");
        }
        showRange();
    });
}

void cmdSetStop_Click() {
    guarded("cmdSetStop_Click", [] {
        const Long record = selectedRecord();
        if (record <= Long(0)) {
            return;
        }
        HistoryData& data = window().data;
        data.stop = record;
        if (data.stop < data.start) {
            data.start = record;
            inform(std::string("Stop value was less than start value.") + CR +
                   "Start value has been adjusted to stop value.");
        }
        showRange();
    });
}

void cmdExport_Click() {
    guarded("cmdExport_Click", [] {
        if (window().data.working) {
            return;
        }
        const auto file = ChooseExportFile();
        if (file && ExportRecords(*file)) {
            inform("All records have been successfully exported.");
        }
    });
}

void cmdStop_Click() {
    guarded("cmdStop_Click", [] { HistoryWork::stop(); });
}

void frmHistory_cmdCancel_Click() {
    guarded("cmdCancel_Click", [] {
        HistoryWork::stop();
        window().setVisible(false);
    });
}

void optHistory_Click() {
    showChosenView("optHistory_Click");
}

void optStatistics_Click() {
    showChosenView("optStatistics_Click");
}

void optStatisticsIP_Click() {
    showChosenView("optStatisticsIP_Click");
}

void cboChartType_Change() {
    guarded("cboChartType_Change", [] {
        constexpr std::array types{ChartType::Line, ChartType::Bar, ChartType::Area,
                                   ChartType::Step};
        const auto chosen = static_cast<std::size_t>(window().cboChartType.listIndex());
        if (chosen < types.size()) {
            window().mscHistory.setType(types[chosen]);
        }
    });
}

void cboDataType_Click() {
    guarded("cboDataType_Click", [] {
        const bool inPercent = window().cboDataType.listIndex() == ChartView::Percentual;
        window().cboTransferUnit.setEnabled(!inPercent && window().data.imported);
        PlotRows();
    });
}

void cboTransferUnit_Click() {
    guarded("cboTransferUnit_Click", [] {
        if (!window().data.refilling) {
            PlotRows();
        }
    });
}

void cboDataToShow_Click() {
    guarded("cboDataToShow_Click", [] {
        constexpr std::array titles{"Data sent/received", "Data received", "Data sent",
                                    "Data total (received+sent)", "Duration of connections"};
        const int chosen = window().cboDataToShow.listIndex();
        if (static_cast<std::size_t>(chosen) < titles.size()) {
            window().mscHistory.setTitle(titles[static_cast<std::size_t>(chosen)]);
        }
        if (window().data.imported) {
            window().data.refilling = true;
            (chosen == ChartView::Duration ? FillDurationUnitComboBox
                                           : FillTransferUnitComboBox)(window().cboTransferUnit);
            window().data.refilling = false;
        }
        PlotRows();
    });
}

void chkShowXLines_Click() {
    guarded("chkShowXLines_Click", [] { setGrid(ChartAxisId::X, window().chkShowXLines); });
}

void chkShowYLines_Click() {
    guarded("chkShowYLines_Click", [] { setGrid(ChartAxisId::Y, window().chkShowYLines); });
}

void cmdSortByIP_Click() {
    guarded("cmdSortByIP_Click", [] { UpdateIPAddresses(true); });
}

void cmdSortByTime_Click() {
    guarded("cmdSortByTime_Click", [] { UpdateIPAddresses(false); });
}

void lvwCompleteLog_DblClick() {
    guarded("lvwCompleteLog_DblClick", [] {
        const Long record = selectedRecord();
        if (record > Long(0)) {
            ShowRecord(record);
        }
    });
}

void connectHistoryEvents() {
    FrmHistory& history = window();
    history.Initialize.connect(frmHistory_Form_Initialize);
    history.Unload.connect(HistoryWork::stop);
    history.cmdImport.Click.connect(cmdImport_Click);
    history.cmdSetStart.Click.connect(cmdSetStart_Click);
    history.cmdSetStop.Click.connect(cmdSetStop_Click);
    history.cmdExport.Click.connect(cmdExport_Click);
    history.cmdStop.Click.connect(cmdStop_Click);
    history.cmdCancel.Click.connect(frmHistory_cmdCancel_Click);
    history.optHistory.Click.connect(optHistory_Click);
    history.optStatistics.Click.connect(optStatistics_Click);
    history.optStatisticsIP.Click.connect(optStatisticsIP_Click);
    history.cboChartType.Click.connect(cboChartType_Change);
    history.cboDataType.Click.connect(cboDataType_Click);
    history.cboTransferUnit.Click.connect(cboTransferUnit_Click);
    history.cboDataToShow.Click.connect(cboDataToShow_Click);
    history.chkShowXLines.Click.connect(chkShowXLines_Click);
    history.chkShowYLines.Click.connect(chkShowYLines_Click);
    history.cmdSortByIP.Click.connect(cmdSortByIP_Click);
    history.cmdSortByTime.Click.connect(cmdSortByTime_Click);
    history.lvwCompleteLog.DblClick.connect(lvwCompleteLog_DblClick);
    connectCloseBox(history, frmHistory_cmdCancel_Click);
}

} // namespace tarvik
