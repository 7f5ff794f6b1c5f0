#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace tarvik {

/// An image: rows of pixels, 0xRRGGBB each.
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> values;

    std::uint32_t at(int x, int y) const {
        return values[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
    std::ptrdiff_t countOf(std::uint32_t colour) const {
        return std::count(values.begin(), values.end(), colour);
    }
    friend bool operator==(const Pixels&, const Pixels&) = default;
};

/// The image in characters: '#' for black, '.' for white, '?' for any other colour. Each line ends
/// with a line feed.
inline std::string inCharacters(const Pixels& pixels) {
    std::string text;
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x) {
            const std::uint32_t value = pixels.at(x, y);
            text += value == 0 ? '#' : value == 0xFFFFFF ? '.' : '?';
        }
        text += '\n';
    }
    return text;
}

/// The runs of rows that hold anything but the colour of the last pixel: of a text, its lines.
inline int linesIn(const Pixels& pixels) {
    const std::uint32_t ground = pixels.values.back();
    int lines = 0;
    bool before = false;
    for (int y = 0; y < pixels.height; ++y) {
        const auto row = pixels.values.begin() + y * pixels.width;
        const bool holds = std::any_of(row, row + pixels.width,
                                       [ground](std::uint32_t one) { return one != ground; });
        lines += holds && !before ? 1 : 0;
        before = holds;
    }
    return lines;
}

/// The part of the pixels whose colours the eye would tell apart.
inline double differingPart(const Pixels& a, const Pixels& b) {
    if (a.width != b.width || a.height != b.height) {
        return 1;
    }
    constexpr int tellable = 48; // of 255, in any channel
    const auto channel = [](std::uint32_t value, int shift) {
        return static_cast<int>(value >> shift & 0xFFU);
    };
    std::size_t differing = 0;
    for (std::size_t i = 0; i < a.values.size(); ++i) {
        bool differs = false;
        for (const int shift : {0, 8, 16}) {
            differs = differs || std::abs(channel(a.values[i], shift) -
                                          channel(b.values[i], shift)) > tellable;
        }
        differing += differs ? 1U : 0U;
    }
    return static_cast<double>(differing) / static_cast<double>(a.values.size());
}

} // namespace tarvik
