#include "faults/Carried.h"

#include <algorithm>

namespace tarvik::faults {

Line& Carried::line(const std::string& entry) {
    return *std::find_if(lines.begin(), lines.end(),
                         [&](const Line& one) { return one.up && one.entry == entry; });
}

Figures Carried::all() const {
    Figures sum = finished;
    for (const Line& one : lines) {
        sum = sum + one.counted();
    }
    return sum;
}

Figures Carried::shown() const {
    const auto last = std::find_if(lines.begin(), lines.end(), [&](const Line& one) {
        return one.known && one.handle == lookedAt_;
    });
    return last == lines.end() ? finished : finished + last->counted();
}

void Carried::list() {
    for (const Line& one : lines) {
        finished = one.up ? finished : finished + one.counted();
    }
    over = toldOf(false);
    std::erase_if(lines, [](const Line& one) { return !one.up; });
}

void Carried::forget() {
    over = toldOf(true);
    std::erase_if(lines, [](const Line& one) { return !one.up; });
    for (Line& one : lines) {
        one.known = false;
        one.left = {};
    }
}

void Carried::look(Line& at) {
    at.seen = at.carried;
    at.known = true;
    at.silent = false;
    lookedAt_ = at.handle;
}

void Carried::lookAtAll() {
    for (Line& one : lines) {
        look(one);
    }
}

void Carried::reset() {
    finished = {};
    for (Line& one : lines) {
        one.offset = {};
        one.silent = true;
    }
}

void Carried::decline() {
    for (Line& one : lines) {
        one.offset = one.left = one.carried;
    }
}

void Carried::beginLedger() {
    hasLedger = true;
    over = {};
    for (Line& one : lines) {
        one.left = one.seen;
    }
}

Sums Carried::toldOf(bool all) const {
    Sums sums = over;
    for (const Line& one : lines) {
        const Figures told = one.known ? one.seen - one.left : Figures();
        if ((all || !one.up) && told != Figures()) {
            sums[one.entry] = sums[one.entry] + told;
        }
    }
    return sums;
}

Sums Carried::ledgered() const {
    return hasLedger ? toldOf(true) : Sums();
}

std::string Carried::troubleWithSession(const FormerSession& session, bool ending) const {
    const LineSession& told = session.session;
    const std::string name = told.connection.szEntryName;
    const auto found = std::find_if(lines.begin(), lines.end(), [&](const Line& one) {
        return one.known && one.handle == told.connection.hrasconn && one.entry == name;
    });
    if (found == lines.end()) {
        return "a session of " + name + " that is not under way";
    }
    const Figures counted = figuresOf(told.counted);
    const Figures offset = figuresOf(told.offset);
    const bool isFinished = ending && counted == Figures() && offset == found->seen;
    if (figuresOf(told.totals) != found->seen ||
        (!isFinished && (counted != found->counted() || offset != found->offset))) {
        return name + " with " + figuresOf(told.totals).text() + ", of which " + counted.text() +
               " count and " + offset.text() + " do not, instead of " + found->seen.text() + ", " +
               found->counted().text() + " and " + found->offset.text();
    }
    if (hasLedger && figuresOf(told.noted) != found->seen) {
        return name + ", of which the ledger was told " + figuresOf(told.noted).text() +
               " instead of " + found->seen.text();
    }
    return {};
}

std::string Carried::troubleWith(const JournalEntry& entry, bool ending) const {
    if (figuresOf(entry.totals) != all()) {
        return figuresOf(entry.totals).text() + " instead of " + all().text();
    }
    if (hasLedger && !entry.ledger) {
        return "nothing of the ledger";
    }
    if (entry.ended) {
        return entry.sessions.empty() && ending ? "" : "an end in order that is none";
    }
    for (const FormerSession& one : entry.sessions) {
        if (std::string trouble = troubleWithSession(one, ending); !trouble.empty()) {
            return trouble;
        }
    }
    const auto known =
        std::count_if(lines.begin(), lines.end(), [](const Line& one) { return one.known; });
    return entry.sessions.size() == static_cast<std::size_t>(known)
               ? ""
               : std::to_string(entry.sessions.size()) + " sessions of " + std::to_string(known);
}

} // namespace tarvik::faults
