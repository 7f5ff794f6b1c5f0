#include "ui/controls/Control.h"

#include "ui/controls/Form.h"

namespace tarvik {

Control::Control(Form& form, ControlKind kind, std::string name)
    : form_(form), kind_(kind), name_(std::move(name)) {
    form.controls_.push_back(this);
}

} // namespace tarvik
