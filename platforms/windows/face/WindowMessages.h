#pragma once

#include "windows/services/SystemHeader.h"

namespace tarvik::face {

// Numbers that the parts of the face agree on.

/// The program's icon in its resources.
inline constexpr int programIconId = 1;

/// To a form's own window: show it as the form says.
inline constexpr UINT applyVisibilityMessage = WM_APP;
/// To a form's own window: some control needs another size.
inline constexpr UINT layOutMessage = WM_APP + 1;

/// The property of an icon's picture that names the window which hears what becomes of the icon's
/// note, NIN_BALLOONSHOW to NIN_BALLOONUSERCLICK: the task bar tells the picture in the place of
/// mouse messages.
inline constexpr const char* noteListenerProperty = "TarvikNoteListener";
/// To that window, with what the task bar has told.
inline constexpr UINT noteNewsMessage = WM_APP + 2;

/// From the system: the window came to a screen of another resolution. Older headers lack the name.
inline constexpr UINT resolutionChangedMessage = 0x02E0;

} // namespace tarvik::face
