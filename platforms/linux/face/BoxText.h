#pragma once

#include "ports/Desktop.h"

#include <QMessageBox>
#include <QString>

#include <string>

namespace tarvik::face {

// How a message box of the program is told to the toolkit, and its answer to the program.

/// The name of each of them, by which it is told from the toolkit's own.
inline constexpr const char* programsBox = "msgBox";

QMessageBox::Icon boxIcon(MsgBoxIcon icon);
QMessageBox::StandardButtons boxButtons(MsgBoxButtons buttons);
/// The button of Enter: the first one, or No where a warning asks.
QMessageBox::StandardButton defaultButton(const MsgBoxRequest& request);
/// The button that Escape and the close box stand for.
QMessageBox::StandardButton escapeButton(MsgBoxButtons buttons);

/// A text for a box, so that the box fits the screen: as lines, what is not seen by its number.
QString boxText(const std::string& text);

/// Sets the tab stops of the text as far apart as eight letters of its font are wide, as texts for
/// boxes expect it, whatever the font.
void setTabStops(QMessageBox& box);

/// The answer of a box that was left by that button; any other way to leave it counts as closing.
MsgBoxAnswer answerOf(int pressed, MsgBoxButtons buttons);

/// Leaves a trace of a box that nobody is there to read, on the standard error output.
void writeUnshownBox(const MsgBoxRequest& request);

} // namespace tarvik::face
