#include "journal/Journal.h"

#include "ports/Clock.h"
#include "ports/Files.h"
#include "ports/Platform.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvik {

namespace {

using Outcome = Holding::Outcome;

constexpr std::size_t fileSize = journalPlaces * journalPlace;

bool hasPassed(std::uint64_t since, std::uint64_t now, std::uint64_t interval) {
    return since == 0 || now - since >= interval;
}

/// Somebody has written to it. One that cannot be read is taken for the new one that it mostly is.
bool holdsSomething(HeldFile& file) {
    std::string bytes;
    return !file.read(bytes) && bytes.find_first_not_of('\0') != std::string::npos;
}

/// A power cut leaves one place at most that was begun where none is whole: the first entry's. Two
/// of them held something once.
JournalFinding::Kind kindWithoutEntry(const std::vector<JournalPlace::Kind>& places) {
    using Place = JournalPlace::Kind;
    const auto count = [&](Place kind) { return std::count(places.begin(), places.end(), kind); };
    if (count(Place::Foreign) > 0) {
        return JournalFinding::Kind::Refused;
    }
    if (count(Place::Unsure) > 0) {
        return JournalFinding::Kind::OtherVersion;
    }
    return count(Place::Impossible) > 0 || count(Place::Torn) > 1 ? JournalFinding::Kind::Damaged
                                                                  : JournalFinding::Kind::Nothing;
}

} // namespace

Journal& journal() {
    return JournalScope::get("no journal is in place");
}

JournalFinding Journal::take(const std::string& path, const std::string& iniFile) {
    JournalFinding finding;
    *this = Journal();
    path_ = path;
    iniFile_ = iniFile;
    Holding held = platform().files.hold(path);
    file_ = std::move(held.file);
    std::string bytes;
    if (held.outcome == Outcome::Busy) {
        finding.kind = JournalFinding::Kind::Busy;
    } else if (held.outcome == Outcome::Refused) {
        finding.kind = JournalFinding::Kind::Refused;
    } else if (held.outcome == Outcome::Failed || (file_ && file_->read(bytes))) {
        finding.kind = JournalFinding::Kind::Unread;
    } else if (file_) {
        look(bytes, finding);
    }
    inUse_ = finding.kind == JournalFinding::Kind::Nothing ||
             finding.kind == JournalFinding::Kind::Entry ||
             finding.kind == JournalFinding::Kind::Damaged;
    if (!inUse_) {
        release();
        lookedAt_ = platform().clock.steadyMilliseconds();
    }
    return finding;
}

/// The newest whole entry counts. What is neither that nor the beginning of a journal is left
/// alone.
void Journal::look(const std::string& bytes, JournalFinding& finding) {
    using Place = JournalPlace::Kind;
    std::vector<Place> places;
    std::uint64_t before = 0;
    for (std::size_t i = 0; i < journalPlaces; ++i) {
        const std::size_t begin = std::min(i * journalPlace, bytes.size());
        JournalPlace found = readPlace(std::string_view(bytes).substr(begin, journalPlace));
        places.push_back(found.kind);
        if (found.kind == Place::OtherVersion) {
            finding.kind = JournalFinding::Kind::OtherVersion;
            return;
        }
        if (found.kind == Place::Whole && (lastPlace_ == nowhere || found.number > number_)) {
            before = std::exchange(number_, found.number);
            flushedPlace_ = std::exchange(lastPlace_, i);
            finding.entry = std::move(found.entry);
        } else if (found.kind == Place::Whole && found.number > before) {
            before = found.number;
            flushedPlace_ = i;
        }
    }
    if (lastPlace_ == nowhere) {
        places.push_back(bytes.size() > fileSize ? Place::Foreign : Place::Empty);
        finding.kind = kindWithoutEntry(places);
        return;
    }
    finding.kind = JournalFinding::Kind::Entry;
    length_ = bytes.size();
    written_ = bodyOf(finding.entry);
    // It may be that nobody has flushed it; else the one before it is taken care of.
    if (file_->flush()) {
        written_.clear();
    } else {
        flushedPlace_ = lastPlace_;
    }
}

bool Journal::isDue() const {
    const std::uint64_t now = platform().clock.steadyMilliseconds();
    const bool unflushed = lastPlace_ != flushedPlace_;
    return hasPassed(lookedAt_, now, betweenWrites) ||
           (unflushed && hasPassed(flushedAt_, now, betweenFlushes));
}

/// False when the file cannot be made, or something else lies there now, which is left alone. What
/// another program holds may be let go: it is tried again.
bool Journal::make(std::uint64_t now, bool atOnce) {
    if (file_) {
        return true;
    }
    if (now < notMadeBefore_ && !atOnce) {
        return false;
    }
    Holding held = platform().files.holdOrMake(path_, fileSize, iniFile_);
    if (held.file && holdsSomething(*held.file)) {
        leave();
        return false;
    }
    file_ = std::move(held.file);
    notMadeBefore_ = file_ ? 0 : now + pause_;
    pause_ = file_ ? 0 : std::clamp(2 * pause_, betweenWrites, longestPause);
    return file_ != nullptr;
}

bool Journal::keep(const JournalEntry& entry, bool atOnce) {
    const std::uint64_t now = platform().clock.steadyMilliseconds();
    const std::string body = bodyOf(entry);
    lookedAt_ = now;
    if (file_ && !file_->isInPlace(length_)) {
        written_.clear();
    }
    if (body != written_) {
        const auto written = [&] { return make(now, atOnce) && put(body, entry.moment); };
        const bool wasThere = isThere();
        if (!written() && (isThere() || !wasThere || !written())) {
            return false;
        }
    }
    const bool due = atOnce || hasPassed(flushedAt_, now, betweenFlushes);
    return !file_ || lastPlace_ == flushedPlace_ || !due || flush(now);
}

std::size_t Journal::nextPlace() const {
    std::size_t next = 0;
    while (next == lastPlace_ || next == flushedPlace_) {
        ++next;
    }
    return next;
}

bool Journal::put(const std::string& body, Date moment) {
    const std::size_t place = nextPlace();
    const std::string bytes = placeOf(body, moment, number_ + 1);
    const FileResult failure = file_->write(place * journalPlace, bytes);
    if (failure == ErrorNumber::FileNotFound) {
        release(); // somebody has deleted it: it is made anew
    }
    if (failure) {
        return false;
    }
    ++number_;
    length_ = std::max(length_, place * journalPlace + bytes.size());
    lastPlace_ = place;
    written_ = body;
    return true;
}

bool Journal::flush(std::uint64_t now) {
    flushedAt_ = now;
    if (file_->flush()) {
        // The system may take what it could not write for written: the next flush would tell
        // nothing. The entry is written anew, elsewhere.
        written_.clear();
        return false;
    }
    flushedPlace_ = lastPlace_;
    return true;
}

bool Journal::end() {
    if (file_ && file_->remove()) {
        return false;
    }
    leave();
    return true;
}

void Journal::leave() {
    release();
    inUse_ = false;
}

void Journal::release() {
    file_.reset();
    written_.clear();
    length_ = 0;
    number_ = 0;
    lastPlace_ = flushedPlace_ = nowhere;
}

} // namespace tarvik
