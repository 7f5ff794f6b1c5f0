#include "settings/mdlSettingsJournal.h"

#include "forms/Forms.h"
#include "journal/Journal.h"
#include "ports/Clock.h"
#include "ports/Files.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "ports/PrivateProfile.h"
#include "ports/Program.h"
#include "settings/DatedName.h"
#include "settings/Setting.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsControls.h"
#include "settings/mdlSettingsNumbers.h"
#include "state/mdlConst.h"
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

constexpr const char* title = "Velmars Tarvik";

/// The file's name with this before its ending.
std::string journalFile(const std::string& addition = {}) {
    const std::string ini = usualIniFile();
    const std::size_t ending = std::string(IniFileBaseName).rfind('.');
    return ini.substr(0, ini.size() - std::string(IniFileBaseName).size()) +
           std::string(IniFileBaseName).substr(0, ending) + addition + ".journal";
}

std::string nameOf(const std::string& path) {
    return path.substr(path.rfind(platform().program.pathSeparator()) + 1);
}

/// As the file says, if it is there.
IniContent contentWithFile() {
    return {.exists = true,
            .lastState = GetStringFromINI(SettingsSection, keys::lastState),
            .lastDateStamp = GetLongFromINI(SettingsSection, keys::lastDateStamp).toLong().value()};
}

/// Nothing where the file cannot be read: then nobody knows.
std::optional<IniContent> contentOfFile() {
    const ProfileReading reading(platform().profile, usualIniFile());
    if (!reading.readable()) {
        return std::nullopt;
    }
    IniContent content = contentWithFile();
    content.exists = platform().files.Dir(usualIniFile()) == FileKind::File;
    return content;
}

/// The totals that a start takes from the file alone.
std::optional<Amount> totalsOfFile() {
    const ProfileReading reading(platform().profile, usualIniFile());
    if (!reading.readable()) {
        return std::nullopt;
    }
    return recordOf(GetStringFromINI(SettingsSection, keys::lastState));
}

/// The session whose figures are shown is still to be asked about: the question, or a box before
/// it, is open. The next start asks.
bool awaitsQuestion(const LineSession& one) {
    const State& s = state();
    return (s.QuestionOpen || (s.FirstOnlineUpdate && !s.DialInStarted)) && !one.resumed &&
           one.connection.hrasconn == s.CountedConnection;
}

/// Those that go on when the program is started again, each with what counts of it. What the
/// program has hung up is as good as over.
std::vector<FormerSession> sessionsUnderWay() {
    const State& s = state();
    std::vector<FormerSession> result = s.FormerSessions;
    for (const LineSession& one : s.LineSessions) {
        if (one.hungUp || awaitsQuestion(one)) {
            continue;
        }
        FormerSession& kept = result.emplace_back();
        kept.session = one;
        kept.mark = platform().connections.sessionMark(one.connection.hrasconn);
        if (one.connection.hrasconn == s.CountedConnection) {
            kept.session.offset = SessionOffset();
            kept.session.counted = SessionCounted();
        }
    }
    return result;
}

Amount allThatCounts() {
    const State& s = state();
    const bool asked = std::any_of(s.LineSessions.begin(), s.LineSessions.end(), awaitsQuestion);
    Amount all = asked ? FinishedTotals() : OverallAmount();
    for (const LineSession& one : s.LineSessions) {
        if (one.connection.hrasconn != s.CountedConnection && !one.inTotals) {
            all = all + one.counted;
        }
    }
    return all;
}

