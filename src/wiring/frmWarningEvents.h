#pragma once

namespace tarvik {

// What the controls of the limit warning do.

void frmWarning_Form_Initialize();
/// Hangs up; the window stays open.
void frmWarning_cmdDisconnect_Click();
/// Clears the totals if the user says so; the window stays open.
void frmWarning_cmdReset_Click();
/// Hides the window for the rest of the run.
void frmWarning_cmdCancel_Click();
/// The close box and Escape hide the window until the next tick finds the limit exceeded.
void frmWarning_Close();

/// Lets the window and its controls do the above; once, before the window is loaded.
void connectWarningEvents();

} // namespace tarvik
