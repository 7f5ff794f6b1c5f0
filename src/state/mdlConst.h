#pragma once

namespace tarvik {

/// Name of the single-instance object.
constexpr const char* InstanceKey = "{EDA91F59-8432-4013-BFB4-5430CB8BF636}";

/// The file of settings and records, in the program's folder.
constexpr const char* IniFileBaseName = "Tarvik.ini";

/// The section that holds the settings and the index of records.
constexpr const char* SettingsSection = "Settings";

/// What the default and every unreadable date of the last reset is converted from.
constexpr const char* DefaultDateText = "01.01.01";

/// Separates lines within a message.
constexpr const char* CR = "\r";

} // namespace tarvik
