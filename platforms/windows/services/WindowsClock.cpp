#include "windows/services/WindowsClock.h"

#include "windows/services/SystemHeader.h"

#include <algorithm>

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

constexpr std::int64_t ticksInMillisecond = 10'000;
constexpr std::int64_t millisecondsTo1970 = 11'644'473'600'000; // from 1601

std::int64_t ticksOf(const FILETIME& time) {
    return static_cast<std::int64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
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
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    return ticksOf(now) / ticksInMillisecond - millisecondsTo1970;
}

int WindowsClock::minutesAhead(std::int64_t universal) {
    constexpr std::int64_t last = 253'402'300'799'999; // of the year 9999
    constexpr std::int64_t ticksInMinute = ticksInMillisecond * 60'000;
    const std::int64_t ticks =
        (std::clamp<std::int64_t>(universal, 0, last) + millisecondsTo1970) * ticksInMillisecond;
    const FILETIME moment{.dwLowDateTime = static_cast<DWORD>(ticks),
                          .dwHighDateTime = static_cast<DWORD>(ticks >> 32)};
    SYSTEMTIME shared{};
    SYSTEMTIME local{};
    FILETIME shown{};
    TIME_ZONE_INFORMATION rules{};
    // The rules that hold this year are not those of every year.
    const bool known = FileTimeToSystemTime(&moment, &shared) != FALSE &&
                       GetTimeZoneInformationForYear(shared.wYear, nullptr, &rules) != FALSE &&
                       SystemTimeToTzSpecificLocalTime(&rules, &shared, &local) != FALSE &&
                       SystemTimeToFileTime(&local, &shown) != FALSE;
    return known ? static_cast<int>((ticksOf(shown) - ticks) / ticksInMinute) : 0;
}

} // namespace tarvik
