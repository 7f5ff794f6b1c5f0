#pragma once

#include "types/Date.h"

namespace tarvik {

/// A moment as a calendar and a clock tell it.
inline Date on(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return Date::fromCivil({year, month, day, hour, minute, second});
}

} // namespace tarvik
