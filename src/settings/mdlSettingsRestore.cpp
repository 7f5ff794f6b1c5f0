#include "settings/mdlSettingsRestore.h"

#include "forms/Forms.h"
#include "journal/Journal.h"
#include "ledger/Ledger.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "settings/DatedName.h"
#include "settings/JournalNow.h"
#include "settings/Setting.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsControls.h"
#include "settings/mdlSettingsNumbers.h"
#include "settings/mdlSettingsPlans.h"
#include "state/mdlTools.h"
#include "state/mdlTransfers.h"
#include "state/mdlVar.h"
#include "types/Convert.h"
#include "ui/mdlGUI.h"
#include "ui/mdlSysTray.h"

#include <algorithm>
#include <bit>
#include <optional>
#include <string>
#include <utility>

namespace tarvik {

namespace {

bool wasResetMeanwhile(const JournalEntry& entry, const IniContent& file) {
    return entry.resetIfGone && !file.exists;
}

void applyReset(JournalEntry& entry) {
    entry.totals = {};
    for (FormerSession& one : entry.sessions) {
        one.session.offset = one.session.counted = {};
    }
    const auto day = std::find_if(settings().begin(), settings().end(), [](const Setting& setting) {
        return std::holds_alternative<DaySetting>(setting.kind);
    });
    entry.settings.at(static_cast<std::size_t>(day - settings().begin())) =
        std::bit_cast<std::int64_t>(entry.resetIfGone->serial());
}

void applySettings(const JournalEntry& entry) {
    State& s = state();
    const Date loaded = s.TransferResetLast;
    forms().frmOptions.load();
    for (std::size_t i = 0; i < entry.settings.size(); ++i) {
        const Setting& setting = settings().at(i);
        takeNumber(setting, entry.settings.at(i), s);
        showEverywhere(setting);
    }
    if (s.TransferResetLast != loaded) {
        // It was not read from the file's text.
        s.FileOfDoubtfulReset.clear();
    }
}

/// After an end in order the file has the settings, and what the user has written there since.
void apply(JournalEntry entry) {
    State& s = state();
    ResetTransfers(true);
    SetFinishedTotals(entry.totals);
    s.TickerBase = entry.tickerBase;
    s.IPAddress = std::move(entry.address);
    s.FormerSessions = std::move(entry.sessions);
    if (!entry.ended) {
        applySettings(entry);
    }
    UpdateGUI();
}

std::string momentText(Date moment) {
    return toText(moment, platform().locale.data());
}

/// What the journal says of the ledger is nowhere else: it is added before the journal gets another
/// name. Where that fails, this run tells it in its own.
void addRemainder() {
    Ledger& kept = ledger();
    const bool isOurs = kept.inUse();
    const bool isThere = !kept.remainder.lines.empty() &&
                         (isOurs || kept.take(ledgerFile()) == Ledger::Finding::Taken);
    const auto missing = isThere ? kept.missing() : std::nullopt;
    if (missing && !kept.add(*missing)) {
        kept.remainder = {};
    }
    if (!isOurs) {
        kept.release();
    }
}

/// Where it cannot be given another name, it is left alone. `why` is what the note begins with.
void putAside(const std::string& why) {
    addRemainder();
    const std::string date = "." + todayText();
    const auto dated = [&](int number) {
        return journalFile(number == 0 ? date : date + "." + wholeToText(number));
    };
    journal().release();
    const Renaming aside = renameToFree(journalFile(), 0, dated);
    if (aside.failure) {
        journal().leave();
    }
    journal().toTell = aside.failure ? aboutUnkeptJournal(why + " The journal is left alone.")
                                     : aboutJournal(why + " The journal is now ", aside.name);
}

constexpr const char* outOfReachText =
    "The journal of the running count was out of reach, and this run has counted since.";
constexpr const char* damagedText = "The journal of the running count is damaged.";

/// Takes over what the last run left. True when it is what stands here now.
bool restore(JournalEntry& entry, const IniContent& file) {
    const bool reset = wasResetMeanwhile(entry, file);
    if (!canBeMeant(entry.settings)) {
        putAside(damagedText);
        return false;
    }
    if (entry.standsOn != file && !reset && !wasSavedMeanwhile(entry, file)) {
        putAside(file.exists
                     ? "The file of settings is another one than the journal of the running "
                       "count stands on."
                     : "The file of settings that the journal of the running count stands on "
                       "is gone.");
        return false;
    }
    if (reset) {
        applyReset(entry);
    }
    if (!entry.ended) {
        journal().toTell =
            std::string(
                "When the program last ended, not all was stored. What it had counted and set "
                "was brought back as it stood at ") +
            momentText(entry.moment);
    }
    apply(entry);
    if (reset) {
        BringPlansBack(*entry.resetIfGone);
    }
    return true;
}

/// Another copy of the program that has it is no news: the start has asked about that.
std::string whatIsLeftAlone(JournalFinding::Kind kind) {
    using Kind = JournalFinding::Kind;
    switch (kind) {
    case Kind::OtherVersion:
        return aboutUnkeptJournal("The journal of the running count is of another version of the "
                                  "program and is left alone.");
    case Kind::Unread:
        return aboutUnkeptJournal(
            "The journal of the running count cannot be read and is left alone.");
    case Kind::Busy:
        return state().OnlyInstance
                   ? aboutUnkeptJournal(
                         "Another program has the journal of the running count, which is "
                         "left alone.")
                   : std::string();
    case Kind::Refused:
        return aboutUnkeptJournal(
            "What has the name of the journal of the running count is no journal "
            "of the user's own and is left alone.");
    default:
        return {};
    }
}

/// It is there and this run's, but nobody could look into it.
bool isOutOfReach(JournalFinding::Kind kind) {
    using Kind = JournalFinding::Kind;
    return kind == Kind::Unread || (kind == Kind::Busy && state().OnlyInstance);
}

/// What the window shows of it: what is not in the ledger yet is no part of that.
std::string shownOf(JournalEntry entry) {
    entry.ledger.reset();
    return bodyOf(entry);
}

/// Nothing was counted, set or reset since a start that could not read the journal.
bool isAsAtStart(const JournalEntry& entry) {
    return shownOf(entry) == journal().shownAtStart;
}

/// Takes what is there. `asAtStart`: nothing was counted or set in this run, so that what the last
/// one left can take its place.
void takeJournal(const IniContent& file, bool asAtStart) {
    Journal& j = journal();
    JournalFinding found = j.take(journalFile(), usualIniFile());
    j.standsOn = file;
    j.toTell = whatIsLeftAlone(found.kind);
    // What was not in the ledger yet belongs to it, whatever the file of settings is.
    ledger().remainder = std::exchange(found.entry.ledger, {}).value_or(LedgerRemainder());
    if (found.kind == JournalFinding::Kind::Damaged) {
        putAside(damagedText);
    } else if (found.kind == JournalFinding::Kind::Entry && !asAtStart) {
        putAside(outOfReachText);
    } else if (found.kind == JournalFinding::Kind::Entry && restore(found.entry, file)) {
        return;
    }
    const auto entry = asAtStart ? entryNow() : std::nullopt;
    if (entry && isOutOfReach(found.kind)) {
        j.shownAtStart = shownOf(*entry);
    } else if (entry) {
        j.needNot(*entry);
    }
}

} // namespace

void LookForJournalAgain() {
    const std::string& read = state().IniFileName;
    if (!read.empty() && read != usualIniFile()) {
        return; // the history shows another file
    }
    Journal& j = journal();
    const std::string shown = j.shownAtStart;
    const auto entry = entryNow();
    if (const auto file = contentOfFile(); entry && file) {
        takeJournal(*file, isAsAtStart(*entry) && state().LineSessions.empty());
        if (!j.inUse()) {
            j.toTell.clear(); // that was told at the start
            j.shownAtStart = shown;
        }
        TellOfJournal();
    }
}

void PutOutdatedJournalAside() {
    const auto entry = entryNow();
    if (!journal().shownAtStart.empty() && entry && !isAsAtStart(*entry)) {
        putAside(outOfReachText);
        TellOfJournal();
    }
}

void RestoreFromJournal() {
    guarded("RestoreFromJournal", [] {
        if (state().IniFileUnread) {
            return; // nobody knows what it stands on
        }
        Journal& j = journal();
        const std::optional<IniContent> file = contentOfFile();
        if (!file) {
            j.toTell = aboutJournal("The file of settings cannot be read any more. The journal of "
                                    "the running count is left alone and not kept.");
            return;
        }
        takeJournal(*file, true);
    });
}

void TellOfJournal() {
    guarded("TellOfJournal", [] {
        if (const std::string text = std::exchange(journal().toTell, {}); !text.empty()) {
            TellSoon(text);
        }
    });
}

} // namespace tarvik
