#pragma once

#include <cstdint>
#include <string_view>

namespace tarvik {

/// Tells bytes that were written whole from those that were not: CRC-64 with the polynomial
/// 0x42F0E1EBA9EA3693, highest bit first, begun with ones and inverted.
std::uint64_t checkSum(std::string_view bytes);

} // namespace tarvik
