#pragma once

#include "controls/Chart.h"
#include "controls/Form.h"
#include "support/Pixels.h"

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tarvik {

// What only a face with real windows has: the pixels that it paints, and a pointer over them. The
// widgets are those of the face under test.

Pixels pixelsOf(const Chart& chart);
Pixels pixelsOf(const Control& control);
void movePointer(const Chart& chart, int x);
void takePointerAway(const Chart& chart);
void giveFocus(const Control& control);
/// Makes the window larger by so many pixels.
void enlarge(const Form& form, int width, int height);
bool isActive(const Form& form);
/// Another window is the active one as long as what is returned lives; then the form's is again.
std::shared_ptr<void> otherWindow(const Form& form);
/// Width and height of its window.
std::array<int, 2> sizeOf(const Form& form);
/// What windows are shown at, dots per inch.
std::vector<int> resolutions();
/// The window is on a screen of that resolution from now on.
void moveToResolution(const Form& form, int dotsPerInch);
/// Whether the field has room for its whole text.
bool showsWholeText(const TextBox& field);
/// Those of the text that is painted: the runs of rows that hold anything.
int paintedLines(const Label& label);
/// Windows have other colours of ground and text as long as what is returned lives.
std::shared_ptr<void> otherColours(const Form& form, const Colour& ground, const Colour& text);
/// Windows have another ground as long as what is returned lives.
std::shared_ptr<void> otherGround(const Colour& ground);
/// Tells, whenever it is asked, whether the widget is there that shows the control now.
std::function<bool()> presenceOf(const Control& control);
/// Clicks on a button and presses it by the keyboard, from the thread of a blocking call; whether
/// the pointer shows meanwhile that the program waits.
bool clickDuringCall(const Control& button);
/// Before which form's window the open box stands; empty for none.
std::string ownerOfOpenBox();
/// Whether the screen has room for the whole open box.
bool openBoxFitsTheScreen();

} // namespace tarvik
