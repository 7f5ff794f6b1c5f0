#pragma once

namespace tarvik {

// The journal keeps what `SaveState` would write, so that a kill or a power cut loses no more than
// what passed since it was last written. What an entry is made of: src/journal/JournalEntry.h.

/// How soon what has changed is to be kept.
enum class KeepWhen {
    Due,    ///< after some seconds, and on the disk after some more
    AtOnce, ///< now, on the disk
};

/// Keeps what stands in the state, if it has changed. Does nothing before the start has looked for
/// a journal, and after the end. A failure is told once, in a note. True where the journal tells
/// what stands there, with `AtOnce` on the disk.
bool KeepJournal(KeepWhen When);

/// The totals were reset: what a journal that is out of reach says does not come back, though there
/// was nothing to reset here.
void OverruleJournal();

/// The newest record of the file holds the totals, from the save under way on.
void NoteRecord();

/// The program has saved its state and goes on: what comes next stands on the file as it is now.
void NoteSave();
/// The program has saved its state and is about to put the file aside for a reset. A start that
/// finds the file gone takes the reset for done.
void AnnounceReset();
/// The file was put aside, or could not be: what comes next stands on what is there now. `Gone`
/// tells that it was deleted: a look at its name may fail.
void WithdrawReset(bool Gone);

/// The end: the journal goes if the INI file alone restores what the window shows. `Saved` tells
/// whether the state was saved.
void EndJournal(bool Saved);

} // namespace tarvik
