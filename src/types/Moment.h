#pragma once

#include "types/Date.h"

#include <chrono>

namespace tarvik {

/// Universal time: every zone has the same.
using Moment = std::chrono::sys_seconds;
/// What the user's wall clock shows.
using LocalMoment = std::chrono::local_seconds;
/// A day of the user's calendar.
using LocalDay = std::chrono::local_days;

/// What a wall clock shows that is so many minutes ahead of universal time.
inline LocalMoment localOf(Moment moment, std::chrono::minutes ahead) {
    return LocalMoment(moment.time_since_epoch() + ahead);
}
/// When such a wall clock shows this.
inline Moment momentOf(LocalMoment local, std::chrono::minutes ahead) {
    return Moment(local.time_since_epoch() - ahead);
}

/// The day that a wall clock's time is on.
inline LocalDay dayOf(LocalMoment local) {
    return std::chrono::floor<std::chrono::days>(local);
}

/// The same as a date and time.
inline Date dateOf(LocalMoment local) {
    constexpr int first = 25'569; ///< 1 January 1970
    constexpr double secondsInDay = 86'400;
    return Date(first + static_cast<double>(local.time_since_epoch().count()) / secondsInDay);
}

/// Moments that are written and read again: universal time has four digits for their years, and so
/// has the wall clock, a day ahead or behind at most.
constexpr Moment firstMoment{std::chrono::sys_days(std::chrono::year{1970} / 1 / 1)};
constexpr Moment lastMoment{std::chrono::sys_days(std::chrono::year{9999} / 12 / 30)};

} // namespace tarvik
