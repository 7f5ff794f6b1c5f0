#pragma once

#include "simulated/SimulatedTraffic.h"

#include <cstdint>
#include <vector>

namespace tarvik {

/// One entry of the simulated phone book and what happens when it is dialled.
struct SimulatedEntry {
    const char* name;
    const char* deviceType;
    const char* deviceName;
    const char* userName;
    std::uint32_t dialMilliseconds; ///< until the line is up or the dial has failed
    std::uint32_t dialCode;         ///< 0 when the line comes up, else the code of the failure
    std::uint32_t bitsPerSecond;
    TrafficProfile traffic;
};

/// The whole phone book: a modem, DSL and mobile line that work, an entry with a wrong password and
/// one whose line is busy.
const std::vector<SimulatedEntry>& simulatedPhoneBook();

} // namespace tarvik
