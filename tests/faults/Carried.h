#pragma once

#include "faults/Figures.h"
#include "journal/JournalEntry.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvik::faults {

/// A line, and what the program can know of it.
struct Line {
    std::uint32_t handle = 0;
    std::string entry;
    Figures carried = {}; ///< since it was established
    Figures seen = {};    ///< of that, at the program's last look
    Figures offset = {};  ///< of that, what the user declined to count
    Figures left = {};    ///< of that, what no ledger is ever to tell
    bool up = true;       ///< false from its end on
    bool known = false;   ///< the program has looked at it
    bool silent = false;  ///< reset, and not looked at since: nothing of it counts until then

    Figures counted() const { return silent || !known ? Figures() : seen - offset; }
};

/// What all lines have carried: what the program's own figures are held against. It is
/// kept from what the life lets the lines do, never from what the program says.
class Carried {
public:
    std::vector<Line> lines; ///< in the service's order
    Figures finished;        ///< of the lines that are over, since the last reset
    bool hasLedger = false;  ///< one is kept
    Sums over;               ///< what it is to tell of the lines that are over

    Line& line(const std::string& entry);

    /// All that counts.
    Figures all() const;
    /// What is shown and saved: the line that was looked at last stands for those that are up.
    Figures shown() const;

    /// The program looks which lines there are: those that ended are over.
    void list();
    /// It knows nothing of the lines of the life before: what is up is another to it.
    void forget();
    /// It reads that line.
    void look(Line& at);
    void lookAtAll();
    /// Everything is counted anew: of the sessions under way too, from their beginning.
    void reset();

    /// What is not to count of what has passed so far.
    void decline();
    /// The user begins a ledger.
    void beginLedger();
    /// What it is to tell of each line: no reset touches it.
    Sums ledgered() const;

    /// What is wrong with the entry at this moment; nothing when nothing is. Of a program that is
    /// `ending` the lines are finished, all but one or all.
    std::string troubleWith(const JournalEntry& entry, bool ending) const;

private:
    /// Of all lines, or of those only that are over.
    Sums toldOf(bool all) const;
    std::string troubleWithSession(const FormerSession& session, bool ending) const;

    std::uint32_t lookedAt_ = 0; ///< the handle of the line that was looked at last
};

} // namespace tarvik::faults
