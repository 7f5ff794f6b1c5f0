#pragma once

#include "soak/Line.h"

#include <map>
#include <optional>
#include <vector>

namespace tarvik::soak {

/// What must have been counted: the rules stated a second time, on sessions whose identity is known
/// and in numbers without an end.
class Book {
public:
    Amount finished;
    Amount current; ///< of the session whose figures are taken
    Amount offset;  ///< of it, what was declined

    Amount total() const { return finished + current - offset; }

    /// The program begins anew on these totals; it knows no session.
    void begin(Amount totals);
    /// A tick that finds nothing up.
    void seeNothing();
    /// A tick begins, these are listed. A counted session that is over for good is folded.
    void beginTick(const std::vector<Session>& listed);
    /// A connected session is read; its figures are the current ones.
    void read(const Session& session);
    /// The current figures go into the totals.
    void fold();
    void reset();
    void decline() { offset = current; }

    /// Whether anybody could tell from the counters which session this is, and what it has gained.
    bool tellable(const Session& session, const std::vector<Session>& listed) const;

private:
    /// A session as it was last read, and its figures since it was first read in this run.
    struct Known {
        Session last;
        Amount figures;
        bool renumbered = false; ///< not read again since it has another handle
    };
    /// The counted session is over, but only the reading of the one that follows tells.
    struct Pending {
        int follower = 0;
        Amount counted;
    };

    const Known* known(std::uint32_t handle) const;
    const Known* counted() const;
    const Session* follower(const std::vector<Session>& listed) const;
    static bool isTold(const Known& before, const Session& now, bool renumbered);
    static Amount firstReading(const Session& session);
    static Amount gain(const Session& before, const Session& now);

    std::map<std::uint32_t, Known> known_;
    std::uint32_t countedHandle_ = 0;
    int countedId_ = 0; ///< 0 when nothing is counted
    std::optional<Pending> pending_;
};

} // namespace tarvik::soak
