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

} // namespace tarvik
