#include "types/Currency.h"

#include <cmath>
#include <limits>

namespace tarvik {

namespace {

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

bool sumFits(std::int64_t a, std::int64_t b) {
    return b > 0 ? a <= largest - b : a >= smallest - b;
}

} // namespace

Currency Currency::fromWhole(std::int64_t whole) {
    if (whole > largest / scale || whole < smallest / scale) {
        raise(ErrorNumber::Overflow);
    }
    return fromScaled(whole * scale);
}

Currency Currency::fromDouble(double value) {
    // 2^63 is the first double above the range and the last one below zero within it.
    constexpr double limit = 9223372036854775808.0;
    const double scaled = value * static_cast<double>(scale);
    if (!(scaled >= -limit && scaled < limit)) {
        raise(ErrorNumber::Overflow);
    }
    const double floor = std::floor(scaled);
    const double fraction = scaled - floor;
    auto result = static_cast<std::int64_t>(floor);
    if (fraction > 0.5 || (fraction == 0.5 && result % 2 != 0)) {
        ++result;
    }
    return fromScaled(result);
}

double Currency::toDouble() const {
    return static_cast<double>(scaled_) / static_cast<double>(scale);
}

std::int64_t Currency::roundedToEven() const {
    std::int64_t whole = scaled_ / scale;
    const std::int64_t rest = scaled_ % scale;
    const std::int64_t distance = rest < 0 ? -rest : rest;
    if (distance > scale / 2 || (distance == scale / 2 && whole % 2 != 0)) {
        whole += rest < 0 ? -1 : 1;
    }
    return whole;
}

Long Currency::toLong() const {
    return Long::narrow(roundedToEven());
}

std::uint8_t Currency::toByte() const {
    const std::int64_t whole = roundedToEven();
    if (whole < 0 || whole > std::numeric_limits<std::uint8_t>::max()) {
        raise(ErrorNumber::Overflow);
    }
    return static_cast<std::uint8_t>(whole);
}

Currency operator+(Currency a, Currency b) {
    if (!sumFits(a.scaled_, b.scaled_)) {
        raise(ErrorNumber::Overflow);
    }
    return Currency::fromScaled(a.scaled_ + b.scaled_);
}

Currency operator-(Currency a, Currency b) {
    if (b.scaled_ > 0 ? a.scaled_ < smallest + b.scaled_ : a.scaled_ > largest + b.scaled_) {
        raise(ErrorNumber::Overflow);
    }
    return Currency::fromScaled(a.scaled_ - b.scaled_);
}

Currency nearestSum(Currency a, Currency b) {
    if (sumFits(a.scaled(), b.scaled())) {
        return a + b;
    }
    return Currency::fromScaled(b.scaled() > 0 ? largest : smallest);
}

} // namespace tarvik
