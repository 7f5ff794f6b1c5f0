#pragma once

#include "ports/Desktop.h"

namespace tarvik::face {

/// The answer of a message box that is closed without one.
MsgBoxAnswer closingAnswer(MsgBoxButtons buttons);

} // namespace tarvik::face
