#pragma once

#include "ports/Desktop.h"
#include "windows/services/SystemHeader.h"

namespace tarvik::face {

// How a message box of the program is told to the system, and its answer to the program.

/// Icon and buttons as the system's flags.
UINT boxFlags(const MsgBoxRequest& request);

/// The text with each line ended as the system wants it: a carriage return, alone or with a line
/// feed, breaks the line.
std::string boxText(const std::string& text);

/// The answer of a box that was left by that button; any other way to leave it counts as closing.
MsgBoxAnswer answerOf(int pressed, MsgBoxButtons buttons);

} // namespace tarvik::face
