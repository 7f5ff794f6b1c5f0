#include "types/Escape.h"

#include "types/Text.h"

namespace tarvik {

namespace {

bool isEscaped(char byte, std::string_view also) {
    const auto number = static_cast<unsigned char>(byte);
    return number < 0x20 || number == 0x7F || byte == '%' || also.find(byte) != also.npos;
}

/// The byte that two digits at the beginning stand for.
std::optional<char> byteOf(std::string_view digits) {
    const std::size_t high = digits.empty() ? hexDigits.npos : hexDigits.find(digits[0]);
    const std::size_t low = digits.size() < 2 ? hexDigits.npos : hexDigits.find(digits[1]);
    return high == hexDigits.npos || low == hexDigits.npos
               ? std::nullopt
               : std::optional(static_cast<char>(high * hexDigits.size() + low));
}

} // namespace

std::string escaped(std::string_view text, std::string_view also) {
    std::string result;
    for (const char byte : text) {
        if (isEscaped(byte, also)) {
            result += "%" + hexText(static_cast<unsigned char>(byte), 2);
        } else {
            result += byte;
        }
    }
    return result;
}

std::optional<std::string> unescaped(std::string_view text, std::string_view also) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isNumber = text[i] == '%';
        const std::optional<char> byte = isNumber ? byteOf(text.substr(i + 1)) : text[i];
        if (!byte || isEscaped(*byte, also) != isNumber) {
            return std::nullopt;
        }
        result += *byte;
        i += isNumber ? 2 : 0;
    }
    return result;
}

} // namespace tarvik
