#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// What a profile's bytes are: characters of the system's code page, or units of two bytes behind a
/// mark that tells their order.
enum class ProfileForm { Bytes, Utf16Little, Utf16Big };

/// The form that the bytes of a file begin with.
ProfileForm formOf(std::string_view bytes);

/// The file's text: its bytes as they are, or UTF-8 without the mark. Half a unit at the end is no
/// part of it.
std::string textOf(std::string bytes, ProfileForm form);

/// The file's bytes, for a text that is put together of these pieces; not for `Bytes`.
std::string bytesOf(const std::vector<std::string_view>& pieces, ProfileForm form);

} // namespace tarvik
