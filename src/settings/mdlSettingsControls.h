#pragma once

namespace tarvik {

struct Setting;
struct UnitSetting;

/// Takes the loaded settings over into the windows: the options dialog and the timer.
void InitGUI();

/// Copies the settings into the controls of the options dialog.
void InitControls();

/// Shows the unit behind its words in the main window.
void showUnit(const UnitSetting& unit);

/// Shows the value wherever it is seen: in its control and, a unit, in the main window.
void showEverywhere(const Setting& setting);

} // namespace tarvik
