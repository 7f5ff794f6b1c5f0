#pragma once

#include "journal/JournalEntry.h"
#include "types/Amount.h"

#include <cstddef>
#include <optional>
#include <string>

namespace tarvik {

// What keeping the journal and restoring from it have in common.

/// The full paths of the journal and the ledger, with this before the ending of the name.
std::string journalFile(const std::string& addition = {});
std::string ledgerFile(const std::string& addition = {});

/// A note with the name of that file below its text.
std::string aboutJournal(const std::string& text, const std::string& path = journalFile());

/// The same of a run that keeps no journal, and what follows from that.
std::string aboutUnkeptJournal(const std::string& text);

/// The content of the INI file as it is now. Nothing where the file cannot be read: then nobody
/// knows.
std::optional<IniContent> contentOfFile();

/// The same as the file says, if it is there.
IniContent contentWithFile();

/// The totals that a start takes from the file alone; nothing where it cannot be read.
std::optional<Amount> totalsOfFile();

/// What is to be kept; nothing where the totals are beyond what can be, or below zero, as a file
/// may have them: that is left to the file.
std::optional<JournalEntry> entryNow();

/// Bytes that the journal has for what is not in the ledger yet, beside all else that it tells now.
std::size_t roomForLedgerNow();

/// The file is of the program's own making since: the journal's state became its newest record,
/// which could not be noted any more, or there is a file where none was that tells nothing of what
/// was counted (a save without totals, or the mark of a program that runs no longer after a save
/// that failed).
bool wasSavedMeanwhile(const JournalEntry& entry, const IniContent& file);

} // namespace tarvik
