#include "settings/mdlSettingsControls.h"

#include "forms/Forms.h"
#include "settings/Setting.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"

namespace tarvik {

void InitGUI() {
    guarded("InitGUI", [] {
        InitControls();
        Timer& timer = forms().frmMain.timUpdateStats;
        timer.setInterval(state().RefreshInterval.value());
        timer.setEnabled(state().MonitoringActive);
    });
}

void InitControls() {
    guarded("InitControls", [] {
        for (const Setting* setting : settingsAsShown()) {
            show(*setting, state(), forms().frmOptions);
        }
    });
}

} // namespace tarvik
