#include "ui/mdlGUIFigures.h"

#include "forms/Forms.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "state/mdlTools.h"
#include "state/mdlTransfers.h"
#include "types/Convert.h"

#include <array>

namespace tarvik {

namespace {

std::string transferText(double bytes, bool current) {
    const TransferUnit unit = current ? state().UnitTransferCurrent : state().UnitTransferTotal;
    const int decimals = unit == TransferUnit::Bytes ? 0 : 2;
    return formatGrouped(FinaliseTransfer(bytes, current), decimals, platform().locale.data());
}

void showTotals() {
    const State& s = state();
    FrmMain& main = forms().frmMain;
    const Currency rcvd = s.BytesRcvdTotal + CountedRcvd();
    const Currency sent = s.BytesSentTotal + CountedSent();
    main.txtBytesRcvdTotal.setText(transferText(rcvd.toDouble(), false));
    main.txtBytesSentTotal.setText(transferText(sent.toDouble(), false));
    main.txtDurationTotal.setText(FinaliseTime(s.DurationTotal + CountedDuration()));
}

void showCurrent() {
    const State& s = state();
    FrmMain& main = forms().frmMain;
    // The counters are 32-bit numbers: a difference of theirs that does not fit is an error.
    const Currency rcvd = Currency(s.BytesRcvdCurrent - s.BytesRcvdOffset) + s.BytesRcvdBeyond -
                          s.BytesRcvdOffsetBeyond;
    const Currency sent = Currency(s.BytesSentCurrent - s.BytesSentOffset) + s.BytesSentBeyond -
                          s.BytesSentOffsetBeyond;
    const Currency duration =
        Currency(s.DurationCurrent - s.DurationOffset) + s.DurationBeyond - s.DurationOffsetBeyond;
    main.txtBytesRcvd.setText(transferText(rcvd.toDouble(), true));
    main.txtBytesSent.setText(transferText(sent.toDouble(), true));
    main.txtDurationCurrent.setText(FinaliseTime(duration));
}

void resetCurrent() {
    FrmMain& main = forms().frmMain;
    main.txtBytesRcvd.setText("0");
    main.txtBytesSent.setText("0");
    main.txtDurationCurrent.setText("00:00:00:000");
}

} // namespace

void UpdateValuesInGUI(bool ShowTotal, bool ShowCurrent, bool ResetCurrent) {
    guarded("UpdateValuesInGUI", [&] {
        if (ShowTotal) {
            showTotals();
        }
        if (ResetCurrent) {
            resetCurrent();
        } else if (ShowCurrent) {
            showCurrent();
        }
    });
}

double FinaliseTransfer(double Value, bool Current) {
    return guarded("FinaliseTransfer", 0.0, [&](double& result) {
        const TransferUnit unit = Current ? state().UnitTransferCurrent : state().UnitTransferTotal;
        result = Value;
        for (int step = 0; step < static_cast<int>(unit); ++step) {
            result /= 1024.0;
        }
    });
}

std::string FinaliseTime(Currency Duration) {
    return guarded("FinaliseTime", std::string(), [&](std::string& result) {
        std::int64_t rest = Duration.integralPart();
        const std::string milliseconds = zeroPadded(rest % 1000, 3);
        rest /= 1000;
        const std::string seconds = zeroPadded(rest % 60, 2);
        rest /= 60;
        const std::string minutes = zeroPadded(rest % 60, 2);
        rest /= 60;
        result = zeroPadded(rest, 2) + ":" + minutes + ":" + seconds + ":" + milliseconds;
    });
}

void SetLabelUnitTransfer(Label& Caption, const std::string& Prefix, TransferUnit Unit) {
    guarded("SetLabelUnitTransfer", [&] {
        static constexpr std::array<const char*, 4> units{
            "(bytes):", "(KBytes):", "(MBytes):", "(GBytes):"};
        const auto position = static_cast<std::size_t>(Unit);
        if (position < units.size()) {
            Caption.setCaption(Prefix + units[position]);
        }
    });
}

} // namespace tarvik
