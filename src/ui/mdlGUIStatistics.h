#pragma once

#include "ports/ConnectionProvider.h"

namespace tarvik {

/// Shows the line counters of the connection that is up. Without any time online there is no
/// throughput: an error, which leaves throughput and time stamp as they were.
void SetStatistics(const RAS_STATS& Stats);

/// Shows how the machine is connected to the Internet.
void SetConnectedState();

} // namespace tarvik
