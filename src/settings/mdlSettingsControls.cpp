#include "settings/mdlSettingsControls.h"

#include "forms/Forms.h"
#include "settings/Setting.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"
#include "ui/mdlGUIFigures.h"

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

void showUnit(const UnitSetting& unit) {
    SetLabelUnitTransfer(forms().frmMain.*unit.label, unit.prefix, state().*unit.value);
}

void showEverywhere(const Setting& setting) {
    show(setting, state(), forms().frmOptions);
    if (const auto* const unit = std::get_if<UnitSetting>(&setting.kind)) {
        showUnit(*unit);
    }
}

} // namespace tarvik
