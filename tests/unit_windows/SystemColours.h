#pragma once

#include "windows/services/SystemHeader.h"

#include <array>

namespace tarvik {

/// The system's colours of windows and their text, for a while.
class SystemColours {
public:
    SystemColours(COLORREF background, COLORREF text) {
        const std::array<COLORREF, 2> colours{background, text};
        SetSysColors(2, places.data(), colours.data());
    }
    ~SystemColours() { SetSysColors(2, places.data(), before_.data()); }
    SystemColours(const SystemColours&) = delete;
    SystemColours& operator=(const SystemColours&) = delete;

private:
    static constexpr std::array<INT, 2> places{COLOR_WINDOW, COLOR_WINDOWTEXT};
    std::array<COLORREF, 2> before_{GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_WINDOWTEXT)};
};

/// The system's colour of what windows stand on, for a while.
class GroundColour {
public:
    explicit GroundColour(COLORREF colour) { set(colour); }
    ~GroundColour() { set(before_); }
    GroundColour(const GroundColour&) = delete;
    GroundColour& operator=(const GroundColour&) = delete;

private:
    static void set(COLORREF colour) {
        const INT element = COLOR_3DFACE;
        SetSysColors(1, &element, &colour);
    }
    COLORREF before_ = GetSysColor(COLOR_3DFACE);
};

} // namespace tarvik
