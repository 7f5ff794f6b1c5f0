#pragma once

#include "controls/Form.h"

namespace tarvik {

// What the main window's controls do. The two handlers for connecting and disconnecting report
// errors under the name of their neighbour; kept so.

void cmdMonitor_Click();
void cmdConnect_Click();
void cmdDisconnect_Click();
/// Entries may have come or gone since the start.
void cboConnections_DropDown();
/// Unloads the main window, which ends the program unless monitoring is on.
void cmdQuit_Click();
/// Open the history or the statistics, or bring them to the front.
void cmdHistory_Click();
void cmdStatistics_Click();
/// Opens the options with the settings as they stand; ones that are open only come to the front.
void cmdOptions_Click();
void timUpdateStats_Timer();
/// The close box hides the window; the program's own quitting is refused while monitoring is on;
/// the end of the user's session is never refused.
void Form_QueryUnload(bool& Cancel, UnloadMode Mode);
void Form_Unload();
/// What has changed is kept now: the machine may not come back.
void Form_Pause();

/// Lets the window and its controls do the above; once, before the window is loaded.
void connectMainEvents();

} // namespace tarvik
