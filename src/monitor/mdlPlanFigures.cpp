#include "monitor/mdlPlanFigures.h"

#include "forms/Forms.h"
#include "ledger/Ledger.h"
#include "monitor/mdlPlanSaid.h"
#include "plan/PlanText.h"
#include "plan/Plans.h"
#include "plan/Thresholds.h"
#include "ports/Clock.h"
#include "ports/Locale.h"
#include "ports/NotificationArea.h"
#include "ports/Platform.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"
#include "types/Convert.h"
#include "ui/mdlGUILists.h"
#include "ui/mdlSysTray.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace tarvik {

namespace {

/// As far as the lines that are up tell what they can carry.
Capacity capacityNow() {
    constexpr std::uint32_t bitsInByte = 8;
    Plans& p = plans();
    std::uint64_t sum = 0;
    bool allTell = true;
    for (const LineSession& one : state().LineSessions) {
        allTell = allTell && one.last.dwBps != 0;
        sum += one.last.dwBps / bitsInByte;
    }
    p.mostLines = std::max(p.mostLines, static_cast<std::uint32_t>(state().LineSessions.size()));
    if (!state().LineSessions.empty()) {
        p.bytesPerSecond = allTell ? std::max(p.bytesPerSecond, sum) : 0;
    }
    return {.bytesPerSecond =
                p.bytesPerSecond == 0 ? std::nullopt : std::optional(p.bytesPerSecond),
            .lines = std::max(p.mostLines, 1U)};
}

void lookAtAll() {
    const Moment now = momentNow(platform().clock);
    const Zone zone = zoneOf(platform().clock);
    const History history(ledger().contents(), ledger().unwritten.entries());
    if (const auto ahead = zone(now); ahead != plans().ahead) {
        plans().forget(); // the user's clock may be in another zone now
        plans().ahead = ahead;
    }
    plans().look(history, now, zone);
    plans().lookAhead(history, now, zone, capacityNow());
}

/// The plan of which most is used: it is the one to be told of.
const PlanInUse* fullest() {
    const PlanInUse* found = nullptr;
    int most = -1;
    for (const PlanInUse& one : plans().all) {
        const int percent = one.meter ? percentUsed(one.plan, one.meter->standing) : -1;
        if (percent > most) {
            found = &one;
            most = percent;
        }
    }
    return found;
}

/// From its first threshold on, and from its last.
TrayMark markOf(const PlanInUse& one) {
    if (!one.meter || one.plan.thresholds.empty()) {
        return TrayMark::None;
    }
    const auto [first, last] = std::minmax_element(
        one.plan.thresholds.begin(), one.plan.thresholds.end(),
        [](const Threshold& a, const Threshold& b) { return a.percent < b.percent; });
    if (isReached(one.plan, one.meter->standing, last->percent)) {
        return TrayMark::Last;
    }
    return isReached(one.plan, one.meter->standing, first->percent) ? TrayMark::First
                                                                    : TrayMark::None;
}

TrayMark highestMark() {
    TrayMark mark = TrayMark::None;
    for (const PlanInUse& one : plans().all) {
        mark = std::max(mark, markOf(one));
    }
    return mark;
}

/// With its name where there are others.
std::string named(const PlanInUse& one, const std::string& line) {
    return plans().all.size() == 1 || line.empty() ? line : shownName(one.plan) + ": " + line;
}

/// The same in a menu, which may have no room for a long name.
std::string ofNamed(const PlanInUse& one, const std::string& caption) {
    return plans().all.size() == 1 ? caption : caption + " (" + shownName(one.plan) + ")";
}

/// What extends the plan, if it limits anything.
void showInMenu(const PlanInUse* told) {
    FrmSysTray& tray = forms().frmSysTray;
    std::vector<std::string> captions;
    if (told != nullptr && (told->plan.allowance || told->plan.hours)) {
        captions = {ofNamed(*told, ExtendText(*told, true)),
                    ofNamed(*told, ExtendText(*told, false))};
    }
    tray.plan = captions.empty() ? PlanKey() : told->plan.key();
    tray.mnuPopUp.setEntriesAbove(captions);
}

void showOutside(const PlanInUse* told) {
    Label& line = forms().frmMain.lblPlan;
    const bool isOn = told != nullptr;
    line.setCaption(
        isOn ? named(*told, planLine(*told, platform().locale.data(), zoneOf(platform().clock)))
             : "");
    line.setToolTip(line.caption()); // where there is no room for all of it
    line.setVisible(isOn);
    ShowPlanInSysTray(isOn ? named(*told, shortPlanLine(*told, platform().locale.data())) : "",
                      isOn ? highestMark() : TrayMark::None);
    showInMenu(told);
}

std::string percentText(int percent) {
    return wholeToText(percent) + " %";
}

void showBars(int used, int passed) {
    FrmPlan& f = forms().frmPlan;
    f.prgUsed.setValue(used);
    f.lblUsedPercent.setCaption(percentText(used));
    f.prgPassed.setValue(passed);
    f.lblPassedPercent.setCaption(percentText(passed));
}

void showNotes() {
    std::vector<std::vector<std::string>> rows;
    for (const LedgerNote& one : NotesOfShownPlan()) {
        rows.push_back({NoteDateText(one), NoteText(one)});
    }
    FillList(forms().frmPlan.lstNotes, std::move(rows));
}

/// Why nothing can be told, or what is expected.
std::string outlookOf(const PlanInUse* shown) {
    if (ledger().isElsewhere) {
        return "Another copy of the program keeps the ledger: nothing is reckoned for the plans "
               "here.";
    }
    if (!ledger().isKept) {
        return "No ledger is kept: nothing is reckoned for the plans.";
    }
    if (!ledger().inUse()) {
        return "The ledger is out of reach: nothing is reckoned for the plans.";
    }
    if (shown == nullptr) {
        return {};
    }
    const LocaleData& locale = platform().locale.data();
    const std::string today = todayText(*shown, locale);
    const std::string pace = forecastText(*shown, locale, zoneOf(platform().clock));
    std::string text = today.empty() ? "" : "Of today's part " + today + " are left.";
    text += text.empty() || pace.empty() ? "" : " ";
    return text + (pace.empty() ? "" : "At this pace " + pace + ".");
}

} // namespace

void ShowPlans() {
    guarded("ShowPlans", [] {
        const bool isOn = plans().areThere() && ledger().inUse();
        if (isOn) {
            lookAtAll();
        }
        showOutside(isOn ? fullest() : nullptr);
        if (forms().frmPlan.visible()) {
            ShowPlanStanding();
        }
    });
}

void ShowPlanStanding() {
    guarded("ShowPlanStanding", [] {
        FrmPlan& f = forms().frmPlan;
        const PlanInUse* const shown = plans().shown();
        const bool isKnown = shown != nullptr && shown->meter && ledger().inUse();
        if (isKnown) {
            const Standing& standing = shown->meter->standing;
            f.lblNow.setCaption(shortPlanLine(*shown, platform().locale.data()));
            showBars(percentUsed(shown->plan, standing),
                     percentPassed(standing.period, momentNow(platform().clock)));
        } else {
            const bool isNew = shown == nullptr && !plans().draft.plans.empty();
            f.lblNow.setCaption(isNew ? "The plan is in use as soon as OK is pressed." : "");
            showBars(0, 0);
        }
        f.lblLedger.setCaption(outlookOf(shown));
        f.cmdLedger.setVisible(!ledger().isKept && !ledger().isElsewhere);
        for (Control* const control : f.standingControls()) {
            control->setEnabled(isKnown);
        }
        showNotes();
    });
}

} // namespace tarvik
