#include "monitor/mdlCodeLimits.h"

#include "forms/Forms.h"
#include "monitor/mdlCodeDial.h"
#include "monitor/mdlSessions.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlTransfers.h"
#include "state/mdlVar.h"
#include "types/Convert.h"
#include "ui/mdlGUIWindows.h"
#include "ui/mdlSysTray.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr std::int64_t bytesInMegaByte = 1'048'576;
constexpr std::int64_t millisecondsInMinute = 60'000;
constexpr std::int64_t millisecondsInHour = 60 * millisecondsInMinute;

/// A limit that no counter can reach counts as the largest amount there is.
Currency atMostLargest(std::int64_t whole) {
    constexpr std::int64_t largest = INT64_MAX / Currency::scale;
    return Currency::fromWhole(std::min(whole, largest));
}

void checkTicker() {
    State& s = state();
    // Nothing is left out here that the user declined to count; the limit below leaves it out.
    const Currency overall = Rcvd().carried() + Sent().carried();
    const Currency step = atMostLargest(s.TransferTickerValue.value() * bytesInMegaByte);
    const Currency further = overall - s.TickerBase;
    if (further <= step) {
        return;
    }
    const std::string text = "Another " + wholeToText(further.integralPart()) +
                             " bytes transferred (" + forms().frmOptions.txtTransferTicker.text() +
                             "MB were setup)." + CR + wholeToText(overall.integralPart()) +
                             " bytes transferred in total.";
    ShowBalloonTip(text, "Tarvik - transfer ticker", informationIcon, balloonMilliseconds);
    s.TickerBase = overall;
}

bool transferLimitExceeded() {
    return Rcvd().overall() + Sent().overall() > state().TransferLimitValue;
}

bool durationLimitExceeded() {
    const State& s = state();
    return Duration().overall() > atMostLargest(s.DurationLimitHr.value() * millisecondsInHour +
                                                s.DurationLimitMin.value() * millisecondsInMinute);
}

void checkLimits() {
    const State& s = state();
    if (s.TransferLimitHangUp == 0 && s.TransferLimitWarning == 0) {
        return;
    }
    const bool transferReached = s.TransferLimit != 0 && transferLimitExceeded();
    const bool durationReached = s.DurationLimit != 0 && durationLimitExceeded();
    if (!transferReached && !durationReached) {
        return;
    }
    if (s.TransferLimitWarning != 0 && s.LimitWarningArmed) {
        ToggleFormVisibility(forms().frmWarning, true);
    }
    if (s.TransferLimitHangUp != 0 && s.ConnectionActive) {
        ReadTheOthers();
        HangUp();
    }
}

} // namespace

void CheckLimits() {
    guarded("CheckLimits", [] {
        if (state().TransferTicker != 0) {
            checkTicker();
        }
        checkLimits();
    });
}

} // namespace tarvik
