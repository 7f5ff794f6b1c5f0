#pragma once

#include "types/Currency.h"
#include "types/Long.h"

namespace tarvik {

/// Sets the chart up: key, titles of the axes, grid.
void InitDiagram();

/// Fills the chart with the values of the chosen records, as the lists of the window say. Does
/// nothing before an import. Where a value cannot be calculated, the chart shows the records before
/// it and leaves the places of the others empty.
void PlotRows();

/// Takes everything off the chart: what it showed is no longer what was imported.
void ClearDiagram();

/// Writes the title of the values: what is shown, and in which unit.
void SetAxis();

// Values of record r, from 1; 0 after an error, which is reported. `Second` asks for what a second
// column shows: bytes sent.

/// In the chosen unit.
Currency GetTransfer(Long r, bool Second);
// As recorded, or in percent. The names of these two are crossed, also in what they report; kept
// so.
/// For all records but the first.
Currency GetTransfer1stRow(Long r, bool Second);
/// For record 1.
Currency GetTransferNthRow(Long r, bool Second);

} // namespace tarvik
