#include "types/Text.h"

#include <algorithm>

namespace tarvik {

namespace {

char upper(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                                : character;
}

} // namespace

std::string_view trimSpaces(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string upperCase(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), upper);
    return result;
}

bool equalWithoutCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char left, char right) { return upper(left) == upper(right); });
}

bool lessWithoutCase(std::string_view a, std::string_view b) {
    return std::lexicographical_compare(
        a.begin(), a.end(), b.begin(), b.end(),
        [](char left, char right) { return upper(left) < upper(right); });
}

std::string hexText(std::uint64_t number, std::size_t fewest) {
    constexpr unsigned bitsInDigit = 4;
    std::string text;
    for (; number != 0 || text.size() < fewest; number >>= bitsInDigit) {
        text += hexDigits[static_cast<std::size_t>(number & 0xFU)];
    }
    std::reverse(text.begin(), text.end());
    return text;
}

std::string characterNumber(std::uint32_t character) {
    constexpr std::size_t fewest = 4;
    return "[U+" + hexText(character, fewest) + "]";
}

std::string withControlsTold(std::string_view text) {
    constexpr unsigned char firstSeen = 0x20;
    constexpr unsigned char deletion = 0x7F;
    std::string result;
    for (const char each : text) {
        const auto byte = static_cast<unsigned char>(each);
        const bool control = byte < firstSeen || byte == deletion;
        result += control ? characterNumber(byte) : std::string(1, each);
    }
    return result;
}

} // namespace tarvik
