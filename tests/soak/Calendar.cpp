#include "soak/Calendar.h"

#include <chrono>

namespace tarvik::soak {

namespace {

constexpr std::int64_t secondsInDay = 86'400;
constexpr std::int64_t secondsInHour = 3'600;
constexpr int firstDay = 37'987; // 1 January 2004

/// The second at which the clocks change on the last Sunday of a month.
std::int64_t changeOfClocks(std::chrono::year year, std::chrono::month month) {
    using namespace std::chrono;
    const sys_days first = 2004y / January / 1;
    const sys_days sunday = year / month / Sunday[last];
    return (sunday - first).count() * secondsInDay + secondsInHour;
}

bool isSummer(std::int64_t second) {
    using namespace std::chrono;
    const sys_days first = 2004y / January / 1;
    const year_month_day date(first + days(second / secondsInDay));
    return second >= changeOfClocks(date.year(), March) &&
           second < changeOfClocks(date.year(), October);
}

} // namespace

std::int64_t Calendar::local() const {
    const std::int64_t hours = zone_ + (isSummer(seconds) ? 1 : 0);
    return firstDay * secondsInDay + seconds + hours * secondsInHour + turned_;
}

std::int64_t Calendar::universal() const {
    constexpr int firstDayOf1970 = 25'569;
    return (firstDay - firstDayOf1970) * secondsInDay + seconds + turned_;
}

Date Calendar::shown() const {
    return Date(static_cast<double>(local()) / secondsInDay);
}

Now Calendar::now() const {
    return {.day = static_cast<int>(local() / secondsInDay),
            .hour = static_cast<int>(local() % secondsInDay / secondsInHour),
            .universal = universal(),
            .seconds = seconds - booted_ - asleep_ + 1};
}

} // namespace tarvik::soak
