#pragma once

#include <string>
#include <string_view>

namespace tarvik {

/// How the program's texts, which are bytes in the system's code page, become UTF-8 and back. Left
/// as it is, for systems whose code page is UTF-8.
struct CodePage {
    std::string (*toUtf8)(std::string_view text) = [](std::string_view text) {
        return std::string(text);
    };
    /// Characters that the code page lacks become those that the system puts in their place.
    std::string (*fromUtf8)(std::string_view text) = [](std::string_view text) {
        return std::string(text);
    };
};

/// A text in a code page after a change that works on UTF-8. One that the change leaves as it is
/// comes back byte for byte, whatever the code page lacks.
template <class Change>
std::string changedInUtf8(std::string_view text, const CodePage& codePage, Change change) {
    const std::string utf8 = codePage.toUtf8(text);
    const std::string changed = change(utf8);
    return changed == utf8 ? std::string(text) : codePage.fromUtf8(changed);
}

} // namespace tarvik
