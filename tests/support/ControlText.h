#pragma once

#include "controls/Controls.h"

#include <string>

namespace tarvik {

/// The text that a control shows; "no text" for one of a kind that shows none.
inline std::string textOf(const Control& control) {
    switch (control.kind()) {
    case ControlKind::Frame:
        return static_cast<const Frame&>(control).caption();
    case ControlKind::Label:
        return static_cast<const Label&>(control).caption();
    case ControlKind::TextBox:
        return static_cast<const TextBox&>(control).text();
    case ControlKind::CheckBox:
        return static_cast<const CheckBox&>(control).caption();
    case ControlKind::CommandButton:
        return static_cast<const CommandButton&>(control).caption();
    case ControlKind::ComboBox:
        return static_cast<const ComboBox&>(control).text();
    default:
        return "no text";
    }
}

} // namespace tarvik
