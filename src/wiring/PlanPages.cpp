#include "wiring/PlanPages.h"

#include "forms/Forms.h"
#include "ledger/Ledger.h"
#include "monitor/mdlPlanFigures.h"
#include "plan/Period.h"
#include "plan/PlanText.h"
#include "plan/Plans.h"
#include "ports/Clock.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "state/mdlConst.h"
#include "types/Convert.h"
#include "ui/mdlGUILists.h"
#include "wiring/PlanFields.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tarvik {

namespace {

constexpr int hoursInDay = 24;

void fill(ComboBox& combo, std::initializer_list<const char*> texts) {
    combo.setItems({texts.begin(), texts.end()});
}

/// Shows nothing where no plan is.
template <class Value>
void choose(ComboBox& combo, const Plan* plan, Value value) {
    combo.setListIndex(plan == nullptr ? ComboBox::none : static_cast<int>(value));
}

/// "14.11.2026 06:00", the hour only where periods do not begin at midnight.
std::string momentText(LocalMoment moment, bool withHour) {
    const auto hour = std::chrono::floor<std::chrono::hours>(moment - dayOf(moment)).count();
    return shortDateText(dateOf(dayOf(moment)), platform().locale.data()) +
           (withHour ? " " + zeroPadded(hour, 2) + ":00" : "");
}

std::string periodText(const Period& period, const PeriodRule& rule, const Zone& zone) {
    const bool withHour = rule.hour != 0;
    const std::string begin = momentText(period.local, withHour);
    if (period.end == Period::endless) {
        return begin + " until it is used up";
    }
    // A period that ends at midnight has the day before as its last one.
    const Moment last = period.end - std::chrono::seconds(withHour ? 0 : 1);
    return begin + " to " + momentText(localOf(last, zone(last)), withHour);
}

std::string previewOf(const PeriodRule& rule) {
    constexpr int shown = 3;
    const Zone zone = zoneOf(platform().clock);
    auto period = periodAt(rule, momentNow(platform().clock), zone);
    period = period ? period : periodOf(rule, 0, zone);
    std::string text;
    for (int i = 0; i < shown && period; ++i) {
        text += (text.empty() ? "" : "\r\n") + periodText(*period, rule, zone);
        period = periodOf(rule, period->number + 1, zone);
    }
    return text.empty() ? "It has no period." : text;
}

/// Those that the machine has, the ledger knows, or the plan names.
std::vector<std::string> knownLines() {
    std::set<std::string> names(forms().frmMain.cboConnections.items().begin(),
                                forms().frmMain.cboConnections.items().end());
    for (const LedgerEntry& one : ledger().contents().entries) {
        names.insert(one.line);
    }
    if (const Plan* const plan = shownPlan()) {
        names.insert(plan->lines.begin(), plan->lines.end());
    }
    return {names.begin(), names.end()};
}

bool counts(const Plan& plan, const std::string& line) {
    return std::find(plan.lines.begin(), plan.lines.end(), line) != plan.lines.end();
}

/// Of what the plan limits.
std::string graceText(const Plan& plan, const Threshold& threshold) {
    const LocaleData& locale = platform().locale.data();
    constexpr std::uint64_t millisecondsInMinute = 60'000;
    const auto timeText = [&] {
        return durationText(
            static_cast<std::uint64_t>(threshold.graceMinutes) * millisecondsInMinute, locale);
    };
    if (plan.hours && !plan.allowance) {
        return timeText();
    }
    return sizeText(threshold.grace.bytes(), countsIn1024(plan), locale) +
           (plan.hours ? " or " + timeText() : "");
}

/// "note, window, hang up after 100 MB more
std::string whatHappens(const Plan& plan, const Threshold& threshold) {
    std::vector<std::string> parts;
    if (threshold.note) {
        parts.emplace_back("note");
    }
    if (threshold.window) {
        parts.emplace_back("window");
    }
    if (threshold.hangUp == HangUpRule::AtOnce) {
        parts.emplace_back("hang up");
    } else if (threshold.hangUp == HangUpRule::AfterGrace) {
        parts.push_back("hang up after " + graceText(plan, threshold) + " more");
    }
    if (!threshold.program.empty()) {
        parts.emplace_back("start program");
    }
    std::string text;
    for (const std::string& part : parts) {
        text += (text.empty() ? "" : ", ") + part;
    }
    return text.empty() ? "nothing" : text;
}

/// What can be used only while the plan says so; everything else needs a plan alone.
std::vector<std::pair<const Control*, bool>> conditionsOf(const Plan& plan) {
    FrmPlan& f = planForm();
    const PeriodKind kind = plan.period.kind;
    const bool isMonth = kind == PeriodKind::Month;
    const bool isMany = kind == PeriodKind::Days || kind == PeriodKind::Weeks;
    const bool isWeek = kind == PeriodKind::Weekday;
    const bool isPack = kind == PeriodKind::Pack;
    const bool isUpTo = plan.rollOver == RollOver::UpTo && !isPack;
    const Threshold* const threshold = shownThreshold();
    const bool hasOne = threshold != nullptr;
    const bool hasGrace = hasOne && threshold->hangUp == HangUpRule::AfterGrace;
    const bool these = f.optTheseLines.value();
    return {
        {&f.txtDay, isMonth},
        {&f.lblDay, isMonth},
        {&f.txtEvery, isMany},
        {&f.lblEvery, isMany},
        {&f.cboWeekday, isWeek},
        {&f.lblWeekday, isWeek},
        {&f.txtFrom, isMany || isPack},
        {&f.lblFrom, isMany || isPack},
        {&f.txtUntil, isPack},
        {&f.lblUntil, isPack},
        {&f.cboRollOver, !isPack},
        {&f.lblRollOver, !isPack},
        {&f.txtRollOverMost, isUpTo && plan.allowance},
        {&f.lblRollOverMost, isUpTo && plan.allowance},
        {&f.txtRollOverHours, isUpTo && plan.hours},
        {&f.lblRollOverHours, isUpTo && plan.hours},
        {&f.lstLines, these},
        {&f.cmdLine, these && f.lstLines.selectedRow() != ListView::none},
        {&f.cmdAddThreshold, plan.thresholds.size() < mostThresholds},
        {&f.cmdRemoveThreshold, hasOne},
        {&f.txtPercent, hasOne},
        {&f.lblPercent, hasOne},
        {&f.chkNote, hasOne},
        {&f.chkWindow, hasOne},
        {&f.cboHangUp, hasOne},
        {&f.lblHangUp, hasOne},
        {&f.txtGrace, hasGrace && plan.allowance},
        {&f.lblGrace, hasGrace && plan.allowance},
        {&f.txtGraceMinutes, hasGrace && plan.hours},
        {&f.lblGraceMinutes, hasGrace && plan.hours},
        {&f.txtProgram, hasOne},
        {&f.lblProgram, hasOne},
        {&f.chkBlock, !plan.thresholds.empty()},
        {&f.cmdNew, plans().draft.plans.size() < mostPlans},
        {&f.cmdCopy, plans().draft.plans.size() < mostPlans},
    };
}

/// What can be used without a plan too.
bool needsPlan(const Control& control) {
    const FrmPlan& f = planForm();
    const auto free =
        std::to_array<const Control*>({&f.lstPlans, &f.cmdNew, &f.cmdOK, &f.cmdCancel});
    return std::find(free.begin(), free.end(), &control) == free.end();
}

} // namespace

