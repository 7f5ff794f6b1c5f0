#include "monitor/mdlPlanNotes.h"

#include "forms/Forms.h"
#include "monitor/mdlPlanSaid.h"
#include "monitor/mdlPlanWords.h"
#include "plan/PlanText.h"
#include "plan/Plans.h"
#include "ports/Locale.h"
#include "ports/NotificationArea.h"
#include "ports/Platform.h"
#include "ports/Program.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "types/Convert.h"
#include "ui/mdlGUIWindows.h"
#include "ui/mdlSysTray.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace tarvik {

namespace {

constexpr int hundred = 100;

using Variables = std::vector<std::pair<std::string, std::string>>;

/// "Home: 80 % is used.", and how it stands in another line.
std::string textOf(const PlanInUse& one, int percent, const char* newLine) {
    std::string text = shownName(one.plan) + ": " + wholeToText(percent) + " % is used.";
    const std::string line = shortPlanLine(one, platform().locale.data());
    return line.empty() ? text : text + newLine + line;
}

/// The buttons in this order.
enum Answer { extendToday, extendPeriod };

void PlanNote_Answered(const PlanKey& Key, int Which) {
    guarded("PlanNote_Answered", [&] {
        if (Which == extendToday || Which == extendPeriod) {
            ExtendPlan(Key, Which == extendToday);
        } else {
            ToggleFormVisibility(forms().frmMain, true);
        }
    });
}

void tell(const PlanInUse& one, const std::string& text, DesktopNote::Urgency urgency) {
    DesktopNote note{.title = "Velmars Tarvik",
                     .text = text,
                     .urgency = urgency,
                     .buttons = {ExtendText(one, true), ExtendText(one, false)}};
    TellSoon(std::move(note),
             [key = one.plan.key()](int answer) { PlanNote_Answered(key, answer); });
}

/// What waits for its turn in the window, if its plan is still there; none closes it.
void showNextWarning() {
    FrmPlanWarning& warning = forms().frmPlanWarning;
    std::erase_if(warning.warnings, [](const FrmPlanWarning::Warning& one) {
        return plans().find(one.plan) == nullptr;
    });
    if (warning.warnings.empty()) {
        warning.setVisible(false);
        return;
    }
    const FrmPlanWarning::Warning& first = warning.warnings.front();
    const PlanInUse& one = *plans().find(first.plan);
    warning.lblDescription.setCaption(first.text);
    warning.cmdExtendToday.setCaption(ExtendText(one, true));
    warning.cmdExtendPeriod.setCaption(ExtendText(one, false));
    ToggleFormVisibility(warning, true);
}

/// In the place of what is told of the same plan already.
void addWarning(const Plan& plan, const std::string& text) {
    std::vector<FrmPlanWarning::Warning>& all = forms().frmPlanWarning.warnings;
    const auto same = std::find_if(all.begin(), all.end(),
                                   [&](const auto& one) { return one.plan == plan.key(); });
    if (same == all.end()) {
        all.push_back({.plan = plan.key(), .text = text});
    } else {
        same->text = text;
    }
    showNextWarning();
}

/// Its figures, as whole numbers.
Variables variablesOf(const PlanInUse& one, int percent) {
    const Standing& standing = one.meter->standing;
    const auto number = [](std::uint64_t value) { return std::to_string(value); };
    return {{"TARVIK_PLAN", one.plan.name},
            {"TARVIK_PERCENT", wholeToText(percent)},
            {"TARVIK_USED_BYTES", number(standing.used.bytes)},
            {"TARVIK_TOTAL_BYTES", number(standing.total().bytes)},
            {"TARVIK_LEFT_BYTES", number(standing.left().bytes)},
            {"TARVIK_USED_SECONDS", number(standing.used.milliseconds / 1000)},
            {"TARVIK_TOTAL_SECONDS", number(standing.total().milliseconds / 1000)},
            {"TARVIK_LEFT_SECONDS", number(standing.left().milliseconds / 1000)}};
}

void start(const PlanInUse& one, const Threshold& threshold) {
    if (!threshold.program.empty() &&
        !platform().program.launch(threshold.program, variablesOf(one, threshold.percent))) {
        TellSoon(shownName(one.plan) + ": The program could not be started." + CR +
                 threshold.program);
    }
}

} // namespace

void SayThresholds(int Number, const std::vector<Threshold>& Said) {
    guarded("SayThresholds", [&] {
        const PlanInUse* const one = plans().withNumber(Number);
        if (one == nullptr || !one->meter) {
            return;
        }
        for (const Threshold& threshold : Said) {
            start(*one, threshold);
        }
        const auto highest = [&](bool Threshold::*how) {
            const auto found = std::find_if(Said.rbegin(), Said.rend(),
                                            [&](const Threshold& each) { return each.*how; });
            return found == Said.rend() ? 0 : found->percent;
        };
        if (const int percent = highest(&Threshold::note); percent != 0) {
            tell(*one, textOf(*one, percent, CR),
                 percent < hundred ? DesktopNote::Urgency::Normal : DesktopNote::Urgency::Critical);
        }
        if (const int percent = highest(&Threshold::window); percent != 0) {
            addWarning(one->plan, textOf(*one, percent, "\r\n"));
        }
    });
}

void CloseWarning() {
    guarded("CloseWarning", [] {
        std::vector<FrmPlanWarning::Warning>& all = forms().frmPlanWarning.warnings;
        if (!all.empty()) {
            all.erase(all.begin());
        }
        showNextWarning();
    });
}

void SayBlocked(int Number) {
    guarded("SayBlocked", [&] {
        if (const PlanInUse* const one = plans().withNumber(Number)) {
            tell(*one,
                 shownName(one->plan) +
                     ": A new connection was hung up, as the last threshold is reached.",
                 DesktopNote::Urgency::Critical);
        }
    });
}

} // namespace tarvik
