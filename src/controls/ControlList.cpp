#include "controls/ControlList.h"

#include <algorithm>

namespace tarvik {

Control* ControlList::control(const std::string& name) const {
    const auto found = std::find(names_.begin(), names_.end(), name);
    return found == names_.end() ? nullptr
                                 : controls_[static_cast<std::size_t>(found - names_.begin())];
}

void ControlList::add(Control& control, const std::string& name) {
    controls_.push_back(&control);
    names_.push_back(name);
}

} // namespace tarvik
