#pragma once

#include "ports/SystemErrorText.h"

namespace tarvik {

/// Texts of the system's error codes, in the user's language.
class WindowsSystemErrorText : public SystemErrorText {
public:
    std::uint32_t FormatMessageA(std::uint32_t flags, const void* source, std::uint32_t code,
                                 std::uint32_t language, char* buffer, std::uint32_t size,
                                 const void* arguments) override;
};

} // namespace tarvik
