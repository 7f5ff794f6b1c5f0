// Dates: any text in any of the locales, and in a locale with any patterns and names.
//
// Input: the locale's number as one byte, a text; then short date, long time, AM, PM and two
// months' names of another locale.

#include "FuzzWorld.h"
#include "types/Convert.h"

#include <optional>

namespace tarvik::fuzz {
namespace {

/// Nothing for a text that is no date. Another error than that ends the run.
std::optional<Date> dateIn(const std::string& text, const LocaleData& locale) {
    try {
        return textToDate(text, locale);
    } catch (const RunTimeError& error) {
        require(error.number() == ErrorNumber::TypeMismatch, "a date is read or refused");
        return std::nullopt;
    }
}

bool hasFourDigitYear(const LocaleData& locale) {
    return locale.shortDate.find("yyyy") != std::string::npos;
}

/// The text that is written for the date means that date: its year is written whole, and a time
/// alone does not look like a date.
bool isWritable(Date date, const LocaleData& locale) {
    const int year = date.civil().year;
    const bool timeAlone = date.dateOnly() == Date(0);
    return timeAlone ? locale.longTime.find(':') != std::string::npos
                     : hasFourDigitYear(locale) || (year >= 1930 && year <= 2029);
}

void requireOfCalendar(Date date) {
    const CivilTime civil = date.civil();
    require(Date::fromCivil(civil) == date, "a date is one of the calendar, to the second");
}

void play(Input input) {
    const LocaleData locale = localeOf(input.byte());
    const std::string text = input.text();
    if (const auto date = dateIn(text, locale)) {
        requireOfCalendar(*date);
        require(!isWritable(*date, locale) || dateIn(toText(*date, locale), locale) == date,
                "a written date is read back");
        require(dateIn(" " + text + " ", locale) == date, "blanks around do not count");
    }
    LocaleData other;
    other.shortDate = input.text();
    other.longTime = input.text();
    other.amText = input.text();
    other.pmText = input.text();
    other.longMonths[4] = input.text();
    other.shortMonths[4] = input.text();
    for (const std::string& tried : {text, std::string("2026-05-16 18:04:09")}) {
        if (const auto date = dateIn(tried, other)) {
            requireOfCalendar(*date);
        }
    }
    // Whatever the patterns are, what they write is a text, and reading it is no other error.
    const Date date = Date::fromCivil({2026, 5, 16, 18, 4, 9});
    dateIn(toText(date, other), other);
}

} // namespace
} // namespace tarvik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tarvik::fuzz::play({data, size});
    return 0;
}
