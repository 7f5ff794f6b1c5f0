#include "wiring/frmPlanEvents.h"

#include "forms/Forms.h"
#include "ledger/Ledger.h"
#include "monitor/mdlPlanFigures.h"
#include "monitor/mdlPlanWords.h"
#include "plan/Plans.h"
#include "ports/Clock.h"
#include "ports/Platform.h"
#include "settings/mdlSettingsLedger.h"
#include "settings/mdlSettingsPlans.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "types/Convert.h"
#include "types/Text.h"
#include "ui/mdlGUIWindows.h"
#include "wiring/CloseBox.h"
#include "wiring/PlanFields.h"
#include "wiring/PlanPages.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

namespace tarvik {

namespace {

std::vector<Plan>& drafts() {
    return plans().draft.plans;
}

/// The least number that no plan has; there is one.
int freeNumber() {
    int number = 1;
    while (std::any_of(drafts().begin(), drafts().end(),
                       [&](const Plan& one) { return one.number == number; })) {
        ++number;
    }
    return number;
}

Plan newPlan() {
    const int number = freeNumber();
    constexpr std::array offered{50, 80, 100};
    Plan plan{.number = number,
              .name = "Plan " + wholeToText(number),
              .made = momentNow(platform().clock)};
    plan.period.from = dayOf(localOf(plan.made, aheadNow(platform().clock)));
    for (const int percent : offered) {
        plan.thresholds.push_back({.percent = percent});
    }
    return plan;
}

/// Enter in a box is for its own button where something was typed there, and not for OK.
CommandButton* buttonForEnter() {
    FrmPlan& f = planForm();
    if (f.focusedBox == &f.txtProvider && !trimSpaces(f.txtProvider.text()).empty()) {
        return &f.cmdProvider;
    }
    return f.focusedBox == &f.txtExtend && f.txtExtend.text() != FrmPlan::usualExtension
               ? &f.cmdExtend
               : nullptr;
}

void noteFocus(TextBox& box) {
    box.GotFocus.connect([&box] { planForm().focusedBox = &box; });
    box.LostFocus.connect([] { planForm().focusedBox = nullptr; });
}

/// All that the plan says can be so; else what cannot is shown, with the reason.
bool mayLeavePlan() {
    return checkPlanFields() && checkPlanLines();
}

/// It stands where its number belongs, and is the one that is shown.
void add(Plan plan) {
    const auto place = std::find_if(drafts().begin(), drafts().end(),
                                    [&](const Plan& one) { return one.number > plan.number; });
    plans().draft.selected = static_cast<std::size_t>(place - drafts().begin());
    plans().draft.threshold = 0;
    drafts().insert(place, std::move(plan));
    showPlanNames();
    showPlan();
}

/// What a field says has gone into the plan.
void fieldTaken() {
    const Plan* const plan = shownPlan();
    const ListView& names = planForm().lstPlans;
    if (plan != nullptr && names.cell(names.selectedRow(), 0) != plan->name) {
        showPlanNames();
    }
    showPlanPreview();
    showPlanThresholds();
    enablePlanControls();
}

/// A choice of the user's: what it has changed in the plan changes what else is shown.
template <class Take>
void PlanChoice_Click(const ComboBox& Combo, Take take) {
    guarded("PlanChoice_Click", [&] {
        Plan* const plan = shownPlan();
        if (plan != nullptr && Combo.listIndex() != ComboBox::none) {
            take(*plan, Combo.listIndex());
            showPlanPreview();
            enablePlanControls();
        }
    });
}

template <class Take>
void PlanBox_Click(const CheckBox& Box, Take take) {
    guarded("PlanBox_Click", [&] {
        if (Plan* const plan = shownPlan()) {
            take(*plan, Box.ticked());
        }
    });
}

template <class Take>
void onChoice(ComboBox& combo, Take take) {
    combo.Click.connect([&combo, take] { PlanChoice_Click(combo, take); });
}

template <class Take>
void onTick(CheckBox& box, Take take) {
    box.Click.connect([&box, take] { PlanBox_Click(box, take); });
}

/// What happens at a threshold stands in the list too.
template <class Change>
void changeThreshold(Change&& change) {
    Threshold* const shown = shownThreshold();
    if (shown == nullptr) {
        return;
    }
    const Threshold before = *shown;
    change(*shown);
    if (*shown != before) {
        showPlanThresholds();
        enablePlanControls();
    }
}

void connectChoices() {
    FrmPlan& f = planForm();
    onChoice(f.cboCounted, [](Plan& p, int i) { p.counted = static_cast<Counted>(i); });
    onChoice(f.cboRollOver, [](Plan& p, int i) { p.rollOver = static_cast<RollOver>(i); });
    onChoice(f.cboDealOut, [](Plan& p, int i) { p.dealOut = static_cast<DealOut>(i); });
    onChoice(f.cboPeriod, [](Plan& p, int i) { p.period.kind = static_cast<PeriodKind>(i); });
    onChoice(f.cboWeekday, [](Plan& p, int i) { p.period.weekday = i + 1; });
    onChoice(f.cboHour, [](Plan& p, int i) { p.period.hour = i; });
    onChoice(f.cboHangUp, [](Plan&, int i) {
        changeThreshold([i](Threshold& one) { one.hangUp = static_cast<HangUpRule>(i); });
    });
    onTick(f.chkBlock, [](Plan& p, bool ticked) { p.blockAfterLast = ticked; });
    onTick(f.chkNote, [](Plan&, bool ticked) {
        changeThreshold([ticked](Threshold& one) { one.note = ticked; });
    });
    onTick(f.chkWindow, [](Plan&, bool ticked) {
        changeThreshold([ticked](Threshold& one) { one.window = ticked; });
    });
    f.optAllLines.Click.connect(optAllLines_Click);
    f.optTheseLines.Click.connect(optTheseLines_Click);
}

/// The plans of the draft, with what is known of those that go on.
std::vector<PlanInUse> inUseNow() {
    std::vector<PlanInUse> all;
    for (const Plan& one : drafts()) {
        PlanInUse next{.plan = one};
        const PlanInUse* const before = plans().withNumber(one.number);
        if (before != nullptr) {
            next.inFile = before->inFile;
        }
        if (before != nullptr && before->plan.made == one.made) {
            next.plan.said = before->plan.said;            // something may have been said meanwhile
            const bool isSame = before->plan == next.plan; // else lines that are up go on
            next.mayGoOn = isSame ? before->mayGoOn : std::set<std::uint32_t>();
            next.wasBlocked = isSame && before->wasBlocked;
        }
        all.push_back(std::move(next));
    }
    return all;
}

void apply() {
    std::vector<PlanInUse> all = inUseNow();
    for (const PlanInUse& one : plans().all) {
        const bool goesOn = std::any_of(all.begin(), all.end(), [&](const PlanInUse& next) {
            return next.plan.number == one.plan.number;
        });
        if (!goesOn) {
            plans().toErase.insert(one.plan.number);
        }
    }
    plans().all = std::move(all);
    plans().forget();
    if (!SavePlans()) {
        MsgBox("Warning: The plans could not be stored in the INI file.", MsgBoxButtons::OkOnly,
               MsgBoxIcon::Exclamation);
    }
}

void showLedgerFailure() {
    MsgBox("Error: The ledger could not be begun.", MsgBoxButtons::OkOnly, MsgBoxIcon::Critical);
}

/// In one sentence, with the file's name.
bool userBeginsLedger() {
    return MsgBox(std::string("Do you want Tarvik to write down from now on, in the file \"") +
                      ledgerName() + "\" beside the INI file, what each line carries?",
                  MsgBoxButtons::YesNo, MsgBoxIcon::Question) == MsgBoxAnswer::Yes;
}

void askForLedger() {
    if (!ledger().isKept && userBeginsLedger() && !BeginLedger()) {
        showLedgerFailure();
    }
}

} // namespace

void ShowPlanWindow() {
    guarded("ShowPlanWindow", [] {
        FrmPlan& form = planForm();
        if (!form.visible()) {
            PlanDraft& draft = plans().draft;
            draft = {};
            for (const PlanInUse& one : plans().all) {
                draft.plans.push_back(one.plan);
            }
            fillPlanChoices();
            showPlanNames();
            showPlan();
        }
        ToggleFormVisibility(form, true);
        ShowPlans(); // nothing else does without ticks
    });
}

void cmdPlan_Click() {
    guarded("cmdPlan_Click", [] { ShowPlanWindow(); });
}

void frmPlan_cmdNew_Click() {
    guarded("cmdNew_Click", [] {
        if (drafts().size() < mostPlans && mayLeavePlan()) {
            add(newPlan());
            planForm().cboPage.setListIndex(FrmPlan::allowance);
        }
    });
}

void frmPlan_cmdCopy_Click() {
    guarded("cmdCopy_Click", [] {
        const Plan* const plan = shownPlan();
        if (plan == nullptr || drafts().size() >= mostPlans || !mayLeavePlan()) {
            return;
        }
        Plan copy = *plan;
        copy.number = freeNumber();
        copy.made = momentNow(platform().clock);
        copy.said.clear();
        const std::string name = plan->name + " (copy)";
        copy.name = name.size() <= longestPlanName ? name : plan->name;
        add(std::move(copy));
    });
}

void frmPlan_cmdDelete_Click() {
    guarded("cmdDelete_Click", [] {
        PlanDraft& draft = plans().draft;
        if (shownPlan() == nullptr) {
            return;
        }
        drafts().erase(drafts().begin() + static_cast<std::ptrdiff_t>(draft.selected));
        draft.selected = std::min(draft.selected, drafts().empty() ? 0 : drafts().size() - 1);
        draft.threshold = 0;
        showPlanNames();
        showPlan();
    });
}

void lstPlans_Click() {
    guarded("lstPlans_Click", [] {
        PlanDraft& draft = plans().draft;
        const int row = planForm().lstPlans.selectedRow();
        if (row == ListView::none || static_cast<std::size_t>(row) == draft.selected) {
            return;
        }
        if (!mayLeavePlan()) {
            planForm().lstPlans.setSelectedRow(static_cast<int>(draft.selected));
            return;
        }
        draft.selected = static_cast<std::size_t>(row);
        draft.threshold = 0;
        showPlan();
    });
}

void cboPage_Click() {
    guarded("cboPage_Click", [] {
        FrmPlan& form = planForm();
        for (int page = 0; page < FrmPlan::pageCount; ++page) {
            form.frameOf(page).setVisible(page == form.cboPage.listIndex());
        }
    });
}

void cmdAddThreshold_Click() {
    guarded("cmdAddThreshold_Click", [] {
        Plan* const plan = shownPlan();
        if (plan == nullptr || plan->thresholds.size() >= mostThresholds || !checkPlanFields()) {
            return;
        }
        constexpr int first = 90;
        int percent = first;
        while (std::any_of(plan->thresholds.begin(), plan->thresholds.end(),
                           [&](const Threshold& one) { return one.percent == percent; })) {
            --percent;
        }
        plan->thresholds.push_back({.percent = percent});
        plans().draft.threshold = plan->thresholds.size() - 1;
        showPlan();
    });
}

void cmdRemoveThreshold_Click() {
    guarded("cmdRemoveThreshold_Click", [] {
        PlanDraft& draft = plans().draft;
        if (shownThreshold() == nullptr) {
            return;
        }
        std::vector<Threshold>& all = shownPlan()->thresholds;
        all.erase(all.begin() + static_cast<std::ptrdiff_t>(draft.threshold));
        draft.threshold = std::min(draft.threshold, all.empty() ? 0 : all.size() - 1);
        showPlan();
    });
}

void lstThresholds_Click() {
    guarded("lstThresholds_Click", [] {
        ListView& list = planForm().lstThresholds;
        PlanDraft& draft = plans().draft;
        const int row = list.selectedRow();
        if (row == ListView::none || static_cast<std::size_t>(row) == draft.threshold) {
            return;
        }
        if (!checkPlanFields()) {
            list.setSelectedRow(static_cast<int>(draft.threshold));
            return;
        }
        draft.threshold = static_cast<std::size_t>(row);
        showPlan();
    });
}

void optAllLines_Click() {
    guarded("optAllLines_Click", [] {
        if (Plan* const plan = shownPlan(); plan != nullptr && planForm().optAllLines.value()) {
            plan->lines.clear();
            showPlanLines();
            enablePlanControls();
        }
    });
}

void optTheseLines_Click() {
    guarded("optTheseLines_Click", [] {
        showPlanLines();
        enablePlanControls();
    });
}

void lstLines_Click() {
    guarded("lstLines_Click", [] { enablePlanControls(); });
}

void lstLines_DblClick() {
    guarded("lstLines_DblClick", [] { togglePlanLine(planForm().lstLines.selectedRow()); });
}

void cmdProvider_Click() {
    guarded("cmdProvider_Click", [] {
        FrmPlan& form = planForm();
        SayProvidersFigure(form.txtProvider.text());
        if (form.lblNowReason.caption().empty()) {
            form.txtProvider.setText(""); // it is in the list now
        }
    });
}

void frmPlan_cmdExtend_Click() {
    guarded("cmdExtend_Click", [] {
        ExtendShownPlan(planForm().txtExtend.text(), planForm().cboExtend.listIndex() == 0);
    });
}

void cmdTakeBack_Click() {
    guarded("cmdTakeBack_Click", [] { TakeBackNote(planForm().lstNotes.selectedRow()); });
}

void cmdLedger_Click() {
    guarded("cmdLedger_Click", [] {
        askForLedger();
        plans().forget();
        ShowPlans();
    });
}

void frmPlan_cmdOK_Click() {
    guarded("cmdOK_Click", [] {
        if (CommandButton* const meant = buttonForEnter()) {
            meant->press();
            return;
        }
        if (!mayLeavePlan()) {
            return;
        }
        const bool isFirst = plans().all.empty() && !drafts().empty();
        planForm().setVisible(false);
        apply();
        if (isFirst) {
            askForLedger();
        }
        ShowPlans();
    });
}

void frmPlan_cmdCancel_Click() {
    guarded("cmdCancel_Click", [] { planForm().setVisible(false); });
}

void connectPlanEvents() {
    FrmPlan& f = planForm();
    forms().frmOptions.cmdPlan.Click.connect(cmdPlan_Click);
    f.cmdNew.Click.connect(frmPlan_cmdNew_Click);
    f.cmdCopy.Click.connect(frmPlan_cmdCopy_Click);
    f.cmdDelete.Click.connect(frmPlan_cmdDelete_Click);
    f.lstPlans.Click.connect(lstPlans_Click);
    f.cboPage.Click.connect(cboPage_Click);
    f.cmdAddThreshold.Click.connect(cmdAddThreshold_Click);
    f.cmdRemoveThreshold.Click.connect(cmdRemoveThreshold_Click);
    f.lstThresholds.Click.connect(lstThresholds_Click);
    f.lstLines.Click.connect(lstLines_Click);
    f.lstLines.DblClick.connect(lstLines_DblClick);
    f.cmdLine.Click.connect(lstLines_DblClick);
    f.cmdProvider.Click.connect(cmdProvider_Click);
    f.cmdExtend.Click.connect(frmPlan_cmdExtend_Click);
    f.cmdTakeBack.Click.connect(cmdTakeBack_Click);
    f.cmdLedger.Click.connect(cmdLedger_Click);
    f.cmdOK.Click.connect(frmPlan_cmdOK_Click);
    f.cmdCancel.Click.connect(frmPlan_cmdCancel_Click);
    noteFocus(f.txtProvider);
    noteFocus(f.txtExtend);
    connectChoices();
    connectPlanFields(fieldTaken);
    connectCloseBox(f, frmPlan_cmdCancel_Click);
}

} // namespace tarvik
