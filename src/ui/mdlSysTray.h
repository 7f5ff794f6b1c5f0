#pragma once

#include <cstdint>

namespace tarvik {

/// What the icon in the notification area and its tip tell; any other value counts as the first.
enum class TrayState : std::uint8_t { NotMonitoring = 0, ActiveConnection = 1, NoConnection = 2 };

/// Adds the icon; false where the desktop shows none.
bool AddToSysTray(TrayState IconState, TrayState TipState);

/// Changes icon and tip. Asks the desktop for nothing when both are as they were.
bool ToggleSysTray(TrayState IconState, TrayState TipState);

/// Removes the icon and unloads the form that owns it.
bool RemoveFromSysTray();

/// Decides once whether the desktop shows balloons.
void frmSysTray_Form_Initialize();

} // namespace tarvik
