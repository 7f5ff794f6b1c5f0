#pragma once

#include "soak/Expected.h"
#include "types/Date.h"

#include <cstdint>

namespace tarvik::soak {

/// True time, and what the user's clock makes of it: daylight saving, time zones, and hands that
/// turn it.
class Calendar {
public:
    /// `standsInSleep`: the clock that nobody sets stands still while the machine sleeps.
    explicit Calendar(bool standsInSleep) : standsInSleep_(standsInSleep) {}

    /// True time, seconds since 1 January 2004.
    std::int64_t seconds = 0;

    void sleep(std::int64_t by) {
        seconds += by;
        asleep_ += standsInSleep_ ? by : 0;
    }
    /// The machine loses its power and is started again.
    void boot() {
        booted_ = seconds;
        asleep_ = 0;
    }

    void travel(int hours) { zone_ = hours; }
    void turnClock(std::int64_t by) { turned_ += by; }
    void setRight() { turned_ = 0; }

    /// The time that all zones share, seconds since 1 January 1970; whoever turns the clock turns
    /// it too.
    std::int64_t universal() const;
    /// What the clock shows.
    Date shown() const;
    Now now() const;

private:
    std::int64_t local() const;

    bool standsInSleep_;
    std::int64_t booted_ = 0;
    std::int64_t asleep_ = 0; ///< since then
    std::int64_t turned_ = 0;
    int zone_ = 1;
};

} // namespace tarvik::soak
