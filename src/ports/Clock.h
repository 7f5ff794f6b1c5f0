#pragma once

#include "types/Date.h"

namespace tarvik {

/// The user's wall clock. Each call reads it anew.
class Clock {
public:
    virtual ~Clock() = default;

    /// Today at midnight, local time.
    virtual Date currentDate() = 0;

    /// The local time of day alone.
    virtual Date currentTime() = 0;
};

} // namespace tarvik
