#pragma once

namespace tarvik {

/// A colour as red, green and blue from 0 to 255. Black stands for the desktop's own text colour.
struct Colour {
    int red = 0;
    int green = 0;
    int blue = 0;

    friend bool operator==(const Colour&, const Colour&) = default;
};

} // namespace tarvik
