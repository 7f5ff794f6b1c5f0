#pragma once

#include "ledger/LedgerContents.h"
#include "ledger/Unwritten.h"
#include "ports/Files.h"
#include "ports/HeldFile.h"
#include "state/LedgerRemainder.h"
#include "types/Current.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarvik {

/// The file of what each line has carried, `Tarvik.ledger` beside the INI file. It is made when the
/// user says so, written to at its end, and shortened by replacing it whole.
class Ledger {
public:
    /// What is found where it would be.
    enum class Finding : std::uint8_t {
        Nothing,      ///< none: it was never begun
        Taken,        ///< this program has it; some of it may be `damaged`
        Busy,         ///< another copy of the program has it
        OtherVersion, ///< written by a program that this one does not understand
        Refused,      ///< something that is no ledger of the user's has its name
        Unread,       ///< it is there and out of reach: nobody knows what it says
    };

    /// Looks for the file and takes it.
    Finding take(const std::string& path);
    /// Makes it, as open as the INI file, unless there is one. `Taken` if it is this program's now,
    /// `Unread` where it cannot be made.
    Finding begin(const std::string& path, const std::string& iniFile, Moment now,
                  std::chrono::minutes ahead);

    /// The file is there and this program's.
    bool inUse() const { return file_ != nullptr; }
    const LedgerContents& contents() const { return contents_; }
    /// Bytes of the file.
    std::size_t size() const { return end_; }
    /// What in the file is no line of a ledger.
    const std::string& damaged() const { return damaged_; }

    /// What of the remainder the file does not have: a kill may have come while it was added. The
    /// beginning of it stands behind the remainder's place then, with nothing but damage between.
    /// Nothing where the file cannot be read.
    std::optional<std::vector<LedgerEntry>> missing() const;

    /// Puts what is damaged into the file `aside` and takes it out of this one, which gets its
    /// first line again if that is gone. FileAlreadyExists where something else has that name; what
    /// is aside already is not put there again.
    FileResult mend(const std::string& aside);

    /// Adds to the file and flushes it to the disk: all of it or, for whoever tries again, nothing.
    FileResult add(const std::vector<LedgerEntry>& entries);
    FileResult add(const LedgerNote& said);

    /// One entry for each line and quarter hour, older than 13 months for each line and day.
    FileResult fold(LocalDay today);

    /// Lets the file go where it is.
    void release();

    /// What the lines have carried since the last entry.
    Unwritten unwritten;
    /// The user keeps a ledger, though it may be out of reach: what is not in it yet is collected.
    bool isKept = false;
    /// Another copy of the program does.
    bool isElsewhere = false;
    /// What the run before has left, until it is known what of it the file has.
    LedgerRemainder remainder;
    /// When it was last written to or tried to be, steady milliseconds.
    std::uint64_t triedAt = 0;
    /// The user's day on which it was folded last.
    LocalDay foldedOn{};
    /// What the start has found, if the user is to be told.
    std::string toTell;
    /// That it cannot be written.
    bool failureTold = false;

private:
    Finding look(const std::string& path, Holding held);
    FileResult append(const std::string& text);
    FileResult replaceBy(const std::string& text);
    FileResult putAside(const std::string& aside) const;

    std::string path_;
    std::unique_ptr<HeldFile> file_;
    LedgerContents contents_;
    std::string damaged_;
    bool hasHead_ = false;
    std::size_t end_ = 0;      ///< of what is written for certain
    bool isBrokenOff_ = false; ///< its last line has no end
};

/// The ledger in use. One must be in place (see `Current`).
Ledger& ledger();

using LedgerScope = Current<Ledger>;

} // namespace tarvik
