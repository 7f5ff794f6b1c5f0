#pragma once

namespace tarvik {

// What the controls of the history window do.

void frmHistory_Form_Initialize();

/// Asks where from, imports, and shows what was imported.
void cmdImport_Click();
/// Moves one end of the chart's range to the selected record; the other end makes room.
void cmdSetStart_Click();
void cmdSetStop_Click();
void cmdExport_Click();
/// Stops an import or export that is under way.
void cmdStop_Click();
/// Hides the window, and stops what is under way; its close box does the same.
void frmHistory_cmdCancel_Click();

/// Show the view whose option is chosen.
void optHistory_Click();
void optStatistics_Click();
void optStatisticsIP_Click();

void cboChartType_Change();
void cboDataType_Click();
void cboTransferUnit_Click();
void cboDataToShow_Click();
void chkShowXLines_Click();
void chkShowYLines_Click();

void cmdSortByIP_Click();
void cmdSortByTime_Click();
void lvwCompleteLog_DblClick();

/// Lets the window's controls do the above; once, before the window is loaded.
void connectHistoryEvents();

} // namespace tarvik
