#pragma once

#include <string>

namespace tarvik {

/// Saves everything, then moves the file aside under today's date: "Tarvik.ini" becomes
/// "Tarvik.2026-5-3.ini". One of that name is overwritten if the new one holds all its records,
/// else it is called "Tarvik.2026-5-3.1.ini" from then on, or has the next number that is free. The
/// next write begins a new file; the user's plans, if there are any, are written to it at once.
/// False when nothing could be saved or moved; the file is then where it was.
bool BackupINIFile();

/// Copies the file as it lies on the disk under today's date, or under that with the first number
/// that is free. `copy` is the copy's full path, empty where there is nothing to copy; false when
/// it cannot be copied.
bool keepIniFile(const std::string& file, std::string& copy);

} // namespace tarvik
