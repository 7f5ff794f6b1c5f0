#include "ledger/LedgerContents.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace tarvik {

namespace {

using std::chrono::hours;
using std::chrono::year_month_day;
using Span = LedgerEntry::Span;

bool isEarlier(const LedgerEntry& a, const LedgerEntry& b) {
    return a.at < b.at;
}

void sortByMoment(std::vector<LedgerEntry>& entries) {
    if (!std::is_sorted(entries.begin(), entries.end(), isEarlier)) {
        std::stable_sort(entries.begin(), entries.end(), isEarlier);
    }
}

auto keyOf(const LedgerEntry& entry) {
    return std::tie(entry.at, entry.span, entry.inside, entry.ahead, entry.line);
}

/// The same day of the month so much earlier; the month's last where it has no such day.
LocalDay monthsBefore(LocalDay day, std::chrono::months months) {
    const year_month_day date(day);
    const auto month = date.year() / date.month() - months;
    const year_month_day last(month / std::chrono::last);
    return LocalDay(month / std::min(date.day(), last.day()));
}

void makeDay(LedgerEntry& entry) {
    entry.at = momentOf(localDayOf(entry) + hours(12), entry.ahead);
    entry.span = Span::Day;
}

/// Entries of one key that follow each other become one.
void joinEqual(std::vector<LedgerEntry>& entries) {
    auto last = entries.begin();
    for (auto next = entries.begin(); next != entries.end(); ++next) {
        if (next == last) {
            continue;
        }
        if (keyOf(*next) == keyOf(*last)) {
            last->traffic = last->traffic + next->traffic;
        } else if (++last != next) {
            *last = std::move(*next);
        }
    }
    entries.erase(last == entries.end() ? last : last + 1, entries.end());
}

/// Takes the first line without its end off the bytes; nothing where no line is ended any more.
std::string_view takeLine(std::string_view& bytes) {
    const std::size_t end = bytes.find('\n');
    const std::string_view line = bytes.substr(0, end);
    bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
    return line;
}

/// Takes over what the line says.
struct Entering {
    LedgerContents& contents;

    bool operator()(std::monostate /*nothing*/) const { return false; }
    bool operator()(const LedgerHead& /*second*/) const { return false; }
    bool operator()(LedgerEntry& entry) const {
        contents.entries.push_back(std::move(entry));
        return true;
    }
    bool operator()(const LedgerNote& note) const {
        contents.notes.push_back(note);
        return true;
    }
};

void readLines(std::string_view bytes, LedgerReading& reading) {
    while (!bytes.empty()) {
        const std::string_view rest = bytes;
        const std::string_view line = takeLine(bytes);
        const std::string_view whole = rest.substr(0, rest.size() - bytes.size());
        LedgerLine found = whole.size() > line.size() ? readLedgerLine(line) : LedgerLine();
        if (!std::visit(Entering{reading.contents}, found)) {
            reading.damaged += whole;
        }
    }
}

} // namespace

void enter(LedgerContents& contents, const std::vector<LedgerEntry>& entries) {
    for (const LedgerEntry& one : entries) {
        const auto place =
            std::upper_bound(contents.entries.begin(), contents.entries.end(), one, isEarlier);
        contents.entries.insert(place, one);
    }
}

std::vector<LedgerEntry> entriesOf(std::string_view lines) {
    LedgerReading reading;
    readLines(lines, reading);
    return std::move(reading.contents.entries);
}

std::span<const LedgerEntry> entriesBetween(const LedgerContents& contents, Moment from,
                                            Moment to) {
    const auto first = [&](Moment moment) {
        return std::partition_point(contents.entries.begin(), contents.entries.end(),
                                    [&](const LedgerEntry& one) { return one.at < moment; });
    };
    return {first(from), first(std::max(from, to))};
}

std::string textOf(const LedgerContents& contents) {
    constexpr std::size_t usualLine = 80;
    std::string text = textOf(contents.head);
    text.reserve(usualLine * (contents.entries.size() + contents.notes.size() + 1));
    for (const LedgerNote& note : contents.notes) {
        text += textOf(note);
    }
    for (const LedgerEntry& entry : contents.entries) {
        text += textOf(entry);
    }
    return text;
}

LedgerReading readLedger(std::string_view bytes) {
    LedgerReading reading;
    std::string_view rest = bytes;
    const std::string_view line = takeLine(rest);
    const LedgerLine first = line.size() < bytes.size() ? readLedgerLine(line) : LedgerLine();
    const auto* const head = std::get_if<LedgerHead>(&first);
    if (head != nullptr && head->version != ledgerVersion) {
        reading.kind = LedgerReading::Kind::OtherVersion;
        return reading;
    }
    readLines(head == nullptr ? bytes : rest, reading);
    sortByMoment(reading.contents.entries);
    if (head != nullptr) {
        reading.kind = LedgerReading::Kind::Ledger;
        reading.hasHead = true;
        reading.contents.head = *head;
    } else if (!reading.contents.entries.empty()) {
        reading.kind = LedgerReading::Kind::Ledger;
        const LedgerEntry& earliest = reading.contents.entries.front();
        reading.contents.head = {
            .version = ledgerVersion, .begun = earliest.at, .ahead = earliest.ahead};
    } else {
        reading.kind = rest.empty() && mayBeginLedger(bytes) ? LedgerReading::Kind::Nothing
                                                             : LedgerReading::Kind::Foreign;
    }
    return reading;
}

std::vector<LedgerEntry> folded(std::vector<LedgerEntry> entries, LocalDay today,
                                std::chrono::months quarters) {
    const LocalDay firstOfQuarters = monthsBefore(today, quarters);
    for (LedgerEntry& one : entries) {
        if (one.span == Span::Quarter && localDayOf(one) < firstOfQuarters) {
            makeDay(one);
        }
    }
    const auto isBefore = [](const LedgerEntry& one, const LedgerEntry& other) {
        return keyOf(one) < keyOf(other);
    };
    if (!std::is_sorted(entries.begin(), entries.end(), isBefore)) {
        std::sort(entries.begin(), entries.end(), isBefore);
    }
    joinEqual(entries);
    return entries;
}

} // namespace tarvik
