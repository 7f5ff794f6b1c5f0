#pragma once

#include "ledger/LedgerEntry.h"
#include "plan/Plans.h"

#include <string>
#include <vector>

namespace tarvik {

// What the user has said about a plan, in words.

/// Those of the plan that is shown that hold in its period, the newest first.
std::vector<LedgerNote> NotesOfShownPlan();
/// "16.11.2026 08:20:31"; "The provider says 3.1 GB", "Extended by 500 MB today".
std::string NoteDateText(const LedgerNote& Note);
std::string NoteText(const LedgerNote& Note);

/// By 500 MB or by an hour: of what the plan limits and of which most is used.
Extension UsualExtension(const PlanInUse& one, bool today);
/// "Extend by 500 MB today", "Extend by 500 MB to the period's end"
std::string ExtendText(const PlanInUse& one, bool today);

} // namespace tarvik
