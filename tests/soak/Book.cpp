#include "soak/Book.h"

#include <algorithm>

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

/// Under the same handle another session is told by its shorter time; close to the end of that
/// counter only by its frames.
bool followerIsTold(const Session& before, const Session& now) {
    if (now.wide) {
        return now.carried.time < before.carried.time;
    }
    const RAS_STATS last = before.counters();
    const RAS_STATS next = now.counters();
    return fell(last.dwConnectDuration, next.dwConnectDuration) &&
           (next.dwConnectDuration - last.dwConnectDuration > day ||
            (rcvdFramesFell(last, next) && sentFramesFell(last, next)));
}

/// A counter passes its end at most once between two readings, and time only within a day.
bool gainIsTold(const Session& before, const Session& now) {
    const RAS_STATS last = before.counters();
    const RAS_STATS next = now.counters();
    const Amount more = now.carried - before.carried;
    if (more.time >= counterEnd ||
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

bool isListed(const std::vector<Session>& listed, std::uint32_t handle) {
    return std::any_of(listed.begin(), listed.end(),
                       [&](const Session& one) { return one.handle == handle; });
}

} // namespace

void Book::begin(Amount totals) {
    *this = Book();
    finished = totals;
}

const Book::Known* Book::known(std::uint32_t handle) const {
    const auto found = known_.find(handle);
    return found == known_.end() ? nullptr : &found->second;
}

const Book::Known* Book::counted() const {
    return countedId_ == 0 ? nullptr : known(countedHandle_);
}

void Book::seeNothing() {
    fold();
    known_.clear();
    pending_.reset();
    countedId_ = 0;
}

/// Whoever stands where the counted session stood: under its handle, or of its entry and new.
const Session* Book::follower(const std::vector<Session>& listed) const {
    const Known* const last = counted();
    const auto found = std::find_if(listed.begin(), listed.end(), [&](const Session& one) {
        if (isListed(listed, countedHandle_)) {
            return one.handle == countedHandle_;
        }
        return last != nullptr && one.entry == last->last.entry && known(one.handle) == nullptr;
    });
    return found == listed.end() ? nullptr : &*found;
}

void Book::beginTick(const std::vector<Session>& listed) {
    pending_.reset();
    const Session* const next = countedId_ == 0 ? nullptr : follower(listed);
    if (next == nullptr) {
        fold();
        countedId_ = 0;
    } else if (next->id != countedId_) {
        pending_ = Pending{.follower = next->id, .counted = current - offset};
    }
    if (next != nullptr && next->handle != countedHandle_) {
        known_[next->handle] = known_.at(countedHandle_);
        known_[next->handle].renumbered = true;
        countedHandle_ = next->handle;
    }
    std::erase_if(known_, [&](const auto& each) { return !isListed(listed, each.first); });
}

Amount Book::firstReading(const Session& session) {
    if (session.wide) {
        return session.carried;
    }
    const RAS_STATS counters = session.counters();
    return {.rcvd = counters.dwBytesRcved,
            .sent = counters.dwBytesXmited,
            .time = counters.dwConnectDuration};
}

Amount Book::gain(const Session& before, const Session& now) {
    const Amount more = now.carried - before.carried;
    if (now.clears == before.clears) {
        return more;
    }
    // What passed between the last reading and the clearing nobody has seen.
    const Amount told = now.carried - now.cleared;
    return {.rcvd = told.rcvd, .sent = told.sent, .time = more.time};
}

void Book::read(const Session& session) {
    if (pending_ && pending_->follower == session.id) {
        if (countedHandle_ == session.handle) {
            fold();
        } else {
            finished = finished + pending_->counted;
            offset = {};
        }
        pending_.reset();
    }
    const Known* const before = known(session.handle);
    const bool same = before != nullptr && before->last.id == session.id;
    current = same && !session.wide ? before->figures + gain(before->last, session)
                                    : firstReading(session);
    known_[session.handle] = {.last = session, .figures = current};
    countedId_ = session.id;
    countedHandle_ = session.handle;
}

void Book::fold() {
    finished = total();
    current = {};
    offset = {};
}

void Book::reset() {
    finished = current = offset = {};
    if (pending_) {
        pending_->counted = {};
    }
}

bool Book::isTold(const Known& before, const Session& now, bool renumbered) {
    if (before.last.id != now.id) {
        return renumbered ? anyFell(before.last, now) : followerIsTold(before.last, now);
    }
    return now.wide || (gainIsTold(before.last, now) && !(renumbered && anyFell(before.last, now)));
}

bool Book::tellable(const Session& session, const std::vector<Session>& listed) const {
    if (const Known* const before = known(session.handle)) {
        return isTold(*before, session, before->renumbered);
    }
    const Known* const last = counted();
    return last == nullptr || isListed(listed, countedHandle_) ||
           last->last.entry != session.entry || isTold(*last, session, true);
}

} // namespace tarvik::soak
