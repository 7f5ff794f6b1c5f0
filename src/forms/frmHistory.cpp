#include "forms/frmHistory.h"

namespace tarvik {

namespace {
// A record in one line, with nine digits of bytes each way and an address, is not cut.
constexpr int viewWidth = 96;
// The views take turns in one place: about as high as each other, none leaves much of it empty.
constexpr int chartHeight = 25;
constexpr int logHeight = 14;
constexpr int addressesHeight = 20;
constexpr int progressWidth = 16;
} // namespace

FrmHistory::FrmHistory() : Form("frmHistory", "Velmars Tarvik - History") {
    LayoutNode log = column({
        item(lblCompleteLog),
        item(lvwCompleteLog).wide(viewWidth).tall(logHeight).share(1),
        item(lblCurrentStart),
        item(txtCurrentStart),
        item(lblCurrentStop),
        item(txtCurrentStop),
        row({item(cmdSetStart), item(cmdSetStop), space(), item(cmdExport)}),
    });
    LayoutNode addresses = column({
        item(lblStatisticsIP),
        item(txtStatisticsIP).wide(viewWidth).tall(addressesHeight).share(1),
        row({item(lblSortBy), item(cmdSortByTime), item(cmdSortByIP), space()}),
    });
    LayoutNode setup = column({
        row({item(cboChartType).share(1), item(cboDataType).share(1), item(cboDataToShow).share(1),
             item(cboTransferUnit).share(1)}),
        row({item(chkShowXLines), item(chkShowYLines), space(), item(prgWork).wide(progressWidth),
             item(cmdStop), item(cmdImport), item(cmdCancel)}),
    });
    setLayout(
        column({
                   row({item(optHistory), item(optStatistics), item(optStatisticsIP), space()}),
                   deck({
                            frame(frameHistory,
                                  item(mscHistory).wide(viewWidth).tall(chartHeight).share(1)),
                            frame(frameStatistics, std::move(log)),
                            frame(frameStatisticsIP, std::move(addresses)),
                        })
                       .share(1),
                   frame(frameImportSetup, std::move(setup)),
               })
            .share(1));
    frameStatistics.setVisible(false);
    frameStatisticsIP.setVisible(false);
    prgWork.setVisible(false);
    cmdStop.setVisible(false);
    // There is nothing to set up or to choose before the first import.
    for (Control* control : std::initializer_list<Control*>{
             &cboChartType, &cboDataType, &cboTransferUnit, &cboDataToShow, &chkShowXLines,
             &chkShowYLines, &lvwCompleteLog, &cmdSetStart, &cmdSetStop, &cmdExport,
             &txtCurrentStart, &txtCurrentStop, &txtStatisticsIP, &cmdSortByIP, &cmdSortByTime}) {
        control->setEnabled(false);
    }
    mscHistory.setEmptyText(chartHint);
    chkShowXLines.setValue(1);
    chkShowYLines.setValue(1);
    setCancelButton(cmdCancel);
    setInitialFocus(cmdImport);
}

} // namespace tarvik
