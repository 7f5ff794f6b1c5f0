#include "monitor/mdlSessions.h"

#include "ports/Platform.h"
#include "startup/mdlVar.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
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

/// The time since the connection was established never falls, but starts again at its end after
/// seven weeks. A reading that close to the end is not the first of another session.
bool younger(const RAS_STATS& before, const RAS_STATS& now) {
    constexpr std::uint32_t day = 24 * 60 * 60 * 1000;
    return now.dwConnectDuration < before.dwConnectDuration &&
           gained(before.dwConnectDuration, now.dwConnectDuration) > day;
}

/// What a direction has gained. Another program may have cleared the counters: then the frames,
/// which take a thousand times longer to pass their end, have fallen too.
std::uint32_t bytesGained(std::uint32_t before, std::uint32_t now, std::uint32_t framesBefore,
                          std::uint32_t framesNow) {
    return now < before && framesNow < framesBefore ? now : gained(before, now);
}

void add(LineTotals& totals, const RAS_STATS& before, const RAS_STATS& now) {
    totals.bytesRcvd +=
        bytesGained(before.dwBytesRcved, now.dwBytesRcved, before.dwFramesRcved, now.dwFramesRcved);
    totals.bytesSent += bytesGained(before.dwBytesXmited, now.dwBytesXmited, before.dwFramesXmited,
                                    now.dwFramesXmited);
    totals.duration += gained(before.dwConnectDuration, now.dwConnectDuration);
}

LineTotals totalsOf(const RAS_STATS& statistics) {
    return {.bytesSent = statistics.dwBytesXmited,
            .bytesRcvd = statistics.dwBytesRcved,
            .duration = statistics.dwConnectDuration};
}

/// Whether a reading under a new handle can be of the same session.
bool continues(const RAS_STATS& before, const RAS_STATS& now) {
    return now.dwConnectDuration >= before.dwConnectDuration &&
           now.dwBytesRcved >= before.dwBytesRcved && now.dwBytesXmited >= before.dwBytesXmited;
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

} // namespace

LineTotals CarryOn(const RASCONNA& Connection, const RAS_STATS& Statistics) {
    LineSession& session = sessionOf(Connection, Statistics);
    const bool another = session.renumbered ? !continues(session.last, Statistics)
                                            : younger(session.last, Statistics);
    if (another) {
        if (state().CountedConnection == Connection.hrasconn) {
            ResetTransfers(false);
        }
        session.totals = totalsOf(Statistics);
    } else {
        add(session.totals, session.last, Statistics);
    }
    session.last = Statistics;
    session.renumbered = false;
    return platform().connections.lineTotals(Connection.hrasconn).value_or(session.totals);
}

void TakeCounters(const RASCONNA& Connection, const LineTotals& Session) {
    State& s = state();
    s.CountedConnection = Connection.hrasconn;
    take(Session.bytesRcvd, s.BytesRcvdCurrent, s.BytesRcvdBeyond);
    take(Session.bytesSent, s.BytesSentCurrent, s.BytesSentBeyond);
    take(Session.duration, s.DurationCurrent, s.DurationBeyond);
}

void ForgetEndedSessions(std::uint32_t Count) {
    State& s = state();
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
