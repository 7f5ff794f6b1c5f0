#pragma once

namespace tarvik {

// What the controls of the statistics window do.

/// Both boxes: the time stamp is void until the next refresh.
void chkActiveConnection_Click();
void chkInternetState_Click();
/// Hides the window; its close box does the same.
void frmStatistics_cmdCancel_Click();

/// Lets the window's controls do the above; once, before the window is loaded.
void connectStatisticsEvents();

} // namespace tarvik