void fillPlanChoices() {
    FrmPlan& f = planForm();
    if (f.cboPage.listCount() != 0) {
        return;
    }
    fill(f.cboPage, {"How it stands", "What may be used", "When it begins anew",
                     "What it is reckoned from", "What happens on the way"});
    fill(f.cboExtend, {"today", "to the period's end"});
    fill(f.cboCounted, {"Received and sent", "Received", "Sent", "The larger of the two"});
    fill(f.cboRollOver, {"Is lost", "Stays for the next period", "Stays up to an amount"});
    fill(f.cboDealOut, {"The same each day", "With what the days before have left"});
    fill(f.cboPeriod, {"A month", "Some days", "Some weeks", "A week", "A day", "A prepaid pack"});
    fill(f.cboWeekday,
         {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"});
    fill(f.cboHangUp, {"No", "At once", "After more"});
    std::vector<std::string> hours;
    hours.reserve(hoursInDay);
    for (int hour = 0; hour < hoursInDay; ++hour) {
        hours.push_back(zeroPadded(hour, 2) + ":00");
    }
    f.cboHour.setItems(std::move(hours));
    f.cboExtend.setListIndex(0);
    f.cboPage.setListIndex(FrmPlan::now);
}

void showPlanNames() {
    const PlanDraft& draft = plans().draft;
    std::vector<std::vector<std::string>> rows;
    for (const Plan& one : draft.plans) {
        rows.push_back({one.name});
    }
    FillList(planForm().lstPlans, std::move(rows));
    if (shownPlan() != nullptr) {
        planForm().lstPlans.setSelectedRow(static_cast<int>(draft.selected));
    }
}

void showPlan() {
    FrmPlan& f = planForm();
    const Plan* const plan = shownPlan();
    const Plan shown = plan == nullptr ? Plan() : *plan;
    choose(f.cboCounted, plan, shown.counted);
    choose(f.cboRollOver, plan, shown.rollOver);
    choose(f.cboDealOut, plan, shown.dealOut);
    choose(f.cboPeriod, plan, shown.period.kind);
    choose(f.cboWeekday, plan, shown.period.weekday - 1);
    choose(f.cboHour, plan, shown.period.hour);
    f.chkBlock.setValue(shown.blockAfterLast ? 1 : 0);
    (shown.lines.empty() ? f.optAllLines : f.optTheseLines).setValue(true);
    f.lblLinesReason.setCaption("");
    f.txtProvider.setText("");
    f.lblNowReason.setCaption("");
    showPlanThresholds();
    showPlanFields(shown);
    showPlanPreview();
    showPlanLines();
    enablePlanControls();
    ShowPlanStanding();
}

void showPlanPreview() {
    const Plan* const plan = shownPlan();
    planForm().txtPreview.setText(plan == nullptr ? std::string() : previewOf(plan->period));
}

void showPlanLines() {
    const Plan* const plan = shownPlan();
    ListView& list = planForm().lstLines;
    const int selected = list.selectedRow();
    std::vector<std::vector<std::string>> rows;
    const bool isAll = planForm().optAllLines.value();
    if (plan != nullptr) {
        for (const std::string& line : knownLines()) {
            rows.push_back({line, isAll || counts(*plan, line) ? "yes" : "no"});
        }
    }
    FillList(list, std::move(rows));
    list.setSelectedRow(selected < list.rowCount() ? selected : ListView::none);
}

void showPlanThresholds() {
    FrmPlan& f = planForm();
    const Plan* const plan = shownPlan();
    std::vector<std::vector<std::string>> rows;
    if (plan != nullptr) {
        for (const Threshold& one : plan->thresholds) {
            rows.push_back({wholeToText(one.percent) + " %", whatHappens(*plan, one)});
        }
    }
    FillList(f.lstThresholds, std::move(rows));
    const Threshold* const shown = shownThreshold();
    if (shown != nullptr) {
        f.lstThresholds.setSelectedRow(static_cast<int>(plans().draft.threshold));
    }
    f.chkNote.setValue(shown != nullptr && shown->note ? 1 : 0);
    f.chkWindow.setValue(shown != nullptr && shown->window ? 1 : 0);
    f.cboHangUp.setListIndex(shown == nullptr ? ComboBox::none : static_cast<int>(shown->hangUp));
}

void enablePlanControls() {
    const Plan* const plan = shownPlan();
    const auto conditions =
        plan == nullptr ? std::vector<std::pair<const Control*, bool>>() : conditionsOf(*plan);
    const std::vector<Control*> ofStanding = planForm().standingControls();
    for (Control* const control : planForm().controls()) {
        if (std::find(ofStanding.begin(), ofStanding.end(), control) != ofStanding.end()) {
            continue; // that is said where it is shown how the plan stands
        }
        const auto found =
            std::find_if(conditions.begin(), conditions.end(),
                         [&](const auto& condition) { return condition.first == control; });
        const bool holds = found == conditions.end() || found->second;
        control->setEnabled(holds && (plan != nullptr || !needsPlan(*control)));
    }
}

bool checkPlanLines() {
    FrmPlan& f = planForm();
    const Plan* const plan = shownPlan();
    const bool isMissing = plan != nullptr && f.optTheseLines.value() && plan->lines.empty();
    if (isMissing) {
        f.lblLinesReason.setCaption(f.lblLinesReason.otherCaptions().front());
        f.cboPage.setListIndex(FrmPlan::lines);
        f.focusOn(f.lstLines);
    }
    return !isMissing;
}

void togglePlanLine(int row) {
    Plan* const plan = shownPlan();
    const std::string line = planForm().lstLines.cell(row, 0);
    if (plan == nullptr || line.empty()) {
        return;
    }
    const bool wasCounted = std::erase(plan->lines, line) != 0;
    const bool isFull = !wasCounted && plan->lines.size() >= mostPlanLines;
    if (!wasCounted && !isFull) {
        plan->lines.push_back(line);
    }
    Label& reason = planForm().lblLinesReason;
    reason.setCaption(isFull ? reason.otherCaptions().at(1) : "");
    showPlanLines();
}

} // namespace tarvik
