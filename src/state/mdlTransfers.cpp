#include "state/mdlTransfers.h"

#include "state/mdlTools.h"
#include "state/mdlVar.h"

namespace tarvik {

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
