#pragma once

#include "controls/Chart.h"
#include "controls/Form.h"
#include "support/Pixels.h"

#include <string>

namespace tarvik {

// What only a face with real windows has: the pixels that it paints, and a pointer over them. The
// widgets are those of the face under test.

Pixels pixelsOf(const Chart& chart);
void movePointer(const Chart& chart, int x);
void takePointerAway(const Chart& chart);
void giveFocus(const Control& control);
/// Makes the window larger by so many pixels.
void enlarge(const Form& form, int width, int height);
bool isActive(const Form& form);
/// Clicks on a button and presses it by the keyboard, from the thread of a blocking call; whether
/// the pointer shows meanwhile that the program waits.
bool clickDuringCall(const Control& button);
/// Before which form's window the open box stands; empty for none.
std::string ownerOfOpenBox();
/// Whether the screen has room for the whole open box.
bool openBoxFitsTheScreen();

} // namespace tarvik
