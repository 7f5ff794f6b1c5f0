#pragma once

#include "ledger/LedgerContents.h"
#include "plan/Plan.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace tarvik::reference {

// Periods, what is used of them, budget and forecast once more: day by day, in whole seconds, with
// a calendar of its own. Figures are small enough for plain arithmetic.

/// From each moment on, seconds since 1970, the clock is so many seconds ahead.
using Changes = std::vector<std::pair<std::int64_t, std::int64_t>>;

std::int64_t aheadAt(const Changes& zone, std::int64_t moment);

struct Span {
    std::int64_t begin;
    std::int64_t end;
};

/// The period around a moment, and the one before it if there is one.
struct Spans {
    std::optional<Span> before;
    Span now;
};
std::optional<Spans> spansAt(const PeriodRule& rule, std::int64_t moment, const Changes& zone);

/// Bytes and milliseconds.
struct Pair {
    std::uint64_t bytes = 0;
    std::uint64_t time = 0;

    friend bool operator==(const Pair&, const Pair&) = default;
};

struct Account {
    Pair used;
    Pair rolledOver;
    Pair extended;
    Pair extendedToday;
    Pair total;
    std::optional<std::int64_t> daysLeft; ///< where there is a budget
    Pair perDay;
    Pair today;
    std::optional<Pair> least; ///< where there is a forecast
    std::optional<Pair> expected;
    std::optional<Pair> most;
};

Account accountOf(const Plan& plan, const LedgerContents& contents, const Spans& spans,
                  std::int64_t moment, const Changes& zone,
                  std::optional<std::uint64_t> bytesPerSecond, std::uint64_t lines);

} // namespace tarvik::reference
