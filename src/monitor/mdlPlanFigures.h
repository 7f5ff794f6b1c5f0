#pragma once

namespace tarvik {

/// Shows how the plans stand, after anything that changes it: in the line of the main window, in
/// the icon and its tip, and in their own window if it is open. Without a plan, or a ledger, none
/// of them shows anything.
void ShowPlans();

/// The page of the plan's window that tells how the plan stands that is shown there.
void ShowPlanStanding();

} // namespace tarvik
