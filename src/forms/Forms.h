#pragma once

#include "forms/frmHistory.h"
#include "forms/frmMain.h"
#include "forms/frmOptions.h"
#include "forms/frmPlan.h"
#include "forms/frmPlanWarning.h"
#include "forms/frmStatistics.h"
#include "forms/frmSysTray.h"
#include "forms/frmWarning.h"
#include "types/Current.h"

#include <array>

namespace tarvik {

class Desktop;

/// The program's windows, one of each.
struct Forms {
    /// Their windows are made on that desktop.
    explicit Forms(Desktop& desktop);

    FrmMain frmMain;
    FrmHistory frmHistory;
    FrmOptions frmOptions;
    FrmPlan frmPlan;
    FrmPlanWarning frmPlanWarning;
    FrmStatistics frmStatistics;
    FrmSysTray frmSysTray;
    FrmWarning frmWarning;

    /// All of them.
    auto all() {
        return std::to_array<Form*>({&frmMain, &frmHistory, &frmOptions, &frmPlan, &frmPlanWarning,
                                     &frmStatistics, &frmSysTray, &frmWarning});
    }
};

/// The windows in use. One must be in place (see `Current`).
Forms& forms();

using FormsScope = Current<Forms>;

} // namespace tarvik
