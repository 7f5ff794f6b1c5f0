#pragma once

#include "controls/Form.h"

#include <utility>

namespace tarvik {

/// A form whose window is made on that desktop.
template <class Shown>
class FormOn : public Shown {
public:
    template <class... Arguments>
    explicit FormOn(Desktop& desktop, Arguments&&... arguments)
        : Shown(std::forward<Arguments>(arguments)...) {
        this->setDesktop(desktop);
    }
};

} // namespace tarvik
