#pragma once

#include "state/mdlVar.h"

#include <cstdint>
#include <optional>

namespace tarvik {

/// Whether the connection is up.
bool isConnected(std::uint32_t handle);

/// Reads what a connection has carried. Nothing where a call fails, or where it is not connected.
std::optional<RAS_STATS> figuresOf(std::uint32_t handle, bool& failed);

/// Whether both were made from the same entry of the phone book.
bool sameEntry(const RASCONNA& a, const RASCONNA& b);

/// A first reading at full width.
Traffic totalsOf(const RAS_STATS& Statistics);

/// Whether a reading is of another session than the one that was last read under that handle.
/// `Wide` are its figures where the service counts further than the reading does.
bool isAnother(const LineSession& Session, const RAS_STATS& Now,
               const std::optional<Traffic>& Wide);

/// Adds what a session has gained from one reading to the next.
void addGain(Traffic& Totals, const RAS_STATS& Before, const RAS_STATS& Now);

} // namespace tarvik
