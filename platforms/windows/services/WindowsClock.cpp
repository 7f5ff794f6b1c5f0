#include "windows/services/WindowsClock.h"

#include "windows/services/SystemHeader.h"

namespace tarvik {

namespace {

Date now() {
    SYSTEMTIME local{};
    GetLocalTime(&local);
    return Date::fromCivil({.year = local.wYear,
                            .month = local.wMonth,
                            .day = local.wDay,
                            .hour = local.wHour,
                            .minute = local.wMinute,
                            .second = local.wSecond});
}

} // namespace

Date WindowsClock::currentDate() {
    return now().dateOnly();
}

Date WindowsClock::currentTime() {
    return now().timeOnly();
}

std::uint64_t WindowsClock::steadyMilliseconds() {
    return GetTickCount64();
}

std::int64_t WindowsClock::universalMilliseconds() {
    constexpr std::int64_t ticksInMillisecond = 10'000;
    constexpr std::int64_t millisecondsTo1970 = 11'644'473'600'000; // from 1601
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    const auto ticks = static_cast<std::int64_t>(now.dwHighDateTime) << 32 | now.dwLowDateTime;
    return ticks / ticksInMillisecond - millisecondsTo1970;
}

} // namespace tarvik
