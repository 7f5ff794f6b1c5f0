#pragma once

#include <cstdint>
#include <limits>

namespace tarvik {

/// The sum; what does not fit stays at the largest number.
constexpr std::uint64_t sumUpTo(std::uint64_t a, std::uint64_t b) {
    const std::uint64_t sum = a + b;
    return sum < a ? std::numeric_limits<std::uint64_t>::max() : sum;
}

/// The difference; nothing where it is below zero.
constexpr std::uint64_t lessDownTo(std::uint64_t a, std::uint64_t b) {
    return a > b ? a - b : 0;
}

/// `value` times `part` / `whole`, without the fraction, exact at any width; what does not fit is
/// the largest number. `whole` is not 0.
constexpr std::uint64_t portion(std::uint64_t value, std::uint32_t part, std::uint32_t whole) {
    const std::uint64_t times = value / whole;
    if (part != 0 && times > std::numeric_limits<std::uint64_t>::max() / part) {
        return std::numeric_limits<std::uint64_t>::max();
    }
    return sumUpTo(times * part, value % whole * part / whole);
}

/// What a line has carried, without a fraction; sums stop at the largest number.
struct Traffic {
    std::uint64_t rcvd = 0;         ///< bytes
    std::uint64_t sent = 0;         ///< bytes
    std::uint64_t milliseconds = 0; ///< online

    friend bool operator==(const Traffic&, const Traffic&) = default;
    friend constexpr Traffic operator+(const Traffic& a, const Traffic& b) {
        return {sumUpTo(a.rcvd, b.rcvd), sumUpTo(a.sent, b.sent),
                sumUpTo(a.milliseconds, b.milliseconds)};
    }
    /// Of what `a` holds at least.
    friend constexpr Traffic operator-(const Traffic& a, const Traffic& b) {
        return {lessDownTo(a.rcvd, b.rcvd), lessDownTo(a.sent, b.sent),
                lessDownTo(a.milliseconds, b.milliseconds)};
    }
};

} // namespace tarvik
