#include "settings/mdlSettingsJournal.h"

#include "journal/Journal.h"
#include "ports/Clock.h"
#include "ports/Files.h"
#include "ports/Platform.h"
#include "settings/JournalNow.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsRestore.h"
#include "state/mdlTools.h"
#include "ui/mdlSysTray.h"

#include <optional>
#include <string>
#include <utility>

namespace tarvik {

namespace {

void tellOfFailure() {
    if (!std::exchange(journal().failureTold, true)) {
        TellSoon(aboutUnkeptJournal("The journal of the running count cannot be written."));
    }
}

bool write(const JournalEntry& entry, bool atOnce) {
    const bool isWritten = journal().keep(entry, atOnce);
    if (!isWritten) {
        tellOfFailure();
    }
    return isWritten;
}

/// A save may have failed after the file was in its place.
void noteOwnSave() {
    const auto entry = entryNow();
    const auto file = contentOfFile();
    if (entry && file && wasSavedMeanwhile(*entry, *file)) {
        journal().standsOn = *file;
    }
}

} // namespace

bool KeepJournal(KeepWhen When) {
    return guarded("KeepJournal", false, [&](bool& result) {
        Journal& j = journal();
        const bool atOnce = When == KeepWhen::AtOnce;
        TellWhatWaits();
        if (!j.shownAtStart.empty() && j.isDue()) {
            LookForJournalAgain();
        }
        if (j.inUse() && (atOnce || j.isDue())) {
            if (const auto entry = entryNow()) {
                result = write(*entry, atOnce);
            } else {
                tellOfFailure(); // what it says, if it is there, gets older and older
            }
        }
    });
}

void OverruleJournal() {
    if (std::string& shown = journal().shownAtStart; !shown.empty()) {
        shown = "what no entry says";
    }
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

void WithdrawReset(bool Gone) {
    guarded("WithdrawReset", [&] {
        Journal& j = journal();
        j.resetIfGone.reset();
        if (Gone || platform().files.Dir(usualIniFile()) == FileKind::None) {
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
            PutOutdatedJournalAside();
            return;
        }
        std::optional<JournalEntry> entry = entryNow();
        const auto file = Saved ? contentOfFile() : std::nullopt;
        const bool fileTellsAll = !entry || totalsOfFile() == entry->totals;
        // Another copy has saved its own.
        const bool isNewer = file && *file != j.standsOn && *file != j.ownSave;
        const bool ledgerHasAll = !entry || !entry->ledger || entry->ledger->lines.empty();
        if (Saved && (fileTellsAll || isNewer) && ledgerHasAll && j.end()) {
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
