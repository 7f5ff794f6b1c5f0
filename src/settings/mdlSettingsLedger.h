#pragma once

#include "ledger/Unwritten.h"

#include <string>

namespace tarvik {

// The ledger tells what each line has carried, by quarter hours: src/ledger/Ledger.h. What is not
// in it yet stands in the journal.

/// The start: takes the ledger, if the user keeps one, with what the journal says was not in it,
/// and folds it. What is damaged is put aside. The user is told what goes wrong.
void TakeLedger();

/// Tells what the start has found, as soon as notes can be shown.
void TellOfLedger();

/// The user wants one: makes it, unless it is there. False where it cannot be made or taken.
bool BeginLedger();

/// Its name, without the folder.
std::string ledgerName();

/// Writes what the user has said of a plan. False where it cannot be written.
bool AddToLedger(const LedgerNote& Note);

/// Writes what the lines have carried, if it is time for that, and folds once a day. Does nothing
/// while there is no ledger. A failure is told once, in a note, and tried again.
void KeepLedger(LedgerOccasion Occasion);

/// The end: all that can be written has been, and the file is let go. What could not is left to the
/// journal.
void LeaveLedger();

} // namespace tarvik
