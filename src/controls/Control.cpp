#include "controls/Control.h"

#include "controls/ControlList.h"

namespace tarvik {

bool takesKeys(ControlKind kind) {
    switch (kind) {
    case ControlKind::TextBox:
    case ControlKind::CheckBox:
    case ControlKind::OptionButton:
    case ControlKind::CommandButton:
    case ControlKind::ComboBox:
    case ControlKind::ListView:
    case ControlKind::Chart:
        return true;
    default:
        return false;
    }
}

Control::Control(ControlList& list, ControlKind kind, const char* name)
    : list_(list), kind_(kind), name_(name) {
    list.add(*this, name_);
}

} // namespace tarvik
