#pragma once

#include "faults/Carried.h"
#include "faults/Session.h"
#include "faults/Told.h"
#include "state/mdlVar.h"

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik::faults {

/// The program counts lines that come, carry and go, and all that it writes about them is held
/// against what they had carried at that moment.
class Life {
public:
    /// `finished` stands in the INI file; `former` are the lines that an earlier life left, each
    /// with what it had seen of them, in the order in which they had come.
    Life(Session& session, std::string folder, const Figures& finished,
         const std::vector<Line>& former = {});
    ~Life();
    Life(const Life&) = delete;
    Life& operator=(const Life&) = delete;

    FrmMain& window() { return session_.world.forms.frmMain; }
    State& state() { return session_.world.state; }

    /// Starts the program, which monitors at once. Where it tells that it cannot read its journal,
    /// it begins with `inFile`.
    void start(const Figures& inFile);

    /// A line comes that has carried so much already; nobody looks yet.
    void connect(const std::string& entry, const Figures& carried = {});
    /// One of the former lines is still up.
    void stay(const std::string& entry, const Figures& more);
    void carry(const std::string& entry, std::int64_t rcvd, std::int64_t sent);
    /// The line ends, and the program sees it in a second.
    void drop(const std::string& entry);
    /// The line ends, and the program itself dials the entry anew before it looks.
    void redial(const std::string& entry);
    /// So many seconds later a tick sees what the lines have carried.
    void pass(std::uint32_t seconds);
    /// The same: it asks, and what the lines have carried so far does not count.
    void passDeclined(std::uint32_t seconds);
    /// The same: it finds a reset due.
    void passIntoReset(std::uint32_t seconds);
    /// The life before kept a ledger, which tells so much of the lines that were over.
    void keepsLedger(const Sums& over);
    /// The user begins a ledger.
    void beginLedger();
    /// What is to be on the disk at once: a setting, a sleep.
    template <class Action>
    void atOnce(Action&& action) {
        action();
        demandKept(true);
    }
    /// Everything is reset outside of a tick.
    template <class Action>
    void reset(Action&& action) {
        const Carried before = carried_;
        carried_.reset();
        expect({before, carried_}, true);
        action();
        expect({carried_});
        demandKept(true);
    }
    /// True when no box came but these.
    bool end(const std::vector<std::string>& said);

    /// The question that comes at the first tick.
    static std::string question(const Figures& carried);

private:
    void advance(std::uint32_t seconds);
    void tick(std::uint32_t seconds);
    std::uint32_t made(const std::string& entry);
    /// What is written from now on tells one of these, in their order.
    void expect(std::vector<Carried> stages, bool resets = false);
    /// What the lines have carried is kept, and on the disk where `flushed` says so.
    void demandKept(bool flushed);
    void note(const std::string& step, std::string_view bytes);
    void noteEntry(std::string_view bytes);
    void noteSave(const std::string& ini);
    bool hasNote(const char* part) const;
    bool hasBox(const char* text) const;

    Session& session_;
    std::string folder_;
    Told told_;
    Carried carried_;
    std::vector<Carried> stages_;
    std::size_t stage_ = 0;
    std::set<std::string> records_{"12.11.2026|08:00:00", "14.11.2026|09:30:00"}; ///< known ones
    std::uint32_t used_ = 0; ///< handles up to here are those of lines before
    bool declines_ = false;
    bool undisturbed_ = true; ///< nothing failed of what is done with the journal
};

} // namespace tarvik::faults
