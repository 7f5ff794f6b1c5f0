#pragma once

#include "types/PlanKey.h"

#include <string>

namespace tarvik {

// What the user says about a plan in use. It is written into the ledger at once, and can be taken
// back.

/// The provider says that so much of the period of the plan that is shown is used ("3.4 GB", "12
/// hours"). What cannot be read, or is not counted by the plan, gets its reason in the window.
void SayProvidersFigure(const std::string& Text);

/// So much more of the plan that is shown may be used, today or to the period's end.
void ExtendShownPlan(const std::string& Text, bool Today);

/// The same by 500 MB or by an hour, of that of which most is used. False where it could not be
/// written, or the plan is no more.
bool ExtendPlan(const PlanKey& Key, bool Today);

/// The note in that row of the list does not hold any more; nothing for a row that is none.
void TakeBackNote(int Row);

} // namespace tarvik
