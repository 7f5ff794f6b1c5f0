#include "controls/Controls.h"
#include "linux/face/ControlWidget.h"
#include "linux/face/DrawingPainter.h"

#include <QPainter>

#include <algorithm>

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
        const double side = std::min(width(), height());
        painter.translate((width() - side) / 2, (height() - side) / 2);
        paintDrawing(painter, picture_.drawing(), side);
    }

private:
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
