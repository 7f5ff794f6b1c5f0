#pragma once

#include "types/RunTimeError.h"

namespace tarvik {

/// The number of the run-time error that the action raises; 0 for none.
template <class Action>
int errorOf(Action&& action) {
    try {
        static_cast<void>(action());
    } catch (const RunTimeError& error) {
        return static_cast<int>(error.number());
    }
    return 0;
}

} // namespace tarvik
