#include "windows/services/WindowsSystemErrorText.h"

#include "windows/services/SystemHeader.h"

namespace tarvik {

std::uint32_t WindowsSystemErrorText::FormatMessageA(std::uint32_t flags, const void* source,
                                                     std::uint32_t code, std::uint32_t language,
                                                     char* buffer, std::uint32_t size,
                                                     const void*) {
    // Some of the texts have places for values that nobody gives: they are shown as they stand.
    return ::FormatMessageA(flags | FORMAT_MESSAGE_IGNORE_INSERTS, source, code, language, buffer,
                            size, nullptr);
}

} // namespace tarvik
