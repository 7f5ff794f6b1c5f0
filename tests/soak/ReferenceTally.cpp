#include "soak/ReferenceTally.h"

#include <algorithm>
#include <cstdlib>

namespace tarvik::soak {

namespace {

constexpr std::int64_t counterEnd = 4'294'967'296;
constexpr std::int64_t day = 86'400'000;

bool fell(std::uint32_t before, std::uint32_t now) {
    return now < before;
}

bool rcvdFramesFell(const RAS_STATS& before, const RAS_STATS& now) {
    return fell(before.dwBytesRcved, now.dwBytesRcved) &&
           fell(before.dwFramesRcved, now.dwFramesRcved);
}

bool sentFramesFell(const RAS_STATS& before, const RAS_STATS& now) {
    return fell(before.dwBytesXmited, now.dwBytesXmited) &&
           fell(before.dwFramesXmited, now.dwFramesXmited);
}

/// Frames carry 64 KiB each at most; without them a fall of bytes tells of a pass of the end only
/// when less than half the range is gained by it.
bool passes(std::uint32_t before, std::uint32_t now, std::uint32_t framesBefore,
            std::uint32_t framesNow, bool framed) {
    const std::int64_t gain = (counterEnd + now - before) % counterEnd;
    const std::int64_t frames = (counterEnd + framesNow - framesBefore) % counterEnd;
    return framed ? gain <= (frames + 1) * 65'536 : gain < counterEnd / 2;
}

bool nothingCanHaveCarried(const RAS_STATS& last, const RAS_STATS& next) {
    const bool framed =
        last.dwFramesRcved + last.dwFramesXmited + next.dwFramesRcved + next.dwFramesXmited != 0;
    const bool rcvdIsFine = !fell(last.dwBytesRcved, next.dwBytesRcved) ||
                            passes(last.dwBytesRcved, next.dwBytesRcved, last.dwFramesRcved,
                                   next.dwFramesRcved, framed);
    const bool sentIsFine = !fell(last.dwBytesXmited, next.dwBytesXmited) ||
                            passes(last.dwBytesXmited, next.dwBytesXmited, last.dwFramesXmited,
                                   next.dwFramesXmited, framed);
    const bool cleared = rcvdFramesFell(last, next) || sentFramesFell(last, next);
    return !cleared && (!rcvdIsFine || !sentIsFine);
}

/// Under the same handle another session is told by its shorter time, close to the end of that
/// counter only by its frames, and by fewer bytes that nothing can have carried.
bool followerIsTold(const Session& before, const Session& now) {
    if (now.wide) {
        return now.carried.time < before.carried.time;
    }
    const RAS_STATS last = before.counters();
    const RAS_STATS next = now.counters();
    if (nothingCanHaveCarried(last, next)) {
        return true;
    }
    return fell(last.dwConnectDuration, next.dwConnectDuration) &&
           (next.dwConnectDuration - last.dwConnectDuration > day ||
            (rcvdFramesFell(last, next) && sentFramesFell(last, next)));
}

/// A counter passes its end at most once between two readings, and time only within a day.
bool gainIsTold(const Session& before, const Session& now) {
    const RAS_STATS last = before.counters();
    const RAS_STATS next = now.counters();
    const Amount more = now.carried - before.carried;
    if (more.time >= counterEnd || nothingCanHaveCarried(last, next) ||
        (fell(last.dwConnectDuration, next.dwConnectDuration) && more.time > day)) {
        return false;
    }
    if (now.clears != before.clears) {
        const Amount told = now.carried - now.cleared;
        // Time that starts again with everything else is another session's.
        if (followerIsTold(before, now)) {
            return false;
        }
        const bool untouched = last.dwBytesRcved == 0 && last.dwBytesXmited == 0;
        return told.rcvd < counterEnd && told.sent < counterEnd &&
               (untouched || rcvdFramesFell(last, next) || sentFramesFell(last, next));
    }
    return more.rcvd < counterEnd && more.sent < counterEnd;
}

/// Under a new handle it is another session when any figure is smaller.
bool anyFell(const Session& before, const Session& now) {
    if (now.wide) {
        return now.carried.rcvd < before.carried.rcvd || now.carried.sent < before.carried.sent ||
               now.carried.time < before.carried.time;
    }
    const RAS_STATS last = before.counters();
    const RAS_STATS next = now.counters();
    return fell(last.dwConnectDuration, next.dwConnectDuration) ||
           fell(last.dwBytesRcved, next.dwBytesRcved) ||
           fell(last.dwBytesXmited, next.dwBytesXmited);
}

bool sameReading(const Session& before, const Session& now) {
    const RAS_STATS last = before.counters();
    const RAS_STATS next = now.counters();
    return last.dwBytesRcved == next.dwBytesRcved && last.dwBytesXmited == next.dwBytesXmited &&
           last.dwFramesRcved == next.dwFramesRcved && last.dwFramesXmited == next.dwFramesXmited &&
           last.dwConnectDuration == next.dwConnectDuration;
}

bool isListed(const std::vector<Session>& listed, std::uint32_t handle) {
    return std::any_of(listed.begin(), listed.end(),
                       [&](const Session& one) { return one.handle == handle; });
}

} // namespace

void ReferenceTally::begin(Amount totals) {
    ReferenceTally begun;
    begun.renumbers = renumbers;
    begun.now = now;
    begun.knownByMark = knownByMark;
    begun.finished = totals;
    begun.carried = carried;
    *this = begun;
}

const ReferenceTally::Known* ReferenceTally::known(std::uint32_t handle) const {
    const auto found = known_.find(handle);
    return found == known_.end() ? nullptr : &found->second;
}

void ReferenceTally::goOn(const Kept& before) {
    const auto hungUp = hungUp_;
    const std::uint32_t dialled = dialled_;
    begin(before.all);
    former_ = before.sessions;
    carried = before.carried;
    hungUp_ = hungUp;
    dialled_ = dialled;
}

ReferenceTally::Kept ReferenceTally::kept(const Line& line, bool asking) const {
    Kept result{.all = asking ? finished : total(), .carried = carried, .sessions = former_};
    if (asking) {
        result.carried[lastLine_] = result.carried[lastLine_] - lastGain_;
    }
    std::map<int, std::uint32_t> handles;
    for (const auto& [handle, one] : known_) {
        handles[one.place] = handle;
    }
    for (const auto& [place, handle] : handles) {
        const Known& one = known_.at(handle);
        if (handle == countedHandle_ && asking) {
            continue;
        }
        if (handle != countedHandle_ && !one.inTotals) {
            result.all = result.all + one.counted;
        }
        Known& kept = result.sessions.emplace_back(one);
        kept.resumed = kept.inTotals = kept.renumbered = false;
        kept.mark = hungUp_.contains(handle) ? 0 : line.markOf(handle);
    }
    return result;
}

bool ReferenceTally::mayBeRenumbered(const Session& session) const {
    return known(session.handle) == nullptr &&
           std::any_of(known_.begin(), known_.end(),
                       [&](const auto& each) { return each.second.last.entry == session.entry; });
}

bool ReferenceTally::isResumed(std::uint32_t handle) const {
    const Known* const one = known(handle);
    return one != nullptr && one->resumed;
}

bool ReferenceTally::hasResumed() const {
    return std::any_of(known_.begin(), known_.end(),
                       [](const auto& each) { return each.second.resumed; });
}

void ReferenceTally::endTick() {
    former_.clear();
    for (auto& [handle, one] : known_) {
        one.resumed = false;
    }
}

/// Where the service had a word for it, that decides.
ReferenceTally::Match ReferenceTally::match(const Known& former, const Session& session,
                                            bool isRead) const {
    if (former.mark == 0 || former.last.entry != session.entry) {
        return isRead ? matchByReading(former, session) : Match::No;
    }
    const bool same = session.marked && session.connected && session.id == former.mark;
    return same ? Match::Yes : Match::No;
}

/// Begun at the same moment, as far as a clock of seconds tells, and no counter has fallen. What
/// lies at the edge nobody defines.
ReferenceTally::Match ReferenceTally::matchByReading(const Known& former,
                                                     const Session& session) const {
    const RAS_STATS last = former.last.counters();
    const RAS_STATS next = session.counters();
    if (!session.connected || former.last.entry != session.entry ||
        fell(last.dwBytesRcved, next.dwBytesRcved) ||
        fell(last.dwBytesXmited, next.dwBytesXmited) ||
        fell(last.dwFramesRcved, next.dwFramesRcved) ||
        fell(last.dwFramesXmited, next.dwFramesXmited) ||
        fell(last.dwConnectDuration, next.dwConnectDuration)) {
        return Match::No;
    }
    const std::int64_t lived =
        std::int64_t{next.dwConnectDuration} - std::int64_t{last.dwConnectDuration};
    const std::int64_t apart = std::abs(lived - (now - former.readAt) * 1'000);
    if (apart > 2'000 && apart < 4'000) {
        return Match::Close;
    }
    return apart <= 2'000 ? Match::Yes : Match::No;
}

/// It may be one of them.
void ReferenceTally::resume(const Session& session, bool isRead) {
    const auto former = std::find_if(former_.begin(), former_.end(), [&](const Known& one) {
        return match(one, session, isRead) == Match::Yes;
    });
    if (former == former_.end()) {
        return;
    }
    Known& found = known_[session.handle] = *former;
    found.last.handle = session.handle;
    found.resumed = found.inTotals = true;
    found.place = ++places_;
    knownByMark += former->mark != 0 ? 1 : 0;
    former_.erase(former);
}

/// The service's word comes first. Read is what may be one of those it has no word for: its state
/// first, its counters only where it is connected.
void ReferenceTally::lookForFormer(const Session& session) {
    using Fails = Session::Fails;
    resume(session, false);
    if (known_.contains(session.handle) ||
        std::none_of(former_.begin(), former_.end(), [&](const Known& one) {
            return one.mark == 0 && one.last.entry == session.entry;
        })) {
        return;
    }
    const auto fails = [&](Fails what) {
        const bool once = failsOnce == what;
        failsOnce = once ? Fails::Nothing : failsOnce;
        return once || session.fails == what;
    };
    const bool failed = fails(Fails::Status) || (session.connected && fails(Fails::Statistics));
    resume(session, !failed);
    if (failed) {
        unsure_.insert(session.handle);
    }
}

void ReferenceTally::seeNothing() {
    beginTick({});
    fold();
}

/// What counted of the session that stood there goes into the totals.
void ReferenceTally::over(std::uint32_t handle) {
    sessionOver = true;
    if (handle == countedHandle_) {
        fold();
    } else if (!known_.at(handle).inTotals) {
        finished = finished + known_.at(handle).counted;
    }
}

/// A session that has come may be the one that is gone from the list, under another handle.
bool ReferenceTally::mayFollow(const Known& before, const Session& session,
                               const std::vector<Session>& listed) const {
    const std::uint32_t handle = before.last.handle;
    return renumbers && !isListed(listed, handle) && hungUp_.count(handle) == 0 &&
           session.entry == before.last.entry && session.handle != dialled_ &&
           known(session.handle) == nullptr;
}

void ReferenceTally::beginTick(const std::vector<Session>& listed) {
    declining_ = false;
    std::map<std::uint32_t, Known> next;
    for (const auto& [handle, one] : known_) {
        const auto follower =
            std::find_if(listed.begin(), listed.end(), [&, &last = one](const Session& session) {
                return mayFollow(last, session, listed);
            });
        if (isListed(listed, handle) && handle != dialled_) {
            next[handle] = one;
        } else if (follower != listed.end()) {
            next[follower->handle] = one;
            next[follower->handle].last.handle = follower->handle;
            next[follower->handle].renumbered = true;
            countedHandle_ = countedHandle_ == handle ? follower->handle : countedHandle_;
        } else {
            over(handle);
            countedHandle_ = countedHandle_ == handle ? 0 : countedHandle_;
        }
    }
    known_ = next;
    hungUp_.clear();
    unsure_.clear();
    for (const Session& one : listed) {
        if (one.handle != dialled_ && known(one.handle) == nullptr) {
            lookForFormer(one);
        }
    }
    dialled_ = isListed(listed, dialled_) ? 0 : dialled_;
}

Amount ReferenceTally::firstReading(const Session& session) {
    if (session.wide) {
        return session.carried;
    }
    const RAS_STATS counters = session.counters();
    return {.rcvd = counters.dwBytesRcved,
            .sent = counters.dwBytesXmited,
            .time = counters.dwConnectDuration};
}

Amount ReferenceTally::gain(const Session& before, const Session& now) {
    const Amount more = now.carried - before.carried;
    if (now.clears == before.clears) {
        return more;
    }
    // What passed between the last reading and the clearing nobody has seen.
    const Amount told = now.carried - now.cleared;
    return {.rcvd = told.rcvd, .sent = told.sent, .time = more.time};
}

void ReferenceTally::note(const Session& session, const std::vector<Session>& listed) {
    if (unsure_.erase(session.handle) > 0) {
        resume(session, true);
    }
    // What counted of sessions that go on counts with them again, as soon as one of all is read.
    for (auto& [handle, one] : known_) {
        finished = one.inTotals ? finished - one.counted : finished;
        one.inTotals = false;
    }
    const Known* before = known(session.handle);
    const int place = before != nullptr ? before->place : ++places_;
    if (before != nullptr && before->last.id != session.id) {
        over(session.handle);
        before = nullptr;
    }
    const bool within = std::any_of(listed.begin(), listed.end(),
                                    [&](const Session& one) { return one.id == session.inside; });
    Known next{.last = session,
               .figures = firstReading(session),
               .offset = {},
               .counted = {},
               .readAt = now,
               .place = place};
    if (before != nullptr) {
        next.resumed = before->resumed;
        next.figures = session.wide ? next.figures : before->figures + gain(before->last, session);
        next.offset = before->offset;
        next.readAt = sameReading(before->last, session) ? before->readAt : now;
    }
    lastLine_ = (within ? "within " : "") + session.entry;
    lastGain_ = before != nullptr ? next.figures - before->figures : next.figures;
    lastGain_ = declining_ && !next.resumed ? Amount() : lastGain_;
    carried[lastLine_] = carried[lastLine_] + lastGain_;
    // What a line carries within another counts there.
    next.offset = within || (declining_ && !next.resumed) ? next.figures : next.offset;
    next.counted = next.figures - next.offset;
    known_[session.handle] = next;
}

void ReferenceTally::read(const Session& session, const std::vector<Session>& listed) {
    note(session, listed);
    countedHandle_ = session.handle;
    current = known_.at(session.handle).figures;
    offset = known_.at(session.handle).offset;
}

void ReferenceTally::fold() {
    finished = total();
    current = {};
    offset = {};
    if (const auto counted = known_.find(countedHandle_); counted != known_.end()) {
        counted->second.offset = counted->second.counted = {};
    }
}

void ReferenceTally::foldAt(const Session& notConnected) {
    sessionOver = sessionOver || (notConnected.handle == countedHandle_ && current != offset);
    fold();
}

void ReferenceTally::reset() {
    finished = current = offset = {};
    for (auto& [handle, one] : known_) {
        one.offset = one.counted = {};
    }
    for (Known& one : former_) {
        one.offset = one.counted = {};
    }
}

void ReferenceTally::decline() {
    declining_ = true;
    carried[lastLine_] = carried[lastLine_] - lastGain_;
    offset = current;
    Known& declined = known_.at(countedHandle_);
    declined.offset = declined.figures;
    declined.counted = {};
}

void ReferenceTally::keepOthers() {
    for (auto& [handle, one] : known_) {
        if (handle != countedHandle_) {
            finished = one.inTotals ? finished : finished + one.counted;
            one.inTotals = false;
            one.offset = one.figures;
            one.counted = {};
        }
    }
}

bool ReferenceTally::isTold(const Known& before, const Session& now, bool renumbered) {
    if (before.last.id != now.id) {
        return renumbered ? anyFell(before.last, now) : followerIsTold(before.last, now);
    }
    return now.wide || (gainIsTold(before.last, now) && !(renumbered && anyFell(before.last, now)));
}

bool ReferenceTally::tellable(const Session& session, const std::vector<Session>& listed) const {
    if (const Known* const before = known(session.handle)) {
        return isTold(*before, session, before->renumbered);
    }
    const bool doubtful = session.handle != dialled_ &&
                          std::any_of(former_.begin(), former_.end(), [&](const Known& one) {
                              const Match found = match(one, session, true);
                              return found == Match::Close ||
                                     (found == Match::Yes && (one.last.id != session.id ||
                                                              !gainIsTold(one.last, session)));
                          });
    if (doubtful) {
        return false;
    }
    return std::all_of(known_.begin(), known_.end(), [&](const auto& each) {
        return !mayFollow(each.second, session, listed) || isTold(each.second, session, true);
    });
}

} // namespace tarvik::soak
