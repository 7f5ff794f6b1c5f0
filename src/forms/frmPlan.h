#pragma once

#include "controls/Form.h"
#include "controls/ListView.h"

#include <vector>

namespace tarvik {

/// The window of the user's plans: on the left all of them, on the right the one that is selected,
/// a page at a time. Nothing of it holds before OK, but for what is said about a plan in use: the
/// provider's figures and the extensions.
class FrmPlan : public Form {
public:
    FrmPlan();

    /// Positions in the list of pages.
    enum Page { now, allowance, period, lines, thresholds, pageCount };
    /// The frame of a page.
    Frame& frameOf(int page);
    /// What can be used only while it is known how the plan stands.
    std::vector<Control*> standingControls();
    /// The box of those with a button of their own that has the focus, if any.
    const TextBox* focusedBox = nullptr;
    /// What an extension is by unless the user types something else.
    static constexpr const char* usualExtension = "500 MB";

    ListView lstPlans{*this,
                      "lstPlans",
                      {.columns = {{"Plan"}},
                       .toolTip = "The plans; the one that is selected is shown beside them",
                       .accessibleName = "Plans"}};
    CommandButton cmdNew{
        *this, "cmdNew", {.caption = "New", .toolTip = "Make another plan", .mnemonic = 'N'}};
    CommandButton cmdCopy{
        *this,
        "cmdCopy",
        {.caption = "Copy", .toolTip = "Make another plan that says the same", .mnemonic = 'C'}};
    CommandButton cmdDelete{*this,
                            "cmdDelete",
                            {.caption = "Delete",
                             .toolTip = "Take the plan away; what was counted stays in the ledger",
                             .mnemonic = 'D'}};

    TextBox txtName{*this, "txtName", {.toolTip = "What the plan is called in notes and in lists"}};
    Label lblName{*this, "lblName", {.caption = "Name:", .mnemonic = 'm', .labelled = &txtName}};
    Label lblNameReason{*this, "lblNameReason", reason("A name.")};
    ComboBox cboPage{*this, "cboPage", {.toolTip = "Which page of the plan is shown"}};
    Label lblPage{*this, "lblPage", {.caption = "Show:", .mnemonic = 'S', .labelled = &cboPage}};

    Frame frameNow{*this, "frameNow", {"How it stands..."}};
    Label lblNow{*this, "lblNow", {.caption = "", .wrapped = true}};
    ProgressBar prgUsed{*this,
                        "prgUsed",
                        {.toolTip = "How much of all that may be used is used",
                         .accessibleName = "Used, per cent"}};
    Label lblUsed{*this, "lblUsed", {.caption = "Used:"}};
    Label lblUsedPercent{*this, "lblUsedPercent", percent()};
    ProgressBar prgPassed{*this,
                          "prgPassed",
                          {.toolTip = "How much of the period has passed",
                           .accessibleName = "Time passed, per cent"}};
    Label lblPassed{*this, "lblPassed", {.caption = "Time passed:"}};
    Label lblPassedPercent{*this, "lblPassedPercent", percent()};
    TextBox txtProvider{*this,
                        "txtProvider",
                        {.toolTip = "What the provider says was used in this period, such as 3.4 "
                                    "GB or 12 hours"}};
    Label lblProvider{*this,
                      "lblProvider",
                      {.caption = "The provider says:", .mnemonic = 'v', .labelled = &txtProvider}};
    CommandButton cmdProvider{*this,
                              "cmdProvider",
                              {.caption = "Enter",
                               .toolTip = "From now on it is counted from this figure on",
                               .mnemonic = 'E'}};
    TextBox txtExtend{*this,
                      "txtExtend",
                      {.text = usualExtension,
                       .toolTip = "How much more may be used, such as 500 MB or 2 hours"}};
    Label lblExtend{
        *this, "lblExtend", {.caption = "Extend by:", .mnemonic = 'x', .labelled = &txtExtend}};
    ComboBox cboExtend{
        *this,
        "cboExtend",
        {.toolTip = "How long that may be used", .accessibleName = "How long the extension holds"}};
    CommandButton cmdExtend{*this,
                            "cmdExtend",
                            {.caption = "Extend",
                             .toolTip = "So much more may be used; it ends by itself",
                             .mnemonic = 't'}};
    Label lblNowReason{*this, "lblNowReason",
                       reason("A size or a time, such as 500 MB or 2 hours.")};
    ListView lstNotes{*this,
                      "lstNotes",
                      {.columns = {{"Date"}, {"What was said"}},
                       .toolTip = "What was said about this plan in this period",
                       .accessibleName = "What was said in this period"}};
    CommandButton cmdTakeBack{*this,
                              "cmdTakeBack",
                              {.caption = "Take back",
                               .toolTip = "What is selected does not hold any more",
                               .mnemonic = 'b'}};
    Label lblLedger{*this, "lblLedger", {.caption = "", .wrapped = true}};
    CommandButton cmdLedger{*this,
                            "cmdLedger",
                            {.caption = "Begin ledger...",
                             .toolTip = "Write down from now on what each line carries",
                             .mnemonic = 'g'}};

