#pragma once

#include "ports/ConnectionProvider.h"

namespace tarvik {

/// Shows the line counters of the connection that is up. Without any time online there is no
/// throughput: an error, which leaves throughput and time stamp as they were.
/// `Session` are the record's byte counters and time at full width.
void SetStatistics(const RAS_STATS& Stats, const Traffic& Session);

} // namespace tarvik
