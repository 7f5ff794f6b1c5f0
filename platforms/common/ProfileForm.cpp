#include "common/ProfileForm.h"

#include "common/Utf16.h"

namespace tarvik {

namespace {

constexpr std::string_view littleMark = "\xFF\xFE";
constexpr std::string_view bigMark = "\xFE\xFF";

} // namespace

ProfileForm formOf(std::string_view bytes) {
    if (bytes.starts_with(littleMark)) {
        return ProfileForm::Utf16Little;
    }
    return bytes.starts_with(bigMark) ? ProfileForm::Utf16Big : ProfileForm::Bytes;
}

std::string textOf(std::string bytes, ProfileForm form) {
    if (form == ProfileForm::Bytes) {
        return bytes;
    }
    const std::size_t low = form == ProfileForm::Utf16Little ? 0 : 1;
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    std::u16string units;
    units.reserve(bytes.size() / 2);
    for (std::size_t i = littleMark.size(); i + 1 < bytes.size(); i += 2) {
        units += static_cast<char16_t>(at(i + low) | (at(i + 1 - low) << 8U));
    }
    return utf8Of(units);
}

std::string bytesOf(const std::vector<std::string_view>& pieces, ProfileForm form) {
    const bool little = form == ProfileForm::Utf16Little;
    std::string text;
    for (const std::string_view piece : pieces) {
        text += piece;
    }
    std::string bytes(little ? littleMark : bigMark);
    for (const char16_t unit : utf16Of(text)) {
        const auto low = static_cast<char>(unit & 0xFFU);
        const auto high = static_cast<char>(unit >> 8U);
        bytes += little ? low : high;
        bytes += little ? high : low;
    }
    return bytes;
}

} // namespace tarvik
