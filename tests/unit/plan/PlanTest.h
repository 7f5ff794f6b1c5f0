#pragma once

#include "plan/Usage.h"

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace tarvik::planned {

using namespace std::chrono_literals;

inline constexpr std::uint64_t megabyte = 1'000'000;
inline constexpr std::uint64_t hour = 3'600'000; ///< milliseconds

/// A clock that is always so far ahead.
inline Zone always(std::chrono::minutes ahead) {
    return [ahead](Moment) { return ahead; };
}

/// Central Europe in 2026 and 2027.
inline std::chrono::minutes berlin(Moment moment) {
    using std::chrono::sys_days;
    const auto isIn = [&](Moment begin, Moment end) { return begin <= moment && moment < end; };
    const bool summer = isIn(sys_days(2026y / 3 / 29) + 1h, sys_days(2026y / 10 / 25) + 1h) ||
                        isIn(sys_days(2027y / 3 / 28) + 1h, sys_days(2027y / 10 / 31) + 1h);
    return summer ? 120min : 60min;
}

inline const Zone inLondon = always(0min);
inline const Zone inBerlin = berlin;

inline constexpr Moment noon = std::chrono::sys_days(2026y / 11 / 16) + 12h;

inline Moment utc(int month, unsigned day, std::chrono::minutes time = 0min, int year = 2026) {
    return std::chrono::sys_days(std::chrono::year(year) / month / std::chrono::day(day)) + time;
}

inline LocalDay dayOfCalendar(int year, unsigned month, unsigned day) {
    return LocalDay(std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day));
}

inline LedgerEntry carriedAt(Moment at, std::uint64_t rcvd, std::uint64_t sent = 0,
                             std::string line = "Ridge") {
    return {.at = at, .ahead = 0min, .line = std::move(line), .traffic = {rcvd, sent, 900'000}};
}

/// 10 GB from the first of the month.
inline Plan tenGigabytes() {
    Plan plan{.name = "Home"};
    plan.allowance = DataSize{.thousandths = 10'000, .unit = SizeUnit::GB};
    return plan;
}

/// A ledger that began with 2026.
inline LedgerContents contentsWith(std::vector<LedgerEntry> entries,
                                   std::vector<LedgerNote> notes = {}) {
    LedgerContents contents;
    contents.head = {.version = 1, .begun = utc(1, 1), .ahead = 0min};
    enter(contents, entries);
    contents.notes = std::move(notes);
    return contents;
}

} // namespace tarvik::planned
