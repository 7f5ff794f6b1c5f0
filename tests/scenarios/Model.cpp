#include "Driver.h"

#include "controls/Chart.h"
#include "support/ControlText.h"

namespace tarvik::scenarios {

std::string modelText(const Control& control) {
    switch (control.kind()) {
    case ControlKind::CheckBox: {
        const auto& box = static_cast<const CheckBox&>(control);
        return boxText(box.ticked(), box.caption());
    }
    case ControlKind::OptionButton: {
        const auto& option = static_cast<const OptionButton&>(control);
        return boxText(option.value(), option.caption());
    }
    case ControlKind::Chart:
        return static_cast<const Chart&>(control).title();
    case ControlKind::ProgressBar:
        return progressText(static_cast<const ProgressBar&>(control).value());
    case ControlKind::Frame:
    case ControlKind::Label:
    case ControlKind::TextBox:
    case ControlKind::CommandButton:
    case ControlKind::ComboBox:
        return textOf(control);
    default:
        return "";
    }
}

std::vector<SeenControl> modelControls(const Form& form) {
    std::vector<SeenControl> seen;
    for (const Control* control : seenControlsInOrder(*form.layout())) {
        seen.push_back({control->name(), modelText(*control), control->enabled()});
    }
    return seen;
}

} // namespace tarvik::scenarios
