#pragma once

#include "soak/ReferenceTally.h"
#include "soak/Settings.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace tarvik::soak {

/// What is wrong around the journal.
enum class JournalTrouble {
    None,
    Full,   ///< there is no room: what is open can neither be written nor flushed, nothing is made
    Flush,  ///< what is written does not get as far as the disk
    Closed, ///< nobody may open or make it; who has it open goes on
    Held,   ///< another program is quicker wherever the file is not held yet
};

/// What tells one content of the file of settings from another.
struct FileMark {
    bool exists = false;
    int file = 0; ///< one more with each that is put aside
    std::size_t records = 0;

    /// Without a record nothing tells one file from another.
    bool sameAs(const FileMark& other) const {
        return exists == other.exists && records == other.records &&
               (records == 0 || file == other.file);
    }
};

/// What the journal says.
struct Saying {
    ReferenceTally::Kept counts;
    Settings settings;
    std::int64_t tickerBase = 0;
    FileMark standsOn;
    bool resetIsAnnounced = false;
    bool ended = false;
    int ledger = 0; ///< how often that was written: where it ends

    /// There is nothing new to be written.
    bool sameAs(const Saying& other) const;
};

/// The journal's file as it must be: what a kill leaves of it, and what a power cut leaves.
class ReferenceJournal {
public:
    enum class Found {
        Nothing, ///< no file, or a blank one
        Saying,
        OutOfReach, ///< it is there, and this run leaves it alone
    };

    JournalTrouble trouble = JournalTrouble::None;

    bool isThere() const { return isThere_; }

    /// The program starts.
    Found take(std::int64_t seconds);
    /// What was found.
    const Saying& found() const { return *says_; }
    /// It gets another name, and this run goes on without a file.
    void putAside();
    /// A start would show that without a journal.
    void needNot(const Saying& saying) { known_ = saying; }

    /// It is time to look whether there is something to be done. Seconds are on a clock that nobody
    /// sets.
    bool isDue(std::int64_t seconds) const;
    /// False when the disk refuses.
    bool keep(const Saying& saying, std::int64_t seconds, bool atOnce);
    /// What it says of the ledger is said anew, and nothing else.
    void tellsOfLedger(int writes);
    /// The program ends, and a start would show the same without it. False when it cannot be
    /// deleted.
    bool deleteIt(bool refused);
    /// The program goes, or is gone.
    void let() { isKept_ = isOpen_ = false; }
    void cutPower() {
        says_ = onDisk_;
        isTakenForClean_ = false;
    }

    bool isKept() const { return isKept_; }

private:
    bool make(std::int64_t seconds, bool atOnce);
    bool flush();
    bool writesFail() const { return trouble == JournalTrouble::Full; }
    bool flushesFail() const { return writesFail() || trouble == JournalTrouble::Flush; }
    bool opensFail() const {
        return trouble == JournalTrouble::Closed || trouble == JournalTrouble::Held;
    }

    bool isThere_ = false;
    std::optional<Saying> says_;   ///< nothing when it is blank
    std::optional<Saying> onDisk_; ///< of that, what a power cut leaves
    bool isTakenForClean_ = false; ///< after a flush that failed the next one does nothing

    // Of this run.
    bool isKept_ = false;
    bool isOpen_ = false;
    std::optional<Saying> known_; ///< what it says for certain, or what need not be said
    bool isUnflushed_ = false;
    std::optional<std::int64_t> lookedAt_;
    std::optional<std::int64_t> flushedAt_;
    std::int64_t notMadeBefore_ = 0;
    std::int64_t pause_ = 0; ///< after the next failure to make it
};

} // namespace tarvik::soak
