#include "controls/Control.h"

#include "controls/ControlList.h"

namespace tarvik {

Control::Control(ControlList& list, ControlKind kind, std::string name)
    : list_(list), kind_(kind), name_(std::move(name)) {
    list.add(*this, name_);
}

} // namespace tarvik
