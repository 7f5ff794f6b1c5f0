#pragma once

#include "controls/Form.h"

namespace tarvik {

/// Lets the form's close box do what this handler does, instead of unloading the form.
void connectCloseBox(Form& form, void (*handler)());

} // namespace tarvik
