#pragma once

namespace tarvik {

/// The start: what a run that did not end in order had counted and set, if the INI file is still
/// the one that this stood on. A journal of another content of the file is put aside.
void RestoreFromJournal();
/// Tells what the start has found, in a note, if there is something to tell.
void TellOfJournal();

/// A start could not read the journal. Whoever had it open then may have let it go: looks again,
/// and tells what it has found.
void LookForJournalAgain();

/// The end of a run that could not read the journal: if it has counted or set something, the
/// journal is put aside, for the next start would take it for what stood here last.
void PutOutdatedJournalAside();

} // namespace tarvik
