#include "settings/JournalNow.h"

#include "journal/Journal.h"
#include "ledger/Ledger.h"
#include "ports/Clock.h"
#include "ports/Files.h"
#include "ports/Platform.h"
#include "ports/PrivateProfile.h"
#include "settings/DatedName.h"
#include "settings/mdlCarried.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsNumbers.h"
#include "settings/mdlSettingsPlans.h"
#include "state/mdlConst.h"
#include "state/mdlTransfers.h"
#include "state/mdlVar.h"
#include "types/RunTimeError.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace tarvik {

namespace {

/// Whether the file is there; nothing where nobody knows. What has been read from it tells where
/// a look at its name fails at the moment: the start's own lock stands in it before all else.
std::optional<bool> fileIsThere() {
    const FileKind kind = platform().files.Dir(usualIniFile());
    if (kind != FileKind::Other) {
        return kind == FileKind::File && !HasOnlyPlans();
    }
    return GetStringFromINI(SettingsSection, "IsLocked").empty() ? std::nullopt
                                                                 : std::optional(true);
}

/// In so many bytes, if it can be said in them.
LedgerRemainder notInTheLedger(std::size_t room) {
    const Ledger& kept = ledger();
    const bool isLeft = !kept.remainder.lines.empty();
    Unwritten all;
    if (isLeft) {
        // What nobody could look at yet comes before what this run adds.
        all = Unwritten(entriesOf(kept.remainder.lines));
        for (const LedgerEntry& one : kept.unwritten.entries()) {
            all.add(one);
        }
    } else {
        all = kept.unwritten;
    }
    for (const LineSession& one : state().LineSessions) {
        if (const auto growth = NotYetTold(one)) {
            all.add(*growth);
        }
    }
    return {.end = kept.inUse() && !isLeft ? kept.size() : kept.remainder.end,
            .lines = all.textWithin(room)};
}

JournalEntry entryWithoutLedger() {
    const State& s = state();
    JournalEntry entry;
    entry.moment = momentOf(platform().clock);
    entry.standsOn = journal().standsOn;
    entry.resetIfGone = journal().resetIfGone;
    entry.totals = AllThatCounts();
    entry.tickerBase = std::clamp(s.TickerBase, Currency(0), largestKept);
    entry.settings = settingsAsNumbers(s);
    entry.address = s.IPAddress;
    entry.sessions = SessionsUnderWay();
    for (FormerSession& one : entry.sessions) {
        MarkTold(one.session); // in the middle of a tick as well
    }
    return entry;
}

std::string fileBesideIni(const std::string& ending) {
    const std::string ini = usualIniFile();
    const std::size_t own = std::string(IniFileBaseName).rfind('.');
    return ini.substr(0, ini.size() - std::string(IniFileBaseName).size()) +
           std::string(IniFileBaseName).substr(0, own) + ending;
}

} // namespace

std::string journalFile(const std::string& addition) {
    return fileBesideIni(addition + ".journal");
}

std::string ledgerFile(const std::string& addition) {
    return fileBesideIni(addition + ".ledger");
}

std::string aboutJournal(const std::string& text, const std::string& path) {
    return text + CR + nameWithoutFolder(path);
}

std::string aboutUnkeptJournal(const std::string& text) {
    return aboutJournal(text + " What is counted from now on is stored when the program ends.");
}

IniContent contentWithFile() {
    return {.exists = true,
            .lastState = GetStringFromINI(SettingsSection, keys::lastState),
            .lastDateStamp = GetLongFromINI(SettingsSection, keys::lastDateStamp).toLong().value()};
}

std::optional<IniContent> contentOfFile() {
    const ProfileReading reading(platform().profile, usualIniFile());
    const auto isThere = reading.readable() ? fileIsThere() : std::nullopt;
    if (!isThere) {
        return std::nullopt;
    }
    IniContent content = contentWithFile();
    content.exists = *isThere;
    return content;
}

std::optional<Amount> totalsOfFile() {
    const ProfileReading reading(platform().profile, usualIniFile());
    if (!reading.readable()) {
        return std::nullopt;
    }
    return recordOf(GetStringFromINI(SettingsSection, keys::lastState));
}

std::optional<JournalEntry> entryNow() {
    try {
        JournalEntry entry = entryWithoutLedger();
        if (ledger().isKept) {
            entry.ledger = notInTheLedger(roomForLedger(entry));
        }
        return canBeKept(entry.totals) ? std::optional(std::move(entry)) : std::nullopt;
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
}

std::size_t roomForLedgerNow() {
    try {
        return roomForLedger(entryWithoutLedger());
    } catch (const RunTimeError&) {
        return 0;
    }
}

bool wasSavedMeanwhile(const JournalEntry& entry, const IniContent& file) {
    const bool isNew = file.exists && !entry.standsOn.exists;
    if (isNew && file.lastState.empty() && file.lastDateStamp == 0) {
        return true;
    }
    const bool hasOneMore = file.lastDateStamp - entry.standsOn.lastDateStamp == 1;
    const auto saved = hasOneMore ? totalsOfFile() : std::nullopt;
    return saved && mayHaveSaved(entry, *saved);
}

} // namespace tarvik
