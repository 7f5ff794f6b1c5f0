#include "contracts/painted/PaintedCanvas.h"

#include "support/MemorySheet.h"
#include "windows/face/GdiCanvas.h"

namespace tarvik {

std::string seenOnCanvas(void (*draw)(Canvas&), double scale) {
    const MemorySheet sheet(CanvasCase::width, CanvasCase::height);
    {
        const auto font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
        face::GdiCanvas canvas(sheet.context(), {CanvasCase::width, CanvasCase::height}, scale,
                               font);
        draw(canvas);
    }
    return inCharacters(sheet.pixels());
}

} // namespace tarvik
