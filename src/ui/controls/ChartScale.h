#pragma once

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

/// The smallest of 1, 2, 5, 10, 20, 50 ... that puts at most `most` (1 or more) labels on `rows`
/// rows.
int labelStep(int rows, int most);

} // namespace tarvik
