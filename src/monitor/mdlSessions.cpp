#include "monitor/mdlSessions.h"

#include "ports/Platform.h"
#include "startup/mdlVar.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <optional>
#include <span>

namespace tarvik {

namespace {

constexpr std::uint64_t largestLong = std::numeric_limits<std::int32_t>::max();
/// Half of what a Currency holds: totals have room beside it.
constexpr std::uint64_t largestSession = INT64_MAX / Currency::scale / 2;

/// What a counter of 32 bits has gained, also when it has passed its end meanwhile.
std::uint32_t gained(std::uint32_t before, std::uint32_t now) {
    return now - before;
}

/// Frames take a thousand times longer than bytes to pass their end: where both have fallen, they
/// were counted anew.
bool anewRcvd(const RAS_STATS& before, const RAS_STATS& now) {
    return now.dwBytesRcved < before.dwBytesRcved && now.dwFramesRcved < before.dwFramesRcved;
}

bool anewSent(const RAS_STATS& before, const RAS_STATS& now) {
    return now.dwBytesXmited < before.dwBytesXmited && now.dwFramesXmited < before.dwFramesXmited;
}

/// The time since the connection was established never falls, but starts again at its end after
/// seven weeks. A reading that close to the end is only then the first of another session when
/// everything else was counted anew, too.
bool younger(const RAS_STATS& before, const RAS_STATS& now) {
    constexpr std::uint32_t day = 24 * 60 * 60 * 1000;
    return now.dwConnectDuration < before.dwConnectDuration &&
           (gained(before.dwConnectDuration, now.dwConnectDuration) > day ||
            (anewRcvd(before, now) && anewSent(before, now)));
}

/// Another program may have cleared the counters, always both directions at once.
void add(LineTotals& totals, const RAS_STATS& before, const RAS_STATS& now) {
    const bool cleared = anewRcvd(before, now) || anewSent(before, now);
    totals.bytesRcvd += cleared ? now.dwBytesRcved : gained(before.dwBytesRcved, now.dwBytesRcved);
    totals.bytesSent +=
        cleared ? now.dwBytesXmited : gained(before.dwBytesXmited, now.dwBytesXmited);
    totals.duration += gained(before.dwConnectDuration, now.dwConnectDuration);
}

LineTotals totalsOf(const RAS_STATS& statistics) {
    return {.bytesSent = statistics.dwBytesXmited,
            .bytesRcvd = statistics.dwBytesRcved,
            .duration = statistics.dwConnectDuration};
}

/// Whether figures under a new handle can be of the same session: none of them has fallen.
bool continues(const LineTotals& before, const LineTotals& now) {
    return now.duration >= before.duration && now.bytesRcvd >= before.bytesRcvd &&
           now.bytesSent >= before.bytesSent;
}

/// Whether a reading is of another session than the one before. `wide` are its figures where the
/// service counts further than the reading does.
bool isAnother(const LineSession& session, const RAS_STATS& now,
               const std::optional<LineTotals>& wide) {
    if (session.renumbered) {
        return wide ? !continues(session.totals, *wide)
                    : !continues(totalsOf(session.last), totalsOf(now));
    }
    return wide ? wide->duration < session.totals.duration : younger(session.last, now);
}

LineSession* knownSession(std::uint32_t handle) {
    auto& sessions = state().LineSessions;
    const auto known = std::find_if(sessions.begin(), sessions.end(), [&](const LineSession& one) {
        return one.connection.hrasconn == handle;
    });
    return known == sessions.end() ? nullptr : &*known;
}

LineSession& sessionOf(const RASCONNA& connection, const RAS_STATS& statistics) {
    LineSession* const known = knownSession(connection.hrasconn);
    return known != nullptr
               ? *known
               : state().LineSessions.emplace_back(LineSession{
                     .connection = connection, .last = statistics, .totals = totalsOf(statistics)});
}

bool sameEntry(const RASCONNA& a, const RASCONNA& b) {
    return std::strncmp(a.szEntryName, b.szEntryName, sizeof a.szEntryName) == 0;
}

/// The counted session lives on under a handle that is new for the same entry, if there is one.
bool renumberCounted(std::span<const RASCONNA> up) {
    State& s = state();
    LineSession* const counted = knownSession(s.CountedConnection);
    const auto next = std::find_if(up.begin(), up.end(), [&](const RASCONNA& one) {
        return counted != nullptr && knownSession(one.hrasconn) == nullptr &&
               sameEntry(one, counted->connection);
    });
    if (next == up.end()) {
        return false;
    }
    counted->connection = *next;
    counted->renumbered = true;
    s.CountedConnection = next->hrasconn;
    return true;
}

/// A figure as the counter, which stops at the largest Long, and what it has beyond.
void take(std::uint64_t figure, Long& counter, Currency& beyond) {
    const std::uint64_t whole = std::min(figure, largestSession);
    const std::uint64_t held = std::min(whole, largestLong);
    counter = static_cast<std::int32_t>(held);
    beyond = Currency::fromWhole(static_cast<std::int64_t>(whole - held));
}

/// Moves what was counted of a connection when the tick began into the totals, also when the
/// figures of another one that is up have taken its place since.
void foldCounted(std::uint32_t handle) {
    State& s = state();
    if (s.CountedConnection == handle) {
        ResetTransfers(false);
    } else if (s.Displaced.connection == handle) {
        s.BytesRcvdTotal = s.BytesRcvdTotal + s.Displaced.bytesRcvd;
        s.BytesSentTotal = s.BytesSentTotal + s.Displaced.bytesSent;
        s.DurationTotal = s.DurationTotal + s.Displaced.duration;
        // What was declined was of the session that is over.
        s.BytesRcvdOffset = s.BytesSentOffset = s.DurationOffset = 0;
        s.BytesRcvdOffsetBeyond = s.BytesSentOffsetBeyond = s.DurationOffsetBeyond = 0;
        s.Displaced = {};
    }
}

} // namespace

LineTotals CarryOn(const RASCONNA& Connection, const RAS_STATS& Statistics) {
    const auto wide = platform().connections.lineTotals(Connection.hrasconn);
    LineSession& session = sessionOf(Connection, Statistics);
    if (isAnother(session, Statistics, wide)) {
        foldCounted(Connection.hrasconn);
        session.totals = totalsOf(Statistics);
    } else {
        add(session.totals, session.last, Statistics);
    }
    session.totals = wide.value_or(session.totals);
    session.last = Statistics;
    session.renumbered = false;
    return session.totals;
}

void TakeCounters(const RASCONNA& Connection, const LineTotals& Session) {
    State& s = state();
    if (s.CountedConnection != Connection.hrasconn && s.Displaced.connection == 0) {
        s.Displaced = {.connection = s.CountedConnection,
                       .bytesRcvd = CountedRcvd(),
                       .bytesSent = CountedSent(),
                       .duration = CountedDuration()};
    }
    s.CountedConnection = Connection.hrasconn;
    take(Session.bytesRcvd, s.BytesRcvdCurrent, s.BytesRcvdBeyond);
    take(Session.bytesSent, s.BytesSentCurrent, s.BytesSentBeyond);
    take(Session.duration, s.DurationCurrent, s.DurationBeyond);
}

void ForgetEndedSessions(std::uint32_t Count) {
    State& s = state();
    s.Displaced = {};
    const std::span<const RASCONNA> all(s.RasConnections);
    const auto up = all.first(std::min<std::size_t>(Count, all.size()));
    const auto ended = [&](std::uint32_t handle) {
        return std::none_of(up.begin(), up.end(),
                            [&](const RASCONNA& one) { return one.hrasconn == handle; });
    };
    if (!up.empty() && s.CountedConnection != 0 && ended(s.CountedConnection) &&
        !renumberCounted(up)) {
        ResetTransfers(false);
        s.CountedConnection = 0;
    }
    std::erase_if(s.LineSessions,
                  [&](const LineSession& one) { return ended(one.connection.hrasconn); });
}

} // namespace tarvik
