#include "windows/face/ControlIds.h"

#include <algorithm>

namespace tarvik::face {

int controlId(const Control& control) {
    const auto& controls = control.form().controls();
    const auto place = std::find(controls.begin(), controls.end(), &control);
    return firstControlId + static_cast<int>(place - controls.begin());
}

Control* controlWithId(const Form& form, int id) {
    const int place = id - firstControlId;
    const bool known = place >= 0 && place < static_cast<int>(form.controls().size());
    return known ? form.controls()[static_cast<std::size_t>(place)] : nullptr;
}

} // namespace tarvik::face
