#include "startup/mdlVar.h"

#include "startup/mdlTools.h"

namespace tarvik {

namespace {
State* current = nullptr;
} // namespace

State& state() {
    return *current;
}

StateScope::StateScope(State& state) : previous_(current) {
    current = &state;
}

StateScope::~StateScope() {
    current = previous_;
}

void ResetTransfers(bool ResetAll) {
    guarded("ResetTransfers", [&] {
        State& s = state();
        // Widened before they are added: a session's figures may be near the 32-bit limit.
        s.BytesRcvdTotal = s.BytesRcvdTotal + s.BytesRcvdCurrent - s.BytesRcvdOffset;
        s.BytesSentTotal = s.BytesSentTotal + s.BytesSentCurrent - s.BytesSentOffset;
        s.DurationTotal = s.DurationTotal + s.DurationCurrent - s.DurationOffset;
        s.BytesRcvdCurrent = 0;
        s.BytesSentCurrent = 0;
        s.DurationCurrent = 0;
        s.BytesRcvdOffset = 0;
        s.BytesSentOffset = 0;
        s.DurationOffset = 0;
        if (ResetAll) {
            s.BytesRcvdTotal = 0;
            s.BytesSentTotal = 0;
            s.DurationTotal = 0;
        }
    });
}

} // namespace tarvik
