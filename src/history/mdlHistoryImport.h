#pragma once

#include "types/Long.h"

namespace tarvik {

/// Reads so many records of the selected file into the history window: its lists and the range of
/// its chart. True when all were read. A record that cannot be read ends it; what was read before
/// stays. When the user stops it, the window holds what it held.
bool ImportHistory(Long Count);

/// Enables or disables all controls that need imported records.
void ToggleControls(bool Enabled);

} // namespace tarvik
