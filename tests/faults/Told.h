#pragma once

#include "faults/Carried.h"
#include "faults/Figures.h"
#include "faults/Session.h"
#include "journal/JournalEntry.h"
#include "ledger/LedgerEntry.h"

#include <optional>
#include <string>
#include <vector>

namespace tarvik::faults {

/// The newest whole entry among the places of a journal's file.
std::optional<JournalEntry> newestEntry(const std::string& file);

/// A record of an INI file: what it says of the three figures.
struct Record {
    std::string section;
    Figures figures;
};
/// The records of an INI file's text, and the section that the next start takes the totals from.
std::vector<Record> recordsIn(const std::string& ini);

/// The process ended in the middle, by that fault.
bool endsInTheMiddle(const std::string& fault);
bool isPowerCut(const std::string& fault);

/// The name of a ledger, or one that what is damaged of it gets.
bool isLedger(const std::string& name);
/// What it tells of each line.
Sums sumsIn(const std::vector<LedgerEntry>& entries);

/// The name that a journal gets that is set aside.
bool isAside(const std::string& name);
/// What is wrong with the journals that were set aside: what one says must be in what is shown, or
/// in a record of an INI file that is as new.
std::string troubleWithAside(const Folder& files, const Figures& shown);

/// What a start goes on from.
struct Ground {
    JournalEntry entry = {};
    Sums sums = {}; ///< what a ledger is to tell
};

/// What a life has told of itself by the time it ended, however it ended. It is written beside the
/// program's folder: it outlives the program, and is no file of its.
struct Told {
    struct Entry {
        std::string bytes = {};
        Sums sums = {}; ///< what the lines had carried that a ledger is to tell
        bool whole = false;
        bool flushed = false;
    };

    std::vector<Entry> entries; ///< from the last one on that is on the disk for certain
    std::vector<Line> lines;    ///< those that are up
    double clock = 0;           ///< the user's
    std::int64_t universal = 0; ///< universal time, milliseconds
    Figures all;                ///< what counts in the end
    Sums sums;                  ///< what a ledger is to tell in the end
    bool hasLedger = false;     ///< one is kept
    bool resetting = false;     ///< the step under way is a reset
    bool ending = false;
    bool saved = false;     ///< it ended, and has warned of nothing that is lost
    bool inPeace = false;   ///< the same, without any other box that should not come
    bool leftAlone = false; ///< the start has told that it leaves the journal alone
    bool anew = false;      ///< it has set that journal aside, as it has counted since
    std::string trouble;    ///< what it wrote that was not true

    void begun(std::string_view bytes, const Sums& carried);
    void written() { entries.back().whole = true; }
    void flushed();
    void add(const std::string& what);

    /// What a start may find to go on from; nothing stands for what there was before the life.
    std::vector<std::optional<Ground>> mayBeFound(const std::string& fault) const;

    void save(const std::string& folder) const;
    static Told load(const std::string& folder);
};

} // namespace tarvik::faults
