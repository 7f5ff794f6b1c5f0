#pragma once

#include "plan/Usage.h"

#include <cstdint>
#include <optional>

namespace tarvik {

/// What may be used a day from now on, and today. Nothing in what the plan does not limit.
struct Budget {
    std::int64_t daysLeft = 0; ///< today and the period's last one included
    /// What is left, less the reserve and what is for today alone, dealt out to the days left.
    Quantity perDay;
    Quantity today; ///< of today's part, what is still left
};

/// Nothing for a pack without a date, and for a plan that limits nothing.
std::optional<Budget> budgetOf(const Plan& plan, const History& history, const Standing& standing,
                               Moment now, const Zone& zone);

/// What the lines can carry at most.
struct Capacity {
    std::optional<std::uint64_t>
        bytesPerSecond;      ///< of all together, each way; nothing unless known
    std::uint32_t lines = 1; ///< that may be up at a time
};

/// What will have been used at the period's end.
struct Forecast {
    Quantity least;
    Quantity expected;
    Quantity most;
};

/// From the same days of the week in the last four weeks where the ledger knows them: as in the
/// mean of them, between the week that would give least and the one that would give most. Else as
/// so far in this period, less and more by a part that gets smaller day by day. Nothing until six
/// hours of the period are known, nor for a pack without a date.
std::optional<Forecast> forecastOf(const Plan& plan, const History& history,
                                   const Standing& standing, Moment now, const Zone& zone,
                                   const Capacity& capacity);

} // namespace tarvik
