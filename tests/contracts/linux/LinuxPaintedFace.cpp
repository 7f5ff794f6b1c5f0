#include "contracts/painted/PaintedFace.h"

#include "../../unit_linux/ImagePixels.h"

#include <QApplication>
#include <QMessageBox>
#include <QMouseEvent>

#include <stdexcept>

namespace tarvik {

namespace {

QWidget& widgetOf(const Control& control) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* found = window->findChild<QWidget*>(QString::fromStdString(control.name()))) {
            return *found;
        }
    }
    throw std::runtime_error(control.name());
}

} // namespace

Pixels pixelsOf(const Chart& chart) {
    return pixelsOf(widgetOf(chart).grab().toImage());
}

void movePointer(const Chart& chart, int x) {
    QWidget& widget = widgetOf(chart);
    const QPointF place(x, widget.height() / 2.0);
    QMouseEvent event(QEvent::MouseMove, place, widget.mapToGlobal(place), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

void takePointerAway(const Chart& chart) {
    QEvent event(QEvent::Leave);
    QCoreApplication::sendEvent(&widgetOf(chart), &event);
}

void giveFocus(const Control& control) {
    QWidget& widget = widgetOf(control);
    widget.window()->activateWindow();
    QCoreApplication::processEvents();
    widget.setFocus();
    if (!widget.hasFocus()) {
        throw std::runtime_error("no focus for " + control.name());
    }
}

void enlarge(const Form& form, int width, int height) {
    QWidget& window = *widgetOf(*form.controls().front()).window();
    window.resize(window.size() + QSize(width, height));
}

std::string ownerOfOpenBox() {
    const QWidget* owner = QApplication::activeModalWidget()->parentWidget();
    return owner == nullptr ? "" : owner->window()->objectName().toStdString();
}

} // namespace tarvik
