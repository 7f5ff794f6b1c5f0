#pragma once

#include "ports/Desktop.h"

#include <QMessageBox>

namespace tarvik::face {

// How a message box of the program is told to the toolkit, and its answer to the program.

QMessageBox::Icon boxIcon(MsgBoxIcon icon);
QMessageBox::StandardButtons boxButtons(MsgBoxButtons buttons);
QMessageBox::StandardButton firstButton(MsgBoxButtons buttons);
/// The button that Escape and the close box stand for.
QMessageBox::StandardButton escapeButton(MsgBoxButtons buttons);

/// The answer of a box that was left by that button; any other way to leave it counts as closing.
MsgBoxAnswer answerOf(int pressed, MsgBoxButtons buttons);

/// Leaves a trace of a box that nobody is there to read, on the standard error output.
void writeUnshownBox(const MsgBoxRequest& request);

} // namespace tarvik::face
