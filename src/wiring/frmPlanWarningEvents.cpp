#include "wiring/frmPlanWarningEvents.h"

#include "forms/Forms.h"
#include "monitor/mdlPlanNotes.h"
#include "monitor/mdlPlanWords.h"
#include "plan/Plans.h"
#include "state/mdlTools.h"
#include "wiring/CloseBox.h"
#include "wiring/frmPlanEvents.h"

namespace tarvik {

namespace {

/// What could not be written has been told, and can be tried again.
void extendBy(bool today) {
    const auto& warnings = forms().frmPlanWarning.warnings;
    const PlanKey plan = warnings.empty() ? PlanKey() : warnings.front().plan;
    if (plans().find(plan) == nullptr || ExtendPlan(plan, today)) {
        CloseWarning();
    }
}

} // namespace

void cmdExtendToday_Click() {
    guarded("cmdExtendToday_Click", [] { extendBy(true); });
}

void cmdExtendPeriod_Click() {
    guarded("cmdExtendPeriod_Click", [] { extendBy(false); });
}

void frmPlanWarning_cmdPlan_Click() {
    guarded("cmdPlan_Click", [] { ShowPlanWindow(); });
}

void frmPlanWarning_cmdCancel_Click() {
    guarded("cmdCancel_Click", [] { CloseWarning(); });
}

void connectPlanWarningEvents() {
    FrmPlanWarning& warning = forms().frmPlanWarning;
    warning.cmdExtendToday.Click.connect(cmdExtendToday_Click);
    warning.cmdExtendPeriod.Click.connect(cmdExtendPeriod_Click);
    warning.cmdPlan.Click.connect(frmPlanWarning_cmdPlan_Click);
    warning.cmdCancel.Click.connect(frmPlanWarning_cmdCancel_Click);
    connectCloseBox(warning, frmPlanWarning_cmdCancel_Click);
}

} // namespace tarvik
