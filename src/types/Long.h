#pragma once

#include "types/RunTimeError.h"

#include <compare>
#include <cstdint>
#include <limits>

namespace tarvik {

/// A 32-bit signed integer. Every operation whose result does not fit raises Overflow (6);
/// division by zero raises DivisionByZero (11).
class Long {
public:
    constexpr Long() = default;
    constexpr Long(std::int32_t value) : value_(value) {} // NOLINT: plain numbers are Longs

    /// Narrows a wider whole number; raises Overflow when it does not fit.
    static constexpr Long narrow(std::int64_t wide) {
        if (wide < std::numeric_limits<std::int32_t>::min() ||
            wide > std::numeric_limits<std::int32_t>::max()) {
            raise(ErrorNumber::Overflow);
        }
        return {static_cast<std::int32_t>(wide)};
    }

    constexpr std::int32_t value() const { return value_; }

    friend constexpr Long operator+(Long a, Long b) { return narrow(a.wide() + b.wide()); }
    friend constexpr Long operator-(Long a, Long b) { return narrow(a.wide() - b.wide()); }
    friend constexpr Long operator*(Long a, Long b) { return narrow(a.wide() * b.wide()); }
    friend constexpr Long operator-(Long a) { return narrow(-a.wide()); }

    /// Integer division, truncated towards zero.
    friend constexpr Long operator/(Long a, Long b) {
        if (b.value_ == 0) {
            raise(ErrorNumber::DivisionByZero);
        }
        return narrow(a.wide() / b.wide());
    }

    /// Remainder with the sign of the dividend.
    friend constexpr Long operator%(Long a, Long b) {
        if (b.value_ == 0) {
            raise(ErrorNumber::DivisionByZero);
        }
        return narrow(a.wide() % b.wide());
    }

    friend constexpr auto operator<=>(Long, Long) = default;

private:
    constexpr std::int64_t wide() const { return value_; }

    std::int32_t value_ = 0;
};

} // namespace tarvik