    Frame frameAllowance{*this, "frameAllowance", {"What may be used..."}};
    TextBox txtAllowance{*this,
                         "txtAllowance",
                         {.toolTip = "A number with MB, GB, TB (of 1000), MiB, GiB or TiB (of "
                                     "1024); nothing if bytes are not limited"}};
    Label lblAllowance{*this,
                       "lblAllowance",
                       {.caption = "Allowance:", .mnemonic = 'A', .labelled = &txtAllowance}};
    Label lblAllowanceReason{*this, "lblAllowanceReason", reason("A size, such as 10 GB.")};
    TextBox txtHours{
        *this, "txtHours", {.toolTip = "Hours online in a period; nothing if time is not limited"}};
    Label lblHours{
        *this, "lblHours", {.caption = "Hours:", .mnemonic = 'H', .labelled = &txtHours}};
    Label lblHoursReason{*this, "lblHoursReason", reason("1 to 99999.")};
    ComboBox cboCounted{*this, "cboCounted", {.toolTip = "Which bytes count"}};
    Label lblCounted{
        *this, "lblCounted", {.caption = "What counts:", .mnemonic = 'W', .labelled = &cboCounted}};
    ComboBox cboRollOver{
        *this, "cboRollOver", {.toolTip = "What becomes of what was not used in a period"}};
    Label lblRollOver{
        *this, "lblRollOver", {.caption = "Not used:", .mnemonic = 'u', .labelled = &cboRollOver}};
    TextBox txtRollOverMost{
        *this, "txtRollOverMost", {.toolTip = "No more than that stays for the next period"}};
    Label lblRollOverMost{
        *this, "lblRollOverMost", {.caption = "At most:", .labelled = &txtRollOverMost}};
    Label lblRollOverMostReason{*this, "lblRollOverMostReason", reason("A size, such as 2 GB.")};
    TextBox txtRollOverHours{
        *this, "txtRollOverHours", {.toolTip = "No more hours than that stay for the next period"}};
    Label lblRollOverHours{
        *this, "lblRollOverHours", {.caption = "Hours at most:", .labelled = &txtRollOverHours}};
    Label lblRollOverHoursReason{*this, "lblRollOverHoursReason", reason("0 to 99999.")};
    TextBox txtReserve{
        *this, "txtReserve", {.toolTip = "Per cent of all that are not dealt out to the days"}};
    Label lblReserve{
        *this, "lblReserve", {.caption = "Reserve (%):", .mnemonic = 'R', .labelled = &txtReserve}};
    Label lblReserveReason{*this, "lblReserveReason", reason("0 to 99.")};
    ComboBox cboDealOut{*this, "cboDealOut", {.toolTip = "How what is left is dealt out"}};
    Label lblDealOut{*this,
                     "lblDealOut",
                     {.caption = "A day's part:", .mnemonic = 'y', .labelled = &cboDealOut}};

    Frame framePeriod{*this, "framePeriod", {"When it begins anew..."}};
    ComboBox cboPeriod{*this, "cboPeriod", {.toolTip = "What a period of the bill is"}};
    Label lblPeriod{
        *this, "lblPeriod", {.caption = "Period:", .mnemonic = 'P', .labelled = &cboPeriod}};
    TextBox txtDay{*this,
                   "txtDay",
                   {.toolTip = "The day of the month on which it begins; in a shorter month on its "
                               "last"}};
    Label lblDay{*this, "lblDay", {.caption = "Day of the month:", .labelled = &txtDay}};
    Label lblDayReason{*this, "lblDayReason", reason("1 to 31.")};
    TextBox txtEvery{*this, "txtEvery", {.toolTip = "So many days or weeks"}};
    Label lblEvery{*this, "lblEvery", {.caption = "Every:", .labelled = &txtEvery}};
    Label lblEveryReason{*this, "lblEveryReason", reason("1 to 366.")};
    ComboBox cboWeekday{*this, "cboWeekday", {.toolTip = "The day on which it begins"}};
    Label lblWeekday{*this, "lblWeekday", {.caption = "Weekday:", .labelled = &cboWeekday}};
    TextBox txtFrom{*this, "txtFrom", {.toolTip = "The first day"}};
    Label lblFrom{*this, "lblFrom", {.caption = "From:", .mnemonic = 'F', .labelled = &txtFrom}};
    Label lblFromReason{*this, "lblFromReason", reason("A date.")};
    TextBox txtUntil{
        *this,
        "txtUntil",
        {.toolTip = "The day on which it ends, at the hour below; nothing if it has no end"}};
    Label lblUntil{*this, "lblUntil", {.caption = "Until:", .labelled = &txtUntil}};
    Label lblUntilReason{*this, "lblUntilReason", reason("A date after the first day.")};
    ComboBox cboHour{*this, "cboHour", {.toolTip = "The hour at which it begins and ends"}};
    Label lblHour{*this, "lblHour", {.caption = "Hour:", .mnemonic = 'o', .labelled = &cboHour}};
    TextBox txtPreview{*this,
                       "txtPreview",
                       {.toolTip = "The periods that come next",
                        .accessibleName = "The next three periods",
                        .readOnly = true,
                        .multiLine = true}};

