#include "faults/Told.h"

#include "common/ProfileForm.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace tarvik::faults {

namespace {

std::string toldAt(const std::string& folder) {
    return folder + ".told";
}

void put(std::ostream& to, const Figures& figures) {
    to << figures.rcvd << ' ' << figures.sent << ' ' << figures.time << ' ';
}

void put(std::ostream& to, const std::string& text) {
    to << text.size() << ' ' << text << ' ';
}

void put(std::ostream& to, const Sums& sums) {
    to << sums.size() << ' ';
    for (const auto& [line, figures] : sums) {
        put(to, line);
        put(to, figures);
    }
}

Figures figuresFrom(std::istream& from) {
    Figures figures;
    from >> figures.rcvd >> figures.sent >> figures.time;
    return figures;
}

std::string textFrom(std::istream& from) {
    std::size_t size = 0;
    from >> size;
    from.get();
    std::string text(size, '\0');
    from.read(text.data(), static_cast<std::streamsize>(size));
    return text;
}

Sums sumsFrom(std::istream& from) {
    Sums sums;
    std::size_t count = 0;
    for (from >> count; count > 0; --count) {
        const std::string line = textFrom(from);
        sums[line] = figuresFrom(from);
    }
    return sums;
}

/// The file has a record that says the same, or one that came after what the entry stands on and
/// has none of the three figures less.
bool isHeldBy(const std::string& ini, const JournalEntry& entry) {
    const std::vector<Record> records = recordsIn(ini);
    const Figures said = figuresOf(entry.totals);
    const auto base = std::find_if(records.begin(), records.end(), [&](const Record& record) {
        return record.section == entry.standsOn.lastState;
    });
    const auto later = base == records.end() ? records.begin() : base + 1;
    return std::any_of(records.begin(), records.end(),
                       [&](const Record& record) { return record.figures == said; }) ||
           std::any_of(later, records.end(),
                       [&](const Record& record) { return record.figures.covers(said); });
}

} // namespace

std::optional<JournalEntry> newestEntry(const std::string& file) {
    JournalPlace newest;
    for (std::size_t i = 0; i * journalPlace < file.size(); ++i) {
        JournalPlace found =
            readPlace(std::string_view(file).substr(i * journalPlace, journalPlace));
        if (found.kind == JournalPlace::Kind::Whole && found.number >= newest.number) {
            newest = std::move(found);
        }
    }
    return newest.kind == JournalPlace::Kind::Whole ? std::optional(std::move(newest.entry))
                                                    : std::nullopt;
}

std::vector<Record> recordsIn(const std::string& ini) {
    std::vector<Record> records;
    std::istringstream lines(textOf(ini, formOf(ini)));
    std::string section;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with('[')) {
            section = line.substr(1, line.find(']') - 1);
            if (section.find('|') != std::string::npos) {
                records.push_back({section, {}});
            }
        } else if (!records.empty() && records.back().section == section) {
            const std::string value = line.substr(line.find('=') + 1);
            Figures& figures = records.back().figures;
            if (line.starts_with("Rcvd=")) {
                figures.rcvd = std::stoll(value);
            } else if (line.starts_with("Sent=")) {
                figures.sent = std::stoll(value);
            } else if (line.starts_with("Duration=")) {
                figures.time = std::stoll(value);
            }
        }
    }
    return records;
}

bool isPowerCut(const std::string& fault) {
    return fault.starts_with("cut");
}

bool endsInTheMiddle(const std::string& fault) {
    return isPowerCut(fault) || fault.starts_with("kill") || fault.starts_with("failkill");
}

bool isLedger(const std::string& name) {
    return name.starts_with("Tarvik.") && name.ends_with(".ledger");
}

Sums sumsIn(const std::vector<LedgerEntry>& entries) {
    Sums sums;
    for (const LedgerEntry& one : entries) {
        sums[one.line] = sums[one.line] + figuresOf(one.traffic);
    }
    return sums;
}

bool isAside(const std::string& name) {
    return name.starts_with("Tarvik.") && name.ends_with(".journal") && name != "Tarvik.journal";
}

std::string troubleWithAside(const Folder& files, const Figures& shown) {
    for (const auto& [name, bytes] : files) {
        const auto entry = isAside(name) ? newestEntry(bytes) : std::nullopt;
        if (entry && figuresOf(entry->totals) != shown &&
            std::none_of(files.begin(), files.end(), [&](const auto& file) {
                return file.first.ends_with(".ini") && isHeldBy(file.second, *entry);
            })) {
            return name + " says " + figuresOf(entry->totals).text() + ", shown are " +
                   shown.text() + "\n";
        }
    }
    return {};
}

void Told::begun(std::string_view bytes, const Sums& carried) {
    if (!entries.empty() && !entries.back().whole) {
        entries.pop_back();
    }
    entries.push_back({.bytes = std::string(bytes), .sums = carried});
}

void Told::flushed() {
    const auto last =
        std::find_if(entries.rbegin(), entries.rend(), [](const Entry& one) { return one.whole; });
    if (last != entries.rend()) {
        last->flushed = true;
        entries.erase(entries.begin(), last.base() - 1);
    }
}

void Told::add(const std::string& what) {
    trouble += what + "\n";
}

std::vector<std::optional<Ground>> Told::mayBeFound(const std::string& fault) const {
    const auto isSafe = [&](const Entry& one) {
        return isPowerCut(fault) ? one.flushed : one.whole;
    };
    const auto safe = std::find_if(entries.rbegin(), entries.rend(), isSafe);
    std::vector<std::optional<Ground>> found;
    if (safe == entries.rend()) {
        found.emplace_back();
    }
    for (auto one = safe == entries.rend() ? entries.begin() : safe.base() - 1;
         one != entries.end(); ++one) {
        found.push_back(Ground{.entry = readPlace(one->bytes).entry, .sums = one->sums});
    }
    return found;
}

void Told::save(const std::string& folder) const {
    std::ostringstream to;
    to.precision(17);
    to << clock << ' ' << resetting << ' ' << ending << ' ' << saved << ' ' << inPeace << ' '
       << leftAlone << ' ' << anew << ' ' << universal << ' ' << hasLedger << ' ';
    put(to, all);
    put(to, sums);
    put(to, trouble);
    to << lines.size() << ' ';
    for (const Line& one : lines) {
        to << one.handle << ' ';
        put(to, one.entry);
        put(to, one.carried);
    }
    to << entries.size() << ' ';
    for (const Entry& one : entries) {
        to << one.whole << ' ' << one.flushed << ' ';
        put(to, one.bytes);
        put(to, one.sums);
    }
    std::ofstream(toldAt(folder), std::ios::binary) << std::move(to).str();
}

Told Told::load(const std::string& folder) {
    Told told;
    std::ifstream from(toldAt(folder), std::ios::binary);
    from >> told.clock >> told.resetting >> told.ending >> told.saved >> told.inPeace >>
        told.leftAlone >> told.anew >> told.universal >> told.hasLedger;
    told.all = figuresFrom(from);
    told.sums = sumsFrom(from);
    told.trouble = textFrom(from);
    std::size_t count = 0;
    from >> count;
    for (; count > 0; --count) {
        Line& one = told.lines.emplace_back();
        from >> one.handle;
        one.entry = textFrom(from);
        one.carried = figuresFrom(from);
    }
    for (from >> count; count > 0; --count) {
        Entry& one = told.entries.emplace_back();
        from >> one.whole >> one.flushed;
        one.bytes = textFrom(from);
        one.sums = sumsFrom(from);
    }
    return told;
}

} // namespace tarvik::faults
