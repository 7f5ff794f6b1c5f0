#pragma once

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

} // namespace tarvik
