#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarvik {

/// Any bytes as a part of one line: controls of ASCII, the per cent sign and each character of
/// `also` by their numbers, "%0A".
std::string escaped(std::string_view text, std::string_view also = {});

/// The bytes again; nothing for a text that `escaped` does not write.
std::optional<std::string> unescaped(std::string_view text, std::string_view also = {});

} // namespace tarvik
