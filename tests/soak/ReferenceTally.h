#pragma once

#include "soak/Line.h"

#include <map>
#include <set>
#include <vector>

namespace tarvik::soak {

/// What must have been counted: the rules stated a second time, on sessions whose identity is known
/// and in numbers without an end.
class ReferenceTally {
public:
    Amount finished;
    Amount current;        ///< of the session whose figures are taken
    Amount offset;         ///< of it, what does not count
    bool renumbers = true; ///< the service may give a session another handle
    std::int64_t now = 0;  ///< seconds, the same in all zones
    /// What fails once, in the next call that reads it.
    Session::Fails failsOnce = Session::Fails::Nothing;
    int knownByMark = 0; ///< sessions of a run before, by the service's word

    /// What the lines have carried, by their entries, within another one with a mark before: what a
    /// ledger is to tell. No reset touches it.
    std::map<std::string, Amount> carried;

    Amount total() const { return finished + current - offset; }

    /// The program begins anew on these totals; it knows no session.
    void begin(Amount totals);
    /// A tick that finds nothing up.
    void seeNothing();
    /// A tick begins, these are listed. Sessions that are over for good are folded; sessions of the
    /// run before go on; one that cannot be read then does so when it has its turn.
    void beginTick(const std::vector<Session>& listed);
    /// It could read everything.
    void endTick();
    /// A connected session is read; its figures are the current ones.
    void read(const Session& session, const std::vector<Session>& listed);
    /// It is read before it is hung up; the current figures stay another's.
    void note(const Session& session, const std::vector<Session>& listed);
    /// The current figures go into the totals.
    void fold();
    /// They do since that one is listed and not connected.
    void foldAt(const Session& notConnected);
    void reset();
    /// What it has carried does not count, nor of those that are read later in this tick.
    void decline();
    /// The program itself hung up, or got that handle from its own dial.
    void hungUp(std::uint32_t handle) { hungUp_.insert(handle); }
    void dialled(std::uint32_t handle) { dialled_ = handle; }
    /// It dialled what is listed already, and got the handle of that. What is up goes on; what is
    /// up is told by the readings, and before the first tick of a run that goes on by the list.
    void dialledAgain(const Session& session) {
        const bool isUp = session.connected && (known(session.handle) != nullptr || hasFormer());
        dialled_ = isUp ? dialled_ : session.handle;
    }
    /// A session of that entry may have got this one's handle since it was read.
    bool mayBeRenumbered(const Session& session) const;
    /// The program ends: what the sessions beside the current one count is kept.
    void keepOthers();

    /// Whether anybody could tell from the counters which session this is, and what it has gained.
    bool tellable(const Session& session, const std::vector<Session>& listed) const;

    /// A session as it was last read, and its figures since it was first read.
    struct Known {
        Session last;
        Amount figures;
        Amount offset;
        Amount counted;          ///< and in no total yet
        std::int64_t readAt = 0; ///< when its counters were first found so
        int mark = 0;            ///< the session by the service's word, 0 where it has none
        int place = 0;           ///< they are kept in the order in which they became known
        bool renumbered = false; ///< not read again since it has another handle
        bool resumed = false;    ///< found by this tick, known from the run before
        bool inTotals = false;   ///< what counts of it has not been taken out of the totals yet

        /// Nobody who reads what is kept sees another.
        bool sameAs(const Known& other) const {
            return last.id == other.last.id && last.handle == other.last.handle &&
                   last.carried == other.last.carried && last.clears == other.last.clears &&
                   figures == other.figures && offset == other.offset && counted == other.counted &&
                   mark == other.mark;
        }
    };
    /// What the next run needs to go on.
    struct Kept {
        Amount all; ///< with what counts of the sessions
        std::map<std::string, Amount> carried = {};
        std::vector<Known> sessions;
    };

    /// The service tells now what it knows the sessions by. While the user is asked about the
    /// current one, that is as if it had not been found.
    Kept kept(const Line& line, bool asking) const;
    /// Begins on what a run before has left; this one knows no session.
    void goOn(const Kept& before);
    bool isResumed(std::uint32_t handle) const;
    bool hasResumed() const;
    /// A tick that has read everything has yet to look for sessions of the run before.
    bool hasFormer() const { return !former_.empty(); }

    bool knowsSessions() const { return !known_.empty(); }

    bool sessionOver = false; ///< one has ended since this was last taken back

private:
    const Known* known(std::uint32_t handle) const;
    void over(std::uint32_t handle);
    bool mayFollow(const Known& before, const Session& session,
                   const std::vector<Session>& listed) const;
    enum class Match { No, Close, Yes };
    Match match(const Known& former, const Session& session, bool isRead) const;
    Match matchByReading(const Known& former, const Session& session) const;
    void resume(const Session& session, bool isRead);
    void lookForFormer(const Session& session);
    static bool isTold(const Known& before, const Session& now, bool renumbered);
    static Amount firstReading(const Session& session);
    static Amount gain(const Session& before, const Session& now);

    std::map<std::uint32_t, Known> known_;
    std::vector<Known> former_; ///< of the run before
    std::uint32_t countedHandle_ = 0;
    std::uint32_t dialled_ = 0; ///< by the program, and not found up yet
    std::set<std::uint32_t> hungUp_;
    std::set<std::uint32_t> unsure_; ///< in this tick, they could not be looked at
    bool declining_ = false;
    std::string lastLine_; ///< the last that was read, and what was new of it
    Amount lastGain_;
    int places_ = 0;
};

} // namespace tarvik::soak
