#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvik {

/// The units as UTF-8. A half of a pair that stands alone becomes three bytes, so that every row of
/// units comes back from `utf16Of` as it was.
std::string utf8Of(std::u16string_view units);

/// The UTF-8 text as units; U+FFFD for each byte that is no part of a character.
std::u16string utf16Of(std::string_view text);

/// What `takeCharacter` answers where no character begins.
inline constexpr std::uint32_t noCharacter = 0x110000;

/// Takes the character that a UTF-8 text begins with, which is not empty: its number;
/// `noCharacter`, and a single byte, for none.
std::uint32_t takeCharacter(std::string_view& text);

} // namespace tarvik
