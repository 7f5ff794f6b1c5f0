#pragma once

#include "ports/Desktop.h"

#include <string>

namespace tarvik::face {

// What the faces of all desktops have in common.

/// A caption whose mnemonic letter is marked by `&` before it, as toolkits want it; marks in the
/// caption itself are doubled, so that they are shown as they are. 0 marks nothing.
std::string markedCaption(const std::string& caption, char mnemonic);

/// The answer of a message box that is closed without one.
MsgBoxAnswer closingAnswer(MsgBoxButtons buttons);

} // namespace tarvik::face
