#pragma once

namespace tarvik {

// What the plan's window shows of the plan that is selected.

/// Fills its lists of choices; they stay.
void fillPlanChoices();

/// Brings the list of plans up to date, with the one selected that is shown.
void showPlanNames();

/// All of the plan, or that none is selected.
void showPlan();

/// What depends on other fields: the preview, the lists, and what can be used.
void showPlanPreview();
void showPlanLines();
void showPlanThresholds();
void enablePlanControls();

/// The user has chosen some line where the plan is not to be reckoned from all; else it is shown
/// that one is missing.
bool checkPlanLines();

/// The line in that row of the list of lines; counted if it was not, and the other way round.
void togglePlanLine(int row);

} // namespace tarvik
