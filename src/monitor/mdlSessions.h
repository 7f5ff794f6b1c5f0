#pragma once

#include "ports/ConnectionProvider.h"

#include <cstdint>

namespace tarvik {

/// What a connection has carried since it was established, `Statistics` being the newest reading of
/// its 32-bit counters. Where the service counts no further, what was added since the reading
/// before is taken modulo 2^32; a first reading is taken as it is. A reading that is younger than
/// the one before belongs to another session: the older one, if it is the counted one, moves into
/// the totals.
LineTotals CarryOn(const RASCONNA& Connection, const RAS_STATS& Statistics);

/// Makes a connection's figures those of the session under way.
void TakeCounters(const RASCONNA& Connection, const LineTotals& Session);

/// Forgets the connections that are not among the first `Count` of the last enumeration. If the
/// counted one is gone while others are up, its session moves into the totals at once: no tick
/// without a connection will come and do so. A new handle for the same entry may be the same
/// session, after the service was started again; its first reading tells.
void ForgetEndedSessions(std::uint32_t Count);

} // namespace tarvik