    Frame frameLines{*this, "frameLines", {"What it is reckoned from..."}};
    OptionButton optAllLines{*this,
                             "optAllLines",
                             {.caption = "All lines, but what runs inside another",
                              .toolTip = "What a tunnel carries passes the line below it, and "
                                         "counts there",
                              .mnemonic = 'l',
                              .value = true}};
    OptionButton optTheseLines{*this,
                               "optTheseLines",
                               {.caption = "These lines:",
                                .toolTip = "Only those that are marked in the list",
                                .mnemonic = 'i'}};
    ListView lstLines{*this,
                      "lstLines",
                      {.columns = {{"Line"}, {"Counts"}},
                       .toolTip = "Press Enter on a line, or click on it twice, to have it counted "
                                  "or left out",
                       .accessibleName = "Lines"}};
    Label lblLinesReason{
        *this,
        "lblLinesReason",
        {.caption = "", .otherCaptions = {"At least one line.", "20 lines at most."}}};
    CommandButton cmdLine{*this,
                          "cmdLine",
                          {.caption = "Count / leave out",
                           .toolTip = "Have the line that is selected counted, or left out"}};

    Frame frameThresholds{*this, "frameThresholds", {"What happens on the way..."}};
    ListView lstThresholds{*this,
                           "lstThresholds",
                           {.columns = {{"At", TextAlignment::Right}, {"What happens"}},
                            .toolTip = "What happens when so much is used, once in a period",
                            .accessibleName = "Thresholds"}};
    CommandButton cmdAddThreshold{
        *this, "cmdAddThreshold", {.caption = "Add", .toolTip = "Another threshold"}};
    CommandButton cmdRemoveThreshold{
        *this,
        "cmdRemoveThreshold",
        {.caption = "Remove", .toolTip = "Take the threshold that is selected away"}};
    TextBox txtPercent{*this, "txtPercent", {.toolTip = "Per cent of all that may be used"}};
    Label lblPercent{*this, "lblPercent", {.caption = "At (%):", .labelled = &txtPercent}};
    Label lblPercentReason{*this, "lblPercentReason", reason("1 to 100, each once.")};
    CheckBox chkNote{
        *this, "chkNote", {.caption = "Show a note", .toolTip = "A note of the desktop says so"}};
    CheckBox chkWindow{
        *this, "chkWindow", {.caption = "Show a window", .toolTip = "A window of its own says so"}};
    ComboBox cboHangUp{*this, "cboHangUp", {.toolTip = "Whether the plan's lines are hung up"}};
    Label lblHangUp{*this, "lblHangUp", {.caption = "Hang up:", .labelled = &cboHangUp}};
    TextBox txtGrace{*this, "txtGrace", {.toolTip = "So many bytes later"}};
    Label lblGrace{*this, "lblGrace", {.caption = "After more bytes:", .labelled = &txtGrace}};
    Label lblGraceReason{*this, "lblGraceReason", reason("A size, such as 100 MB.")};
    TextBox txtGraceMinutes{
        *this, "txtGraceMinutes", {.toolTip = "So many minutes online later, of a plan of hours"}};
    Label lblGraceMinutes{
        *this, "lblGraceMinutes", {.caption = "Or minutes:", .labelled = &txtGraceMinutes}};
    Label lblGraceMinutesReason{*this, "lblGraceMinutesReason", reason("0 to 9999.")};
    TextBox txtProgram{
        *this,
        "txtProgram",
        {.toolTip = "The full path of a program that is started; it finds the figures in its "
                    "environment"}};
    Label lblProgram{*this, "lblProgram", {.caption = "Start program:", .labelled = &txtProgram}};
    Label lblProgramReason{*this, "lblProgramReason", reason("A full path.")};
    CheckBox chkBlock{*this,
                      "chkBlock",
                      {.caption = "After the last one hang up new connections",
                       .toolTip = "What comes up after the last threshold is hung up"}};

    CommandButton cmdOK{
        *this, "cmdOK", {.caption = "OK", .toolTip = "Use the plans as they stand here"}};
    CommandButton cmdCancel{
        *this, "cmdCancel", {.caption = "Cancel", .toolTip = "Leave the plans as they were"}};

private:
    /// It stands beside its field while that cannot be what it says, and has room for it always.
    static Label::Setup reason(const char* text) {
        return {.caption = "", .otherCaptions = {text}};
    }
    static Label::Setup percent() { return {.caption = "0 %", .otherCaptions = {"999 %"}}; }

    LayoutNode nowPage();
    LayoutNode allowancePage();
    LayoutNode periodPage();
    LayoutNode linesPage();
    LayoutNode thresholdsPage();
};

} // namespace tarvik
