#pragma once

#include <string>

namespace tarvik {

class Form;

/// Draws a form in character cells, as it stands, at its smallest size; each line ends with a line
/// feed. Every visible control of its layout is there once; a form without a layout is empty.
///
///     +- Caption ---+   the form, and each frame in it
///     [ text ]          a text box, `( text )` a read-only one
///     [x] Caption       a check box, `[ ] Caption` when it is not ticked
///     < Caption >       a button, `- Caption -` a disabled one
///     [text        v]   a combo box
///     [chart: Title]    a chart
///     [ 40 % ]          a progress bar
///     (*)               a picture
///
/// A cell that two controls claim shows `#`.
std::string textPicture(const Form& form);

} // namespace tarvik
