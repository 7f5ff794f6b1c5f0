#include "forms/frmMain.h"

#include "forms/StatusLamp.h"

namespace tarvik {

namespace {
// Room for the largest total in bytes that a reader will see, and for hours of four digits.
constexpr int bytesWidth = 16;
constexpr int durationWidth = 14;
constexpr int connectionWidth = 34;
} // namespace

Label::Setup FrmMain::columnHeading(const char* caption) {
    return {.caption = caption, .alignment = TextAlignment::Right};
}

Label::Setup FrmMain::inAnyUnit(const std::string& prefix) {
    Label::Setup setup{.caption = prefix + transferUnitCaptions.front()};
    for (std::size_t unit = 1; unit < transferUnitCaptions.size(); ++unit) {
        setup.otherCaptions.push_back(prefix + transferUnitCaptions[unit]);
    }
    return setup;
}

TextBox::Setup FrmMain::figure(const char* text, const char* accessibleName, const char* toolTip) {
    return {.text = text,
            .toolTip = toolTip,
            .accessibleName = accessibleName,
            .readOnly = true,
            .alignment = TextAlignment::Right};
}

FrmMain::FrmMain() : Form("frmMain", "Velmars Tarvik") {
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
    setLayout(row({
        column({std::move(transfers), std::move(status), space()}).share(1),
        std::move(commands),
    }));
    // clang-format on
    setInitialFocus(cmdMonitor);
}

} // namespace tarvik
