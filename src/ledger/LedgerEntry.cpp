#include "ledger/LedgerEntry.h"

#include "ledger/LedgerText.h"
#include "types/CheckSum.h"
#include "types/Text.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace tarvik {

namespace {

constexpr std::string_view headWords = "Tarvik ledger ";
constexpr std::size_t sumDigits = 16;

constexpr char quarterMark = 'Q';
constexpr char dayMark = 'D';
constexpr char figureMark = 'P';
constexpr char extensionMark = 'X';
constexpr char takenBackMark = 'T';

std::string sumText(std::string_view text) {
    return hexText(checkSum(text), sumDigits);
}

std::string withSum(const LedgerWriter& to) {
    return sumText(to.text) + " " + to.text + "\n";
}

struct NoteWriter {
    LedgerWriter& to;

    void operator()(const ProvidersFigure& figure) const {
        to.word(figure.measure == Measure::Bytes ? "bytes" : "ms");
        to.number(figure.told);
        to.number(figure.counted);
    }
    void operator()(const Extension& extension) const {
        to.word(extension.today ? "today" : "period");
        to.number(extension.bytes);
        to.number(extension.milliseconds);
    }
    void operator()(const TakenBack& back) const {
        to.word(std::string(1, back.extension ? extensionMark : figureMark));
        to.second(back.at);
    }
};

LedgerLine readEntry(LedgerReader& from, LedgerEntry::Span span) {
    LedgerEntry entry;
    entry.span = span;
    if (span == LedgerEntry::Span::Quarter) {
        entry.at = from.minute();
        from.demand(quarterOf(entry.at) == entry.at);
        entry.ahead = from.ahead();
    } else {
        const LocalDay day = from.day();
        entry.ahead = from.ahead();
        entry.at = momentOf(day + std::chrono::hours(12), entry.ahead);
    }
    entry.traffic.rcvd = from.number();
    entry.traffic.sent = from.number();
    entry.traffic.milliseconds = from.number();
    entry.inside = from.oneOf("own", "inside");
    entry.line = from.name();
    return from.done() ? LedgerLine(std::move(entry)) : LedgerLine();
}

ProvidersFigure readFigure(LedgerReader& from) {
    ProvidersFigure figure;
    figure.measure = from.oneOf("bytes", "ms") ? Measure::Time : Measure::Bytes;
    figure.told = from.number();
    figure.counted = from.number();
    return figure;
}

Extension readExtension(LedgerReader& from) {
    Extension extension;
    extension.today = from.oneOf("period", "today");
    extension.bytes = from.number();
    extension.milliseconds = from.number();
    return extension;
}

TakenBack readTakenBack(LedgerReader& from) {
    TakenBack back;
    back.extension = from.oneOf("P", "X");
    back.at = from.second();
    return back;
}

LedgerLine readNote(LedgerReader& from, char mark) {
    LedgerNote note;
    note.at = from.second();
    note.ahead = from.ahead();
    const std::uint64_t plan = from.number();
    from.demand(plan >= 1 && plan <= mostPlans);
    note.plan = static_cast<int>(plan);
    if (mark == figureMark) {
        note.what = readFigure(from);
    } else if (mark == extensionMark) {
        note.what = readExtension(from);
    } else {
        note.what = readTakenBack(from);
    }
    return from.done() ? LedgerLine(note) : LedgerLine();
}

/// Another version's first line may go on in another way.
LedgerLine readHead(std::string_view text) {
    LedgerReader from(text.substr(headWords.size()));
    LedgerHead head;
    const std::uint64_t version = from.number();
    constexpr std::uint64_t mostVersions = 9999;
    if (!from.good || version < 1 || version > mostVersions) {
        return {};
    }
    head.version = static_cast<int>(version);
    if (head.version != ledgerVersion) {
        return head;
    }
    head.begun = from.second();
    head.ahead = from.ahead();
    return from.done() ? LedgerLine(head) : LedgerLine();
}

} // namespace

std::string textOf(const LedgerHead& head) {
    LedgerWriter to;
    to.text = headWords;
    to.text += std::to_string(head.version);
    to.second(head.begun);
    to.ahead(head.ahead);
    return withSum(to);
}

std::string textOf(const LedgerEntry& entry) {
    LedgerWriter to;
    if (entry.span == LedgerEntry::Span::Quarter) {
        to.text = quarterMark;
        to.minute(entry.at);
    } else {
        to.text = dayMark;
        to.day(localDayOf(entry));
    }
    to.ahead(entry.ahead);
    to.number(entry.traffic.rcvd);
    to.number(entry.traffic.sent);
    to.number(entry.traffic.milliseconds);
    to.word(entry.inside ? "inside" : "own");
    to.name(entry.line);
    return withSum(to);
}

std::string textOf(const LedgerNote& note) {
    constexpr std::string_view marks{"PXT"};
    static_assert(marks[0] == figureMark && marks[1] == extensionMark && marks[2] == takenBackMark);
    LedgerWriter to;
    to.text = marks[note.what.index()];
    to.second(note.at);
    to.ahead(note.ahead);
    to.number(static_cast<std::uint64_t>(note.plan));
    std::visit(NoteWriter{to}, note.what);
    return withSum(to);
}

LedgerLine readLedgerLine(std::string_view line) {
    constexpr std::size_t textAt = sumDigits + 1;
    if (line.size() < textAt + 2 || line[sumDigits] != ' ') {
        return {};
    }
    const std::string_view text = line.substr(textAt);
    if (line.substr(0, sumDigits) != sumText(text)) {
        return {};
    }
    if (text.starts_with(headWords)) {
        return readHead(text);
    }
    LedgerReader from(text.substr(2));
    from.demand(text[1] == ' ');
    switch (text[0]) {
    case quarterMark:
        return readEntry(from, LedgerEntry::Span::Quarter);
    case dayMark:
        return readEntry(from, LedgerEntry::Span::Day);
    case figureMark:
    case extensionMark:
    case takenBackMark:
        return readNote(from, text[0]);
    default:
        return {};
    }
}

bool mayBeginLedger(std::string_view bytes) {
    bytes = bytes.substr(0, bytes.find_last_not_of('\0') + 1);
    const std::string_view sum = bytes.substr(0, sumDigits);
    const std::string_view rest = bytes.substr(sum.size()).substr(0, headWords.size() + 1);
    return std::all_of(sum.begin(), sum.end(),
                       [](unsigned char byte) { return std::isxdigit(byte) != 0; }) &&
           (" " + std::string(headWords)).starts_with(rest);
}

} // namespace tarvik
