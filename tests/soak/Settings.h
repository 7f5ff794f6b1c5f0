#pragma once

#include <cstdint>

namespace tarvik::soak {

/// The settings that accounting depends on; these are the defaults.
struct Settings {
    bool run = false;
    bool transferLimit = false;
    std::int64_t transferLimitValue = 1'000'000;
    bool durationLimit = false;
    int hours = 600;
    int minutes = 0;
    bool warning = false;
    bool hangUp = false;
    bool resets = false;
    int criterion = 0;
    bool backup = false;
    int lastReset = 36'892; ///< day, 1 January 2001
    bool ticker = false;
    int tickerValue = 100; ///< mega-bytes

    friend bool operator==(const Settings&, const Settings&) = default;
};

} // namespace tarvik::soak
