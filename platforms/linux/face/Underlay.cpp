#include "linux/face/Underlay.h"

#include <QPainter>
#include <QStyleOptionFrame>
#include <QWidget>

#include <cmath>

namespace tarvik::face {

namespace {

/// The widgets that a box stands in, each without what stands in it, from the window to the parent.
void paintAncestors(QPainter& painter, const QWidget& box, QWidget* ancestor) {
    if (ancestor == nullptr) {
        return;
    }
    const QRect place(box.mapTo(ancestor, QPoint(0, 0)), box.size());
    if (!ancestor->isWindow()) {
        paintAncestors(painter, box, ancestor->parentWidget());
    }
    const auto ground =
        ancestor->isWindow() ? QWidget::DrawWindowBackground : QWidget::RenderFlags();
    ancestor->render(&painter, QPoint(0, 0), QRegion(place), ground);
}

} // namespace

Underlay::Made Underlay::madeOf(const QStyleOptionFrame& panel, const QWidget& box) {
    const QWidget& parent = *box.parentWidget();
    return {.style = box.style(),
            .state = panel.state,
            .lineWidth = panel.lineWidth,
            .place = box.mapTo(box.window(), QPoint(0, 0)),
            .parentSize = parent.size(),
            .palette = panel.palette.cacheKey(),
            .pixelRatio = box.devicePixelRatioF(),
            .size = box.size()};
}

bool Underlay::fits(const QWidget& box) {
    const qreal pixelRatio = box.devicePixelRatioF();
    return pixelRatio == std::floor(pixelRatio);
}

void Underlay::paint(QPainter& painter, const QRect& area, const QStyleOptionFrame& panel,
                     const QWidget& box) {
    const Made made = madeOf(panel, box);
    if (picture_.isNull() || !(made == made_)) {
        made_ = made;
        picture_ = QPixmap(box.size() * made.pixelRatio);
        picture_.setDevicePixelRatio(made.pixelRatio);
        QPainter ground(&picture_);
        paintAncestors(ground, box, box.parentWidget());
        box.style()->drawPrimitive(QStyle::PE_PanelLineEdit, &panel, &ground, &box);
    }
    const QRectF source(QPointF(area.topLeft()) * made.pixelRatio,
                        QSizeF(area.size()) * made.pixelRatio);
    painter.drawPixmap(QRectF(area), picture_, source);
}

} // namespace tarvik::face
