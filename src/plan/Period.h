#pragma once

#include "plan/Plan.h"
#include "types/Moment.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

namespace tarvik {

class Clock;

/// How far the user's clock is ahead of universal time at a moment.
using Zone = std::function<std::chrono::minutes(Moment)>;
/// The clock's; it outlives the zone.
Zone zoneOf(Clock& clock);

/// The first moment at which the user's clock shows this or, where it never does because summer
/// time begins, more. Later for a later time. A zone changes once in a day at most.
Moment momentOf(LocalMoment local, const Zone& zone);

/// One period of a plan: its beginning belongs to it, its end to the next one.
struct Period {
    std::int64_t number = 0; ///< one more than that of the period before
    LocalMoment local{};     ///< its beginning on the user's clock
    Moment begin{};
    Moment end{}; ///< `endless` for a pack without a date

    static constexpr Moment endless = lastMoment;

    bool has(Moment moment) const { return begin <= moment && moment < end; }
    friend bool operator==(const Period&, const Period&) = default;
};

/// The period that a moment lies in; nothing before the first and after the last one.
std::optional<Period> periodAt(const PeriodRule& rule, Moment moment, const Zone& zone);

/// The period of that number, if there is one.
std::optional<Period> periodOf(const PeriodRule& rule, std::int64_t number, const Zone& zone);

} // namespace tarvik
