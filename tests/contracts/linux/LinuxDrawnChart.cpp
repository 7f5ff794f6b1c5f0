#include "contracts/painted/DrawnChart.h"

#include "../../unit_linux/ImagePixels.h"

#include "linux/face/QtCanvas.h"

#include <QFont>
#include <QPainter>

namespace tarvik {

namespace {

/// One that looks the same on every machine.
QFont knownFont() {
    QFont font(QStringLiteral("Noto Sans"));
    font.setPixelSize(12);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    return font;
}

} // namespace

Pixels drawn(const ChartCase& one) {
    const ChartOfCase form(one);
    QImage image(ChartCase::width, ChartCase::height, QImage::Format_RGB32);
    QPainter painter(&image);
    face::QtCanvas canvas(painter, image.size(), knownFont());
    ChartPainter(form.chart).draw(canvas, one.palette());
    return pixelsOf(image);
}

Pixels kept(const ChartCase& one) {
    return pixelsOf(QImage(
        QStringLiteral(TARVIK_REFERENCE_IMAGES "/%1.png").arg(QString::fromStdString(one.name))));
}

bool writeImage(const Pixels& pixels, const std::filesystem::path& file) {
    QImage image(pixels.width, pixels.height, QImage::Format_RGB32);
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x) {
            image.setPixel(x, y, pixels.at(x, y));
        }
    }
    return image.save(QString::fromStdString(file.string()));
}

} // namespace tarvik
