#pragma once

namespace tarvik {

// What the icon in the notification area and its menu do.

/// Decides once whether the desktop shows balloons.
void frmSysTray_Form_Initialize();

/// The icon's mouse messages arrive as moves of the picture, the message's number as the place: the
/// left button released shows or hides the main window, the right one opens the menu.
void picSysTrayHook_MouseMove(int X);

/// Runs an entry of the menu; a separator does nothing.
void mnuPopUpEntry_Click(int Index);

/// Lets the icon and its menu do the above; once, before the form is loaded.
void connectSysTrayEvents();

} // namespace tarvik
