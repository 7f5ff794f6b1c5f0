#pragma once

#include "monitor/mdlCodeLimits.h"
#include "support/WorldTest.h"

namespace tarvik {

/// A test of the limits, with monitoring on and none of them set.
class LimitsTest : public WorldTest {
protected:
    LimitsTest() { startQuietly("/r"); }

    FrmWarning& frmWarning() { return world->forms.frmWarning; }

    /// A connection that the program counts from its beginning, with so much transfer and time.
    std::uint32_t connection(std::uint32_t rcvd, std::uint32_t sent, std::uint32_t milliseconds) {
        const std::uint32_t handle = dialledConnection();
        line().transfer(handle, rcvd, sent, milliseconds);
        return handle;
    }

    void limitTransfer(Currency bytes) {
        state().TransferLimit = 1;
        state().TransferLimitValue = bytes;
    }
    void limitDuration(Long hours, Long minutes) {
        state().DurationLimit = 1;
        state().DurationLimitHr = hours;
        state().DurationLimitMin = minutes;
    }
    void warn() { state().TransferLimitWarning = 1; }
    void hangUp() { state().TransferLimitHangUp = 1; }

    int hangUps() const { return machine.connections.countOf("RasHangUpA"); }
};

} // namespace tarvik
