#pragma once

#include "controls/Controls.h"
#include "state/mdlVar.h"

namespace tarvik {

// What the controls of the options dialog do. The settings change with OK alone.

/// The limit boxes enable the limits' fields and, either of them, what happens at a limit.
void ToggleLimitControls();
void ToggleResetControls();
void ToggleTickerControls();

/// Takes over the selected unit, if there is one.
void GetUnitTypeTransfer(const ComboBox& Combo, TransferUnit& Unit);

/// Clears the totals if the user says so.
void cmdResetValues_Click();
/// Applies the dialog and hides it. Numbers out of range become their defaults without a word.
void cmdOK_Click();
/// Hides the dialog, as its close box does; what was edited is overwritten when it is opened again.
void frmOptions_cmdCancel_Click();

/// Lets the dialog's controls do the above, and each numeric field what `connectNumericField` says;
/// once, before the dialog is loaded.
void connectOptionsEvents();

} // namespace tarvik
