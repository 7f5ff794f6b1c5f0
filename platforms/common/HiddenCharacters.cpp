#include "common/HiddenCharacters.h"

#include "common/Utf16.h"
#include "types/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace tarvik {

namespace {

struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

/// Without those of ASCII: a text may rightly have lines and tabs.
constexpr std::array hidden{
    Range{0x80, 0x9F},       Range{0xAD, 0xAD},       Range{0x34F, 0x34F},
    Range{0x61C, 0x61C},     Range{0x115F, 0x1160},   Range{0x17B4, 0x17B5},
    Range{0x180B, 0x180F},   Range{0x200B, 0x200F},   Range{0x2028, 0x202E},
    Range{0x2060, 0x206F},   Range{0x3164, 0x3164},   Range{0xFE00, 0xFE0F},
    Range{0xFEFF, 0xFEFF},   Range{0xFFA0, 0xFFA0},   Range{0xFFF0, 0xFFFB},
    Range{0x1BCA0, 0x1BCA3}, Range{0x1D173, 0x1D17A}, Range{0xE0000, 0xE0FFF},
};

bool isHidden(std::uint32_t character) {
    return std::any_of(hidden.begin(), hidden.end(), [&](const Range& range) {
        return character >= range.first && character <= range.last;
    });
}

} // namespace

std::string withHiddenTold(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        std::string_view rest = text;
        const std::uint32_t character = takeCharacter(rest);
        if (isHidden(character)) {
            result += characterNumber(character);
        } else {
            result += text.substr(0, text.size() - rest.size());
        }
        text = rest;
    }
    return result;
}

std::string withHiddenTold(std::string_view text, const CodePage& codePage) {
    // A plain text is by far the usual one, and the same in every code page.
    const bool plain = std::all_of(text.begin(), text.end(), [](char each) {
        return static_cast<unsigned char>(each) < 0x80;
    });
    if (plain) {
        return std::string(text);
    }
    return changedInUtf8(text, codePage,
                         [](std::string_view utf8) { return withHiddenTold(utf8); });
}

} // namespace tarvik
