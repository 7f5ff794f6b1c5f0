#pragma once

#include "controls/Form.h"
#include "state/mdlVar.h"

#include <array>
#include <string>

namespace tarvik {

/// What stands behind the words of a figure in each unit.
inline constexpr std::array<const char*, transferUnitCount> transferUnitCaptions{
    "(bytes):", "(KBytes):", "(MBytes):", "(GBytes):"};

/// The main window: the recorded transfers, the state of the line, and the commands.
class FrmMain : public Form {
public:
    FrmMain();

    Frame frameTransfers{*this, "frameTransfers", {"Recorded transfers (amount and time):"}};
    Label lblTransfer{*this, "lblTransfer", {"Transer"}};
    Label lblTransferSent{*this, "lblTransferSent", columnHeading("Sent")};
    Label lblTransferRcvd{*this, "lblTransferRcvd", columnHeading("Received")};
    Label lblDuration{*this, "lblDuration", {"Duration"}};
    Label lblDurationTime{*this, "lblDurationTime", columnHeading("hr:min:sec:ms")};
    Label lblTransferCurrent{*this, "lblTransferCurrent", {"current (bytes):"}};
    TextBox txtBytesSent{
        *this, "txtBytesSent",
        figure("", "Sent, current connection",
               "This shows the number of monitored bytes sent (current connection only)")};
    TextBox txtBytesRcvd{
        *this, "txtBytesRcvd",
        figure("", "Received, current connection",
               "This shows the number of monitored bytes received (current connection only)")};
    Label lblDurationCurrent{*this, "lblDurationCurrent", {"Current"}};
    TextBox txtDurationCurrent{
        *this, "txtDurationCurrent",
        figure("00:00:00:000", "Duration, current connection",
               "This shows the duration of the active connection(s) since monitoring has been "
               "started (current connection only)")};
    Label lblTransferTotal{*this, "lblTransferTotal", {"total (bytes):"}};
    TextBox txtBytesSentTotal{
        *this, "txtBytesSentTotal",
        figure("", "Sent, total",
               "This shows the number of monitored bytes sent since monitoring has been started "
               "(all connections)")};
    TextBox txtBytesRcvdTotal{
        *this, "txtBytesRcvdTotal",
        figure("", "Received, total",
               "This shows the number of monitored bytes received since monitoring has been "
               "started (all connections)")};
    Label lblDurationTotal{*this, "lblDurationTotal", {"Total"}};
    TextBox txtDurationTotal{
        *this, "txtDurationTotal",
        figure("00:00:00:000", "Duration, total",
               "This shows the duration of the active connection(s) since monitoring has been "
               "started (all connections)")};

    Frame frameStatus{*this, "frameStatus", {"Status:"}};
    Picture picStatus{*this, "picStatus"};
    Label lblMonitoring{*this,
                        "lblMonitoring",
                        {.caption = "Monitoring: inactive",
                         .toolTip = "This shows the status of the monitoring activity"}};
    ComboBox cboConnections{
        *this, "cboConnections", {.toolTip = "This shows the connections that have been detected"}};
    Label lblAvailableConnections{
        *this,
        "lblAvailableConnections",
        {.caption = "Available connection(s):", .mnemonic = 'A', .labelled = &cboConnections}};
    TextBox txtActiveConnection{
        *this,
        "txtActiveConnection",
        {.toolTip = "This shows the currently active connection (if any)", .readOnly = true}};
    Label lblActiveConnection{
        *this,
        "lblActiveConnection",
        {.caption = "Active connection to:", .mnemonic = 't', .labelled = &txtActiveConnection}};

    CommandButton cmdMonitor{*this,
                             "cmdMonitor",
                             {.caption = "Start Monitoring",
                              .toolTip = "This toggles the monitoring on or off",
                              .mnemonic = 'M',
                              .otherCaptions = {"Stop Monitoring"}}};
    CommandButton cmdConnect{*this,
                             "cmdConnect",
                             {.caption = "Connect",
                              .toolTip = "Connect to the (currently) selected connection",
                              .mnemonic = 'C'}};
    CommandButton cmdDisconnect{*this,
                                "cmdDisconnect",
                                {.caption = "Disconnect",
                                 .toolTip = "Disconnect from all current connections",
                                 .mnemonic = 'D'}};
    CommandButton cmdStatistics{*this,
                                "cmdStatistics",
                                {.caption = "Statistics...",
                                 .toolTip = "Show statistics about the current connection",
                                 .mnemonic = 'S'}};
    CommandButton cmdHistory{*this,
                             "cmdHistory",
                             {.caption = "History...",
                              .toolTip = "This shows a history dialog to see past traffic",
                              .mnemonic = 'H'}};
    CommandButton cmdOptions{*this,
                             "cmdOptions",
                             {.caption = "Options...",
                              .toolTip = "This shows the options dialog to setup the application",
                              .mnemonic = 'O'}};
    CommandButton cmdQuit{*this,
                          "cmdQuit",
                          {.caption = "Quit",
                           .toolTip = "This quits the application (and stops monitoring)",
                           .mnemonic = 'Q'}};

    Label lblPlan{
        *this, "lblPlan", {.caption = "", .toolTip = "How the plan stands of which most is used"}};

    Timer timUpdateStats{*this, "timUpdateStats"};

private:
    static Label::Setup columnHeading(const char* caption);
    /// Room for the words in each unit.
    static void makeRoomForUnits(Label& label, const std::string& prefix);
    static TextBox::Setup figure(const char* text, const char* accessibleName, const char* toolTip);
};

} // namespace tarvik
