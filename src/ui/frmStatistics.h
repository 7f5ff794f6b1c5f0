#pragma once

#include "ports/ConnectionProvider.h"
#include "ui/controls/Form.h"

namespace tarvik {

/// The statistics window. Its panels are refreshed only while their box is ticked.
class FrmStatistics : public Form {
public:
    FrmStatistics() : Form("frmStatistics", "Velmars Tarvik - Connection Statistics") {}

    CheckBox chkActiveConnection{*this, "chkActiveConnection", {.caption = "Enable"}};
    CheckBox chkInternetState{*this, "chkInternetState", {.caption = "Enable"}};

    /// Raised with fresh line statistics at every online tick while `chkActiveConnection` is
    /// ticked.
    Event<const RAS_STATS&> SetStatistics;
    /// Raised at every refresh of the main window while `chkInternetState` is ticked.
    Event<> SetConnectedState;
};

} // namespace tarvik
