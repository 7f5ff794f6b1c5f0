#pragma once

#include "types/Long.h"

namespace tarvik {

/// Puts so many of the imported records into the list of all records.
void ListRecords(Long Count);

/// Writes the first and the last record of the chart into their boxes.
void UpdateStartStop();

/// Shows all that was imported of record `k`, counted from 1, in a box.
void ShowRecord(Long k);

} // namespace tarvik
