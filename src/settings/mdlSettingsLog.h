#pragma once

#include "types/Currency.h"
#include "types/Long.h"

#include <string>

namespace tarvik {

/// Saves the totals as a new record, unless nothing was ever counted or the newest record holds the
/// same, and then all settings; the file is replaced once. True when everything is in the file.
/// False in a run that could not read the file when it was to be loaded, and where other programs
/// change it all the time.
bool SaveState();

/// The number of records, which are numbered from 1.
Long GetNumRecords();

// Readers of record n: 0 or "" when there is no such record or value.

/// The value of the key "Sent" or "Rcvd".
Currency GetBytes(const std::string& Key, Long n);
/// Total bytes sent at the moment of saving.
Currency GetBytesSent(Long n);
/// Total bytes received at the moment of saving.
Currency GetBytesRcvd(Long n);
/// Total online time at the moment of saving, milliseconds.
Currency GetDuration(Long n);
/// The host address at the moment of saving.
std::string GetIPAddress(Long n);
/// The name of the record's section: date, "|", time.
std::string GetDate(Long n);

} // namespace tarvik
