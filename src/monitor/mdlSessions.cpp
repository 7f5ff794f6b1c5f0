#include "monitor/mdlSessions.h"

#include "connection/mdlCode.h"
#include "monitor/mdlFormerSessions.h"
#include "monitor/mdlReadings.h"
#include "ports/Clock.h"
#include "ports/Platform.h"
#include "settings/mdlCarried.h"
#include "state/mdlTools.h"
#include "state/mdlTransfers.h"
#include "state/mdlVar.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

namespace tarvik {

namespace {

using Handles = std::vector<std::uint32_t>;

/// Half of what a Currency holds: totals have room beside it.
constexpr std::uint64_t largestSession = INT64_MAX / Currency::scale / 2;

bool contains(const Handles& handles, std::uint32_t handle) {
    return std::find(handles.begin(), handles.end(), handle) != handles.end();
}

LineSession* knownSession(std::uint32_t handle) {
    auto& sessions = state().LineSessions;
    const auto known = std::find_if(sessions.begin(), sessions.end(), [&](const LineSession& one) {
        return one.connection.hrasconn == handle;
    });
    return known == sessions.end() ? nullptr : &*known;
}

bool isCurrent(const LineSession& session) {
    return session.connection.hrasconn == state().CountedConnection;
}

void noteMoment(LineSession& session) {
    session.readAt = platform().clock.universalMilliseconds();
}

bool sameFigures(const RAS_STATS& a, const RAS_STATS& b) {
    return a.dwBytesRcved == b.dwBytesRcved && a.dwBytesXmited == b.dwBytesXmited &&
           a.dwFramesRcved == b.dwFramesRcved && a.dwFramesXmited == b.dwFramesXmited &&
           a.dwConnectDuration == b.dwConnectDuration;
}

LineSession& sessionOf(const RASCONNA& connection, const RAS_STATS& statistics) {
    LineSession* const known = knownSession(connection.hrasconn);
    if (known != nullptr) {
        return *known;
    }
    LineSession made;
    made.connection = connection;
    made.last = statistics;
    made.totals = totalsOf(statistics);
    noteMoment(made);
    return state().LineSessions.emplace_back(made);
}

Currency capped(std::uint64_t figure) {
    return Currency::fromWhole(static_cast<std::int64_t>(std::min(figure, largestSession)));
}

Amount amountOf(const Traffic& totals) {
    return {.rcvd = capped(totals.rcvd),
            .sent = capped(totals.sent),
            .duration = capped(totals.milliseconds)};
}

/// What counts of a session after a reading. What it has carried within another one since the
/// reading before counts there.
void recount(LineSession& session) {
    const Amount totals = amountOf(session.totals);
    session.within = platform().connections.carrierOf(session.connection.hrasconn) != 0;
    if (state().DeclinedInTick && !session.resumed) {
        session.offset = totals;
    } else if (session.within) {
        session.offset = totals - session.counted;
    }
    session.counted = totals - session.offset;
}

/// Moves what counted of a session that is over into the totals.
void keep(LineSession& session) {
    state().SessionOver = true;
    NoteCarried(session);
    if (isCurrent(session)) {
        ResetTransfers(false);
        return;
    }
    if (!std::exchange(session.inTotals, false)) {
        AddToTotals(session.counted);
    }
    session.offset = session.counted = {};
}

/// The session lives on under a handle that is new for the same entry, if there is one.
bool renumber(LineSession& session, std::span<const RASCONNA> up, std::uint32_t dialled) {
    if (session.hungUp || !platform().connections.renumbers()) {
        return false;
    }
    const auto next = std::find_if(up.begin(), up.end(), [&](const RASCONNA& one) {
        return one.hrasconn != dialled && knownSession(one.hrasconn) == nullptr &&
               sameEntry(one, session.connection);
    });
    if (next == up.end()) {
        return false;
    }
    if (isCurrent(session)) {
        state().CountedConnection = next->hrasconn;
    }
    session.connection = *next;
    session.renumbered = true;
    return true;
}

void noteHungUpSessions() {
    Handles& hungUp = state().HungUpConnections;
    for (LineSession& one : state().LineSessions) {
        one.hungUp = one.hungUp || contains(hungUp, one.connection.hrasconn);
    }
    hungUp.clear();
}

/// The program's own dial, if its connection is up by now: forgotten then.
std::uint32_t takeDialled(const Handles& listed) {
    std::uint32_t& dialled = state().DialledConnection;
    return contains(listed, dialled) ? std::exchange(dialled, 0) : 0;
}

void endSession(LineSession& session, bool otherIsUp) {
    const bool current = isCurrent(session);
    state().SessionOver = true; // the offline handling may keep it
    if (!current || otherIsUp) {
        keep(session);
    }
    if (current) {
        state().CountedConnection = 0;
    }
}

/// A session of the run before is among the connections, and none of the known ones yet.
void addListedBeforeTheFirstTick(Handles& handles) {
    std::uint32_t count = 0;
    if (state().FormerSessions.empty() || InitRas(0, count) != ras::success) {
        return;
    }
    const auto& listed = state().RasConnections;
    for (std::size_t i = 0; i < std::min<std::size_t>(count, listed.size()); ++i) {
        if (knownSession(listed[i].hrasconn) == nullptr) {
            handles.push_back(listed[i].hrasconn);
        }
    }
}

/// It goes on from here: what counts of it counts with it again.
void takeOutOfTotals(LineSession& session) {
    if (std::exchange(session.inTotals, false)) {
        AddToTotals(Amount() - session.counted);
    }
}

} // namespace

void BeginTick(std::uint32_t Count) {
    State& s = state();
    const std::span<const RASCONNA> all(s.RasConnections);
    const auto up = all.first(std::min<std::size_t>(Count, all.size()));
    s.DeclinedInTick = false;
    s.UnreadConnections.clear();
    s.UnsureConnections.clear();
    for (const RASCONNA& one : up) {
        s.UnreadConnections.push_back(one.hrasconn);
    }
    noteHungUpSessions();
    const std::uint32_t dialled = takeDialled(s.UnreadConnections);
    Handles over;
    for (LineSession& one : s.LineSessions) {
        const std::uint32_t handle = one.connection.hrasconn;
        if (handle == dialled ||
            (!contains(s.UnreadConnections, handle) && !renumber(one, up, dialled))) {
            endSession(one, !up.empty());
            over.push_back(handle);
        }
    }
    std::erase_if(s.LineSessions,
                  [&](const LineSession& one) { return contains(over, one.connection.hrasconn); });
    for (const RASCONNA& one : up) {
        if (one.hrasconn != dialled && knownSession(one.hrasconn) == nullptr) {
            LookForFormer(one);
        }
    }
}

Traffic CarryOn(const RASCONNA& Connection, const RAS_STATS& Statistics) {
    const auto wide = platform().connections.lineTotals(Connection.hrasconn);
    if (std::erase(state().UnsureConnections, Connection.hrasconn) != 0) {
        ResumeFormer(Connection, Statistics);
    }
    LineSession& session = sessionOf(Connection, Statistics);
    for (LineSession& other : state().LineSessions) {
        if (&other != &session) {
            takeOutOfTotals(other); // or a limit would count it with what this one carries
        }
    }
    if (isCurrent(session)) {
        session.offset = SessionOffset();
    }
    if (isAnother(session, Statistics, wide)) {
        keep(session);
        session.totals = totalsOf(Statistics);
        session.noted = {};
        session.notedAt = 0;
        session.hungUp = session.resumed = false;
    } else {
        takeOutOfTotals(session);
        addGain(session.totals, session.last, Statistics);
    }
    session.totals = wide.value_or(session.totals);
    if (!sameFigures(session.last, Statistics)) {
        noteMoment(session);
    }
    session.last = Statistics;
    session.renumbered = false;
    recount(session);
    std::erase(state().UnreadConnections, Connection.hrasconn);
    return session.totals;
}

void TakeCounters(const RASCONNA& Connection, const Traffic& Session) {
    State& s = state();
    s.CountedConnection = Connection.hrasconn;
    const Amount figures = amountOf(Session);
    s.BytesRcvdCurrent = Counter::of(figures.rcvd);
    s.BytesSentCurrent = Counter::of(figures.sent);
    s.DurationCurrent = Counter::of(figures.duration);
    if (const LineSession* const known = knownSession(Connection.hrasconn)) {
        SetSessionOffset(known->offset);
    }
}

void LeaveOutWhatHasPassed() {
    State& s = state();
    s.DeclinedInTick = true;
    s.BytesRcvdOffset = s.BytesRcvdCurrent;
    s.BytesSentOffset = s.BytesSentCurrent;
    s.DurationOffset = s.DurationCurrent;
    if (LineSession* const known = knownSession(s.CountedConnection)) {
        recount(*known);
    }
}

void CountWhatHasPassed(const Amount& OffsetBefore) {
    State& s = state();
    s.DeclinedInTick = false;
    SetSessionOffset(OffsetBefore);
    if (LineSession* const known = knownSession(s.CountedConnection)) {
        known->offset = OffsetBefore;
        recount(*known);
    }
}

void ReadTheOthers() {
    const std::vector<RASCONNA> listed = state().RasConnections;
    const Handles unread = state().UnreadConnections;
    for (const RASCONNA& one : listed) {
        bool failed = false;
        const auto statistics =
            contains(unread, one.hrasconn) ? figuresOf(one.hrasconn, failed) : std::nullopt;
        if (statistics) {
            CarryOn(one, *statistics);
        }
    }
}

void NoteFold(std::uint32_t Handle) {
    // Beside one that is only being dialled the session under way is folded at every tick.
    if (Handle == state().CountedConnection && SessionCounted() != Amount()) {
        state().SessionOver = true;
    }
}

void NoteHangUp(std::uint32_t Handle) {
    state().HungUpConnections.push_back(Handle);
}

bool HungUpInTick(std::uint32_t Handle) {
    return contains(state().HungUpConnections, Handle);
}

std::vector<std::uint32_t> ConnectedSessions() {
    Handles candidates;
    for (const LineSession& one : state().LineSessions) {
        if (!one.hungUp) {
            candidates.push_back(one.connection.hrasconn);
        }
    }
    addListedBeforeTheFirstTick(candidates);
    std::erase_if(candidates, [](std::uint32_t handle) {
        return HungUpInTick(handle) || !isConnected(handle);
    });
    return candidates;
}

void NoteDial(std::uint32_t Handle, const std::vector<std::uint32_t>& Before) {
    if (!contains(Before, Handle)) {
        state().DialledConnection = Handle;
    }
}

bool IsResumed(std::uint32_t Handle) {
    const LineSession* const known = knownSession(Handle);
    return known != nullptr && known->resumed;
}

bool HasResumed() {
    const auto& sessions = state().LineSessions;
    return std::any_of(sessions.begin(), sessions.end(),
                       [](const LineSession& one) { return one.resumed; });
}

void EndTick(bool Complete) {
    State& s = state();
    if (!Complete) {
        return;
    }
    s.FirstOnlineUpdate = s.FirstOnlineUpdate && !HasResumed();
    s.FormerSessions.clear();
    for (LineSession& one : s.LineSessions) {
        one.resumed = false;
    }
}

void KeepOtherSessions() {
    guarded("KeepOtherSessions", [] {
        const State& s = state();
        if (s.FirstOnlineUpdate && s.CountedConnection != 0 && !s.DialInStarted &&
            !IsResumed(s.CountedConnection)) {
            // It was to be asked about, and a box before the question was still open.
            LeaveOutWhatHasPassed();
        }
        for (LineSession& one : state().LineSessions) {
            if (!isCurrent(one)) {
                keep(one);
                one.offset = amountOf(one.totals);
            }
        }
    });
}

} // namespace tarvik
