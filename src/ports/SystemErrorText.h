#pragma once

#include <cstdint>

namespace tarvik {

/// Texts of the operating system's own error codes.
class SystemErrorText {
public:
    /// "Take the text from the system", the only flag the program passes.
    static constexpr std::uint32_t fromSystem = 4096;

    virtual ~SystemErrorText() = default;

    /// Writes the NUL-terminated text of `code` into `buffer` of `size` bytes. Returns the length
    /// of the text; 0, with the buffer untouched, for a code that the system does not know.
    /// `source` and `arguments` are null, `language` 0 (the user's).
    virtual std::uint32_t FormatMessageA(std::uint32_t flags, const void* source,
                                         std::uint32_t code, std::uint32_t language, char* buffer,
                                         std::uint32_t size, const void* arguments) = 0;
};

} // namespace tarvik
