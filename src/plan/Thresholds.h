#pragma once

#include "plan/Usage.h"

#include <cstddef>
#include <vector>

namespace tarvik {

/// So many per cent of all that may be used are used, of one of the two that the plan limits.
bool isReached(const Plan& plan, const Standing& standing, int percent);

/// What the thresholds ask for at a moment, by their places in the plan, the lowest first.
struct DueThresholds {
    std::vector<std::size_t> toSay;
    std::vector<std::size_t> toHangUp;
    /// What is to be kept, so that each comes once in a period.
    std::vector<SaidInPeriod> said;
};
DueThresholds dueThresholds(const Plan& plan, const Standing& standing);

/// The last threshold is reached, and the user wants no connection then.
bool isBlocked(const Plan& plan, const Standing& standing);

} // namespace tarvik
