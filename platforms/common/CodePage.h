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

} // namespace tarvik
