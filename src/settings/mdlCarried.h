#pragma once

#include "ledger/Unwritten.h"

#include <optional>

namespace tarvik {

struct LineSession;

/// The ledger was told all that the session has carried by now.
void MarkTold(LineSession& Session);

/// Tells the ledger what the session has carried since it was told last. What the user has declined
/// to count is left out, and what was carried while there was no ledger.
void NoteCarried(LineSession& Session);

/// What `NoteCarried` would tell of the session; nothing where there is nothing to tell. It may be
/// asked for within a tick, and while the user is asked about the session.
std::optional<Growth> NotYetTold(const LineSession& Session);

/// The same as the first of every session.
void NoteCarried();

} // namespace tarvik
