#pragma once

#include "types/Long.h"

#include <cstdint>
#include <string>

namespace tarvik {

/// The high byte of a word that is divided by 256 towards zero first: of -1 this is 0.
Long HiByte(std::int16_t Word);
Long LoByte(std::int16_t Word);

/// Starts the sockets interface, version 1.1. False, with a notice, where it does not start or
/// offers too little.
bool SocketsInitialize();

/// Ends it; false, with a notice, when that fails.
bool SocketsCleanup();

/// The local host's addresses, separated by semicolons, and its name; both empty, with a notice,
/// where they cannot be obtained.
std::string ObtainIP(std::string& HostName);

} // namespace tarvik
