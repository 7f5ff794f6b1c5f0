#include "ledger/Ledger.h"

#include "ports/Platform.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tarvik {

namespace {

using Outcome = Holding::Outcome;

/// Lines that are up all the year make it longer than can be read: then days begin earlier.
constexpr std::size_t longestFolded = HeldFile::longest / 4 * 3;

Ledger::Finding findingOf(Outcome outcome) {
    switch (outcome) {
    case Outcome::Absent:
        return Ledger::Finding::Nothing;
    case Outcome::Busy:
        return Ledger::Finding::Busy;
    case Outcome::Refused:
        return Ledger::Finding::Refused;
    default:
        return Ledger::Finding::Unread;
    }
}

Ledger::Finding findingOf(LedgerReading::Kind kind) {
    switch (kind) {
    case LedgerReading::Kind::Nothing:
        return Ledger::Finding::Nothing;
    case LedgerReading::Kind::Ledger:
        return Ledger::Finding::Taken;
    case LedgerReading::Kind::OtherVersion:
        return Ledger::Finding::OtherVersion;
    default:
        return Ledger::Finding::Refused;
    }
}

} // namespace

Ledger& ledger() {
    return LedgerScope::get("no ledger is in place");
}

Ledger::Finding Ledger::look(const std::string& path, Holding held) {
    release();
    if (!held.file) {
        return findingOf(held.outcome);
    }
    std::string bytes;
    if (held.file->read(bytes)) {
        return Finding::Unread;
    }
    LedgerReading reading = readLedger(bytes);
    const Finding finding = findingOf(reading.kind);
    if (finding == Finding::Taken || finding == Finding::Nothing) {
        path_ = path;
        file_ = std::move(held.file);
        contents_ = std::move(reading.contents);
        damaged_ = std::move(reading.damaged);
        hasHead_ = reading.hasHead;
        end_ = finding == Finding::Taken ? bytes.size() : 0;
        isBrokenOff_ = end_ > 0 && bytes.back() != '\n';
    }
    return finding;
}

Ledger::Finding Ledger::take(const std::string& path) {
    const Finding finding = look(path, platform().files.hold(path));
    if (finding == Finding::Nothing) {
        release(); // nobody has begun it yet, or a kill cut that off
    }
    return finding;
}

Ledger::Finding Ledger::begin(const std::string& path, const std::string& iniFile, Moment now,
                              std::chrono::minutes ahead) {
    const Finding finding = look(path, platform().files.holdOrMake(path, 0, iniFile));
    if (finding != Finding::Nothing) {
        return finding;
    }
    contents_.head = {.version = ledgerVersion,
                      .begun = std::clamp(now, firstMoment, lastMoment),
                      .ahead = ahead};
    if (append(textOf(contents_.head))) {
        file_->remove();
        release();
        return Finding::Unread;
    }
    hasHead_ = true;
    return Finding::Taken;
}

void Ledger::release() {
    path_.clear();
    file_.reset();
    contents_ = {};
    damaged_.clear();
    hasHead_ = false;
    end_ = 0;
    isBrokenOff_ = false;
}

std::optional<std::vector<LedgerEntry>> Ledger::missing() const {
    std::vector<LedgerEntry> entries = entriesOf(remainder.lines);
    std::string bytes;
    if (!entries.empty() && (!file_ || file_->read(bytes))) {
        return std::nullopt;
    }
    auto rest = std::string_view(bytes).substr(
        static_cast<std::size_t>(std::min<std::uint64_t>(remainder.end, bytes.size())));
    auto next = entries.begin();
    while (next != entries.end() && !rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size() - 1) + 1;
        next += rest.substr(0, end) == textOf(*next) ? 1 : 0;
        rest.remove_prefix(end);
    }
    entries.erase(entries.begin(), next);
    return entries;
}

FileResult Ledger::append(const std::string& text) {
    if (!file_) {
        return ErrorNumber::FileNotFound;
    }
    const std::string line = (isBrokenOff_ ? "\n" : "") + text;
    FileResult failure = file_->write(end_, line);
    if (failure == ErrorNumber::FileNotFound) {
        release(); // somebody has deleted it, and shall have his way
        return failure;
    }
    // What could not be flushed, the system may take for written: it is written anew.
    failure = failure ? failure : file_->flush();
    if (!failure) {
        end_ += line.size();
        isBrokenOff_ = false;
    }
    return failure;
}

FileResult Ledger::add(const std::vector<LedgerEntry>& entries) {
    std::string text;
    for (const LedgerEntry& one : entries) {
        text += textOf(one);
    }
    const FileResult failure = text.empty() ? std::nullopt : append(text);
    if (!failure) {
        enter(contents_, entries);
    }
    return failure;
}

FileResult Ledger::add(const LedgerNote& said) {
    LedgerNote note = said;
    note.at = std::clamp(note.at, firstMoment, lastMoment);
    const FileResult failure = append(textOf(note));
    if (!failure) {
        contents_.notes.push_back(note);
    }
    return failure;
}

/// A file that is held cannot be replaced everywhere. While it is let go for that, another copy of
/// the program may take it: then it is that one's from here on.
FileResult Ledger::replaceBy(const std::string& text) {
    Files& files = platform().files;
    const auto stamp = files.stamp(path_);
    file_.reset();
    const FileResult failure =
        files.replaceIf(path_, {text}, [&] { return stamp && files.stamp(path_) == stamp; });
    file_ = files.hold(path_).file;
    const bool isOld = stamp && files.stamp(path_) == stamp;
    std::string bytes;
    if (!file_ || (!isOld && (file_->read(bytes) || bytes != text))) {
        release();
        return failure ? failure : ErrorNumber::PathFileAccess;
    }
    if (isOld) {
        return failure;
    }
    end_ = text.size();
    isBrokenOff_ = false;
    return std::nullopt; // it is there, whatever went wrong behind it
}

FileResult Ledger::putAside(const std::string& aside) const {
    Files& files = platform().files;
    std::string there;
    if (files.Dir(aside) != FileKind::None && (files.read(aside, there) || there != damaged_)) {
        return ErrorNumber::FileAlreadyExists;
    }
    return there == damaged_ ? std::nullopt : files.replace(aside, {damaged_});
}

FileResult Ledger::mend(const std::string& aside) {
    if (!file_ || (damaged_.empty() && hasHead_)) {
        return std::nullopt;
    }
    FileResult failure = damaged_.empty() ? std::nullopt : putAside(aside);
    failure = failure ? failure : replaceBy(textOf(contents_));
    if (!failure) {
        damaged_.clear();
        hasHead_ = true;
    }
    return failure;
}

FileResult Ledger::fold(LocalDay today) {
    if (!file_ || !damaged_.empty() || !hasHead_) {
        return std::nullopt; // it is mended first
    }
    LedgerContents contents = contents_;
    std::string text;
    for (const int months : {13, 6, 3, 1}) {
        contents.entries = folded(std::move(contents.entries), today, std::chrono::months(months));
        if (contents.entries == contents_.entries && end_ <= longestFolded) {
            return std::nullopt;
        }
        text = textOf(contents);
        if (text.size() <= longestFolded) {
            break;
        }
    }
    const FileResult failure = replaceBy(text);
    if (!failure) {
        contents_ = std::move(contents);
    }
    return failure;
}

} // namespace tarvik
