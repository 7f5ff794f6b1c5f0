#pragma once

#include "types/LocaleData.h"

#include <string>
#include <vector>

namespace tarvik {

/// A locale with the name under which a failing test reports it.
struct LocaleForm {
    std::string name;
    LocaleData data;
    bool fourDigitYear = true;
};

inline constexpr const char* noBreakSpace = "\xC2\xA0";
inline constexpr const char* narrowNoBreakSpace = "\xE2\x80\xAF";

inline LocaleData germanForm() {
    return {.shortDate = "dd.MM.yyyy",
            .longTime = "HH:mm:ss",
            .decimalSeparator = ",",
            .thousandsSeparator = "."};
}

inline LocaleData americanForm() {
    return {.shortDate = "M/d/yyyy", .longTime = "h:mm:ss tt"};
}

inline LocaleData swedishForm() {
    return {.shortDate = "yyyy-MM-dd",
            .longTime = "HH:mm:ss",
            .decimalSeparator = ",",
            .thousandsSeparator = noBreakSpace};
}

inline LocaleData frenchForm() {
    return {.shortDate = "dd/MM/yyyy",
            .longTime = "HH:mm:ss",
            .decimalSeparator = ",",
            .thousandsSeparator = narrowNoBreakSpace};
}

inline LocaleData swissForm() {
    return {.shortDate = "dd.MM.yyyy",
            .longTime = "HH:mm:ss",
            .decimalSeparator = ".",
            .thousandsSeparator = "'"};
}

/// Dots in dates and times alike.
inline LocaleData finnishForm() {
    return {.shortDate = "d.M.yyyy",
            .longTime = "H.mm.ss",
            .decimalSeparator = ",",
            .thousandsSeparator = noBreakSpace};
}

/// Dots in times, dashes in dates.
inline LocaleData danishForm() {
    return {.shortDate = "dd-MM-yyyy",
            .longTime = "HH.mm.ss",
            .decimalSeparator = ",",
            .thousandsSeparator = "."};
}

/// Half-day texts of more than ASCII, before the time and after a narrow blank.
inline LocaleData koreanForm() {
    return {.shortDate = "yyyy. M. d.",
            .longTime = "tt h:mm:ss",
            .amText = "\xEC\x98\xA4\xEC\xA0\x84",
            .pmText = "\xEC\x98\xA4\xED\x9B\x84"};
}

inline LocaleData spanishHalfDayForm() {
    LocaleData data{.shortDate = "d/M/yyyy",
                    .longTime = std::string("h:mm:ss") + narrowNoBreakSpace + "tt"};
    data.amText = std::string("a.") + noBreakSpace + "m.";
    data.pmText = std::string("p.") + noBreakSpace + "m.";
    return data;
}

/// The morning has no text of its own.
inline LocaleData emptyMorningForm() {
    return {.shortDate = "d/M/yyyy", .longTime = "hh:mm:ss tt", .amText = "", .pmText = "pm"};
}

/// The same with the text before the time.
inline LocaleData emptyMorningFirstForm() {
    return {.shortDate = " d/M/yyyy ", .longTime = "tt hh:mm:ss", .amText = "", .pmText = "pm"};
}

inline LocaleData englishMonthForm() {
    return {.shortDate = "d-MMM-yyyy", .longTime = "HH:mm:ss"};
}

/// Month names of more than ASCII, one the beginning of another, and words in quotes.
inline LocaleData wordyForm() {
    LocaleData data{.shortDate = "d. MMMM 'de''l' yyyy 'r.'",
                    .longTime = "H' h 'mm' min 'ss",
                    .decimalSeparator = ",",
                    .thousandsSeparator = narrowNoBreakSpace};
    data.longMonths = {"ledna",     "února", "března", "dubna", "května",    "června",
                       "červnavce", "srpna", "září",   "října", "listopadu", "prosince"};
    return data;
}

/// Hours to 23 and a half-day text nevertheless.
inline LocaleData doubtfulForm() {
    return {.shortDate = "yyyy/MM/dd", .longTime = "HH:mm:ss tt"};
}

/// No separators at all.
inline LocaleData bareForm() {
    return {.shortDate = "yyyyMMdd", .longTime = "HHmmss", .thousandsSeparator = ""};
}

inline LocaleData twoDigitYearForm() {
    return {.shortDate = "dd.MM.yy", .longTime = "HH:mm:ss"};
}

inline LocaleData bareTwoDigitYearForm() {
    return {.shortDate = "yyMMdd", .longTime = "HH:mm:ss"};
}

inline LocaleData yearFirstMonthNameForm() {
    return {.shortDate = "yy-MMM-d", .longTime = "HH:mm:ss"};
}

inline std::vector<LocaleForm> localeForms() {
    return {{"default", LocaleData{}},
            {"german", germanForm()},
            {"american", americanForm()},
            {"swedish", swedishForm()},
            {"french", frenchForm()},
            {"swiss", swissForm()},
            {"finnish", finnishForm()},
            {"danish", danishForm()},
            {"korean", koreanForm()},
            {"spanish", spanishHalfDayForm()},
            {"empty morning", emptyMorningForm()},
            {"empty morning first", emptyMorningFirstForm()},
            {"month names", englishMonthForm()},
            {"wordy", wordyForm()},
            {"doubtful", doubtfulForm()},
            {"bare", bareForm()},
            {"two-digit year", twoDigitYearForm(), false},
            {"bare two-digit year", bareTwoDigitYearForm(), false},
            {"year before month name", yearFirstMonthNameForm(), false}};
}

} // namespace tarvik
