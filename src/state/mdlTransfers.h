#pragma once

#include "state/mdlVar.h"
#include "types/Amount.h"
#include "types/Counter.h"
#include "types/Currency.h"

#include <vector>

namespace tarvik {

/// One figure in all its parts: bytes received, bytes sent, or milliseconds.
struct Tally {
    Currency finished; ///< of the sessions that are over, since the last reset
    Counter current;   ///< of the session under way
    Counter offset;    ///< of it, what is not to be counted

    /// What counts of the session under way.
    Currency counted() const { return current.whole() - offset.whole(); }
    /// What is shown as total, recorded and held against the limits.
    Currency overall() const { return finished + counted(); }
    /// Also what is not to be counted.
    Currency carried() const { return finished + current.whole(); }
    /// The counted part as the window shows it: figures of 32 bits, whose difference may be too
    /// large (Overflow), and then what they have beyond.
    Currency shown() const {
        return Currency(current.figure() - offset.figure()) + current.beyond() - offset.beyond();
    }
};

// The figures as they stand.
Tally Rcvd();
Tally Sent();
Tally Duration();

// The same of all three figures.
/// Of the sessions that are over, since the last reset.
Amount FinishedTotals();
void SetFinishedTotals(const Amount& Totals);
/// What counts of the session under way.
Amount SessionCounted();
/// What is shown as total.
Amount OverallAmount();

/// Adds to the totals of the sessions that are over.
void AddToTotals(const Amount& More);

/// What of the session under way is not to be counted.
Amount SessionOffset();
void SetSessionOffset(const Amount& Offset);

/// The sessions that go on when the program is started again, each with what counts of it. What the
/// program has hung up is as good as over, and one that the user is still to be asked about is
/// found anew.
std::vector<FormerSession> SessionsUnderWay();
/// All that counts, that of these sessions included.
Amount AllThatCounts();

/// Adds the counted part of the session to the totals and forgets the session; then forgets the
/// totals too if `ResetAll` is true.
void ResetTransfers(bool ResetAll);

} // namespace tarvik
