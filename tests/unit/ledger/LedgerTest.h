#pragma once

#include "ledger/LedgerEntry.h"

#include <chrono>
#include <string>
#include <utility>

namespace tarvik {

using namespace std::chrono_literals;

/// 16 November 2026.
inline constexpr Moment day = std::chrono::sys_days(2026y / 11 / 16);
inline constexpr LocalDay today = std::chrono::local_days(2026y / 11 / 16);

inline LedgerEntry entryAt(Moment at, std::uint64_t rcvd, std::string line = "Ridge") {
    return {.at = at, .ahead = 1h, .line = std::move(line), .traffic = {rcvd, 1, 60'000}};
}

} // namespace tarvik
