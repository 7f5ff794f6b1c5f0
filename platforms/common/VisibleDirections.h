#pragma once

#include "common/CodePage.h"

#include <string>
#include <string_view>

namespace tarvik {

/// A text in UTF-8 for the eye: each character that turns the direction of writing, and is not seen
/// itself, is told by its number, as "[U+202E]". A name from outside could otherwise be read as
/// another one: with it, "gnp.exe" after "U+202E" reads as "exe.png".
std::string withVisibleDirections(std::string_view text);

/// The same for a text in a code page. One without turns comes back byte for byte.
std::string withVisibleDirections(std::string_view text, const CodePage& codePage);

} // namespace tarvik
