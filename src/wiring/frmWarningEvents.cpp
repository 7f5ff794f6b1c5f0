#include "wiring/frmWarningEvents.h"

#include "forms/Forms.h"
#include "monitor/mdlCodeDial.h"
#include "monitor/mdlCodeReset.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"
#include "wiring/CloseBox.h"

namespace tarvik {

void frmWarning_Form_Initialize() {
    guarded("Form_Initialize", [] {
        forms().frmWarning.lblDescription.setCaption(
            "The transfer limit that has been setup has been reached. "
            "If \"HangUp\" was selected the connection has been automatically disconnected.\r\n"
            "If you want to disconnect manually now press the \"Disconnect\" button. "
            "If you want to reset the overall transfer now press the \"Reset\" button.");
    });
}

void frmWarning_cmdDisconnect_Click() {
    guarded("cmdDisconnect_Click", [] { HangUp(); });
}

void frmWarning_cmdReset_Click() {
    guarded("cmdReset_Click", [] { ResetTransfersRequest(); });
}

void frmWarning_cmdCancel_Click() {
    guarded("cmdCancel_Click", [] {
        state().LimitWarningArmed = false;
        forms().frmWarning.setVisible(false);
    });
}

void frmWarning_Close() {
    forms().frmWarning.setVisible(false);
}

void connectWarningEvents() {
    FrmWarning& warning = forms().frmWarning;
    warning.Initialize.connect(frmWarning_Form_Initialize);
    warning.cmdDisconnect.Click.connect(frmWarning_cmdDisconnect_Click);
    warning.cmdReset.Click.connect(frmWarning_cmdReset_Click);
    warning.cmdCancel.Click.connect(frmWarning_cmdCancel_Click);
    connectCloseBox(warning, frmWarning_Close);
}

} // namespace tarvik
