#pragma once

#include "journal/JournalEntry.h"
#include "ports/HeldFile.h"
#include "types/Current.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace tarvik {

/// What a start finds where the journal would be.
struct JournalFinding {
    enum class Kind {
        Nothing, ///< none, or one that nothing was written to
        Entry,
        Busy,         ///< another copy of the program has it
        Damaged,      ///< nothing can be made of what it holds
        OtherVersion, ///< written by a program that this one does not understand
        Refused,      ///< something that is no journal of the user's has its name
        Unread,       ///< it is there and out of reach: nobody knows what it says
    };

    Kind kind = Kind::Nothing;
    JournalEntry entry;
};

/// The file of the running count, `Tarvik.journal` beside the INI file. It is made when there is
/// first something to say. A write goes neither where the last entry stands nor where the last one
/// does that was flushed to the disk.
class Journal {
public:
    /// Milliseconds from one write to the next, and from one flush to the next.
    static constexpr std::uint64_t betweenWrites = 5'000;
    static constexpr std::uint64_t betweenFlushes = 30'000;

    /// Looks for the file in that folder of the INI file and takes it. From now on `keep` works,
    /// unless somebody else's file is there.
    JournalFinding take(const std::string& path, const std::string& iniFile);

    /// It is kept in this run.
    bool inUse() const { return inUse_; }
    /// The file is there and this program's.
    bool isThere() const { return file_ != nullptr; }
    /// So long has nothing been written that it is time to look for changes, or nothing been
    /// flushed that it is time to do so.
    bool isDue() const;

    /// What a start shows without a journal: as long as there is nothing else to say, no file is
    /// made.
    void needNot(const JournalEntry& entry) { written_ = bodyOf(entry); }
    /// Writes an entry that says something new, or that somebody has taken away, and flushes it
    /// where `atOnce` or the time says so. True unless the file could not be written.
    bool keep(const JournalEntry& entry, bool atOnce);

    /// Deletes the file and keeps no more. False when it cannot be deleted: then it is still kept.
    bool end();
    /// Lets the file go where it is and keeps no more.
    void leave();
    /// Lets the file go, so that it can be given another name.
    void release();

    /// What the next entry says it stands on.
    IniContent standsOn;
    std::optional<Date> resetIfGone;
    /// What the last save of this run's totals has left, if it has succeeded.
    std::optional<IniContent> ownSave;
    /// What the start has found, if the user is to be told.
    std::string toTell;
    /// That it cannot be written.
    bool failureTold = false;
    /// What a start showed that could not read the journal, and looks again; see `bodyOf`. Empty
    /// where there is nothing to look for.
    std::string shownAtStart;

private:
    static constexpr std::size_t nowhere = journalPlaces;
    /// What cannot be made is tried again later and later, up to so many milliseconds.
    static constexpr std::uint64_t longestPause = 600'000;

    std::size_t nextPlace() const;
    void look(const std::string& bytes, JournalFinding& finding);
    bool make(std::uint64_t now, bool atOnce);
    bool put(const std::string& body, Date moment);
    bool flush(std::uint64_t now);

    bool inUse_ = false;
    std::string path_;
    std::string iniFile_;
    std::unique_ptr<HeldFile> file_;
    std::string written_;                ///< the body of the last entry
    std::size_t length_ = 0;             ///< of the file, bytes, as far as this run knows
    std::uint64_t number_ = 0;           ///< of the last entry
    std::size_t lastPlace_ = nowhere;    ///< of the last entry
    std::size_t flushedPlace_ = nowhere; ///< of the last one that is on the disk
    std::uint64_t lookedAt_ = 0;         ///< steady milliseconds; 0 for never, as below
    std::uint64_t flushedAt_ = 0;
    std::uint64_t notMadeBefore_ = 0; ///< steady milliseconds
    std::uint64_t pause_ = 0;         ///< milliseconds after the next failure to make it
};

/// The journal in use. One must be in place (see `Current`).
Journal& journal();

using JournalScope = Current<Journal>;

} // namespace tarvik
