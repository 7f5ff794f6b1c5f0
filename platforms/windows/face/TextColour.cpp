#include "windows/face/TextColour.h"

namespace tarvik::face {

bool strongContrast() {
    HIGHCONTRASTA contrast{};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoA(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) != FALSE &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

COLORREF textColour(const Colour& colour, bool strong) {
    return colour == Colour{} || strong ? GetSysColor(COLOR_WINDOWTEXT)
                                        : RGB(colour.red, colour.green, colour.blue);
}

} // namespace tarvik::face
