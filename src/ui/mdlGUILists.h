#pragma once

#include "controls/Controls.h"
#include "types/Long.h"

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

/// Fill a list with the four units and select the first.
void FillTransferUnitComboBox(ComboBox& Combo);

void FillDurationUnitComboBox(ComboBox& Combo);

/// The last position of the text in the list, without regard to case and blanks around it; -1 when
/// it is not there or the list has more than 32,000 entries.
int ElementIsInComboBox(const ComboBox& Combo, const std::string& Element);

/// Selects a position; one beyond the list changes nothing.
void SetComboBox(ComboBox& Combo, Long Index);

} // namespace tarvik
