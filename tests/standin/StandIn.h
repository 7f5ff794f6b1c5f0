#pragma once

#include "scripted/ScriptedConnections.h"

namespace tarvik {

/// The name of the function that only the stand-in has, and its type: it gives the service that
/// stands behind the library's functions, for a test in the same process to play. Both sides take
/// their memory from the system's C library, so that either may change the other's lists.
inline constexpr const char* standInMark = "TarvikStandIn";
using StandInService = ScriptedConnections*();

} // namespace tarvik
