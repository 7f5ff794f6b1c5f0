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
    void seeNothing();
    /// A tick begins, these are listed. Sessions that are over for good are folded.
    void beginTick(const std::vector<Session>& listed);
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
    bool tellable(const Session& session, const std::vector<Session>& listed) const;

private:
    /// A session as it was last read, and its figures since it was first read in this run.
    struct Known {
        Session last;
        Amount figures;
        Amount offset;
        Amount counted;          ///< and in no total yet
        bool renumbered = false; ///< not read again since it has another handle
    };

    const Known* known(std::uint32_t handle) const;
    void over(std::uint32_t handle);
    bool mayFollow(const Known& before, const Session& session,
                   const std::vector<Session>& listed) const;
    static bool isTold(const Known& before, const Session& now, bool renumbered);
    static Amount firstReading(const Session& session);
    static Amount gain(const Session& before, const Session& now);

    std::map<std::uint32_t, Known> known_;
    std::uint32_t countedHandle_ = 0;
    std::uint32_t dialled_ = 0; ///< by the program, and not found up yet
    std::set<std::uint32_t> hungUp_;
    bool declining_ = false;
};

} // namespace tarvik::soak
