#include "common/VisibleDirections.h"

#include <algorithm>
#include <array>

namespace tarvik {

namespace {

struct Turn {
    std::string_view bytes;
    std::string_view shown;
};

constexpr std::array turns{
    Turn{"\xD8\x9C", "[U+061C]"},     Turn{"\xE2\x80\x8E", "[U+200E]"},
    Turn{"\xE2\x80\x8F", "[U+200F]"}, Turn{"\xE2\x80\xAA", "[U+202A]"},
    Turn{"\xE2\x80\xAB", "[U+202B]"}, Turn{"\xE2\x80\xAC", "[U+202C]"},
    Turn{"\xE2\x80\xAD", "[U+202D]"}, Turn{"\xE2\x80\xAE", "[U+202E]"},
    Turn{"\xE2\x81\xA6", "[U+2066]"}, Turn{"\xE2\x81\xA7", "[U+2067]"},
    Turn{"\xE2\x81\xA8", "[U+2068]"}, Turn{"\xE2\x81\xA9", "[U+2069]"},
};

} // namespace

std::string withVisibleDirections(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const auto* const turn = std::find_if(turns.begin(), turns.end(), [&](const Turn& each) {
            return text.starts_with(each.bytes);
        });
        if (turn == turns.end()) {
            result += text.front();
            text.remove_prefix(1);
        } else {
            result += turn->shown;
            text.remove_prefix(turn->bytes.size());
        }
    }
    return result;
}

std::string withVisibleDirections(std::string_view text, const CodePage& codePage) {
    // A plain text is by far the usual one, and the same in every code page.
    const bool plain = std::all_of(text.begin(), text.end(), [](char each) {
        return static_cast<unsigned char>(each) < 0x80;
    });
    if (plain) {
        return std::string(text);
    }
    const std::string utf8 = codePage.toUtf8(text);
    const std::string told = withVisibleDirections(utf8);
    return told == utf8 ? std::string(text) : codePage.fromUtf8(told);
}

} // namespace tarvik
