#pragma once

#include "controls/Form.h"

#include <vector>

namespace tarvik::face {

/// The controls of a form that work while its window need not be there: its timers, and in a form
/// that never shows a window the pictures to which an icon of the desktop sends its messages.
inline std::vector<Control*> unseenControls(const Form& form) {
    std::vector<Control*> unseen;
    for (Control* control : form.controls()) {
        const bool hook = form.layout() == nullptr && control->kind() == ControlKind::Picture;
        if (hook || control->kind() == ControlKind::Timer) {
            unseen.push_back(control);
        }
    }
    return unseen;
}

} // namespace tarvik::face
