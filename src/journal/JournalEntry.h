#pragma once

#include "state/LedgerRemainder.h"
#include "state/mdlVar.h"
#include "types/Amount.h"
#include "types/Currency.h"
#include "types/Date.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// What tells one content of the INI file from another.
struct IniContent {
    bool exists = false;
    std::string lastState;          ///< 127 characters at most
    std::int32_t lastDateStamp = 0; ///< 0 or more

    friend bool operator==(const IniContent&, const IniContent&) = default;
};

/// What `SaveState` would write at a moment, and what a start needs to go on from there.
struct JournalEntry {
    static constexpr std::size_t settingCount = 19;

    Date moment; ///< of its writing, on the user's clock
    IniContent standsOn;
    /// The program has ended in order, and the INI file has what it can hold.
    bool ended = false;
    /// The INI file is about to be put aside before a reset: where it is gone, the reset was done,
    /// and this is its date.
    std::optional<Date> resetIfGone;
    Amount totals; ///< all that counts, that of sessions under way included
    Currency tickerBase;
    /// In the order of the table of settings; see `settingsAsNumbers`.
    std::array<std::int64_t, settingCount> settings{};
    std::string address; ///< 255 characters at most
    /// Those under way. What counts of each is in the totals.
    std::vector<FormerSession> sessions;
    /// Where the user keeps one. Its lines come before sessions that find no room beside them.
    std::optional<LedgerRemainder> ledger = {};
};

/// Amounts from 0 to so much can be kept: as far beyond what any line carries as sums of a few of
/// them still fit.
constexpr Currency largestKept = Currency::fromScaled(INT64_MAX / 4);
bool canBeKept(const Amount& amount);
/// Dates of the years that one can be written in can be kept.
bool canBeKept(Date date);

/// Whether a save at the moment of the entry may have written these totals: of the sessions under
/// way it takes only the one that is shown, whichever it is.
bool mayHaveSaved(const JournalEntry& entry, const Amount& totals);

// One place of the file holds one entry. docs/files.md has every byte.

/// Bytes that an entry has at most, and that each place of the file has: a disk writes whole
/// sectors of up to so many bytes, and a power cut within one may take all that stood in it.
constexpr std::size_t journalPlace = 4096;
/// One holds what is on the disk for certain, the two others are written to in turn: a write that
/// is cut off leaves the one before, and a power cut leaves what was flushed.
constexpr std::size_t journalPlaces = 3;
constexpr std::uint32_t journalVersion = 1;

/// What an entry says, but for its moment and its number. Sessions that find no room are left out:
/// what counts of them is in the totals. So are lines of the ledger that find none in an entry
/// without sessions.
std::string bodyOf(const JournalEntry& entry);

/// Bytes that an entry of these sessions has for lines of the ledger.
std::size_t roomForLedger(JournalEntry entry);

/// The entry as it stands in its place.
std::string placeOf(std::string_view body, Date moment, std::uint64_t number);

/// What stands in a place.
struct JournalPlace {
    enum class Kind {
        Empty,      ///< never written
        Torn,       ///< begun, or damaged
        Unsure,     ///< either that, or of a version that this program does not know
        Impossible, ///< written to its end, and nobody can have meant what it says
        Whole,
        OtherVersion, ///< whole, of a version that this program does not know
        Foreign,      ///< nothing of the journal's
    };

    Kind kind = Kind::Empty;
    std::uint64_t number = 0; ///< of a whole one: the higher, the newer
    JournalEntry entry;       ///< that of a whole one
};

/// What the bytes of a place say: any bytes, as many as a place has or, at the end of a file that
/// was cut off, fewer.
JournalPlace readPlace(std::string_view bytes);

} // namespace tarvik
