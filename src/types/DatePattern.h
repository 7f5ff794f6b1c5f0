#pragma once

#include <string>
#include <vector>

namespace tarvik {

/// One piece of a date or time pattern: a run of one pattern letter, or text that stands for
/// itself.
struct PatternPiece {
    char letter = 0; ///< 0 for plain text
    int length = 0;  ///< how often the letter is repeated
    std::string text;
};

/// Cuts a pattern into its pieces. Text between single quotes is plain; two single quotes stand for
/// one.
std::vector<PatternPiece> patternPieces(const std::string& pattern);

} // namespace tarvik
