#pragma once

#include "types/Currency.h"

namespace tarvik {

/// What the session under way has received, bytes: all of it, also beyond the largest Long.
Currency SessionRcvd();
/// What it has sent, bytes.
Currency SessionSent();

/// The counted part of the session under way, bytes: without its offset.
Currency CountedRcvd();
Currency CountedSent();
/// Likewise its time, milliseconds.
Currency CountedDuration();

/// Adds the counted part of the session to the totals and forgets the session; then forgets the
/// totals too if `ResetAll` is true.
void ResetTransfers(bool ResetAll);

} // namespace tarvik
