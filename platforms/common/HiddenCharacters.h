#pragma once

#include "common/CodePage.h"

#include <string>
#include <string_view>

namespace tarvik {

/// A text in UTF-8 for the eye: each character that is not seen itself is told by its number, as
/// "[U+202E]": what turns the direction of writing, what has no width, what breaks a line under
/// another name than the two everybody knows. A name from outside could otherwise be read as
/// another one: with it, "gnp.exe" after "U+202E" reads as "exe.png".
std::string withHiddenTold(std::string_view text);

/// The same for a text in a code page. One without such characters comes back byte for byte.
std::string withHiddenTold(std::string_view text, const CodePage& codePage);

} // namespace tarvik
