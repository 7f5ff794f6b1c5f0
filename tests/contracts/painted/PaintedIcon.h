#pragma once

#include "support/Pixels.h"

#include <cstdint>

namespace tarvik {

/// The icon of that number (`iconNumber`) in a panel of that grey, with so many pixels a side.
Pixels paintedIcon(std::uint32_t number, int side, std::uint8_t grey);

} // namespace tarvik
