#pragma once

namespace tarvik {

/// Takes the loaded settings over into the windows: the options dialog and the timer.
void InitGUI();

/// Copies the settings into the controls of the options dialog.
void InitControls();

} // namespace tarvik
