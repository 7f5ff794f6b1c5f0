#pragma once

#include "types/Amount.h"
#include "types/Currency.h"

#include <functional>
#include <string>

namespace tarvik {

/// Points `IniFileName` at the file in the program's folder if it is there or `bCreate` allows a
/// new one; else leaves it as it was, with a message if a directory has its name. With `bAsk` the
/// user picks the file, and `IniFileName` is empty if none was picked.
void SetIniFileName(bool bCreate, bool bAsk);

/// Full path of the file in the program's folder, whether it is there or not.
std::string usualIniFile();

/// Writes what `Collect` writes into the file in use all at once; true when it was written.
/// Collects anew where another program writes to the file meanwhile. Not without a file in use, and
/// not into one that could not be read.
bool UpdateIniFile(const std::function<bool()>& Collect);

/// The key's value in that file, its first 127 characters at most; "" when there is none.
std::string iniText(const std::string& file, const std::string& section, const std::string& key);

/// The key's value in the file in use, as `iniText` reads it; "" also when none is in use.
std::string GetStringFromINI(const std::string& Section, const std::string& Key);

/// The key's value as a whole number above 0; 0 for everything else.
Currency GetLongFromINI(const std::string& Section, const std::string& Key);

/// The key's value as a number in the user's locale; 0 when it is missing or no number.
Currency GetCurrencyFromINI(const std::string& Section, const std::string& Key);

/// The key's value as a date serial, rounded to four decimals of a day; that of 1 January 2001 when
/// it is missing or no date.
Currency GetDateFromINI(const std::string& Section, const std::string& Key);

/// Totals as they stand in the record with that section; zeros where the name is empty.
Amount recordOf(const std::string& section);

/// True when the file says that an instance is running with it.
bool GetLocked();

/// Writes that an instance is running, or not; true when it was written.
bool SetLocked(bool bLocked);

/// Writes all settings, each only after the one before; true when all were written.
bool SaveSettings();

} // namespace tarvik
