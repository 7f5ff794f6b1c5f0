#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tarvik {

/// The text without leading and trailing spaces.
std::string_view trimSpaces(std::string_view text);

/// ASCII letters in upper case; every other byte unchanged, so that the bytes of any code page
/// survive.
std::string upperCase(std::string_view text);

/// Equality without regard to the case of ASCII letters.
bool equalWithoutCase(std::string_view a, std::string_view b);

/// Order without regard to the case of ASCII letters: by the characters, then by the length.
bool lessWithoutCase(std::string_view a, std::string_view b);

/// The digits of hexadecimal numbers, each at the place of its value.
inline constexpr std::string_view hexDigits = "0123456789ABCDEF";

/// The number in these digits, in so many at least.
std::string hexText(std::uint64_t number, std::size_t fewest);

/// A character for the eye that is not seen itself, by its number: "[U+000A]".
std::string characterNumber(std::uint32_t character);

/// A text for the eye in one line: line breaks and all other control characters of ASCII by their
/// numbers. Every other byte stays, so that the bytes of any code page survive.
std::string withControlsTold(std::string_view text);

} // namespace tarvik
