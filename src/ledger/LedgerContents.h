#pragma once

#include "ledger/LedgerEntry.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// All that a ledger says.
struct LedgerContents {
    LedgerHead head;
    std::vector<LedgerEntry> entries; ///< the earlier first
    std::vector<LedgerNote> notes;    ///< in the order in which they were written
};

/// Puts what was written later where its moment belongs.
void enter(LedgerContents& contents, const std::vector<LedgerEntry>& entries);

/// Those that the lines of a file say; what is no entry is left out.
std::vector<LedgerEntry> entriesOf(std::string_view lines);

/// Those from the one moment up to, but not at, the other.
std::span<const LedgerEntry> entriesBetween(const LedgerContents& contents, Moment from, Moment to);

/// The file as it begins, or as it is folded.
std::string textOf(const LedgerContents& contents);

/// What the bytes of a file are, read as a ledger.
struct LedgerReading {
    enum class Kind : std::uint8_t {
        Nothing, ///< empty, or cut off in its first line
        Ledger,
        OtherVersion, ///< written by a program that this one does not understand
        Foreign,      ///< no ledger
    };

    Kind kind = Kind::Nothing;
    LedgerContents contents;
    bool hasHead = false; ///< else it is told from the earliest entry
    /// What no line of a ledger is: a tail that was cut off, or what somebody changed. The rest
    /// holds without it.
    std::string damaged;
};

LedgerReading readLedger(std::string_view bytes);

/// Entries with one for each line and quarter hour; what lies further back than so many months of
/// the user's calendar with one for each line and day. What has been folded stays as it is.
std::vector<LedgerEntry> folded(std::vector<LedgerEntry> entries, LocalDay today,
                                std::chrono::months quarters);

} // namespace tarvik
