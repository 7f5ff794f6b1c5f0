#pragma once

namespace tarvik {

/// Loads settings and totals and shows them in the options dialog and the main window. True when a
/// file was found and read to its end. A file that is there and cannot be read is not written over
/// in this run.
bool LoadState();

} // namespace tarvik
