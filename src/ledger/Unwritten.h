#pragma once

#include "ledger/LedgerEntry.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace tarvik {

/// What a line has carried from one moment to another, the user's clock being so far ahead.
struct Growth {
    std::string line = {};
    bool inside = false;
    Moment from{};
    Moment to{};
    std::chrono::minutes ahead{};
    Traffic traffic = {};
};

/// The same by quarter hours, each with its share of the time between; together exactly as much.
/// Over more than a day, or where the clock was set back, all of it belongs to the last one.
std::vector<LedgerEntry> byQuarterHours(const Growth& growth);

/// What is not in the ledger yet, one entry for each line and quarter hour.
class Unwritten {
public:
    void add(const Growth& growth);
    /// It is in the ledger now.
    void clear() { entries_.clear(); }

    const std::vector<LedgerEntry>& entries() const { return entries_; }
    /// Bytes of both directions.
    std::uint64_t bytes() const;

private:
    std::vector<LedgerEntry> entries_; ///< the earlier first
};

/// What happens while something is not in the ledger yet.
enum class LedgerOccasion : std::uint8_t { Tick, SessionEnds, MachineSleeps, ProgramEnds };

/// Milliseconds from one write to the next, and bytes that are worth one.
constexpr std::uint64_t betweenLedgerWrites = 60'000;
constexpr std::uint64_t bytesWorthWriting = 1'000'000;

/// Whether it is written now, the last attempt being so many milliseconds ago. What is not stands
/// in the journal.
bool isWriteDue(const Unwritten& unwritten, LedgerOccasion occasion, Moment now,
                std::uint64_t sinceWrite);

} // namespace tarvik
