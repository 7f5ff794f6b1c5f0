#include "contracts/painted/PaintedIcon.h"

#include "common/TrayLamp.h"
#include "support/MemorySheet.h"
#include "windows/face/DrawingRaster.h"

namespace tarvik {

Pixels paintedIcon(std::uint32_t number, int side, std::uint8_t grey) {
    const MemorySheet panel(side, side);
    const RECT all{0, 0, side, side};
    const HBRUSH ground = CreateSolidBrush(RGB(grey, grey, grey));
    FillRect(panel.context(), &all, ground);
    DeleteObject(ground);
    const HICON icon = face::makeIcon(face::trayDrawing(number), side);
    DrawIconEx(panel.context(), 0, 0, icon, side, side, 0, nullptr, DI_NORMAL);
    DestroyIcon(icon);
    return panel.pixels();
}

} // namespace tarvik
