#include "forms/frmMain.h"

#include "forms/StatusLamp.h"

namespace tarvik {

namespace {
// Room for the largest total in bytes that a reader will see, and for hours of four digits.
constexpr int bytesWidth = 16;
constexpr int durationWidth = 14;
constexpr int connectionWidth = 34;
// What is longer does not make the window wider.
constexpr int planWidth = 40;
} // namespace

Label::Setup FrmMain::columnHeading(const char* caption) {
    return {.caption = caption, .alignment = TextAlignment::Right};
}

void FrmMain::makeRoomForUnits(Label& label, const std::string& prefix) {
    std::vector<std::string> captions;
    captions.reserve(transferUnitCaptions.size());
    for (const char* unit : transferUnitCaptions) {
        captions.push_back(prefix + unit);
    }
    label.setOtherCaptions(std::move(captions));
}

TextBox::Setup FrmMain::figure(const char* text, const char* accessibleName, const char* toolTip) {
    return {.text = text,
            .toolTip = toolTip,
            .accessibleName = accessibleName,
            .readOnly = true,
            .alignment = TextAlignment::Right};
}

FrmMain::FrmMain() : Form("frmMain", "Velmars Tarvik") {
    makeRoomForUnits(lblTransferCurrent, "current ");
    makeRoomForUnits(lblTransferTotal, "total ");
    picStatus.setDrawing(statusLamp(LampState::NotMonitoring));
    picStatus.setAccessibleName(statusLampName(LampState::NotMonitoring));

    // clang-format off
    LayoutNode transfers = frame(frameTransfers, grid(6, {
        item(lblTransfer),        item(lblTransferSent),   item(lblTransferRcvd),
        blank(), item(lblDuration),        item(lblDurationTime),
        item(lblTransferCurrent), item(txtBytesSent).wide(bytesWidth).share(1),
                                  item(txtBytesRcvd).wide(bytesWidth).share(1),
        blank(), item(lblDurationCurrent), item(txtDurationCurrent).wide(durationWidth),
        item(lblTransferTotal),   item(txtBytesSentTotal).wide(bytesWidth).share(1),
                                  item(txtBytesRcvdTotal).wide(bytesWidth).share(1),
        blank(), item(lblDurationTotal),   item(txtDurationTotal).wide(durationWidth),
    }));
    LayoutNode status = frame(frameStatus, column({
        row({item(picStatus), item(lblMonitoring).share(1)}),
        grid(2, {
            item(lblAvailableConnections), item(cboConnections).wide(connectionWidth).share(1),
            item(lblActiveConnection),     item(txtActiveConnection).wide(connectionWidth).share(1),
        }),
    }));
    LayoutNode commands = column({
        item(cmdMonitor), item(cmdConnect), item(cmdDisconnect),
        space(),
        item(cmdStatistics), item(cmdHistory), item(cmdOptions), item(cmdQuit),
    }).sameSize();
    setLayout(column({
        row({
            column({std::move(transfers), std::move(status), space()}).share(1),
            std::move(commands),
        }),
        row({item(lblPlan).wide(planWidth).share(1)}).collapsing(),
    }));
    // clang-format on
    lblPlan.setVisible(false);
    setInitialFocus(cmdMonitor);
}

} // namespace tarvik
