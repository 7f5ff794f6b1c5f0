#pragma once

#include "ledger/LedgerEntry.h"

#include <chrono>
#include <cstddef>
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

/// Bytes of lines that are written to the ledger in one go at most, but for a single line.
constexpr std::size_t longestPortion = 2048;

/// What is not in the ledger yet, one entry for each line and quarter hour.
class Unwritten {
public:
    Unwritten() = default;
    /// What the run before has left, in the order in which it told that: the beginning of it may be
    /// in the ledger.
    explicit Unwritten(std::vector<LedgerEntry> left);

    void add(const Growth& growth);
    void add(LedgerEntry entry);
    /// The first of it are about to be written: so many that the journal has room, in bytes, to
    /// tell them as they are, and what is left. Until they are written they do not change, and what
    /// is added comes behind them: a kill or a failure may leave the file with the beginning of
    /// them. What was begun before is begun again.
    void beginWriting(std::size_t room);
    /// Those of which the writing has begun.
    std::vector<LedgerEntry> begun() const;
    /// These are in the ledger now.
    void endWriting();
    void clear();

    /// In the order in which they are written.
    const std::vector<LedgerEntry>& entries() const { return entries_; }
    /// All of it in so many bytes, as lines of the ledger. Where they find no room, those whose
    /// writing has not begun are joined to one for each line, at the last of its quarter hours;
    /// where these find none, some of them to one that names no line. Longer only where these, and
    /// a portion that was begun, find no room either.
    std::string textWithin(std::size_t room) const;
    /// Bytes of both directions.
    std::uint64_t bytes() const;

private:
    /// Those of which the writing has begun; behind them the others, the earlier first.
    std::vector<LedgerEntry> entries_;
    std::size_t begun_ = 0;
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
