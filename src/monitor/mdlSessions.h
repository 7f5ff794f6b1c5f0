#pragma once

#include "ports/ConnectionProvider.h"
#include "types/Amount.h"

#include <cstdint>
#include <vector>

namespace tarvik {

// Which session a reading is of, and what of each session counts. docs/counting.md has the rules
// with examples.

/// Begins a tick on the first `Count` connections of the last enumeration. What counted of the
/// sessions that are over moves into the totals; the session whose figures are the current ones
/// stays for the offline handling if nothing is up. A new handle for the same entry may be the same
/// session, where the service renumbers them and the program has neither hung up nor dialled: the
/// first reading tells.
void BeginTick(std::uint32_t Count);

/// What a connection has carried since it was established, `Statistics` being the newest reading of
/// its 32-bit counters. Where the service counts no further, what was added since the reading
/// before is taken modulo 2^32; a first reading is taken as it is. Where a reading cannot be of the
/// session before, what counted of that one moves into the totals.
Traffic CarryOn(const RASCONNA& Connection, const RAS_STATS& Statistics);

/// Makes a connection's figures those of the session under way, with its own offset.
void TakeCounters(const RASCONNA& Connection, const Traffic& Session);

/// Leaves out what the session under way has carried so far, and likewise every one that is read
/// later in this tick.
void LeaveOutWhatHasPassed();

/// Takes that back, the offset of the session under way being what it was before.
void CountWhatHasPassed(const Amount& OffsetBefore);

/// Reads the connections whose turn in the tick has not come, before they are hung up: what they
/// have carried is not lost. A reading that fails is left out without a word.
void ReadTheOthers();

/// That connection is listed and not connected, and the session under way is about to be folded.
void NoteFold(std::uint32_t Handle);

/// The program has hung up that connection.
void NoteHangUp(std::uint32_t Handle);
/// The program has hung it up since the tick began.
bool HungUpInTick(std::uint32_t Handle);
/// The handles of the known sessions that are connected now and that the program has not hung up.
/// Until a tick has looked for the sessions of the run before, every connection is known. Lists the
/// connections then, and shows a failure of that.
std::vector<std::uint32_t> ConnectedSessions();
/// The program's own dial gave that handle: its session is a new one, unless it was among the
/// sessions connected before. A dial of what is up already gives the handle of that.
void NoteDial(std::uint32_t Handle, const std::vector<std::uint32_t>& Before);

/// A session that was up before the program was started again, found in this tick: nobody is asked
/// about it.
bool IsResumed(std::uint32_t Handle);
/// There is one.
bool HasResumed();
/// Ends what a tick has begun; `Complete` if it could read everything. Only the first such tick of
/// a run goes on with sessions of the run before.
void EndTick(bool Complete);

/// The program ends: moves what counts of the sessions beside the one whose figures are the current
/// ones into the totals. A session that was still to be asked about counts as declined.
void KeepOtherSessions();

} // namespace tarvik
