#include "wiring/frmSysTrayEvents.h"

#include "forms/Forms.h"
#include "monitor/mdlCodeDial.h"
#include "monitor/mdlCodeToggle.h"
#include "monitor/mdlPlanWords.h"
#include "ports/Desktop.h"
#include "ports/NotificationArea.h"
#include "ports/Platform.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"
#include "ui/mdlGUIWindows.h"

namespace tarvik {

namespace {

constexpr int leftButtonReleased = 514;
constexpr int rightButtonReleased = 517;

/// Shows the main window, or hides the one that is shown. A minimised one is not: whoever clicks
/// on the icon wants to see it.
void showOrHide() {
    FrmMain& main = forms().frmMain;
    ToggleFormVisibility(main, !main.visible() || main.minimised());
}

void openMenu() {
    Forms& f = forms();
    // A menu of a window in the background would stay open when the user clicks elsewhere.
    platform().notificationArea.SetForegroundWindow(f.frmMain.hWnd());
    platform().desktop.popUpMenu(f.frmSysTray.mnuPopUp, f.frmMain);
}

void connectTheOnlyEntry() {
    const ComboBox& connections = forms().frmMain.cboConnections;
    if (connections.listCount() == 1) {
        DialIn(connections.items().front(), "");
        return;
    }
    MsgBox(std::string("Multiple connections possible.") + CR +
               "Please use main dialog to select which" + CR + "connection shall be established.",
           MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation);
}

} // namespace

void frmSysTray_Form_Initialize() {
    guarded("Form_Initialize", [] {
        constexpr std::uint32_t otherFamily = 0x80000000U;
        const std::uint32_t version = platform().notificationArea.GetVersion();
        const std::uint32_t major = version & 0xFFU;
        const std::uint32_t minor = (version >> 8U) & 0xFFU;
        forms().frmSysTray.balloonSupport =
            (version & otherFamily) == 0 ? major >= 5 : major == 4 && minor == 90;
    });
}

void picSysTrayHook_MouseMove(int X) {
    guarded("picSysTrayHook_MouseMove", [&] {
        if (X == leftButtonReleased) {
            showOrHide();
        } else if (X == rightButtonReleased) {
            openMenu();
        }
    });
}

void mnuPopUpEntry_Click(int Index) {
    guarded("mnuPopUpEntry_Click", [&] {
        switch (Index) {
        case FrmSysTray::showHide:
            showOrHide();
            break;
        case FrmSysTray::monitoring:
            ToggleMonitoringActive(!state().MonitoringActive);
            break;
        case FrmSysTray::connect:
            connectTheOnlyEntry();
            break;
        case FrmSysTray::disconnect:
            HangUp();
            break;
        case FrmSysTray::quit:
            forms().frmMain.unload();
            break;
        case FrmSysTray::extendToday:
        case FrmSysTray::extendPeriod:
            ExtendPlan(forms().frmSysTray.plan, Index == FrmSysTray::extendToday);
            break;
        default:
            break;
        }
    });
}

void connectSysTrayEvents() {
    FrmSysTray& tray = forms().frmSysTray;
    tray.Initialize.connect(frmSysTray_Form_Initialize);
    tray.picSysTrayHook.MouseMove.connect(picSysTrayHook_MouseMove);
    tray.mnuPopUp.Click.connect(mnuPopUpEntry_Click);
}

} // namespace tarvik
