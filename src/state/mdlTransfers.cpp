#include "state/mdlTransfers.h"

#include "state/mdlTools.h"
#include "state/mdlVar.h"

namespace tarvik {

Currency SessionRcvd() {
    return state().BytesRcvdBeyond + state().BytesRcvdCurrent;
}

Currency SessionSent() {
    return state().BytesSentBeyond + state().BytesSentCurrent;
}

Currency CountedRcvd() {
    return SessionRcvd() - state().BytesRcvdOffset - state().BytesRcvdOffsetBeyond;
}

Currency CountedSent() {
    return SessionSent() - state().BytesSentOffset - state().BytesSentOffsetBeyond;
}

Currency CountedDuration() {
    const State& s = state();
    return s.DurationBeyond + s.DurationCurrent - s.DurationOffset - s.DurationOffsetBeyond;
}

void ResetTransfers(bool ResetAll) {
    guarded("ResetTransfers", [&] {
        State& s = state();
        s.BytesRcvdTotal = s.BytesRcvdTotal + CountedRcvd();
        s.BytesSentTotal = s.BytesSentTotal + CountedSent();
        s.DurationTotal = s.DurationTotal + CountedDuration();
        s.BytesRcvdCurrent = 0;
        s.BytesSentCurrent = 0;
        s.DurationCurrent = 0;
        s.BytesRcvdOffset = 0;
        s.BytesSentOffset = 0;
        s.DurationOffset = 0;
        s.BytesRcvdBeyond = 0;
        s.BytesSentBeyond = 0;
        s.DurationBeyond = 0;
        s.BytesRcvdOffsetBeyond = 0;
        s.BytesSentOffsetBeyond = 0;
        s.DurationOffsetBeyond = 0;
        if (ResetAll) {
            s.BytesRcvdTotal = 0;
            s.BytesSentTotal = 0;
            s.DurationTotal = 0;
        }
        for (LineSession& one : s.LineSessions) {
            if (ResetAll || one.connection.hrasconn == s.CountedConnection) {
                one.offset = one.counted = {};
            }
        }
    });
}

} // namespace tarvik
