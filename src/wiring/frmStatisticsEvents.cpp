#include "wiring/frmStatisticsEvents.h"

#include "forms/Forms.h"
#include "state/mdlTools.h"
#include "wiring/CloseBox.h"

namespace tarvik {

namespace {

void voidTimeStamp() {
    forms().frmStatistics.lblTimeStamp.setCaption("Updated at: (Not yet obtained.)");
}

} // namespace

void chkActiveConnection_Click() {
    guarded("chkActiveConnection_Click", voidTimeStamp);
}

void chkInternetState_Click() {
    guarded("chkInternetState_Click", voidTimeStamp);
}

void frmStatistics_cmdCancel_Click() {
    guarded("cmdCancel_Click", [] { forms().frmStatistics.setVisible(false); });
}

void connectStatisticsEvents() {
    FrmStatistics& statistics = forms().frmStatistics;
    statistics.chkActiveConnection.Click.connect(chkActiveConnection_Click);
    statistics.chkInternetState.Click.connect(chkInternetState_Click);
    statistics.cmdCancel.Click.connect(frmStatistics_cmdCancel_Click);
    connectCloseBox(statistics, frmStatistics_cmdCancel_Click);
}

} // namespace tarvik
