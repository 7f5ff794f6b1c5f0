#include "linux/services/LinuxClock.h"

#include "common/SteadyClock.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace tarvik {

namespace {

Date now() {
    const std::time_t seconds = std::time(nullptr);
    std::tm local{};
    localtime_r(&seconds, &local);
    constexpr int lastSecond = 59; // a leap second has no place in a day of 86,400
    return Date::fromCivil({.year = local.tm_year + 1900,
                            .month = local.tm_mon + 1,
                            .day = local.tm_mday,
                            .hour = local.tm_hour,
                            .minute = local.tm_min,
                            .second = std::min(local.tm_sec, lastSecond)});
}

} // namespace

Date LinuxClock::currentDate() {
    return now().dateOnly();
}

Date LinuxClock::currentTime() {
    return now().timeOnly();
}

std::uint64_t LinuxClock::steadyMilliseconds() {
    return tarvik::steadyMilliseconds();
}

std::int64_t LinuxClock::universalMilliseconds() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

int LinuxClock::minutesAhead(std::int64_t universal) {
    constexpr std::int64_t millisecondsInSecond = 1000;
    constexpr int secondsInMinute = 60;
    const auto seconds = static_cast<std::time_t>(universal / millisecondsInSecond);
    std::tm local{};
    return localtime_r(&seconds, &local) == nullptr
               ? 0
               : static_cast<int>(local.tm_gmtoff / secondsInMinute);
}

} // namespace tarvik
