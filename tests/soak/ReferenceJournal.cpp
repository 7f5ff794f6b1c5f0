#include "soak/ReferenceJournal.h"

#include <algorithm>

namespace tarvik::soak {

namespace {

constexpr std::int64_t betweenWrites = 5;
constexpr std::int64_t betweenFlushes = 30;
constexpr std::int64_t longestPause = 600;

} // namespace

bool Saying::sameAs(const Saying& other) const {
    const auto& ours = counts.sessions;
    const auto& theirs = other.counts.sessions;
    return counts.all == other.counts.all && settings == other.settings &&
           tickerBase == other.tickerBase && standsOn.sameAs(other.standsOn) &&
           resetIsAnnounced == other.resetIsAnnounced && ended == other.ended &&
           ledger == other.ledger &&
           std::equal(ours.begin(), ours.end(), theirs.begin(), theirs.end(),
                      [](const ReferenceTally::Known& a, const ReferenceTally::Known& b) {
                          return a.sameAs(b);
                      });
}

/// What a flush that failed has left unwritten, a later one leaves too, and does not tell.
bool ReferenceJournal::flush() {
    if (trouble == JournalTrouble::Flush) {
        isTakenForClean_ = true;
    }
    if (flushesFail()) {
        known_.reset(); // so it is written anew
        return false;
    }
    onDisk_ = isTakenForClean_ ? onDisk_ : says_;
    isUnflushed_ = false;
    return true;
}

bool ReferenceJournal::isDue(std::int64_t seconds) const {
    const auto since = [&](std::optional<std::int64_t> moment, std::int64_t least) {
        return !moment || seconds - *moment >= least;
    };
    return since(lookedAt_, betweenWrites) || (isUnflushed_ && since(flushedAt_, betweenFlushes));
}

/// Whoever can open it makes sure that what it says is on the disk.
ReferenceJournal::Found ReferenceJournal::take(std::int64_t seconds) {
    isKept_ = isOpen_ = isUnflushed_ = false;
    known_.reset();
    lookedAt_.reset();
    flushedAt_.reset();
    notMadeBefore_ = pause_ = 0;
    if (isThere_ && opensFail()) {
        lookedAt_ = seconds;
        return Found::OutOfReach;
    }
    isKept_ = true;
    isOpen_ = isThere_;
    if (!isThere_ || !says_) {
        return Found::Nothing;
    }
    known_ = says_;
    isUnflushed_ = true;
    flush();
    return Found::Saying;
}

void ReferenceJournal::putAside() {
    isThere_ = isOpen_ = isUnflushed_ = isTakenForClean_ = false;
    known_.reset();
    says_.reset();
    onDisk_.reset();
}

/// One that cannot be made is tried again later and later. A program that is quicker leaves it
/// blank.
bool ReferenceJournal::make(std::int64_t seconds, bool atOnce) {
    if (seconds < notMadeBefore_ && !atOnce) {
        return false;
    }
    isThere_ = isThere_ || trouble == JournalTrouble::Held;
    if (trouble == JournalTrouble::Full || opensFail()) {
        notMadeBefore_ = seconds + pause_;
        pause_ = std::clamp(2 * pause_, betweenWrites, longestPause);
        return false;
    }
    isThere_ = isOpen_ = true;
    notMadeBefore_ = pause_ = 0;
    return true;
}

/// Written after five seconds, flushed after thirty; both at once where that is asked for.
bool ReferenceJournal::keep(const Saying& saying, std::int64_t seconds, bool atOnce) {
    if (!isKept_ || !(atOnce || isDue(seconds))) {
        return true;
    }
    lookedAt_ = seconds;
    if (!known_ || !saying.sameAs(*known_)) {
        if (!isOpen_ && !make(seconds, atOnce)) {
            return false;
        }
        if (writesFail()) {
            return false;
        }
        says_ = known_ = saying;
        isUnflushed_ = true;
        isTakenForClean_ = false;
    }
    if (isUnflushed_ && (atOnce || !flushedAt_ || seconds - *flushedAt_ >= betweenFlushes)) {
        flushedAt_ = seconds;
        return flush();
    }
    return true;
}

void ReferenceJournal::tellsOfLedger(int writes) {
    for (std::optional<Saying>* one : {&says_, &known_, &onDisk_}) {
        if (*one) {
            (*one)->ledger = writes;
        }
    }
}

bool ReferenceJournal::deleteIt(bool refused) {
    if (isOpen_ && refused) {
        return false;
    }
    if (isOpen_) {
        putAside();
    }
    return true;
}

} // namespace tarvik::soak
