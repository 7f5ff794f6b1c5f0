#pragma once

#include <fstream>
#include <iterator>
#include <string>

namespace tarvik {

/// What a file holds, read apart from the program's own ways; nothing when it cannot be read.
inline std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

} // namespace tarvik
