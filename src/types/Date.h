#pragma once

#include <compare>

namespace tarvik {

/// A calendar date and time of day, second resolution. Years 100 to 9999.
struct CivilTime {
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;

    friend bool operator==(const CivilTime&, const CivilTime&) = default;
};

/// A date and time as a serial: whole days since 30 December 1899, the fraction being the time of
/// day. Before that day the whole part is negative and the fraction still counts forward.
class Date {
public:
    constexpr Date() = default;
    constexpr explicit Date(double serial) : serial_(serial) {}

    /// Raises InvalidProcedureCall for a day that the calendar does not have.
    static Date fromCivil(const CivilTime& civil);

    constexpr double serial() const { return serial_; }

    /// Rounded to the nearest second; raises InvalidProcedureCall outside the years 100 to 9999.
    CivilTime civil() const;

    /// The same day at midnight.
    Date dateOnly() const;

    /// The time of day alone, as a serial from 0 up to 1.
    Date timeOnly() const;

    friend constexpr auto operator<=>(Date, Date) = default;

private:
    double serial_ = 0;
};

} // namespace tarvik
