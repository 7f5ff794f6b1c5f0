#include "windows/face/TextColour.h"

#include "common/ReadableColour.h"

namespace tarvik::face {

bool strongContrast() {
    HIGHCONTRASTA contrast{};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoA(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) != FALSE &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

COLORREF textColour(const Colour& colour, COLORREF ground, bool strong) {
    if (colour == Colour{} || strong) {
        return GetSysColor(COLOR_WINDOWTEXT);
    }
    const Colour shown =
        readableOn(colour, {GetRValue(ground), GetGValue(ground), GetBValue(ground)});
    return RGB(shown.red, shown.green, shown.blue);
}

} // namespace tarvik::face
