#pragma once

#include "controls/LayoutSolver.h"
#include "windows/services/SystemHeader.h"

#include <string>

namespace tarvik::face {

/// The system's font for windows at the resolution of one screen, and what sizes follow from it.
class FaceFont {
public:
    /// `dotsPerInch` of the screen: 96 is the plain size.
    explicit FaceFont(int dotsPerInch);
    ~FaceFont();
    FaceFont(const FaceFont&) = delete;
    FaceFont& operator=(const FaceFont&) = delete;

    HFONT handle() const { return font_; }

    // All in pixels.
    int textWidth(const std::string& text) const;
    /// Room for so many digits.
    int charactersWidth(int characters) const { return characters * digitWidth_; }
    int lineHeight() const { return lineHeight_; }
    /// Of the units that the system's guidelines give sizes in: a quarter of a character's width,
    /// an eighth of its height.
    int horizontalUnits(int units) const;
    int verticalUnits(int units) const;

private:
    HFONT font_ = nullptr;
    int digitWidth_ = 0;
    int averageWidth_ = 0;
    int lineHeight_ = 0;
};

/// The resolution of the screen that the window stands on, dots per inch; that of the desktop for
/// null or on a system whose screens all have the same.
int dotsPerInch(HWND window);

/// What the borders and the title of the window take beside its client area, whether it is
/// minimised or not, on a screen of that resolution.
SIZE frameSize(HWND window, int dotsPerInch);

/// Keeps the system from scaling the window's controls by itself, where it would.
void dontScaleDialog(HWND window);

} // namespace tarvik::face
