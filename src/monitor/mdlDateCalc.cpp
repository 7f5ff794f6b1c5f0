#include "monitor/mdlDateCalc.h"

#include "ports/Clock.h"
#include "ports/Platform.h"
#include "state/mdlTools.h"

namespace tarvik {

namespace {

constexpr Date zeroDate{0.0};
constexpr int monthsInQuarter = 3;

Date today() {
    return platform().clock.currentDate();
}

bool isDate(Date value) {
    try {
        value.civil();
        return true;
    } catch (const RunTimeError&) {
        return false;
    }
}

/// The same time of day, so many days later.
Date daysOn(Date date, int days) {
    const double whole = date.dateOnly().serial() + days;
    const double time = date.timeOnly().serial();
    const Date later(whole < 0 ? whole - time : whole + time);
    if (!isDate(later)) {
        raise(ErrorNumber::InvalidProcedureCall);
    }
    return later;
}

Date dayOf(int year, int month, int day) {
    return Date::fromCivil({.year = year, .month = month, .day = day});
}

/// The same day so many months later; only for days that every month has.
Date monthsOn(Date date, int months) {
    const CivilTime civil = date.civil();
    const int month = civil.month - 1 + months;
    return dayOf(civil.year + month / 12, month % 12 + 1, civil.day);
}

int yearOf(Date date) {
    return date.civil().year;
}

int quarterOf(Date date) {
    return (date.civil().month - 1) / monthsInQuarter + 1;
}

/// The day of the week, Sunday being 1. Day 0 of the calendar was a Saturday.
int weekday(Date date) {
    const auto days = static_cast<int>(date.dateOnly().serial());
    return ((days - 1) % 7 + 7) % 7 + 1;
}

Date DayMid(Date dtDate, bool bNextIfToday) {
    return guarded("DayMid", zeroDate, [&](Date& result) {
        const Date now = today();
        const Date next = daysOn(dtDate, 1);
        const bool afternoon = platform().clock.currentTime().civil().hour > 12;
        result = now > next || (next == now && afternoon && !bNextIfToday) ? now : daysOn(now, 1);
    });
}

/// The first day after the date that is this day of the week.
Date nextWeekday(const char* routine, Date date, int wanted, bool nextIfToday) {
    return guarded(routine, zeroDate, [&](Date& result) {
        int days = 1;
        while (weekday(daysOn(date, days)) != wanted) {
            ++days;
        }
        result = daysOn(date, days);
        if (nextIfToday && result == today()) {
            result = daysOn(result, 1);
        }
    });
}

Date WeekMid(Date dtDate, bool bNextIfToday) {
    constexpr int thursday = 5;
    return nextWeekday("WeekMid", dtDate, thursday, bNextIfToday);
}

Date WeekEnd(Date dtDate, bool bNextIfToday) {
    constexpr int monday = 2;
    return nextWeekday("WeekEnd", dtDate, monday, bNextIfToday);
}

Date MonthMid(Date dtDate, bool bNextIfToday) {
    return guarded("MonthMid", zeroDate, [&](Date& result) {
        const CivilTime civil = dtDate.civil();
        result = dayOf(civil.year, civil.month, 16);
        if (dtDate >= result) {
            result = monthsOn(result, 1);
        }
        if (bNextIfToday && result == today()) {
            result = monthsOn(result, 1);
        }
    });
}

Date MonthEnd(Date dtDate, bool bNextIfToday) {
    return guarded("MonthEnd", zeroDate, [&](Date& result) {
        const CivilTime civil = dtDate.civil();
        result = monthsOn(dayOf(civil.year, civil.month, 1), 1);
        if (bNextIfToday && result == today()) {
            result = monthsOn(result, 1);
        }
    });
}

/// The day of the date's quarter, moved on by so many quarters if the date is later, and once more
/// if it is today.
Date quarterBoundary(const char* routine, Date date, bool nextIfToday,
                     const std::array<QuarterDay, 4>& days, int quarters) {
    return guarded(routine, zeroDate, [&](Date& result) {
        result = DayOfQuarter(routine, quarterOf(date), yearOf(date), days);
        if (date > result) {
            result = monthsOn(result, quarters * monthsInQuarter);
        }
        if (nextIfToday && result == today()) {
            result = monthsOn(result, quarters * monthsInQuarter);
        }
    });
}

Date QuarterMid(Date dtDate, bool bNextIfToday) {
    return quarterBoundary("QuarterMid", dtDate, bNextIfToday,
                           {{{0, 2, 16}, {0, 5, 16}, {0, 8, 16}, {0, 11, 16}}}, 1);
}

Date QuarterEnd(Date dtDate, bool bNextIfToday) {
    return quarterBoundary("QuarterEnd", dtDate, bNextIfToday,
                           {{{0, 4, 1}, {0, 10, 1}, {0, 12, 1}, {1, 1, 1}}}, 1);
}

Date HalfYearMid(Date dtDate, bool bNextIfToday) {
    return quarterBoundary("HalfYearMid", dtDate, bNextIfToday,
                           {{{0, 4, 1}, {0, 4, 1}, {0, 10, 1}, {0, 10, 1}}}, 2);
}

Date HalfYearEnd(Date dtDate, bool bNextIfToday) {
    return quarterBoundary("HalfYearEnd", dtDate, bNextIfToday,
                           {{{0, 7, 1}, {0, 7, 1}, {1, 1, 1}, {1, 1, 1}}}, 2);
}

Date YearMid(Date dtDate, bool bNextIfToday) {
    return guarded("YearMid", zeroDate, [&](Date& result) {
        const int year = yearOf(dtDate);
        result = dayOf(year, 7, 1);
        if (dtDate > result) {
            result = dayOf(year + 1, 7, 1);
        }
        if (bNextIfToday && result == today()) {
            result = dayOf(year + 2, 7, 1);
        }
    });
}

Date YearEnd(Date dtDate, bool bNextIfToday) {
    return guarded("YearEnd", zeroDate, [&](Date& result) {
        const int year = yearOf(dtDate);
        result = dayOf(year + 1, 1, 1);
        if (dtDate > result) {
            result = dayOf(year + 2, 7, 1);
        }
        if (bNextIfToday && result == today()) {
            result = dayOf(year + 3, 7, 1);
        }
    });
}

using Routine = Date (*)(Date, bool);

/// One routine for each criterion, in the order of their numbers. The end of the day is the middle
/// of the day.
constexpr std::array<Routine, 12> routines{DayMid,      WeekMid,    MonthMid,    QuarterMid,
                                           HalfYearMid, YearMid,    DayMid,      WeekEnd,
                                           MonthEnd,    QuarterEnd, HalfYearEnd, YearEnd};

void reportAssertion(const std::string& text) {
    MsgBox(text, MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation);
}

} // namespace

Date DayOfQuarter(const char* Routine, int Quarter, int Year,
                  const std::array<QuarterDay, 4>& Days) {
    if (Quarter < 1 || Quarter > static_cast<int>(Days.size())) {
        reportAssertion(std::string("Internal assertion failure in \"") + Routine + "\"");
        return zeroDate;
    }
    const QuarterDay& day = Days[static_cast<std::size_t>(Quarter) - 1];
    return dayOf(Year + day.yearsOn, day.month, day.day);
}

Date DateCalc(enDateCalc Criterion, Date dtDate, bool bNextIfToday) {
    return guarded("DateCalc", zeroDate, [&](Date& result) {
        const auto number = static_cast<std::size_t>(Criterion);
        if (!isDate(dtDate)) {
            reportAssertion("DateCalc: Assertion failure - Input is not of type date.");
        } else if (number >= routines.size()) {
            reportAssertion("DateCalc: Assertion failure - Input is not of enum enDateCalc.");
        } else {
            result = routines[number](dtDate, bNextIfToday);
        }
    });
}

} // namespace tarvik
