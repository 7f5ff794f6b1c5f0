#include "linux/face/DrawingPainter.h"

#include <QPainter>
#include <QPixmap>
#include <QPolygonF>

#include <cmath>

namespace tarvik::face {

namespace {

void paintShape(QPainter& painter, const DrawingShape& shape) {
    const QColor colour(shape.colour.red, shape.colour.green, shape.colour.blue);
    if (shape.stroke > 0) {
        painter.setPen(QPen(colour, shape.stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
    } else {
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
    }
    QPolygonF points;
    for (const DrawingPoint& point : shape.points) {
        points << QPointF(point.x, point.y);
    }
    switch (shape.type) {
    case DrawingShape::Type::Polygon:
        painter.drawPolygon(points);
        break;
    case DrawingShape::Type::Line:
        painter.drawPolyline(points);
        break;
    case DrawingShape::Type::Circle:
        if (points.size() == 2) {
            const QPointF reach = points[1] - points[0];
            const double radius = std::hypot(reach.x(), reach.y());
            painter.drawEllipse(points[0], radius, radius);
        }
        break;
    }
}

} // namespace

void paintDrawing(QPainter& painter, const Drawing& drawing, double side) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side, side);
    for (const DrawingShape& shape : drawing.shapes) {
        paintShape(painter, shape);
    }
    painter.restore();
}

QIcon iconOf(const Drawing& drawing) {
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 48, 64}) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paintDrawing(painter, drawing, side);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace tarvik::face
