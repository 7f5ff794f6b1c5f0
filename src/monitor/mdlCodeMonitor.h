#pragma once

#include "ports/ConnectionProvider.h"

#include <cstdint>

namespace tarvik {

/// One tick of monitoring: reads every connection that is up, or folds the last session into the
/// totals when none is. A failure is shown once and switches monitoring off. True when a connection
/// was handled online.
bool UpdateStats();

/// Takes over the figures of a connection that is up. `Index` counts in `RasConnections`.
bool HandleOnline(std::uint32_t Index, const RAS_STATS& Statistics);

/// Ends the session: its figures go into the totals.
bool HandleOnline();

/// Shows a connection in the main window and selects its entry there.
void SetActiveConnection(std::uint32_t Index);

} // namespace tarvik
