#pragma once

#include <vector>

namespace tarvik {

/// The days of the twelve criteria stated a second time, as plainly as possible: on a calendar that
/// is filled day by day and walked forward until the day sought comes up. Knows the years 1998 to
/// 2046. Days are serials of midnight.
class ReferenceBoundary {
public:
    ReferenceBoundary();

    /// The day of criterion 0 to 11 for a reset on the day `last`, on the day `today` in that hour.
    int day(int criterion, int last, bool nextIfToday, int today, int hour) const;

    /// The day as long as it is not today. Not for the criteria of the day, which need the time.
    int usualDay(int criterion, int last) const;

private:
    struct Entry {
        int year;
        int month;
        int day;
        int weekday; ///< 1 is Sunday
    };

    static int dayAfterReset(int last, bool nextIfToday, int today, int hour);
    int movedOn(int criterion, int last, int day) const;

    const Entry& at(int serial) const;
    int firstWeekdayAfter(int serial, int weekday) const;
    int firstDayOfMonthAfter(int serial, int day) const;
    int firstAfter(int serial, int month, int day) const;
    int monthsOn(int serial, int months) const;
    int firstOfJuly(int year, int from) const;

    std::vector<Entry> calendar_;
};

} // namespace tarvik
