#pragma once

#include "controls/Drawing.h"
#include "windows/services/SystemHeader.h"

#include <cstdint>
#include <vector>

namespace tarvik::face {

/// A square of points, row by row from the top, each 0xAARRGGBB.
struct Raster {
    int side = 0;
    std::vector<std::uint32_t> points;
};

/// The drawing on a plain background, with smooth edges; fully opaque.
Raster rasterOn(const Drawing& drawing, int side, Colour background);

/// The drawing alone: what it does not cover is transparent. Colours are as they are, not weakened
/// by the cover.
Raster rasterAlone(const Drawing& drawing, int side);

/// The drawing as an icon, which the caller destroys; null where the system cannot make one.
HICON makeIcon(const Drawing& drawing, int side);

} // namespace tarvik::face
