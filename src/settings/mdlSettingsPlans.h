#pragma once

#include "types/Date.h"

namespace tarvik {

// The user's plans in the file of settings, each in a section of its own. Where the user has none,
// nothing is written there.

/// Takes the plans that stand in the file in use, of which a reading is under way.
void LoadPlans();

/// That file has plans and no settings: a backup has taken all else away, or nothing else was
/// written yet. For the count and the settings it is no file.
bool HasOnlyPlans();

/// The same from the backup of a day, for a file that went away with it and was not written anew
/// before a kill. They are written now.
void BringPlansBack(Date Day);

/// Writes to the file in use what has changed since it was read or written, and what it does not
/// have: another copy of the program may have written the rest. False where that cannot be written.
/// Within an update of the file it is part of that.
bool WritePlans();
/// That is in the file now.
void NotePlansWritten();

/// The same as an update of its own, of the file in the program's folder.
bool SavePlans();

} // namespace tarvik
