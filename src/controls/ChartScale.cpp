#include "controls/ChartScale.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace tarvik {

namespace {

/// Steps that are round and, from one to the next, grow by less than half.
constexpr std::array<double, 9> roundSteps{1, 1.5, 2, 2.5, 3, 4, 5, 6, 8};

/// The number of decimals that `digit` times a power of ten has.
int decimalsOf(double digit, int exponent) {
    const bool halves = digit != std::floor(digit);
    return std::max(0, (halves ? 1 : 0) - exponent);
}

/// Quotients of round numbers miss whole ones by rounding errors; what is left out or added by this
/// cannot be seen.
constexpr double unseen = 1e-9;

} // namespace

ValueScale valueScale(double least, double most, int divisions) {
    least = std::min(least, 0.0);
    most = std::max(most, 0.0);
    if (least == most) {
        most = 1;
    }
    for (int exponent = static_cast<int>(std::floor(std::log10((most - least) / divisions)));;
         ++exponent) {
        for (const double digit : roundSteps) {
            const double step = digit * std::pow(10.0, exponent);
            const double lowest = std::floor(least / step + unseen); // in steps
            if (most / step <= lowest + divisions + unseen) {
                return {.low = lowest * step,
                        .step = step,
                        .divisions = divisions,
                        .decimals = decimalsOf(digit, exponent)};
            }
        }
    }
}

RowScale rowScale(std::int64_t first, std::int64_t last, int most) {
    // Whole steps before a number, which may be negative.
    const auto stepsBefore = [](std::int64_t number, std::int64_t step) {
        return number / step - (number % step < 0 ? 1 : 0);
    };
    const std::int64_t ends = last > first ? 2 : 1;
    for (std::int64_t power = 1;; power *= 10) {
        for (const int digit : {1, 2, 5}) {
            const std::int64_t step = digit * power;
            const std::int64_t begin = stepsBefore(first, step) + 1;
            const std::int64_t end = stepsBefore(last - 1, step);
            const std::int64_t between = std::max<std::int64_t>(0, end - begin + 1);
            if (between > 0 && between + ends > most) {
                continue;
            }
            RowScale scale{.step = step, .numbers = {first}};
            for (std::int64_t count = begin; count <= end; ++count) {
                scale.numbers.push_back(count * step);
            }
            if (last > first) {
                scale.numbers.push_back(last);
            }
            return scale;
        }
    }
}

} // namespace tarvik
