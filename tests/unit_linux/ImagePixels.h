#pragma once

#include "support/Pixels.h"

#include <QImage>

namespace tarvik {

inline Pixels pixelsOf(const QImage& image) {
    Pixels pixels{.width = image.width(), .height = image.height(), .values = {}};
    pixels.values.reserve(static_cast<std::size_t>(image.width()) *
                          static_cast<std::size_t>(image.height()));
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            pixels.values.push_back(image.pixel(x, y) & 0xFFFFFFU);
        }
    }
    return pixels;
}

} // namespace tarvik
