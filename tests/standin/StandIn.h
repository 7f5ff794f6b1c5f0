#pragma once

#include "scripted/ScriptedConnections.h"

namespace tarvik {

/// The service that stands behind the stand-in's functions, and what came with its records.
struct StandIn : ScriptedConnections {
    /// The pointers of the last call that had them, to be compared only.
    const char* reserved = nullptr;
    const char* phoneBook = nullptr;
    std::uint32_t notifierType = 0;
    void* notifier = nullptr;

    /// Keeps to the letter of the service's documentation: a buffer without room for one record is
    /// too small also where there is no connection, and only what was written is counted.
    bool countsWhatItWrote = false;
};

/// The name of the function that only the stand-in has, and its type: it gives the service, for a
/// test in the same process to play. Both sides take their memory from the system's C library, so
/// that either may change the other's lists.
inline constexpr const char* standInMark = "TarvikStandIn";
using StandInService = StandIn*();

} // namespace tarvik
