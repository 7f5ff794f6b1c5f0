#include "ui/mdlGUIFigures.h"

#include "forms/Forms.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "state/mdlTools.h"
#include "state/mdlTransfers.h"
#include "types/Convert.h"

namespace tarvik {

namespace {

std::string transferText(double bytes, bool current) {
    const TransferUnit unit = current ? state().UnitTransferCurrent : state().UnitTransferTotal;
    const int decimals = unit == TransferUnit::Bytes ? 0 : 2;
    return formatGrouped(FinaliseTransfer(bytes, current), decimals, platform().locale.data());
}

void showTotals() {
    FrmMain& main = forms().frmMain;
    main.txtBytesRcvdTotal.setText(transferText(Rcvd().overall().toDouble(), false));
    main.txtBytesSentTotal.setText(transferText(Sent().overall().toDouble(), false));
    main.txtDurationTotal.setText(FinaliseTime(Duration().overall()));
}

void showCurrent() {
    FrmMain& main = forms().frmMain;
    const Currency rcvd = Rcvd().shown();
    const Currency sent = Sent().shown();
    const Currency duration = Duration().shown();
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
        const std::int64_t whole = Duration.integralPart();
        const auto add = [&](std::int64_t part, int digits) {
            result += ':';
            result += zeroPadded(part, digits);
        };
        result = zeroPadded(whole / 3'600'000, 2);
        add(whole / 60'000 % 60, 2);
        add(whole / 1'000 % 60, 2);
        add(whole % 1'000, 3);
    });
}

void SetLabelUnitTransfer(Label& Caption, const std::string& Prefix, TransferUnit Unit) {
    guarded("SetLabelUnitTransfer", [&] {
        const auto position = static_cast<std::size_t>(Unit);
        if (position < transferUnitCaptions.size()) {
            Caption.setCaption(Prefix + transferUnitCaptions[position]);
        }
    });
}

} // namespace tarvik
