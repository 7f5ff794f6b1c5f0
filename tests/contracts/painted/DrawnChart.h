#pragma once

#include "support/ChartCases.h"
#include "support/Pixels.h"

#include <filesystem>

namespace tarvik {

// How charts look on a face: what it draws now, and what is kept in tests/reference_images.

/// With a font that looks the same on every machine of the platform.
Pixels drawn(const ChartCase& one);
/// Empty when there is none.
Pixels kept(const ChartCase& one);
bool writeImage(const Pixels& pixels, const std::filesystem::path& file);

} // namespace tarvik
