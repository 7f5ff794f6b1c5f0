#pragma once

#include "controls/Chart.h"
#include "controls/Form.h"
#include "controls/ListView.h"
#include "state/HistoryData.h"

namespace tarvik {

/// The history window: the saved records as a chart, as a list, and as a list of addresses.
class FrmHistory : public Form {
public:
    FrmHistory();

    OptionButton optHistory{
        *this,
        "optHistory",
        {.caption = "History", .toolTip = "Show history graph", .mnemonic = 'H', .value = true}};
    OptionButton optStatistics{
        *this,
        "optStatistics",
        {.caption = "Statistics", .toolTip = "Show statistics overview", .mnemonic = 'S'}};
    OptionButton optStatisticsIP{
        *this,
        "optStatisticsIP",
        {.caption = "Statistics (IP)", .toolTip = "Show statistics overview", .mnemonic = 'I'}};

    /// Stands in the chart before there is anything to draw.
    static constexpr const char* chartHint =
        "Nothing to show yet. Press \"Import...\" to read the recorded connections.";
    Frame frameHistory{*this, "frameHistory", {}};
    Chart mscHistory{*this,
                     "mscHistory",
                     {.title = "Data sent/received or duration",
                      .toolTip = "This shows the history (recorded so far) of the bytes "
                                 "sent/received or the duration"}};

    Frame frameStatistics{*this, "frameStatistics", {}};
    ListView lvwCompleteLog{
        *this,
        "lvwCompleteLog",
        {.columns = {{"ID", TextAlignment::Right},
                     {"Date"},
                     {"Time"},
                     {"Duration", TextAlignment::Right},
                     {"Bytes sent", TextAlignment::Right},
                     {"Bytes rcvd", TextAlignment::Right},
                     {"IP address"}},
         .toolTip = "This shows the complete list off all records within the INI file."}};
    Label lblCompleteLog{
        *this,
        "lblCompleteLog",
        {.caption = "Complete log:", .mnemonic = 'g', .labelled = &lvwCompleteLog}};
    TextBox txtCurrentStart{
        *this,
        "txtCurrentStart",
        {.toolTip = "This shows the record at which the history graph starts.", .readOnly = true}};
    Label lblCurrentStart{
        *this, "lblCurrentStart", {.caption = "Current start:", .labelled = &txtCurrentStart}};
    TextBox txtCurrentStop{
        *this,
        "txtCurrentStop",
        {.toolTip = "This shows the record at which the history graph stops.", .readOnly = true}};
    Label lblCurrentStop{
        *this, "lblCurrentStop", {.caption = "Current stop:", .labelled = &txtCurrentStop}};
    CommandButton cmdSetStart{*this,
                              "cmdSetStart",
                              {.caption = "Set start",
                               .toolTip = "Set history start to selected record in list.",
                               .mnemonic = 'a'}};
    CommandButton cmdSetStop{*this,
                             "cmdSetStop",
                             {.caption = "Set stop",
                              .toolTip = "Set history stop to selected record in list.",
                              .mnemonic = 'o'}};
    CommandButton cmdExport{*this,
                            "cmdExport",
                            {.caption = "Export...",
                             .toolTip = "Export records in list as CSV - file.",
                             .mnemonic = 'E'}};

    Frame frameStatisticsIP{*this, "frameStatisticsIP", {}};
    TextBox txtStatisticsIP{
        *this,
        "txtStatisticsIP",
        {.toolTip = "This is a list with different IP addresses that have been recorded.",
         .readOnly = true,
         .multiLine = true}};
    Label lblStatisticsIP{
        *this,
        "lblStatisticsIP",
        {.caption = "This is a list with all different IP addresses that have been recorded:",
         .labelled = &txtStatisticsIP}};
    CommandButton cmdSortByTime{
        *this,
        "cmdSortByTime",
        {.caption = "Time",
         .toolTip = "Click to sort list with IP addresses by time recorded.",
         .mnemonic = 'T'}};
    CommandButton cmdSortByIP{*this,
                              "cmdSortByIP",
                              {.caption = "IP address",
                               .toolTip = "Click to sort list with IP addresses by IP address.",
                               .mnemonic = 'd'}};
    Label lblSortBy{*this, "lblSortBy", {.caption = "Sort by:"}};

    Frame frameImportSetup{*this, "frameImportSetup", {"Import/Setup:"}};
    CommandButton cmdImport{
        *this,
        "cmdImport",
        {.caption = "Import...", .toolTip = "Import transfer from INI-file", .mnemonic = 'm'}};
    ComboBox cboChartType{
        *this,
        "cboChartType",
        {.toolTip = "Select the type (layout) of the chart", .accessibleName = "Chart type"}};
    ComboBox cboDataType{*this,
                         "cboDataType",
                         {.toolTip = "Select the data type (representation) within the chart",
                          .accessibleName = "Data type"}};
    ComboBox cboTransferUnit{
        *this,
        "cboTransferUnit",
        {.toolTip = "Select the transfer unit within the chart", .accessibleName = "Unit"}};
    ComboBox cboDataToShow{*this,
                           "cboDataToShow",
                           {.toolTip = "Select the type of data to show within the chart",
                            .accessibleName = "Data to show"}};
    CheckBox chkShowXLines{*this,
                           "chkShowXLines",
                           {.caption = "Show X-lines",
                            .toolTip = "Show x-axis in detail (with more lines)",
                            .mnemonic = 'X'}};
    CheckBox chkShowYLines{*this,
                           "chkShowYLines",
                           {.caption = "Show Y-lines",
                            .toolTip = "Show y-axis in detail (with more lines)",
                            .mnemonic = 'Y'}};
    /// Seen while an import or export goes on.
    ProgressBar prgWork{*this, "prgWork", {.accessibleName = "Progress"}};
    CommandButton cmdStop{
        *this,
        "cmdStop",
        {.caption = "Stop", .toolTip = "Stop the import or export", .mnemonic = 'p'}};
    CommandButton cmdCancel{
        *this,
        "cmdCancel",
        {.caption = "Cancel", .toolTip = "Close the history dialog", .mnemonic = 'C'}};

    HistoryData data;
};

} // namespace tarvik
