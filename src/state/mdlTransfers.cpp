#include "state/mdlTransfers.h"

#include "ports/Platform.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"

#include <algorithm>

namespace tarvik {

namespace {

/// The session whose figures are shown is still to be asked about: the question, or a box before
/// it, is open. The next start asks.
bool awaitsQuestion(const LineSession& one) {
    const State& s = state();
    return (s.QuestionOpen || (s.FirstOnlineUpdate && !s.DialInStarted)) && !one.resumed &&
           one.connection.hrasconn == s.CountedConnection;
}

} // namespace

Tally Rcvd() {
    const State& s = state();
    return {s.BytesRcvdTotal, s.BytesRcvdCurrent, s.BytesRcvdOffset};
}

Tally Sent() {
    const State& s = state();
    return {s.BytesSentTotal, s.BytesSentCurrent, s.BytesSentOffset};
}

Tally Duration() {
    const State& s = state();
    return {s.DurationTotal, s.DurationCurrent, s.DurationOffset};
}

Amount FinishedTotals() {
    const State& s = state();
    return {.rcvd = s.BytesRcvdTotal, .sent = s.BytesSentTotal, .duration = s.DurationTotal};
}

void SetFinishedTotals(const Amount& Totals) {
    State& s = state();
    s.BytesRcvdTotal = Totals.rcvd;
    s.BytesSentTotal = Totals.sent;
    s.DurationTotal = Totals.duration;
}

Amount SessionCounted() {
    return {.rcvd = Rcvd().counted(), .sent = Sent().counted(), .duration = Duration().counted()};
}

Amount OverallAmount() {
    return {.rcvd = Rcvd().overall(), .sent = Sent().overall(), .duration = Duration().overall()};
}

void AddToTotals(const Amount& More) {
    SetFinishedTotals(FinishedTotals() + More);
}

Amount SessionOffset() {
    const State& s = state();
    return {s.BytesRcvdOffset.whole(), s.BytesSentOffset.whole(), s.DurationOffset.whole()};
}

void SetSessionOffset(const Amount& Offset) {
    State& s = state();
    s.BytesRcvdOffset = Counter::of(Offset.rcvd);
    s.BytesSentOffset = Counter::of(Offset.sent);
    s.DurationOffset = Counter::of(Offset.duration);
}

std::vector<FormerSession> SessionsUnderWay() {
    const State& s = state();
    std::vector<FormerSession> result = s.FormerSessions;
    for (const LineSession& one : s.LineSessions) {
        if (one.hungUp || awaitsQuestion(one)) {
            continue;
        }
        FormerSession& kept = result.emplace_back();
        kept.session = one;
        kept.mark = platform().connections.sessionMark(one.connection.hrasconn);
        if (one.connection.hrasconn == s.CountedConnection) {
            kept.session.offset = SessionOffset();
            kept.session.counted = SessionCounted();
        }
    }
    return result;
}

Amount AllThatCounts() {
    const State& s = state();
    const bool asked = std::any_of(s.LineSessions.begin(), s.LineSessions.end(), awaitsQuestion);
    Amount all = asked ? FinishedTotals() : OverallAmount();
    for (const LineSession& one : s.LineSessions) {
        if (one.connection.hrasconn != s.CountedConnection && !one.inTotals) {
            all = all + one.counted;
        }
    }
    return all;
}

void ResetTransfers(bool ResetAll) {
    guarded("ResetTransfers", [&] {
        State& s = state();
        s.BytesRcvdTotal = Rcvd().overall();
        s.BytesSentTotal = Sent().overall();
        s.DurationTotal = Duration().overall();
        s.BytesRcvdCurrent = s.BytesSentCurrent = s.DurationCurrent = 0;
        s.BytesRcvdOffset = s.BytesSentOffset = s.DurationOffset = 0;
        if (ResetAll) {
            SetFinishedTotals({});
        }
        for (LineSession& one : s.LineSessions) {
            if (ResetAll || one.connection.hrasconn == s.CountedConnection) {
                one.offset = one.counted = {};
            }
        }
        for (FormerSession& one : s.FormerSessions) {
            if (ResetAll) {
                one.session.offset = one.session.counted = {};
            }
        }
    });
}

} // namespace tarvik
