#pragma once

#include "controls/Form.h"
#include "types/Currency.h"
#include "types/Long.h"

namespace tarvik {

/// The options dialog: one control for each setting.
class FrmOptions : public Form {
public:
    FrmOptions();

    Frame frameStartUp{*this, "frameStartUp", {"StartUp behaviour..."}};
    CheckBox chkStartupRunMonitoring{
        *this,
        "chkStartupRunMonitoring",
        {.caption = "Run monitoring on startup",
         .toolTip = "If enabled, monitoring is being started immediately after the application "
                    "has been started",
         .mnemonic = 'u'}};
    CheckBox chkStartUpMinimise{
        *this,
        "chkStartUpMinimise",
        {.caption = "Minimise on startup",
         .toolTip = "If enabled, the application is being minimised to systray after startup",
         .mnemonic = 'M'}};

    Frame frameTransfer{*this, "frameTransfer", {"Show transfer in..."}};
    ComboBox cboUnitTransferCurrent{*this,
                                    "cboUnitTransferCurrent",
                                    {.toolTip = "Select the unit of the (current) transfer",
                                     .accessibleName = "Unit of the current transfer"}};
    Label lblUnitTransferCurrent{*this, "lblUnitTransferCurrent", {"(current conn.)"}};
    ComboBox cboUnitTransferTotal{*this,
                                  "cboUnitTransferTotal",
                                  {.toolTip = "Select the unit of the (overall, or total) transfer",
                                   .accessibleName = "Unit of the total transfer"}};
    Label lblUnitTransferTotal{*this, "lblUnitTransferTotal", {"(total conn.)"}};

    Frame frameWarnings{*this, "frameWarnings", {"Transfer limit, warnings..."}};
    CheckBox chkTransferLimit{*this,
                              "chkTransferLimit",
                              {.caption = "Bytes:",
                               .toolTip = "Enable limitation of transfer (data in bytes)",
                               .mnemonic = 'B'}};
    TextBox txtTransferLimit{*this,
                             "txtTransferLimit",
                             {.text = "1000000",
                              .toolTip = "Set the limit (in bytes) the warning mechanisms become "
                                         "active (1048576 bytes = 1MB)",
                              .accessibleName = "Transfer limit in bytes"}};
    CheckBox chkDurationLimit{*this,
                              "chkDurationLimit",
                              {.caption = "Time (hh:mm):",
                               .toolTip = "Enable limitation of duration (connection in time)",
                               .mnemonic = 'T'}};
    TextBox txtDurationLimitHr{
        *this,
        "txtDurationLimitHr",
        {.toolTip = "Set the limit (in hours) the warning mechanisms become active",
         .accessibleName = "Duration limit, hours"}};
    Label lblDurationTimeSep{*this, "lblDurationTimeSep", {":"}};
    TextBox txtDurationLimitMin{
        *this,
        "txtDurationLimitMin",
        {.toolTip = "Set the limit (in seconds) the warning mechanisms become active",
         .accessibleName = "Duration limit, minutes"}};
    Label lblLimitAction{*this, "lblLimitAction", {"Action if limit has been reached:"}};
    CheckBox chkTransferLimitWarning{
        *this,
        "chkTransferLimitWarning",
        {.caption = "Show a warning message",
         .toolTip = "If enabled, a warning message is shown as soon as the transfer limit is "
                    "reached",
         .mnemonic = 'w'}};
    CheckBox chkTransferLimitHangUp{
        *this,
        "chkTransferLimitHangUp",
        {.caption = "Hang up connection",
         .toolTip = "If enabled, the current connection is being hang up (disconnected) as soon "
                    "as the transfer limit is reached",
         .mnemonic = 'H'}};

    Frame frameTransferReset{*this, "frameTransferReset", {"Transfer reset..."}};
    CheckBox chkTransferResetEnable{
        *this,
        "chkTransferResetEnable",
        {.caption = "Reset transfer records every:",
         .toolTip = "Enable to reset the total (overall) transfers recorded at a specific "
                    "period",
         .mnemonic = 'e'}};
    ComboBox cboTransferReset{
        *this,
        "cboTransferReset",
        {.toolTip = "Select when periodically to reset the recorded transfer...",
         .accessibleName = "When to reset the recorded transfer"}};
    CheckBox chkTransferResetBackup{
        *this,
        "chkTransferResetBackup",
        {.caption = "Make backup of records",
         .toolTip = "Enable to make a backup of all transfers recorded until reset",
         .mnemonic = 'k'}};
    CommandButton cmdResetValues{*this,
                                 "cmdResetValues",
                                 {.caption = "Reset recorded transfer now",
                                  .toolTip = "Reset the recorded transfer to 0 (data recorded so "
                                             "far will be lost!)",
                                  .mnemonic = 'n'}};

    Frame frameMisc{*this, "frameMisc", {"Miscellanous..."}};
    TextBox txtRefreshInterval{
        *this,
        "txtRefreshInterval",
        {.text = "1000",
         .toolTip = "This is to setup the timer interval the applications checks for bytes "
                    "sent/received. This also controls the CPU usage.",
         .accessibleName = "Refresh interval in milliseconds"}};
    Label lblRefreshInterval{
        *this,
        "lblRefreshInterval",
        {.caption = "Refresh-interval (ms):", .mnemonic = 'f', .labelled = &txtRefreshInterval}};
    CheckBox chkLogIPAddress{
        *this,
        "chkLogIPAddress",
        {.caption = "Log IP addresses",
         .toolTip = "If enabled, the IP addresses of the connections are recorded (next to "
                    "transfer)",
         .mnemonic = 'L'}};
    CheckBox chkTransferTicker{
        *this,
        "chkTransferTicker",
        {.caption = "Show transfer ticker every:",
         .toolTip = "If enabled, a transfer ticker will be shown within a specific interval",
         .mnemonic = 'S'}};
    TextBox txtTransferTicker{
        *this,
        "txtTransferTicker",
        {.toolTip = "This is to setup the interval when a transfer ticker will be shown (in "
                    "mega-bytes)",
         .accessibleName = "Transfer ticker interval in mega-bytes"}};
    Label lblTransferTicker{*this, "lblTransferTicker", {"MB (ME/2K/XP only)"}};

    CommandButton cmdPlan{
        *this,
        "cmdPlan",
        {.caption = "Plan...",
         .toolTip = "The bill's own period, what is left of it, and what it comes to",
         .mnemonic = 'P'}};

    CommandButton cmdOK{
        *this,
        "cmdOK",
        {.caption = "OK", .toolTip = "Apply settings and close the options dialog"}};
    CommandButton cmdCancel{
        *this,
        "cmdCancel",
        {.caption = "Cancel",
         .toolTip = "Discard any changes made to the settings and close the options dialog"}};

    // What each numeric field held last that was a number; a key that spoils the field is undone
    // with it.
    Long rememberedDurationLimitHr;
    Long rememberedDurationLimitMin;
    Long rememberedRefreshInterval;
    Currency rememberedTransferLimit;
    Long rememberedTransferTicker;

private:
    LayoutNode startUpFrame();
    LayoutNode unitsFrame();
    LayoutNode warningsFrame();
    LayoutNode resetFrame();
    LayoutNode miscellaneousFrame();
};

} // namespace tarvik
