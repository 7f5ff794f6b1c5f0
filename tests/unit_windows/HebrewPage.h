#pragma once

#include "common/CodePage.h"
#include "common/Utf16.h"
#include "windows/services/SystemHeader.h"

#include <string>
#include <string_view>

namespace tarvik {

/// The conversions of a system whose code page is the Hebrew one, in which 0xFD is the mark from
/// left to right and 0xFE the one from right to left.
inline CodePage hebrewPage() {
    constexpr UINT number = 1255;
    const auto toUtf8 = [](std::string_view text) {
        const auto length = static_cast<int>(text.size());
        std::wstring wide(text.size(), L'\0');
        MultiByteToWideChar(number, 0, text.data(), length, wide.data(), length);
        return utf8Of(std::u16string(wide.begin(), wide.end()));
    };
    const auto fromUtf8 = [](std::string_view text) {
        const std::u16string units = utf16Of(text);
        const std::wstring wide(units.begin(), units.end());
        const auto length = static_cast<int>(wide.size());
        std::string bytes(wide.size(), '\0');
        WideCharToMultiByte(number, 0, wide.data(), length, bytes.data(), length, nullptr, nullptr);
        return bytes;
    };
    return {.toUtf8 = toUtf8, .fromUtf8 = fromUtf8};
}

} // namespace tarvik
