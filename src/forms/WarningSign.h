#pragma once

#include "controls/Drawing.h"

namespace tarvik {

/// A triangle with an exclamation mark.
Drawing warningSign();

} // namespace tarvik
