#pragma once

#include <cstdint>
#include <vector>

namespace tarvik {

/// A scale of values: equal parts between round numbers.
struct ValueScale {
    double low = 0;
    double step = 1;
    int divisions = 10;
    int decimals = 0; ///< that the numbers at the parts have

    double high() const { return low + step * divisions; }
    /// The number at a division, counted from 0.
    double at(int division) const { return low + step * division; }
    friend bool operator==(const ValueScale&, const ValueScale&) = default;
};

/// The scale with the smallest round step whose `divisions` parts (1 or more) hold 0 and all values
/// from `least` to `most`, but for a billionth of a step. Values that are all 0 get a scale from 0
/// to 1.
ValueScale valueScale(double least, double most, int divisions);

/// Which rows of a chart are labelled: both ends, and between them those with round numbers.
struct RowScale {
    std::int64_t step = 1; ///< between round numbers: 1, 2, 5, 10, 20, 50 ...
    std::vector<std::int64_t> numbers;
};

/// Labels for rows numbered from `first` to `last` (not before `first`): the smallest step that
/// gives no more than `most` labels; both ends even where that is less.
RowScale rowScale(std::int64_t first, std::int64_t last, int most);

} // namespace tarvik
