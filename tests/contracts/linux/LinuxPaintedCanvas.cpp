#include "contracts/painted/PaintedCanvas.h"

#include "../../unit_linux/ImagePixels.h"

#include "linux/face/QtCanvas.h"

namespace tarvik {

std::string seenOnCanvas(void (*draw)(Canvas&), double scale) {
    QImage image(CanvasCase::width, CanvasCase::height, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        face::QtCanvas canvas(painter, image.deviceIndependentSize(), QFont());
        draw(canvas);
    }
    return inCharacters(pixelsOf(image));
}

} // namespace tarvik
