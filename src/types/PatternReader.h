#pragma once

#include "types/Date.h"
#include "types/DatePattern.h"
#include "types/LocaleData.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tarvik {

/// The position of the name that the text begins with, whatever the case of its ASCII letters; of
/// several the longest.
std::optional<std::size_t> leadingName(std::string_view text,
                                       const std::array<std::string, 12>& names);

/// The year that a number of so many digits stands for: two digits are 1930 to 2029.
int fullYear(int number, int digits);

/// The date of that civil time; nothing when the calendar does not have it.
std::optional<Date> dateOf(const CivilTime& civil);

/// Reads a text that was written with a pattern, to the letter: numbers may have fewer digits than
/// the pattern writes, a two-digit year may have four, and blanks may be missing at both ends;
/// nothing else may differ but the case.
class PatternReader {
public:
    PatternReader(std::string_view text, const LocaleData& locale)
        : rest_(text), length_(text.size()), locale_(locale) {}

    /// Nothing when the text does not follow the pattern or names no date of the calendar. A reader
    /// reads once.
    std::optional<Date> read(const std::string& pattern);

private:
    bool takePiece(const PatternPiece& piece, bool digitsFollow);
    bool isTrimmedAway(std::string_view text) const;
    bool take(std::string_view text);
    int takeNumber(int mostDigits, int& number);
    bool takeYear(int mostDigits);
    bool takeMonth(int length);
    bool takeHalfDay();
    bool placeHalfDay();

    std::string_view rest_;
    std::size_t length_;
    const LocaleData& locale_;
    CivilTime civil_;
    bool twelveHours_ = false;
    std::optional<bool> afternoon_;
};

} // namespace tarvik
