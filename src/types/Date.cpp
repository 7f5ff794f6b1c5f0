#include "types/Date.h"

#include "types/RunTimeError.h"

#include <chrono>
#include <cmath>
#include <cstdint>

namespace tarvik {

namespace {

using std::chrono::sys_days;

constexpr std::int64_t secondsPerDay = 86'400;
constexpr sys_days dayZero = std::chrono::year{1899} / 12 / 30;
constexpr std::int64_t firstDay = (sys_days(std::chrono::year{100} / 1 / 1) - dayZero).count();
constexpr std::int64_t lastDay = (sys_days(std::chrono::year{9999} / 12 / 31) - dayZero).count();

} // namespace

Date Date::fromCivil(const CivilTime& civil) {
    const std::chrono::year_month_day day{std::chrono::year{civil.year},
                                          std::chrono::month{static_cast<unsigned>(civil.month)},
                                          std::chrono::day{static_cast<unsigned>(civil.day)}};
    if (civil.year < 100 || civil.year > 9999 || civil.month < 1 || civil.month > 12 ||
        civil.day < 1 || civil.day > 31 || !day.ok() || civil.hour < 0 || civil.hour > 23 ||
        civil.minute < 0 || civil.minute > 59 || civil.second < 0 || civil.second > 59) {
        raise(ErrorNumber::InvalidProcedureCall);
    }
    const auto days = static_cast<double>((sys_days(day) - dayZero).count());
    const double time = (civil.hour * 3600.0 + civil.minute * 60.0 + civil.second) /
                        static_cast<double>(secondsPerDay);
    return Date(days < 0 ? days - time : days + time);
}

CivilTime Date::civil() const {
    const double whole = std::trunc(serial_);
    if (!(whole >= static_cast<double>(firstDay) && whole <= static_cast<double>(lastDay))) {
        raise(ErrorNumber::InvalidProcedureCall);
    }
    auto days = static_cast<std::int64_t>(whole);
    auto seconds = static_cast<std::int64_t>(
        std::floor(std::fabs(serial_ - whole) * static_cast<double>(secondsPerDay) + 0.5));
    if (seconds == secondsPerDay) {
        seconds = 0;
        if (++days > lastDay) {
            raise(ErrorNumber::InvalidProcedureCall);
        }
    }
    const std::chrono::year_month_day day{dayZero + std::chrono::days(days)};
    const auto second = static_cast<int>(seconds);
    return {.year = static_cast<int>(day.year()),
            .month = static_cast<int>(static_cast<unsigned>(day.month())),
            .day = static_cast<int>(static_cast<unsigned>(day.day())),
            .hour = second / 3600,
            .minute = second / 60 % 60,
            .second = second % 60};
}

Date Date::dateOnly() const {
    return Date(std::trunc(serial_));
}

Date Date::timeOnly() const {
    return Date(std::fabs(serial_ - std::trunc(serial_)));
}

} // namespace tarvik
