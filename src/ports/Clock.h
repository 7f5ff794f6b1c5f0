#pragma once

#include "types/Date.h"
#include "types/Moment.h"

#include <chrono>
#include <cstdint>

namespace tarvik {

/// The user's wall clock, the time that all zones share, and one that nobody sets. Each call reads
/// it anew.
class Clock {
public:
    virtual ~Clock() = default;

    /// Today at midnight, local time.
    virtual Date currentDate() = 0;

    /// The local time of day alone.
    virtual Date currentTime() = 0;

    /// Milliseconds since the machine's start: two runs of the program have the same beginning.
    /// Never falls; may stand still while the machine sleeps.
    virtual std::uint64_t steadyMilliseconds() = 0;

    /// Universal time, milliseconds since 1 January 1970: neither summer time nor another zone
    /// changes it. Whoever sets the user's clock sets this one with it.
    virtual std::int64_t universalMilliseconds() = 0;

    /// Minutes that the user's wall clock is ahead of universal time at that moment of it, past or
    /// to come, by the rules of the user's zone as they are known now. Whatever the moment, from
    /// -24 to 24 hours; beyond the years 1970 to 9999 anything of that.
    virtual int minutesAhead(std::int64_t universal) = 0;
};

/// Day and time of the user's clock.
inline Date momentOf(Clock& clock) {
    return Date(clock.currentDate().serial() + clock.currentTime().serial());
}

/// The second of universal time that so many milliseconds lie in.
inline Moment momentOf(std::int64_t universalMilliseconds) {
    return std::chrono::floor<std::chrono::seconds>(
        std::chrono::sys_time<std::chrono::milliseconds>(
            std::chrono::milliseconds(universalMilliseconds)));
}

/// The second of universal time that it is, and how far the user's clock is ahead of it.
inline Moment momentNow(Clock& clock) {
    return momentOf(clock.universalMilliseconds());
}
inline std::chrono::minutes aheadNow(Clock& clock) {
    return std::chrono::minutes(clock.minutesAhead(clock.universalMilliseconds()));
}

} // namespace tarvik
