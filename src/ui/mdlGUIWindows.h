#pragma once

#include "controls/Form.h"

namespace tarvik {

/// Shows or hides a form; a form that is seen afterwards comes to the front and gets the focus.
/// Where no icon in the notification area could bring a hidden main window back, it is minimised.
void ToggleFormVisibility(Form& Window, bool Visible);

} // namespace tarvik
