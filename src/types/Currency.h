#pragma once

#include "types/Long.h"

#include <compare>
#include <cstdint>

namespace tarvik {

/// A signed 64-bit fixed-point number with four decimals: the value times 10,000.
/// Results that do not fit raise Overflow (6).
class Currency {
public:
    static constexpr std::int64_t scale = 10'000;

    constexpr Currency() = default;
    /// Widens a Long; always fits.
    constexpr Currency(Long value) // NOLINT: widening is lossless
        : scaled_(static_cast<std::int64_t>(value.value()) * scale) {}
    constexpr Currency(std::int32_t value) : Currency(Long(value)) {} // NOLINT: lossless

    /// The number whose stored form (value times 10,000) is `scaled`.
    static constexpr Currency fromScaled(std::int64_t scaled) {
        Currency result;
        result.scaled_ = scaled;
        return result;
    }

    /// A whole number; raises Overflow beyond 922,337,203,685,477.
    static Currency fromWhole(std::int64_t whole);

    /// Rounds to four decimals, ties to even; raises Overflow, also for a value that is no number.
    static Currency fromDouble(double value);

    constexpr std::int64_t scaled() const { return scaled_; }
    double toDouble() const;

    /// The nearest whole number, ties to even; raises Overflow outside 32 bits.
    Long toLong() const;

    /// The nearest whole number, ties to even, as a byte; raises Overflow outside 0 to 255.
    std::uint8_t toByte() const;

    /// The whole part, fractions dropped towards zero.
    constexpr std::int64_t integralPart() const { return scaled_ / scale; }

    friend Currency operator+(Currency a, Currency b);
    friend Currency operator-(Currency a, Currency b);
    friend constexpr auto operator<=>(Currency, Currency) = default;

private:
    std::int64_t roundedToEven() const;

    std::int64_t scaled_ = 0;
};

Currency operator+(Currency a, Currency b);
Currency operator-(Currency a, Currency b);

/// The sum; where it does not fit, the number next to it that does.
Currency nearestSum(Currency a, Currency b);

} // namespace tarvik
