#include "linux/face/FormWindow.h"

#include <QFocusEvent>

#include <algorithm>
#include <utility>

namespace tarvik::face {

// A control is left when the focus comes to another one of the same window: what the window as a
// whole does, and what a menu takes for a while, is no leaving. Told is it then, and not when the
// focus goes, because a handler may change whatever it likes once the toolkit is done with the one
// that is left.

void FormWindow::focusOn(Control& control) {
    focusWanted_ = &control;
    if (form_.visible() && !form_.minimised() && !changePending_) {
        moveFocus();
    }
}

void FormWindow::moveFocus() {
    if (const ControlWidget* wanted = widgetOf(std::exchange(focusWanted_, nullptr))) {
        wanted->widget()->setFocus();
    }
}

bool FormWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn && !detached_) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        return onArrival(static_cast<QWidget&>(*watched),
                         reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason);
    }
    return QWidget::eventFilter(watched, event);
}

/// True when whoever was told of the leaving has moved the focus elsewhere.
bool FormWindow::onArrival(QWidget& widget, bool byUser) {
    const auto found = std::find_if(widgets_.begin(), widgets_.end(),
                                    [&](const auto& own) { return own->widget() == &widget; });
    ControlWidget* const now = found == widgets_.end() ? nullptr : found->get();
    ControlWidget* const left = std::exchange(focusHolder_, now);
    // One that was hidden or disabled has not been left by the user.
    if (left == nullptr || left == now || !byUser || !tellsLeaving_ || !left->control().enabled() ||
        !left->widget()->isVisible()) {
        return false;
    }
    const bool there = focusWidget() == &widget;
    tellsLeaving_ = false;
    left->onLeave();
    tellsLeaving_ = true;
    return there && focusWidget() != &widget;
}

} // namespace tarvik::face
