#include "linux/face/QtCanvas.h"

#include "common/CanvasPixels.h"
#include "linux/face/FaceText.h"

#include <QFontMetricsF>
#include <QLineF>
#include <QPaintDevice>
#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <vector>

namespace tarvik::face {

namespace {

constexpr double plainResolution = 96; // dots per inch

// What is smooth takes time, and where more points than these crowd nobody sees that it is.
constexpr qsizetype mostSmoothPoints = 400;
constexpr std::size_t mostSmoothCorners = 200;

QColor colourOf(const Colour& colour) {
    return {colour.red, colour.green, colour.blue};
}

QRect rectOf(const PixelRect& rect) {
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

/// The same font, its size told in pixels.
QFont inPixels(QFont font, const QPaintDevice& device) {
    constexpr double pointsPerInch = 72;
    const double units = font.pixelSize() > 0
                             ? font.pixelSize()
                             : font.pointSizeF() * device.logicalDpiY() / pointsPerInch;
    font.setPixelSize(std::max(1, qRound(units * device.devicePixelRatioF())));
    return font;
}

void fill(QPainter& painter, const std::vector<PixelRect>& pieces, const Colour& colour) {
    QVector<QRect> rects;
    rects.reserve(static_cast<qsizetype>(pieces.size()));
    for (const PixelRect& piece : pieces) {
        rects.push_back(rectOf(piece));
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colourOf(colour));
    painter.drawRects(rects);
}

QPen penOf(const Stroke& stroke, double scale) {
    const double width = pixelWidth(stroke);
    QPen pen(colourOf(stroke.colour), width, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin);
    QVector<qreal> lengths;
    for (const int length : dashes(stroke, scale)) {
        lengths.push_back(length / width);
    }
    if (!lengths.isEmpty()) {
        pen.setDashPattern(lengths);
        pen.setCapStyle(Qt::FlatCap);
    } else if (width > 1) {
        pen.setCapStyle(Qt::RoundCap);
    }
    return pen;
}

double lengthOf(const QPointF* points, qsizetype parts) {
    double length = 0;
    for (qsizetype i = 0; i < parts; ++i) {
        length += QLineF(points[i], points[i + 1]).length();
    }
    return length;
}

/// Lets a painter whose origin lies between pixels begin at a whole one, and count in pixels.
void countInPixels(QPainter& painter, double ratio) {
    const QPointF origin = painter.deviceTransform().map(QPointF());
    painter.scale(1 / ratio, 1 / ratio);
    painter.translate(std::round(origin.x()) - origin.x(), std::round(origin.y()) - origin.y());
}

} // namespace

QtCanvas::QtCanvas(QPainter& painter, const QSizeF& size, const QFont& font)
    : painter_(painter),
      scale_(std::max(1.0, painter.device()->devicePixelRatioF() * painter.device()->logicalDpiX() /
                               plainResolution)) {
    const double ratio = painter.device()->devicePixelRatioF();
    size_ = {std::floor(size.width() * ratio), std::floor(size.height() * ratio)};
    painter_.save();
    countInPixels(painter_, ratio);
    painter_.setFont(inPixels(font, *painter.device()));
}

QtCanvas::~QtCanvas() {
    painter_.restore();
}

void QtCanvas::line(std::span<const CanvasPoint> points, const Stroke& stroke) {
    if (points.size() < 2) {
        return;
    }
    const auto pieces = pixelsOf(points, stroke, scale_);
    if (!pieces) {
        slantedLine(points, stroke);
        return;
    }
    fill(painter_, *pieces, stroke.colour);
}

void QtCanvas::slantedLine(std::span<const CanvasPoint> points, const Stroke& stroke) {
    // A point is the middle of a pixel.
    constexpr double half = 0.5;
    QPolygonF places;
    for (const CanvasPoint& point : thinned(points)) {
        places << QPointF(point.x + half, point.y + half);
    }
    QPen pen = penOf(stroke, scale_);
    painter_.setRenderHint(QPainter::Antialiasing, places.size() <= mostSmoothPoints);
    // What one path costs grows with the square of its points: several short ones are drawn.
    constexpr qsizetype partsOfPath = 8;
    for (qsizetype begin = 0; begin + 1 < places.size(); begin += partsOfPath) {
        const qsizetype parts = std::min(partsOfPath, places.size() - begin - 1);
        painter_.setPen(pen);
        painter_.drawPolyline(places.constData() + begin, static_cast<int>(parts) + 1);
        if (stroke.style != LineStyle::Solid) {
            const double length = lengthOf(places.constData() + begin, parts);
            pen.setDashOffset(pen.dashOffset() + length / pen.widthF());
        }
    }
}

void QtCanvas::polygon(std::span<const CanvasPoint> corners, const Colour& colour) {
    if (const auto rect = rectangleOf(corners)) {
        painter_.fillRect(rectOf(*rect), colourOf(colour));
        return;
    }
    if (corners.size() > mostSmoothCorners) {
        fill(painter_, columnsOf(corners), colour);
        return;
    }
    QPolygonF places;
    for (const CanvasPoint& corner : corners) {
        places << QPointF(corner.x, corner.y);
    }
    painter_.setRenderHint(QPainter::Antialiasing, true);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(colourOf(colour));
    painter_.drawPolygon(places);
}

void QtCanvas::text(CanvasPoint leftTop, const std::string& text, const Colour& colour) {
    const QFontMetricsF metrics(painter_.font());
    painter_.setPen(colourOf(colour));
    painter_.drawText(QPointF(leftTop.x, leftTop.y + metrics.ascent()), shown(text));
}

CanvasSize QtCanvas::textSize(const std::string& text) const {
    const QFontMetricsF metrics(painter_.font());
    return {metrics.horizontalAdvance(shown(text)), metrics.height()};
}

} // namespace tarvik::face
