#pragma once

namespace tarvik {

/// Refreshes figures, colours, tray menu and tray icon after the state of the connection.
void UpdateGUI();

/// Shows in the status lamp whether monitoring is on and a connection is up.
void ShowStatus();

} // namespace tarvik
