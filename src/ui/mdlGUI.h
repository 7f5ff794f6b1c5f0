#pragma once

#include "controls/Form.h"
#include "state/mdlVar.h"
#include "types/Currency.h"

#include <string>

namespace tarvik {

/// Fills every list of the windows before the settings are loaded. True when the phone book has at
/// least one entry.
bool PreInitGUI();
/// Fills the list of entries anew where the phone book has changed; the chosen entry stays chosen
/// if it is still there.
void RefreshEntries();
void PreInitOptions();
void PreInitHistory();

/// Takes the loaded settings over into the windows: the options dialog and the timer.
void InitGUI();

/// Copies the settings into the controls of the options dialog.
void InitControls();

/// Refreshes figures, colours, tray menu and tray icon after the state of the connection.
void UpdateGUI();

/// Shows in the status lamp whether monitoring is on and a connection is up.
void ShowStatus();

/// Writes the value boxes: the totals, the current session, or zero for the current session.
void UpdateValuesInGUI(bool ShowTotal, bool ShowCurrent, bool ResetCurrent);

/// Scales bytes to the unit chosen for the current session or for the totals.
double FinaliseTransfer(double Value, bool Current);

/// Milliseconds as hours:minutes:seconds:milliseconds; the hours grow beyond two digits.
std::string FinaliseTime(Currency Duration);

/// Fill a list with the four units and select the first.
void FillTransferUnitComboBox(ComboBox& Combo);
void FillDurationUnitComboBox(ComboBox& Combo);

/// The last position of the text in the list, without regard to case and blanks around it; -1 when
/// it is not there or the list has more than 32,000 entries.
int ElementIsInComboBox(const ComboBox& Combo, const std::string& Element);

/// Selects a position; one beyond the list changes nothing.
void SetComboBox(ComboBox& Combo, Long Index);

/// Writes the unit behind the prefix: "(bytes):" and so on. Any other unit changes nothing.
void SetLabelUnitTransfer(Label& Caption, const std::string& Prefix, TransferUnit Unit);

/// Shows or hides a form; a form that is seen afterwards comes to the front and gets the focus.
/// Where no icon in the notification area could bring a hidden main window back, it is minimised.
void ToggleFormVisibility(Form& Window, bool Visible);

} // namespace tarvik
