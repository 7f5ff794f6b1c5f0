#pragma once

#include "ports/ConnectionProvider.h"

#include <optional>

namespace tarvik {

/// A connection that is not known yet may be a session that was up when the program last ran: then
/// it goes on as that one, from what had counted of it, and true is returned. `Now` are its
/// figures, if it is connected and was read.
bool ResumeFormer(const RASCONNA& Connection, const std::optional<RAS_STATS>& Now);

/// The same before the connection has its turn in the tick. Where it cannot be read now that is
/// left to its turn.
void LookForFormer(const RASCONNA& Connection);

} // namespace tarvik
