#include "settings/mdlSettingsLedger.h"

#include "journal/Journal.h"
#include "ledger/Ledger.h"
#include "plan/Plans.h"
#include "ports/Clock.h"
#include "ports/Files.h"
#include "ports/Platform.h"
#include "settings/DatedName.h"
#include "settings/JournalNow.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsJournal.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"
#include "ui/mdlSysTray.h"

#include <chrono>
#include <string>
#include <utility>

namespace tarvik {

namespace {

using Finding = Ledger::Finding;

Moment now() {
    return momentNow(platform().clock);
}

std::chrono::minutes ahead() {
    return aheadNow(platform().clock);
}

LocalDay today() {
    return dayOf(localOf(now(), ahead()));
}

/// A note with the name of the ledger below its text.
void tell(const std::string& text, const std::string& path) {
    const std::string note = text + CR + nameWithoutFolder(path);
    if (state().AppInitialised) {
        TellSoon(note);
    } else {
        ledger().toTell = note; // nothing can show it yet
    }
}

void tellOfLedger() {
    if (!std::exchange(ledger().failureTold, true)) {
        tell("The ledger cannot be written. What the lines carry is kept until it can.",
             ledgerFile());
    }
}

/// What follows from that for the lines that are up from now on.
constexpr const char* notInIt = " What the lines carry from now on is not in it.";

/// Empty where there is nothing to tell.
std::string whatIsLeftAlone(Finding finding) {
    switch (finding) {
    case Finding::OtherVersion:
        return std::string("The ledger is of another version of the program and is left alone.") +
               notInIt;
    case Finding::Refused:
        return std::string(
                   "What has the name of the ledger is no ledger of the user's own and is left "
                   "alone.") +
               notInIt;
    default:
        return {};
    }
}

/// It is there, and this run's as soon as it can be reached.
bool isOutOfReach(Finding finding) {
    return finding == Finding::Unread || (finding == Finding::Busy && state().OnlyInstance);
}

void putDamagedAside() {
    Ledger& kept = ledger();
    const std::string aside = ledgerFile("." + todayText());
    const bool hasDamage = !kept.damaged().empty();
    const FileResult failure = kept.mend(aside);
    if (hasDamage) {
        tell(failure ? "A part of the ledger cannot be read. It is left where it is."
                     : "A part of the ledger cannot be read. It is now in",
             failure ? ledgerFile() : aside);
    }
}

/// All of it that is not in the file by now is to be added. False where nobody can tell yet what
/// that is.
bool takeBack() {
    Ledger& kept = ledger();
    auto missing = kept.missing();
    if (!missing) {
        return false;
    }
    for (LedgerEntry& one : *missing) {
        kept.unwritten.add(std::move(one));
        plans().forget();
    }
    kept.remainder = {};
    return true;
}

/// The journal tells what is not in the ledger, and where that ends, or there is none. Where it
/// tells something else, the ledger is not touched: after a kill a start would add what is there
/// already.
bool journalTells() {
    const Ledger& kept = ledger();
    if (!journal().shownAtStart.empty()) {
        return false; // nobody knows what it says
    }
    if (!journal().isThere() && kept.unwritten.entries().empty()) {
        return true;
    }
    return KeepJournal(KeepWhen::AtOnce) || !journal().inUse();
}

/// What is in the file may get another place. A journal that is left alone says where what it tells
/// begins, and a later start may read it again.
bool mayMove() {
    return journal().inUse() && journalTells();
}

void fold() {
    Ledger& kept = ledger();
    kept.foldedOn = today();
    if (kept.unwritten.entries().empty() && mayMove()) {
        kept.fold(kept.foldedOn); // where that fails it is longer than it need be, until tomorrow
    }
}

/// It is this run's. Where the file gets shorter, what the journal says of its length is wrong:
/// before that the journal tells only what is not in it.
void settle() {
    plans().forget();
    if (takeBack()) {
        if (mayMove()) {
            putDamagedAside();
        }
        fold();
    }
}

/// As long as there is nothing else to say, a journal need not tell of the ledger either.
void settleJournal() {
    const auto entry = entryNow();
    if (entry && !journal().isThere() && ledger().unwritten.entries().empty()) {
        journal().needNot(*entry);
    }
}

/// The journal has it before the ledger does, and has it no more as soon as the ledger has it:
/// whenever a kill comes, one of them tells it, and a start sees which. Where no journal can be
/// written, that waits for the program's end. False where no more of it can be written now.
bool writePortion(bool isEnd) {
    Ledger& kept = ledger();
    kept.unwritten.beginWriting(roomForLedgerNow());
    bool isTold = journalTells();
    if (!isTold) {
        isTold = journalTells(); // what has failed once may not fail again
    }
    if (!isTold && !isEnd) {
        return false;
    }
    const FileResult failure = kept.add(kept.unwritten.begun());
    if (failure == ErrorNumber::FileNotFound) {
        kept.isKept = false; // the user has deleted it
        kept.unwritten.clear();
    } else if (failure) {
        tellOfLedger();
        return false;
    }
    kept.unwritten.endWriting();
    kept.failureTold = false;
    return true;
}

/// One portion after the other, for the journal need not have room for all of them.
void writeAll(bool isEnd) {
    const Unwritten& unwritten = ledger().unwritten;
    while (!unwritten.entries().empty() && writePortion(isEnd)) {
    }
    if (unwritten.entries().empty()) {
        KeepJournal(KeepWhen::AtOnce);
    }
}

void reachAgain() {
    Ledger& kept = ledger();
    const Finding finding = kept.take(ledgerFile());
    if (finding == Finding::Taken) {
        settle();
    } else if (finding == Finding::Nothing) {
        // There was none, or the user has deleted it.
        kept.isKept = false;
        kept.remainder = {};
        kept.unwritten.clear();
    }
}

} // namespace

void TakeLedger() {
    guarded("TakeLedger", [] {
        Ledger& kept = ledger();
        const Finding finding = kept.take(ledgerFile());
        kept.isKept = finding == Finding::Taken || isOutOfReach(finding);
        kept.isElsewhere = finding == Finding::Busy && !kept.isKept;
        if (finding == Finding::Taken) {
            settle();
            settleJournal();
        } else if (const std::string text = whatIsLeftAlone(finding); !text.empty()) {
            tell(text, ledgerFile());
        } else if (kept.isKept) {
            tellOfLedger();
        }
    });
}

void TellOfLedger() {
    guarded("TellOfLedger", [] {
        if (const std::string text = std::exchange(ledger().toTell, {}); !text.empty()) {
            TellSoon(text);
        }
    });
}

bool BeginLedger() {
    return guarded("BeginLedger", false, [](bool& result) {
        Ledger& kept = ledger();
        if (kept.isKept && !kept.inUse()) {
            reachAgain();
        }
        if (!kept.isKept) {
            plans().forget();
            kept.isKept =
                kept.begin(ledgerFile(), usualIniFile(), now(), ahead()) == Finding::Taken;
            kept.foldedOn = today();
            KeepJournal(KeepWhen::AtOnce);
        }
        result = kept.inUse();
    });
}

std::string ledgerName() {
    return nameWithoutFolder(ledgerFile());
}

bool AddToLedger(const LedgerNote& Note) {
    return guarded("AddToLedger", false,
                   [&](bool& result) { result = ledger().inUse() && !ledger().add(Note); });
}

void KeepLedger(LedgerOccasion Occasion) {
    guarded("KeepLedger", [&] {
        Ledger& kept = ledger();
        if (!kept.isKept) {
            return;
        }
        const std::uint64_t steady = platform().clock.steadyMilliseconds();
        // At the end that can wait: the next start folds.
        const bool isEnd = Occasion == LedgerOccasion::ProgramEnds;
        const std::uint64_t sinceTry = steady - kept.triedAt;
        const bool mayReach = kept.inUse() || sinceTry >= betweenLedgerWrites;
        const bool isNewDay = !isEnd && today() != kept.foldedOn && mayReach;
        if (!isNewDay && !isWriteDue(kept.unwritten, Occasion, now(), sinceTry)) {
            return;
        }
        kept.triedAt = steady;
        if (!kept.inUse()) {
            reachAgain();
        }
        if (kept.inUse() && !takeBack()) { // either was out of reach at the start
            return;
        }
        if (kept.inUse() && !kept.unwritten.entries().empty()) {
            writeAll(isEnd);
        }
        if (kept.inUse() && isNewDay) {
            fold();
            KeepJournal(KeepWhen::AtOnce);
        }
    });
}

void LeaveLedger() {
    guarded("LeaveLedger", [] { ledger().release(); });
}

} // namespace tarvik
