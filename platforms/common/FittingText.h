#pragma once

#include "common/CodePage.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tarvik {

/// How much a message box may show: letters in a line, a wide one counting twice, and lines.
struct BoxRoom {
    std::size_t letters = 0;
    std::size_t lines = 0;
};

/// What a screen has room for beside the rest of a box, with letters as wide as that at the most
/// and lines as high; all in pixels.
BoxRoom boxRoom(int screenWidth, int screenHeight, int letterWidth, int lineHeight);

/// A text in UTF-8 for a message box of that room, so that its buttons are on the screen whatever a
/// name or an argument from outside holds. A word that is longer than a line goes on in the next
/// one. Of too many lines those in the middle give way to one of three dots: the program's own
/// words stand at both ends. Lines end with a carriage return, a line feed, or both; new ones with
/// a carriage return.
std::string fittingText(std::string_view text, const BoxRoom& room);

/// The same for a text in a code page. One that fits comes back byte for byte.
std::string fittingText(std::string_view text, const BoxRoom& room, const CodePage& codePage);

} // namespace tarvik
