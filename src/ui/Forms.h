#pragma once

#include "ui/frmHistory.h"
#include "ui/frmMain.h"
#include "ui/frmOptions.h"
#include "ui/frmStatistics.h"
#include "ui/frmSysTray.h"
#include "ui/frmWarning.h"

namespace tarvik {

/// The program's windows, one of each.
struct Forms {
    FrmMain frmMain;
    FrmHistory frmHistory;
    FrmOptions frmOptions;
    FrmStatistics frmStatistics;
    FrmSysTray frmSysTray;
    FrmWarning frmWarning;
};

/// The windows in use. A set must be in place (see `FormsScope`).
Forms& forms();

/// Puts a set of windows in place for its own lifetime, then the one before it again.
class FormsScope {
public:
    explicit FormsScope(Forms& forms);
    ~FormsScope();
    FormsScope(const FormsScope&) = delete;
    FormsScope& operator=(const FormsScope&) = delete;

private:
    Forms* previous_;
};

} // namespace tarvik
