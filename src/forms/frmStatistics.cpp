#include "forms/frmStatistics.h"

namespace tarvik {

namespace {
constexpr int counterWidth = 22;
} // namespace

FrmStatistics::FrmStatistics() : Form("frmStatistics", "Velmars Tarvik - Connection Statistics") {
    // clang-format off
    LayoutNode counters = grid(2, {
        item(lblHostName),            item(txtHostName).wide(counterWidth).share(1),
        item(lblIPAddress),           item(txtIPAddress),
        item(lblConnectDuration),     item(txtConnectDuration),
        item(lblAverageThroughput),   item(txtAverageThroughput),
        item(lblBitrate),             item(txtBitrate),
        item(lblFrames),              item(txtFrames),
        item(lblCompressionRatioIn),  item(txtCompressionRatioIn),
        item(lblCompressionRatioOut), item(txtCompressionRatioOut),
        item(lblCRCError),            item(txtCRCError),
        item(lblTimeoutError),        item(txtTimeoutError),
        item(lblAlignmentError),      item(txtAlignmentError),
        item(lblFramingError),        item(txtFramingError),
        item(lblHWOverrunError),      item(txtHWOverrunError),
        item(lblBufferOverrunError),  item(txtBufferOverrunError),
    });
    LayoutNode state = column({
        item(chkInternetState),
        item(chkConnected), item(chkConnectionConfigured), item(chkModemUsed), item(chkLANUsed),
        item(chkProxyUsed), item(chkRASUsed), item(chkOffline), item(chkModemBusy),
        item(lblConnectionName), item(txtConnectionName),
        space(),
    });
    // clang-format on
    setLayout(column({
        row({frame(frameActiveConnection, column({item(chkActiveConnection), std::move(counters)}))
                 .share(1),
             frame(frameInternetState, std::move(state)).share(1)}),
        row({item(lblTimeStamp).share(1), item(cmdCancel)}),
    }));
    setCancelButton(cmdCancel);
    setInitialFocus(chkActiveConnection);
}

} // namespace tarvik
