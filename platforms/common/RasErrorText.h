#pragma once

#include <cstdint>

namespace tarvik {

/// The text for a code of the remote-access service, in English; null for a code without one.
const char* rasErrorText(std::uint32_t code);

} // namespace tarvik
