#pragma once

#include "soak/Expected.h"
#include "types/Date.h"

#include <cstdint>

namespace tarvik::soak {

/// True time, and what the user's clock makes of it: daylight saving, time zones, and hands that
/// turn it.
class Calendar {
public:
    /// True time, seconds since 1 January 2004.
    std::int64_t seconds = 0;

    void travel(int hours) { zone_ = hours; }
    void turnClock(std::int64_t by) { turned_ += by; }
    void setRight() { turned_ = 0; }

    /// What the clock shows.
    Date shown() const;
    Now now() const;

private:
    std::int64_t local() const;

    std::int64_t turned_ = 0;
    int zone_ = 1;
};

} // namespace tarvik::soak
