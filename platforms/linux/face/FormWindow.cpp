#include "linux/face/FormWindow.h"

#include "common/UnseenControls.h"
#include "linux/face/FaceText.h"
#include "linux/face/FormLayout.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace tarvik::face {

FormWindow::FormWindow(Form& form, FaceContext& context) : form_(form), context_(context) {
    identify(*this, form.name());
    setWindowTitle(shown(form.caption()));
    setAttribute(Qt::WA_ShowWithoutActivating, form.isQuiet());
    // What the desktop says, not which window the toolkit takes for the active one: that stays the
    // same while a list or a menu is open, and is not made good when it closes.
    connect(qApp, &QGuiApplication::focusWindowChanged, this, &FormWindow::onFocusMoved);
    for (Control* control : unseenControls(form_)) {
        makeControl(*control);
    }
    form_.attach(this);
    refreshVisibility();
}

FormWindow::~FormWindow() {
    detach();
}

void FormWindow::detach() {
    if (!detached_) {
        disconnectForm();
        hide();
    }
}

void FormWindow::disconnectForm() {
    if (detached_) {
        return;
    }
    detached_ = true;
    form_.attach(nullptr);
    for (const auto& own : widgets_) {
        own->detach();
    }
}

void FormWindow::makeControl(Control& control) {
    if (auto made = makeControlWidget(control, *this, context_)) {
        made->shareFocus(focus_);
        if (made->widget() != nullptr) {
            made->widget()->installEventFilter(this);
        }
        widgets_.push_back(std::move(made));
    }
}

void FormWindow::makeContents() {
    if (std::exchange(contentsMade_, true)) {
        return;
    }
    for (Control* control : form_.controls()) {
        if (control->kind() != ControlKind::Timer) {
            makeControl(*control);
        }
    }
    setLayout(makeLayout(*form_.layout(), [this](const Control& control) -> ControlWidget& {
        return *widgetOf(&control);
    }));
    connectLabels();
    orderTabs();
    watchRoom();
    // The toolkit cannot minimise a window that never had a size.
    resize(sizeHint());
}

void FormWindow::followSight(bool seen) {
    for (const auto& own : widgets_) {
        if (own->widget() != nullptr) {
            seen ? own->wake() : own->rest();
        }
    }
}

ControlWidget* FormWindow::widgetOf(const Control* control) const {
    const auto found = std::find_if(widgets_.begin(), widgets_.end(),
                                    [&](const auto& own) { return &own->control() == control; });
    return found == widgets_.end() ? nullptr : found->get();
}

Control* FormWindow::controlOf(std::uint32_t handle) const {
    const auto found = std::find_if(widgets_.begin(), widgets_.end(),
                                    [&](const auto& own) { return own->handle() == handle; });
    return found == widgets_.end() ? nullptr : &(*found)->control();
}

void FormWindow::connectLabels() {
    for (const auto& own : widgets_) {
        if (own->control().kind() != ControlKind::Label) {
            continue;
        }
        const auto& label = static_cast<const Label&>(own->control());
        if (const ControlWidget* named = widgetOf(label.labelled())) {
            static_cast<QLabel*>(own->widget())->setBuddy(named->widget());
        }
    }
}

void FormWindow::orderTabs() {
    QWidget* before = nullptr;
    for (const Control* control : controlsInOrder(*form_.layout())) {
        QWidget* widget = widgetOf(control)->widget();
        if (widget->focusPolicy() == Qt::NoFocus) {
            continue;
        }
        if (before != nullptr) {
            setTabOrder(before, widget);
        }
        before = widget;
    }
    if (const ControlWidget* first = widgetOf(form_.initialFocus())) {
        first->widget()->setFocus();
    }
    if (const ControlWidget* button = widgetOf(form_.defaultButton())) {
        static_cast<QPushButton*>(button->widget())->setDefault(true);
    }
}

void FormWindow::refreshVisibility() {
    // A window that is shown and put aside within one turn of the program must not flash up, and a
    // window manager that has not seen it yet could not minimise it: the last word of the turn
    // counts.
    if (form_.layout() == nullptr || detached_ || changePending_) {
        return;
    }
    changePending_ = true;
    QMetaObject::invokeMethod(this, &FormWindow::applyVisibility, Qt::QueuedConnection);
}

void FormWindow::bringToFront() {
    frontWanted_ = true;
    refreshVisibility();
}

void FormWindow::applyVisibility() {
    if (!std::exchange(changePending_, false) || detached_) {
        return;
    }
    const bool front = std::exchange(frontWanted_, false);
    if (!form_.visible()) {
        hide();
        return;
    }
    makeContents();
    if (form_.minimised()) {
        showMinimized();
        wordToMinimise_ = true;
    } else {
        if (form_.isQuiet() && isMinimized()) {
            hide(); // one that is brought back gets the focus, one that is shown need not
        }
        followSight(true); // before its size is asked for
        moveFocus();
        takeBackWordToMinimise();
        setWindowState(windowState() & ~Qt::WindowMinimized);
        show();
        if (front || form_.isQuiet()) {
            raise();
        }
        if (front && !form_.isQuiet()) {
            activateWindow();
        }
    }
}

void FormWindow::takeBackWordToMinimise() {
    // A window that was minimised once and that the user has brought back is still to be shown
    // minimised as far as the window manager of X is told: the toolkit tells it another state only
    // when it takes it for a change.
    if (wordToMinimise_ && !isVisible()) {
        wordToMinimise_ = false;
        setWindowState(windowState() | Qt::WindowMinimized);
    }
}

void FormWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (context_.takesInput() && !detached_) {
        const AskingScope asking(context_, &form_);
        form_.unload(UnloadMode::FormControlMenu);
    }
}

void FormWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    followSight(!isMinimized());
}

void FormWindow::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    followSight(false);
}

void FormWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (detached_ || !isVisible() || event->type() != QEvent::WindowStateChange) {
        return;
    }
    followSight(!isMinimized());
    if (isMinimized()) {
        form_.setMinimised(true);
    }
}

void FormWindow::onFocusMoved(const QWindow* focused) {
    if (detached_ || focused == nullptr || focused != windowHandle()) {
        return;
    }
    if (isVisible() && !isMinimized()) {
        // Some window managers report a window as normal for a moment before they minimise it;
        // that the user has brought it back is certain once it is active.
        form_.setMinimised(false);
        context_.active = &form_;
    }
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    CommandButton* button = enter                            ? form_.defaultButton()
                            : event->key() == Qt::Key_Escape ? form_.cancelButton()
                                                             : nullptr;
    if (const ControlWidget* shownButton = widgetOf(button)) {
        static_cast<QPushButton*>(shownButton->widget())->click();
    } else if (event->key() == Qt::Key_Escape && form_.escapeCloses()) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace tarvik::face
