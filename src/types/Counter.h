#pragma once

#include "types/Currency.h"
#include "types/Long.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace tarvik {

/// A 32-bit figure that stops at the largest Long, and what was counted beyond that.
class Counter {
public:
    constexpr Counter() = default;
    constexpr Counter(Long figure) : figure_(figure) {}               // NOLINT: nothing beyond
    constexpr Counter(std::int32_t figure) : Counter(Long(figure)) {} // NOLINT: nothing beyond

    /// The counter that has counted so many; a fraction is kept beyond.
    static Counter of(Currency whole) {
        constexpr Currency largest(std::numeric_limits<std::int32_t>::max());
        Counter result(static_cast<std::int32_t>(std::min(whole, largest).integralPart()));
        result.beyond_ = whole - result.figure_;
        return result;
    }

    Long figure() const { return figure_; }
    Currency beyond() const { return beyond_; }
    /// All that was counted.
    Currency whole() const { return beyond_ + figure_; }

    friend bool operator==(const Counter&, const Counter&) = default;

private:
    Long figure_;
    Currency beyond_;
};

} // namespace tarvik
