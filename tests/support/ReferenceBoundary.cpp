#include "support/ReferenceBoundary.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>

namespace tarvik {

namespace {

constexpr int firstYear = 1998;
constexpr int lastYear = 2046;
/// 1 January 1998.
constexpr int firstSerial = 35'796;
constexpr int thursday = 5;
constexpr int monday = 2;

int lengthOf(int year, int month) {
    if (month == 2) {
        // No year that ends a century without a leap day is in reach.
        return year % 4 == 0 ? 29 : 28;
    }
    return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

} // namespace

ReferenceBoundary::ReferenceBoundary() {
    int weekday = thursday;
    for (int year = firstYear; year <= lastYear; ++year) {
        for (int month = 1; month <= 12; ++month) {
            for (int day = 1; day <= lengthOf(year, month); ++day) {
                calendar_.push_back({year, month, day, weekday});
                weekday = weekday == 7 ? 1 : weekday + 1;
            }
        }
    }
}

int ReferenceBoundary::day(int criterion, int last, bool nextIfToday, int today, int hour) const {
    if (criterion == 0 || criterion == 6) {
        return dayAfterReset(last, nextIfToday, today, hour);
    }
    const int usual = usualDay(criterion, last);
    return nextIfToday && usual == today ? movedOn(criterion, last, usual) : usual;
}

int ReferenceBoundary::dayAfterReset(int last, bool nextIfToday, int today, int hour) {
    const int tomorrow = today + 1;
    switch (std::clamp(today - last, 0, 2)) {
    case 0:
        return tomorrow;
    case 1:
        return hour >= 13 && !nextIfToday ? today : tomorrow;
    default:
        return today;
    }
}

int ReferenceBoundary::usualDay(int criterion, int last) const {
    // The day before, for the criteria that a reset on their very day does not move on.
    const int before = last - 1;
    // The month on whose first day the quarter of a reset ends, by the month of the reset.
    static constexpr std::array<int, 12> quarterEnds{4, 4, 4, 10, 10, 10, 12, 12, 12, 1, 1, 1};

    switch (criterion) {
    case 1:
        return firstWeekdayAfter(last, thursday);
    case 2:
        return firstDayOfMonthAfter(last, 16);
    case 3:
        return std::min({firstAfter(before, 2, 16), firstAfter(before, 5, 16),
                         firstAfter(before, 8, 16), firstAfter(before, 11, 16)});
    case 4:
        return std::min(firstAfter(before, 4, 1), firstAfter(before, 10, 1));
    case 5:
        return firstAfter(before, 7, 1);
    case 7:
        return firstWeekdayAfter(last, monday);
    case 8:
        return firstDayOfMonthAfter(last, 1);
    case 9:
        return firstAfter(last, quarterEnds.at(static_cast<std::size_t>(at(last).month - 1)), 1);
    case 10:
        return std::min(firstAfter(last, 1, 1), firstAfter(last, 7, 1));
    case 11:
        return firstAfter(last, 1, 1);
    default:
        throw std::invalid_argument("criterion");
    }
}

int ReferenceBoundary::movedOn(int criterion, int last, int day) const {
    switch (criterion) {
    case 1:
    case 7:
        return day + 1;
    case 2:
    case 8:
        return monthsOn(day, 1);
    case 3:
    case 9:
        return monthsOn(day, 3);
    case 4:
    case 10:
        return monthsOn(day, 6);
    case 5:
        return firstOfJuly(at(last).year + 2, last);
    case 11:
        return firstOfJuly(at(last).year + 3, last);
    default:
        throw std::invalid_argument("criterion");
    }
}

const ReferenceBoundary::Entry& ReferenceBoundary::at(int serial) const {
    return calendar_.at(static_cast<std::size_t>(serial - firstSerial));
}

int ReferenceBoundary::firstWeekdayAfter(int serial, int weekday) const {
    do {
        ++serial;
    } while (at(serial).weekday != weekday);
    return serial;
}

int ReferenceBoundary::firstDayOfMonthAfter(int serial, int day) const {
    do {
        ++serial;
    } while (at(serial).day != day);
    return serial;
}

int ReferenceBoundary::firstAfter(int serial, int month, int day) const {
    do {
        serial = firstDayOfMonthAfter(serial, day);
    } while (at(serial).month != month);
    return serial;
}

int ReferenceBoundary::monthsOn(int serial, int months) const {
    const int day = at(serial).day;
    for (int i = 0; i < months; ++i) {
        serial = firstDayOfMonthAfter(serial, day);
    }
    return serial;
}

int ReferenceBoundary::firstOfJuly(int year, int from) const {
    int serial = firstAfter(from, 7, 1);
    while (at(serial).year != year) {
        serial = firstAfter(serial, 7, 1);
    }
    return serial;
}

} // namespace tarvik