/// What is to be kept; nothing where the totals are beyond what can be, or below zero, as a file
/// may have them: that is left to the file.
std::optional<JournalEntry> entryNow() {
    const State& s = state();
    try {
        JournalEntry entry;
        entry.moment = momentOf(platform().clock);
        entry.standsOn = journal().standsOn;
        entry.resetIfGone = journal().resetIfGone;
        entry.totals = allThatCounts();
        entry.tickerBase = std::clamp(s.TickerBase, Currency(0), largestKept);
        entry.settings = settingsAsNumbers(s);
        entry.address = s.IPAddress;
        entry.sessions = sessionsUnderWay();
        return canBeKept(entry.totals) ? std::optional(std::move(entry)) : std::nullopt;
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
}

void tell(const std::string& text) {
    ShowBalloonTip(text, title, informationIcon, balloonMilliseconds);
}

void tellOfFailure() {
    if (!std::exchange(journal().failureTold, true)) {
        tell(std::string("The journal of the running count cannot be written. What is counted from "
                         "now on is stored when the program ends.") +
             CR + nameOf(journalFile()));
    }
}

void write(const JournalEntry& entry, bool atOnce) {
    if (!journal().keep(entry, atOnce)) {
        tellOfFailure();
    }
}

/// Where no file was, there is one that tells nothing of what was counted: the program's own mark
/// that it runs no longer, after a save that failed.
bool holdsNothing(const JournalEntry& entry, const IniContent& file) {
    return !entry.standsOn.exists && file.lastState.empty() && file.lastDateStamp == 0;
}

/// The journal's state became the file's: a save of the program's own that it could not note any
/// more.
bool wasSavedMeanwhile(const JournalEntry& entry, const IniContent& file) {
    const std::int32_t records = file.lastDateStamp - entry.standsOn.lastDateStamp;
    const bool ownSave = records == 1 || (records == 0 && file.exists && !entry.standsOn.exists);
    return ownSave && totalsOfFile() == entry.totals;
}

/// A save may have failed after the file was in its place.
void noteOwnSave() {
    const auto entry = entryNow();
    const auto file = contentOfFile();
    if (entry && file && wasSavedMeanwhile(*entry, *file)) {
        journal().standsOn = *file;
    }
}

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

/// The same with the name below, as a note has it.
std::string aboutJournal(const std::string& text, const std::string& path = journalFile()) {
    return text + CR + nameOf(path);
}

/// What follows where a run keeps no journal.
const std::string notKept = " What is counted from now on is stored when the program ends.";

/// Where it cannot be given another name, it is left alone. `why` is what the note begins with.
void putAside(const std::string& why) {
    const std::string date = "." + todayText();
    const auto dated = [&](int number) {
        return journalFile(number == 0 ? date : date + "." + wholeToText(number));
    };
    journal().release();
    const Renaming aside = renameToFree(journalFile(), 0, dated);
    if (aside.failure) {
        journal().leave();
    }
    journal().toTell = aside.failure ? aboutJournal(why + " The journal is left alone." + notKept)
                                     : aboutJournal(why + " The journal is now ", aside.name);
}

constexpr const char* damagedText = "The journal of the running count is damaged.";

/// Takes over what the last run left. True when it is what stands here now.
bool restore(JournalEntry& entry, const IniContent& file) {
    const bool reset = wasResetMeanwhile(entry, file);
    if (!canBeMeant(entry.settings)) {
        putAside(damagedText);
        return false;
    }
    const bool same = entry.standsOn == file || holdsNothing(entry, file);
    if (!same && !reset && !wasSavedMeanwhile(entry, file)) {
        putAside("The file of settings is another one than the journal of the running count stands "
                 "on.");
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
    return true;
}

/// Another copy of the program that has it is no news: the start has asked about that.
std::string whatIsLeftAlone(JournalFinding::Kind kind) {
    using Kind = JournalFinding::Kind;
    switch (kind) {
    case Kind::OtherVersion:
        return aboutJournal("The journal of the running count is of another version of the program "
                            "and is left alone." +
                            notKept);
    case Kind::Unread:
        return aboutJournal("The journal of the running count cannot be read and is left alone." +
                            notKept);
    case Kind::Busy:
        return state().OnlyInstance
                   ? aboutJournal("Another program has the journal of the running count, which is "
                                  "left alone." +
                                  notKept)
                   : std::string();
    case Kind::Refused:
        return aboutJournal("What has the name of the journal of the running count is none of the "
                            "user's and is left alone." +
                            notKept);
    default:
        return {};
    }
}

/// It is there and this run's, but nobody could look into it.
bool isOutOfReach(JournalFinding::Kind kind) {
    using Kind = JournalFinding::Kind;
    return kind == Kind::Unread || (kind == Kind::Busy && state().OnlyInstance);
}

/// Takes what is there. `asAtStart`: nothing was counted or set in this run, so that what the last
/// one left can take its place.
void takeJournal(const IniContent& file, bool asAtStart) {
    Journal& j = journal();
    JournalFinding found = j.take(journalFile(), usualIniFile());
    j.standsOn = file;
    j.toTell = whatIsLeftAlone(found.kind);
    if (found.kind == JournalFinding::Kind::Damaged) {
        putAside(damagedText);
    } else if (found.kind == JournalFinding::Kind::Entry && !asAtStart) {
        putAside(
            "The journal of the running count was out of reach, and this run has counted since.");
    } else if (found.kind == JournalFinding::Kind::Entry && restore(found.entry, file)) {
        return;
    }
    const auto entry = asAtStart ? entryNow() : std::nullopt;
    if (entry && isOutOfReach(found.kind)) {
        j.shownAtStart = bodyOf(*entry);
    } else if (entry) {
        j.needNot(*entry);
    }
}

/// Whoever had the journal open at the start may have let it go.
void lookAgain() {
    Journal& j = journal();
    const std::string shown = j.shownAtStart;
    const auto entry = entryNow();
    if (const auto file = contentOfFile(); entry && file) {
        takeJournal(*file, bodyOf(*entry) == shown && state().LineSessions.empty());
        if (!j.inUse()) {
            j.toTell.clear(); // that was told at the start
            j.shownAtStart = shown;
        }
        TellOfJournal();
    }
}

} // namespace

void KeepJournal(KeepWhen When) {
    guarded("KeepJournal", [&] {
        Journal& j = journal();
        const bool atOnce = When == KeepWhen::AtOnce;
        if (!j.shownAtStart.empty() && j.isDue()) {
            lookAgain();
        }
        if (j.inUse() && (atOnce || j.isDue())) {
            if (const auto entry = entryNow()) {
                write(*entry, atOnce);
            } else {
                tellOfFailure(); // what it says, if it is there, gets older and older
            }
        }
    });
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
            tell(text);
        }
    });
}

