#pragma once

namespace tarvik {

/// Name of the single-instance object.
constexpr const char* InstanceKey = "{EDA91F59-8432-4013-BFB4-5430CB8BF636}";

/// The file of settings and records, in the program's folder.
constexpr const char* IniFileBaseName = "Tarvik.ini";

/// The section that holds the settings and the index of records.
constexpr const char* SettingsSection = "Settings";

/// Keys of the index of records, in that section, and of a record, in its own.
namespace keys {
constexpr const char* lastState = "LastState";         ///< the newest record's section
constexpr const char* lastDateStamp = "LastDateStamp"; ///< how many records there are
constexpr const char* dateStamp = "DateStamp";         ///< with n behind it: record n's section
constexpr const char* sent = "Sent";
constexpr const char* rcvd = "Rcvd";
constexpr const char* duration = "Duration";
constexpr const char* ipAddress = "IPAddress";
} // namespace keys

/// What the default and every unreadable date of the last reset is converted from.
constexpr const char* DefaultDateText = "01.01.01";

/// Separates lines within a message.
constexpr const char* CR = "\r";

} // namespace tarvik
