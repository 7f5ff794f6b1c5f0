#pragma once

namespace tarvik {

/// Clears the totals when the calendar boundary after the last reset has passed, after a backup of
/// the file if that is wanted. Once for every tick with a connection that is up.
void CheckReset();

/// Clears the totals if the user says so. The date of the last reset stays.
void ResetTransfersRequest();

} // namespace tarvik
