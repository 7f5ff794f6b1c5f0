#include "windows/face/ControlIds.h"

#include <algorithm>

namespace tarvik::face {

int controlId(const Control& control) {
    const auto& controls = control.list().controls();
    const auto place = std::find(controls.begin(), controls.end(), &control);
    return firstControlId + static_cast<int>(place - controls.begin());
}

Control* controlWithId(const ControlList& list, int id) {
    const int place = id - firstControlId;
    const bool known = place >= 0 && place < static_cast<int>(list.controls().size());
    return known ? list.controls()[static_cast<std::size_t>(place)] : nullptr;
}

} // namespace tarvik::face
