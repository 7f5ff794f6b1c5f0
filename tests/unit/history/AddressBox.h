#pragma once

#include <string>
#include <vector>

namespace tarvik {

/// What the box of the addresses shows for these.
inline std::string boxOf(const std::vector<std::string>& addresses) {
    std::string text;
    for (const std::string& address : addresses) {
        text += address + "\r\n";
    }
    return text.empty() ? "[no IP addresses recorded]" : text;
}

} // namespace tarvik
