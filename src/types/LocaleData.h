#pragma once

#include <array>
#include <string>

namespace tarvik {

/// The user's conventions for numbers, dates and times, as data. All texts are bytes in the
/// system's code page; separators may be longer than one byte.
///
/// Patterns use d dd, M MM MMM MMMM, yy yyyy for dates and h hh (12-hour), H HH (24-hour), m mm,
/// s ss, t tt (half-day text) for times; text between single quotes and every other character
/// stand for themselves.
struct LocaleData {
    std::string shortDate = "dd.MM.yyyy";
    std::string longTime = "HH:mm:ss";
    std::string decimalSeparator = ".";
    std::string thousandsSeparator = ",";
    std::string amText = "AM";
    std::string pmText = "PM";
    std::string middleDot = "\xC2\xB7"; ///< set between the parts of a line
    std::array<std::string, 12> shortMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                            "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::array<std::string, 12> longMonths{"January",   "February", "March",    "April",
                                           "May",       "June",     "July",     "August",
                                           "September", "October",  "November", "December"};

    friend bool operator==(const LocaleData&, const LocaleData&) = default;
};

} // namespace tarvik
