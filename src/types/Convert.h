#pragma once

#include "types/Currency.h"
#include "types/Date.h"
#include "types/LocaleData.h"
#include "types/Long.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvik {

/// Decimal digits with a leading minus for negative numbers; no separators in any locale.
std::string wholeToText(std::int64_t value);
std::string toText(Long value);

/// Up to four decimals, trailing zeros dropped, the locale's decimal separator, no thousands
/// separators: 1234.5 is "1234,5" where the comma separates decimals.
std::string toText(Currency value, const LocaleData& locale);

/// Short date, a space and long time; the time alone when the date part is 0, the date alone when
/// the time of day is midnight.
std::string toText(Date value, const LocaleData& locale);

/// The date part in the locale's short-date pattern.
std::string shortDateText(Date value, const LocaleData& locale);

/// The time of day in the locale's long-time pattern.
std::string longTimeText(Date value, const LocaleData& locale);

/// Reads a number: blanks around it, a sign before or after it, the locale's thousands separators
/// in the whole part, its decimal separator, and a decimal exponent. Rounded to four decimals, ties
/// to even. Raises TypeMismatch for anything else (an empty text too), Overflow when too large.
Currency textToCurrency(std::string_view text, const LocaleData& locale);

/// The same for a whole number: ties to even; Overflow outside 32 bits.
Long textToLong(std::string_view text, const LocaleData& locale);

/// True for a text of the form that `textToCurrency` reads, also where the number is too large for
/// it but not for a floating-point number.
bool isNumeric(std::string_view text, const LocaleData& locale);

/// Reads a date, a time, or both in either order. Numeric fields stand in the order of the locale's
/// short-date pattern unless the first has four digits (then year, month, day); any of . / - space
/// or the pattern's own characters separate them; two-digit years are 1930 to 2029. A text that can
/// be both a date and a time is a date. Raises TypeMismatch for anything that is not a date of the
/// calendar.
Date textToDate(std::string_view text, const LocaleData& locale);

/// Thousands separators and a fixed number of decimals (0 to 20), halves rounded away from zero;
/// the decimal expansion of the value is used, so 0.125 with two decimals is 0.13. "NaN", "Inf" and
/// "-Inf" for what is no number.
std::string formatGrouped(double value, int decimals, const LocaleData& locale);

/// At least that many digits, filled with zeros; a negative number has a minus before them.
std::string zeroPadded(std::int64_t value, int digits);

} // namespace tarvik
