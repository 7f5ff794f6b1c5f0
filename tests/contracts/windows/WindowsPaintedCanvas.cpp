#include "contracts/painted/PaintedCanvas.h"

#include "support/MemorySheet.h"
#include "windows/face/GdiCanvas.h"

namespace tarvik {

Pixels paintedOnCanvas(CanvasSize size, const std::function<void(Canvas&)>& draw, double scale) {
    const SIZE pixels{static_cast<LONG>(size.width), static_cast<LONG>(size.height)};
    const MemorySheet sheet(pixels.cx, pixels.cy);
    {
        const auto font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
        face::GdiCanvas canvas(sheet.context(), pixels, scale, font);
        draw(canvas);
    }
    return sheet.pixels();
}

} // namespace tarvik
