#pragma once

namespace tarvik {

/// Takes the loaded settings over into the windows: the options dialog and the timer.
void InitGUI();

/// Copies the settings into the controls of the options dialog.
void InitControls();

/// Refreshes figures, colours, tray menu and tray icon after the state of the connection.
void UpdateGUI();

/// Shows in the status lamp whether monitoring is on and a connection is up.
void ShowStatus();

} // namespace tarvik
