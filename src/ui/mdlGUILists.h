#pragma once

#include "controls/Controls.h"
#include "controls/ListView.h"
#include "types/Long.h"

#include <string>
#include <vector>

namespace tarvik {

/// Fills every list of the windows before the settings are loaded. True when the phone book has at
/// least one entry.
bool PreInitGUI();

/// Fills the list of entries anew where the phone book has changed; the chosen entry stays chosen
/// if it is still there.
void RefreshEntries();

/// Fills the lists of the options, units and when the totals are reset, and selects the first of
/// each.
void PreInitOptions();

/// The same for the history: kinds of chart and of data, units, and what is shown.
void PreInitHistory();

/// Replaces what a list holds by the four units of bytes and selects the first.
void FillTransferUnitComboBox(ComboBox& Combo);

/// The same with the four units of a duration.
void FillDurationUnitComboBox(ComboBox& Combo);

/// The last position of the text in the list, without regard to case and blanks around it; -1 when
/// it is not there or the list has more than 32,000 entries.
int ElementIsInComboBox(const ComboBox& Combo, const std::string& Element);

/// Selects a position; one beyond the list changes nothing.
void SetComboBox(ComboBox& Combo, Long Index);

/// Fills a list with these rows, each with a text for every column, which get as wide as the texts.
/// None is selected then; a list that shows them already is left as it is.
void FillList(ListView& List, std::vector<std::vector<std::string>> Rows);

} // namespace tarvik
