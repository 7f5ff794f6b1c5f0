#pragma once

#include <chrono>
#include <cstdint>

namespace tarvik {

/// Milliseconds since some moment, whatever becomes of the time of day.
inline std::uint64_t steadyMilliseconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

} // namespace tarvik