void NoteRecord() {
    guarded("NoteRecord", [] { journal().ownSave = contentWithFile(); });
}

void NoteSave() {
    guarded("NoteSave", [] {
        // Where that cannot be read, one record more is known for the program's own.
        if (const auto file = journal().inUse() ? contentOfFile() : std::nullopt) {
            journal().standsOn = *file;
            KeepJournal(KeepWhen::AtOnce);
        }
    });
}

void AnnounceReset() {
    guarded("AnnounceReset", [] {
        const auto file = contentOfFile();
        const bool nothingToPutAside = file && !file->exists;
        if (journal().inUse() && !nothingToPutAside) {
            // Where that cannot be read, one record more is known for the program's own.
            journal().standsOn = file.value_or(journal().standsOn);
            journal().resetIfGone = platform().clock.currentDate();
            KeepJournal(KeepWhen::AtOnce);
        }
    });
}

void WithdrawReset() {
    guarded("WithdrawReset", [] {
        Journal& j = journal();
        j.resetIfGone.reset();
        if (platform().files.Dir(usualIniFile()) == FileKind::None) {
            j.standsOn = {};
        } else {
            noteOwnSave();
            KeepJournal(KeepWhen::AtOnce); // it comes no more, whatever becomes of the file
        }
    });
}

void EndJournal(bool Saved) {
    guarded("EndJournal", [&] {
        Journal& j = journal();
        if (!j.inUse()) {
            return;
        }
        std::optional<JournalEntry> entry = entryNow();
        const auto file = Saved ? contentOfFile() : std::nullopt;
        const bool fileTellsAll = !entry || totalsOfFile() == entry->totals;
        // Another copy has saved its own.
        const bool isNewer = file && *file != j.standsOn && *file != j.ownSave;
        if (Saved && (fileTellsAll || isNewer) && j.end()) {
            return;
        }
        if (entry && file && (fileTellsAll || !isNewer)) {
            entry->standsOn = *file;
            entry->ended = true;
            entry->sessions.clear(); // a line that is up is asked about, as after any end in order
        }
        if (entry) {
            write(*entry, true);
        }
        j.leave();
    });
}

} // namespace tarvik
