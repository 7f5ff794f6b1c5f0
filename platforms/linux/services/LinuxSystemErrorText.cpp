#include "linux/services/LinuxSystemErrorText.h"

#include <cstring>
#include <limits>
#include <string_view>

namespace tarvik {

std::uint32_t LinuxSystemErrorText::FormatMessageA(std::uint32_t, const void*, std::uint32_t code,
                                                   std::uint32_t, char* buffer, std::uint32_t size,
                                                   const void*) {
    if (code > static_cast<std::uint32_t>(std::numeric_limits<int>::max()) || size == 0) {
        return 0;
    }
    // The names tell which numbers the system knows; the descriptions answer for any number.
    const auto number = static_cast<int>(code);
    if (number != 0 && strerrorname_np(number) == nullptr) {
        return 0;
    }
    const std::string_view text = strerrordesc_np(number);
    const std::size_t length = text.copy(buffer, size - 1);
    buffer[length] = '\0';
    return static_cast<std::uint32_t>(length);
}

} // namespace tarvik
