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

    Amount total() const { return finished + current - offset; }

    /// The program begins anew on these totals; it knows no session.
    void begin(Amount totals);
    /// A tick that finds nothing up.
    void seeNothing(std::int64_t clock);
    /// A tick begins, these are listed. Sessions that are over for good are folded; sessions of the
    /// run before go on.
    void beginTick(const std::vector<Session>& listed, std::int64_t clock);
    /// It could read everything.
    void endTick();
    /// A connected session is read; its figures are the current ones.
    void read(const Session& session, const std::vector<Session>& listed);
    /// It is read before it is hung up; the current figures stay another's.
    void note(const Session& session, const std::vector<Session>& listed);
    /// The current figures go into the totals.
    void fold();
    void reset();
    /// What it has carried does not count, nor of those that are read later in this tick.
    void decline();
    /// The program itself hung up, or got that handle from its own dial.
    void hungUp(std::uint32_t handle) { hungUp_.insert(handle); }
    void dialled(std::uint32_t handle) { dialled_ = handle; }
    /// The program ends: what the sessions beside the current one count is kept.
    void keepOthers();

    /// Whether anybody could tell from the counters which session this is, and what it has gained.
    bool tellable(const Session& session, const std::vector<Session>& listed,
                  std::int64_t clock) const;

    /// A session as it was last read, and its figures since it was first read.
    struct Known {
        Session last;
        Amount figures;
        Amount offset;
        Amount counted;          ///< and in no total yet
        bool renumbered = false; ///< not read again since it has another handle
        bool resumed = false;    ///< found by this tick, known from the run before
        bool inTotals = false;   ///< what counts of it has not been taken out of the totals yet

        /// Nobody who reads what is kept sees another.
        bool sameAs(const Known& other) const {
            return last.id == other.last.id && last.handle == other.last.handle &&
                   last.carried == other.last.carried && last.clears == other.last.clears &&
                   figures == other.figures && offset == other.offset && counted == other.counted;
        }
    };
    /// What the next run needs to go on.
    struct Kept {
        Amount all; ///< with what counts of the sessions
        std::vector<Known> sessions;
        std::int64_t moment = 0; ///< of their readings, on the user's clock
    };

    /// `moment` is that of the last reading, if it was in this run.
    Kept kept(std::int64_t moment) const;
    /// Begins on what a run before has left.
    void goOn(const Kept& before);
    bool isResumed(std::uint32_t handle) const;
    bool hasResumed() const;
    /// A tick that has read everything has yet to look for sessions of the run before.
    bool hasFormer() const { return !former_.empty(); }
    bool hasSessions() const { return !known_.empty(); }

    bool sessionOver = false; ///< one has ended since this was last taken back

private:
    const Known* known(std::uint32_t handle) const;
    void over(std::uint32_t handle);
    bool mayFollow(const Known& before, const Session& session,
                   const std::vector<Session>& listed) const;
    enum class Match { No, Close, Yes };
    Match match(const Known& former, const Session& session, std::int64_t clock) const;
    void resume(const Session& session, std::int64_t clock);
    static bool isTold(const Known& before, const Session& now, bool renumbered);
    static Amount firstReading(const Session& session);
    static Amount gain(const Session& before, const Session& now);

    std::map<std::uint32_t, Known> known_;
    std::vector<Known> former_; ///< of the run before
    std::int64_t formerMoment_ = 0;
    std::uint32_t countedHandle_ = 0;
    std::uint32_t dialled_ = 0; ///< by the program, and not found up yet
    std::set<std::uint32_t> hungUp_;
    bool declining_ = false;
};

} // namespace tarvik::soak
