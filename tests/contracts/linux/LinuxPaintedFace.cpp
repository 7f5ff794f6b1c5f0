#include "contracts/painted/PaintedFace.h"

#include "../../unit_linux/ImagePixels.h"
#include "support/QtWidgets.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QMouseEvent>
#include <QScreen>
#include <QSemaphore>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace tarvik {

Pixels pixelsOf(const Chart& chart) {
    return pixelsOf(theWidget(chart.name()).grab().toImage());
}

void movePointer(const Chart& chart, int x) {
    QWidget& widget = theWidget(chart.name());
    const QPointF place(x, widget.height() / 2.0);
    QMouseEvent event(QEvent::MouseMove, place, widget.mapToGlobal(place), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

void takePointerAway(const Chart& chart) {
    QEvent event(QEvent::Leave);
    QCoreApplication::sendEvent(&theWidget(chart.name()), &event);
}

void giveFocus(const Control& control) {
    QWidget& widget = theWidget(control.name());
    widget.window()->activateWindow();
    QCoreApplication::processEvents();
    widget.setFocus();
    if (!widget.hasFocus()) {
        throw std::runtime_error("no focus for " + control.name());
    }
}

void enlarge(const Form& form, int width, int height) {
    QWidget& window = *theWidget(form.controls().front()->name()).window();
    window.resize(window.size() + QSize(width, height));
}

bool isActive(const Form& form) {
    return QApplication::activeWindow() == windowNamed(form.name());
}

bool clickDuringCall(const Control& button) {
    struct Seen {
        QSemaphore over;
        bool waits = false;
    };
    const auto seen = std::make_shared<Seen>();
    const auto click = [seen, &widget = theWidget<QAbstractButton>(button.name())] {
        widget.click();
        const QPointF middle = widget.rect().center();
        QMouseEvent press(QEvent::MouseButtonPress, middle, widget.mapToGlobal(middle),
                          Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &press);
        EXPECT_FALSE(widget.isDown());
        seen->waits = QApplication::overrideCursor() != nullptr;
        seen->over.release();
    };
    QMetaObject::invokeMethod(qApp, click, Qt::QueuedConnection);
    return seen->over.tryAcquire(1, 10'000) && seen->waits;
}

std::string ownerOfOpenBox() {
    const QWidget* owner = QApplication::activeModalWidget()->parentWidget();
    return owner == nullptr ? "" : owner->window()->objectName().toStdString();
}

bool openBoxFitsTheScreen() {
    const QWidget& box = *QApplication::activeModalWidget();
    const QSize room = box.screen()->availableSize();
    return box.width() <= room.width() && box.height() <= room.height();
}

} // namespace tarvik
