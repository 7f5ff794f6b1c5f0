#pragma once

#include "types/Moment.h"

namespace tarvik {

/// Tells one plan from all others, from those that had its number before it too.
struct PlanKey {
    int number = 0; ///< 0 for none
    Moment made{};

    friend bool operator==(const PlanKey&, const PlanKey&) = default;
};

} // namespace tarvik
