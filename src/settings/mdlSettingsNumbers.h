#pragma once

#include "settings/Setting.h"
#include "state/mdlVar.h"

#include <cstdint>

namespace tarvik {

// The settings as the journal has them: each as the number it is, not as a language writes it.

using SettingNumbers = decltype(JournalEntry::settings);

/// In the order of the table of settings.
SettingNumbers settingsAsNumbers(const State& s);

/// Each is one that the setting can have.
bool canBeMeant(const SettingNumbers& numbers);

/// Puts one into its place in the state; it must be one that the setting can have.
void takeNumber(const Setting& setting, std::int64_t number, State& s);

} // namespace tarvik
