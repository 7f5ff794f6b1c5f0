#include "monitor/mdlFormerSessions.h"

#include "monitor/mdlReadings.h"
#include "ports/Clock.h"
#include "ports/Platform.h"
#include "state/mdlVar.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace tarvik {

namespace {

/// The connection has grown older by what passed since it was read. Universal time tells that
/// across a start of the machine, where the time since that start would take a line that is dialled
/// at each one for the same session.
bool beganAtTheSameMoment(const LineSession& before, const RAS_STATS& now) {
    constexpr double inexact = 3'000; // milliseconds, of a clock that counts seconds
    const double lived = static_cast<double>(now.dwConnectDuration) - before.last.dwConnectDuration;
    const double away = static_cast<double>(platform().clock.universalMilliseconds()) -
                        static_cast<double>(before.readAt);
    return std::abs(lived - away) <= inexact;
}

bool overTheSameDevice(const RASCONNA& a, const RASCONNA& b) {
    return std::strncmp(a.szDeviceName, b.szDeviceName, sizeof a.szDeviceName) == 0;
}

/// Begun at the same moment, and no counter has fallen.
bool goesOn(const LineSession& before, const RAS_STATS& now) {
    return beganAtTheSameMoment(before, now) && now.dwBytesRcved >= before.last.dwBytesRcved &&
           now.dwBytesXmited >= before.last.dwBytesXmited &&
           now.dwConnectDuration >= before.last.dwConnectDuration &&
           now.dwFramesRcved >= before.last.dwFramesRcved &&
           now.dwFramesXmited >= before.last.dwFramesXmited;
}

/// Where the service has no mark that tells it: over the same device, and its figures go on.
bool isFormer(const FormerSession& former, const RASCONNA& connection,
              const std::optional<RAS_STATS>& now) {
    const RASCONNA& before = former.session.connection;
    if (!sameEntry(before, connection)) {
        return false;
    }
    if (!former.mark.empty()) {
        return platform().connections.resume(connection.hrasconn, former.mark);
    }
    return overTheSameDevice(before, connection) && now && goesOn(former.session, *now);
}

} // namespace

bool ResumeFormer(const RASCONNA& Connection, const std::optional<RAS_STATS>& Now) {
    State& s = state();
    const auto former =
        std::find_if(s.FormerSessions.begin(), s.FormerSessions.end(),
                     [&](const FormerSession& one) { return isFormer(one, Connection, Now); });
    if (former == s.FormerSessions.end()) {
        return false;
    }
    LineSession session = former->session;
    session.connection = Connection;
    session.resumed = session.inTotals = true;
    s.LineSessions.push_back(session);
    s.FormerSessions.erase(former);
    return true;
}

void LookForFormer(const RASCONNA& Connection) {
    State& s = state();
    // The service is asked first for those that it knows itself: one that was read is another to
    // it.
    if (ResumeFormer(Connection, std::nullopt)) {
        return;
    }
    const bool mayBeFormer = std::any_of(
        s.FormerSessions.begin(), s.FormerSessions.end(), [&](const FormerSession& one) {
            return one.mark.empty() && sameEntry(one.session.connection, Connection);
        });
    if (mayBeFormer) {
        bool failed = false;
        ResumeFormer(Connection, figuresOf(Connection.hrasconn, failed));
        if (failed) {
            s.UnsureConnections.push_back(Connection.hrasconn);
        }
    }
}

} // namespace tarvik
