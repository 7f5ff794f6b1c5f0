#pragma once

#include "forms/frmPlan.h"
#include "plan/Plan.h"

namespace tarvik {

// The fields of the plan's window, one row for each: its box, what stands beside it while it cannot
// be what it says, and how it is written and read.

/// Has each field checked as it is left; `taken` is called when what it says has gone into the plan
/// that is shown.
void connectPlanFields(void (*taken)());

/// Writes what the plan says into all fields, with no reason beside them.
void showPlanFields(const Plan& plan);

/// Checks all that can be typed into. False where one cannot be what it says: its page is shown,
/// and it gets the focus.
bool checkPlanFields();

/// The window.
FrmPlan& planForm();

/// The plan that is shown, null where none is; the threshold of it that is shown, likewise.
Plan* shownPlan();
Threshold* shownThreshold();

} // namespace tarvik
