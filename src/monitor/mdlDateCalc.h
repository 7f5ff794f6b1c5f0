#pragma once

#include "state/mdlVar.h"
#include "types/Date.h"

#include <array>

namespace tarvik {

/// The day that belongs to the criterion after a reset on `dtDate`. With `bNextIfToday` a day that
/// is today is moved on to the next of its kind. 30 December 1899, with a message, when `dtDate` is
/// outside the years 100 to 9999 or the criterion is none of the twelve.
///
/// Some of the days are irregular; users' records were cut at them, so they stay as they are.
Date DateCalc(enDateCalc Criterion, Date dtDate, bool bNextIfToday);

/// A day of the year that a quarter leads to.
struct QuarterDay {
    int yearsOn;
    int month;
    int day;
};

/// The day that a quarter (1 to 4) of that year leads to. Any other quarter is reported under the
/// routine's name and leads to 30 December 1899.
Date DayOfQuarter(const char* Routine, int Quarter, int Year,
                  const std::array<QuarterDay, 4>& Days);

} // namespace tarvik
