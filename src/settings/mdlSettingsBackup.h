#pragma once

namespace tarvik {

/// Saves everything, then moves the file aside under today's date: "Tarvik.ini" becomes
/// "Tarvik.2026-5-3.ini"; one of that name is overwritten. The next write begins a new file. False
/// when nothing could be saved or moved; the file is then where it was.
bool BackupINIFile();

} // namespace tarvik
