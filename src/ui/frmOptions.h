#pragma once

#include "ui/controls/Form.h"

namespace tarvik {

/// The options dialog: one control for each setting.
class FrmOptions : public Form {
public:
    FrmOptions() : Form("frmOptions", "Velmars Tarvik - Options") {}

    CheckBox chkStartupRunMonitoring{
        *this,
        "chkStartupRunMonitoring",
        {.caption = "Run monitoring on startup",
         .toolTip = "If enabled, monitoring is being started immediately after the application "
                    "has been started"}};
    CheckBox chkStartUpMinimise{
        *this,
        "chkStartUpMinimise",
        {.caption = "Minimise on startup",
         .toolTip = "If enabled, the application is being minimised to systray after startup"}};

    ComboBox cboUnitTransferCurrent{*this,
                                    "cboUnitTransferCurrent",
                                    {.toolTip = "Select the unit of the (current) transfer",
                                     .accessibleName = "Unit of the current transfer"}};
    ComboBox cboUnitTransferTotal{*this,
                                  "cboUnitTransferTotal",
                                  {.toolTip = "Select the unit of the (overall, or total) transfer",
                                   .accessibleName = "Unit of the total transfer"}};

    CheckBox chkTransferLimit{
        *this,
        "chkTransferLimit",
        {.caption = "Bytes:", .toolTip = "Enable limitation of transfer (data in bytes)"}};
    TextBox txtTransferLimit{*this,
                             "txtTransferLimit",
                             {.text = "1000000",
                              .toolTip = "Set the limit (in bytes) the warning mechanisms become "
                                         "active (1048576 bytes = 1MB)",
                              .accessibleName = "Transfer limit in bytes"}};
    CheckBox chkDurationLimit{*this,
                              "chkDurationLimit",
                              {.caption = "Time (hh:mm):",
                               .toolTip = "Enable limitation of duration (connection in time)"}};
    TextBox txtDurationLimitHr{
        *this,
        "txtDurationLimitHr",
        {.toolTip = "Set the limit (in hours) the warning mechanisms become active",
         .accessibleName = "Duration limit, hours"}};
    TextBox txtDurationLimitMin{
        *this,
        "txtDurationLimitMin",
        {.toolTip = "Set the limit (in seconds) the warning mechanisms become active",
         .accessibleName = "Duration limit, minutes"}};
    CheckBox chkTransferLimitWarning{
        *this,
        "chkTransferLimitWarning",
        {.caption = "Show a warning message",
         .toolTip = "If enabled, a warning message is shown as soon as the transfer limit is "
                    "reached"}};
    CheckBox chkTransferLimitHangUp{
        *this,
        "chkTransferLimitHangUp",
        {.caption = "Hang up connection",
         .toolTip = "If enabled, the current connection is being hang up (disconnected) as soon "
                    "as the transfer limit is reached"}};

    CheckBox chkTransferResetEnable{
        *this,
        "chkTransferResetEnable",
        {.caption = "Reset transfer records every:",
         .toolTip = "Enable to reset the total (overall) transfers recorded at a specific "
                    "period"}};
    ComboBox cboTransferReset{
        *this,
        "cboTransferReset",
        {.toolTip = "Select when periodically to reset the recorded transfer...",
         .accessibleName = "When to reset the recorded transfer"}};
    CheckBox chkTransferResetBackup{
        *this,
        "chkTransferResetBackup",
        {.caption = "Make backup of records",
         .toolTip = "Enable to make a backup of all transfers recorded until reset"}};

    TextBox txtRefreshInterval{
        *this,
        "txtRefreshInterval",
        {.text = "1000",
         .toolTip = "This is to setup the timer interval the applications checks for bytes "
                    "sent/received. This also controls the CPU usage.",
         .accessibleName = "Refresh interval in milliseconds"}};
    CheckBox chkLogIPAddress{
        *this,
        "chkLogIPAddress",
        {.caption = "Log IP addresses",
         .toolTip = "If enabled, the IP addresses of the connections are recorded (next to "
                    "transfer)"}};
    CheckBox chkTransferTicker{
        *this,
        "chkTransferTicker",
        {.caption = "Show transfer ticker every:",
         .toolTip = "If enabled, a transfer ticker will be shown within a specific interval"}};
    TextBox txtTransferTicker{
        *this,
        "txtTransferTicker",
        {.toolTip = "This is to setup the interval when a transfer ticker will be shown (in "
                    "mega-bytes)",
         .accessibleName = "Transfer ticker interval in mega-bytes"}};
};

} // namespace tarvik
