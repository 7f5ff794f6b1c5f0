#pragma once

#include "controls/Control.h"
#include "controls/ControlList.h"

namespace tarvik::face {

// The control id table: the controls of a form are numbered in the order of their declaration, so
// that a program that knows the form finds each of its windows by number.

/// The number of the first control; lower ones belong to the system's own commands.
inline constexpr int firstControlId = 1000;

/// The number of a control in its form.
int controlId(const Control& control);

/// The control of that number; null for none.
Control* controlWithId(const ControlList& list, int id);

} // namespace tarvik::face
