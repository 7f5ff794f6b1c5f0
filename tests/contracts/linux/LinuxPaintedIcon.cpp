#include "contracts/painted/PaintedIcon.h"

#include "../../unit_linux/ImagePixels.h"

#include "common/TrayLamp.h"
#include "linux/face/DrawingPainter.h"

#include <QPainter>
#include <QPixmap>

namespace tarvik {

Pixels paintedIcon(std::uint32_t number, int side, std::uint8_t grey) {
    QImage panel(side, side, QImage::Format_RGB32);
    panel.fill(QColor(grey, grey, grey));
    QPainter(&panel).drawPixmap(0, 0, face::iconOf(face::trayDrawing(number)).pixmap(side, side));
    return pixelsOf(panel);
}

} // namespace tarvik
