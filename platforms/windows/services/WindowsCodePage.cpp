#include "windows/services/WindowsCodePage.h"

#include "common/Utf16.h"
#include "windows/services/SystemHeader.h"

namespace tarvik {

namespace {

std::string toUtf8(std::string_view text) {
    const auto length = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    const int count = MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), length);
    return utf8Of(std::u16string(wide.begin(), wide.begin() + count));
}

std::string fromUtf8(std::string_view text) {
    const std::u16string units = utf16Of(text);
    const std::wstring wide(units.begin(), units.end());
    const auto length = static_cast<int>(wide.size());
    const int size =
        WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_ACP, 0, wide.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

} // namespace

CodePage windowsCodePage() {
    return {.toUtf8 = toUtf8, .fromUtf8 = fromUtf8};
}

} // namespace tarvik
