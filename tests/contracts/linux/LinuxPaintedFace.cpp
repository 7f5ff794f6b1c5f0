#include "contracts/painted/PaintedFace.h"

#include "../../unit_linux/ImagePixels.h"
#include "support/QtWidgets.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPalette>
#include <QPointer>
#include <QScreen>
#include <QSemaphore>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace tarvik {

Pixels pixelsOf(const Chart& chart) {
    return pixelsOf(theWidget(chart.name()).grab().toImage());
}

Pixels pixelsOf(const Control& control) {
    return pixelsOf(theWidgetOf(control).grab().toImage());
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

std::shared_ptr<void> otherWindow(const Form& form) {
    const auto bringUp = [](QWidget& window) {
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window)) {
            throw std::runtime_error("a window does not become active");
        }
    };
    auto other = std::make_unique<QWidget>();
    other->show();
    bringUp(*other);
    return {other.release(), [bringUp, &own = theWindowOf(form)](QWidget* shown) {
                delete shown;
                bringUp(own);
            }};
}

std::array<int, 2> sizeOf(const Form& form) {
    const QWidget& window = theWindowOf(form);
    return {window.width(), window.height()};
}

std::vector<int> resolutions() {
    return {96};
}

/// There is only one here.
void moveToResolution(const Form&, int) {}

bool showsWholeText(const TextBox& field) {
    constexpr int margins = 4;
    const auto& edit = theWidgetOf<QLineEdit>(field);
    return edit.fontMetrics().horizontalAdvance(edit.text()) + margins <
           edit.contentsRect().width();
}

int paintedLines(const Label& label) {
    return linesIn(pixelsOf(label));
}

std::shared_ptr<void> otherColours(const Form& form, const Colour& ground, const Colour& text) {
    const auto toolkits = [](const Colour& one) { return QColor(one.red, one.green, one.blue); };
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Base, toolkits(ground));
    palette.setColor(QPalette::Text, toolkits(text));
    QWidget& window = theWindowOf(form);
    window.setPalette(palette);
    return {&window, [](QWidget* shown) { shown->setPalette(QPalette()); }};
}

std::shared_ptr<void> otherGround(const Colour& ground) {
    const auto before = std::make_shared<QPalette>(QApplication::palette());
    QPalette palette = *before;
    palette.setColor(QPalette::Window, QColor(ground.red, ground.green, ground.blue));
    QApplication::setPalette(palette);
    return {before.get(), [before](QPalette* usual) { QApplication::setPalette(*usual); }};
}

std::function<bool()> presenceOf(const Control& control) {
    return [widget = QPointer<QWidget>(&theWidgetOf(control))] { return !widget.isNull(); };
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
