#include "linux/face/ControlWidget.h"
#include "ui/controls/Controls.h"

#include <QPainter>
#include <QPolygonF>

#include <cmath>

namespace tarvik::face {

namespace {

/// Paints a drawing as large as it can be in the middle of the widget.
class DrawingView : public QWidget {
public:
    DrawingView(QWidget* parent, const Picture& picture) : QWidget(parent), picture_(picture) {}

    QSize sizeHint() const override {
        const int side = fontMetrics().height() * 3 / 2;
        return {side, side};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const double side = std::min(width(), height());
        painter.translate((width() - side) / 2, (height() - side) / 2);
        painter.scale(side, side);
        for (const DrawingShape& shape : picture_.drawing().shapes) {
            paintShape(painter, shape);
        }
    }

private:
    static void paintShape(QPainter& painter, const DrawingShape& shape) {
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

    const Picture& picture_;
};

class PictureWidget : public ControlWidget {
public:
    using ControlWidget::ControlWidget;

protected:
    void refreshOwn(Property changed) override {
        if (changed == Property::Drawing) {
            widget()->update();
        }
    }
};

} // namespace

std::unique_ptr<ControlWidget> makePicture(Control& control, QWidget& parent,
                                           FaceContext& context) {
    auto* widget = new DrawingView(&parent, static_cast<Picture&>(control));
    widget->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return std::make_unique<PictureWidget>(control, widget, context);
}

} // namespace tarvik::face
