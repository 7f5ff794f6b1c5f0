#include "contracts/painted/PaintedCanvas.h"

#include "../../unit_linux/ImagePixels.h"

#include "linux/face/QtCanvas.h"

namespace tarvik {

Pixels paintedOnCanvas(CanvasSize size, const std::function<void(Canvas&)>& draw, double scale) {
    QImage image(static_cast<int>(size.width), static_cast<int>(size.height), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        face::QtCanvas canvas(painter, image.deviceIndependentSize(), QFont());
        draw(canvas);
    }
    return pixelsOf(image);
}

} // namespace tarvik
