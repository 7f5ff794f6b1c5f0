#pragma once

#include <string>

namespace tarvik {

/// How many digits `exactDigits` gives after the point: every one of those that a user ever sees.
inline constexpr int exactDecimals = 30;

/// The digits of a finite number from 0 on, without a point: so many after it, rounded to the
/// nearest, ties to even, and at least one before it. Exact, whatever the number, without
/// the tables that the standard library's own conversion brings along.
std::string exactDigits(double magnitude);

} // namespace tarvik
