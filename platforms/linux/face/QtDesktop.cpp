#include "linux/face/QtDesktop.h"

#include "common/ClosingAnswer.h"
#include "linux/face/BoxText.h"
#include "linux/face/FaceText.h"
#include "linux/face/FormWindow.h"
#include "linux/face/TrayMenu.h"

#include <QApplication>
#include <QCursor>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QSessionManager>

#include <algorithm>
#include <exception>
#include <thread>

namespace tarvik::face {

namespace {

bool isSeen(const QWidget& window) {
    return window.isVisible() && !window.isMinimized();
}

} // namespace

QtDesktop::QtDesktop() {
    // A hidden main window is no reason to end: the program lives on in the background.
    QApplication::setQuitOnLastWindowClosed(false);
    QObject::connect(qApp, &QGuiApplication::commitDataRequest, this, [this] { endSession(); });
}

QtDesktop::~QtDesktop() {
    for (FormWindow* window : windows_) {
        delete window;
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void QtDesktop::realise(Form& form) {
    if (!context_.ending) {
        windows_.push_back(new FormWindow(form, context_));
    }
}

void QtDesktop::withdraw(Form& form) {
    const auto found = std::find_if(windows_.begin(), windows_.end(),
                                    [&](FormWindow* window) { return &window->form() == &form; });
    if (found == windows_.end()) {
        return;
    }
    if (!displayLost_) {
        // The window may be the one whose handler is running: it goes once that has returned.
        (*found)->detach();
        (*found)->deleteLater();
    }
    windows_.erase(found);
    if (windows_.empty()) {
        loop_.quit();
    }
}

FormWindow* QtDesktop::seenWindow(const ControlList* form) const {
    const auto found = std::find_if(windows_.begin(), windows_.end(), [&](FormWindow* window) {
        return isSeen(*window) && (form == nullptr || &window->form() == form);
    });
    return found == windows_.end() ? nullptr : *found;
}

FormWindow* QtDesktop::windowToAskIn() const {
    for (const ControlList* form : {context_.asking, context_.active}) {
        FormWindow* const window = form == nullptr ? nullptr : seenWindow(form);
        if (window != nullptr) {
            return window;
        }
    }
    return seenWindow(nullptr);
}

void QtDesktop::applyVisibility() {
    // Whoever waits for an answer lets time pass: a window that is put aside only then would take
    // the box along, and one that is shown only then would cover it.
    const std::vector<FormWindow*> realised = windows_;
    for (FormWindow* window : realised) {
        window->applyVisibility();
    }
}

QWidget* QtDesktop::boxOwner() const {
    QWidget* const dialog = QApplication::activeModalWidget();
    return dialog != nullptr ? dialog : windowToAskIn();
}

MsgBoxAnswer QtDesktop::messageBox(const MsgBoxRequest& request) {
    if (context_.ending) {
        writeUnshownBox(request);
        return closingAnswer(request.buttons);
    }
    const BusyScope busy(context_);
    applyVisibility();
    return showBox(request);
}

MsgBoxAnswer QtDesktop::askInDialog(const MsgBoxRequest& request) {
    return context_.ending ? closingAnswer(request.buttons) : showBox(request);
}

MsgBoxAnswer QtDesktop::showBox(const MsgBoxRequest& request) {
    // The window before which it stands takes the box along if it goes meanwhile.
    const QPointer<QMessageBox> box =
        new QMessageBox(boxIcon(request.icon), shown(request.caption), boxText(request.text),
                        boxButtons(request.buttons), boxOwner());
    identify(*box, programsBox);
    box->setTextFormat(Qt::PlainText);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box->setDefaultButton(defaultButton(request));
    box->setEscapeButton(escapeButton(request.buttons));
    setTabStops(*box);
    const int pressed = box->exec();
    delete box.data();
    return answerOf(pressed, request.buttons);
}

bool QtDesktop::runDialog(QDialog& dialog) {
    if (context_.ending) {
        return false;
    }
    const DialogScope open(context_);
    return dialog.exec() == QDialog::Accepted;
}

FormWindow* QtDesktop::windowOf(std::uint32_t handle) const {
    const auto found = std::find_if(windows_.begin(), windows_.end(),
                                    [&](FormWindow* own) { return own->handle() == handle; });
    return found == windows_.end() ? nullptr : *found;
}

Picture* QtDesktop::pictureOf(std::uint32_t handle) const {
    for (const FormWindow* window : windows_) {
        Control* control = window->controlOf(handle);
        if (control != nullptr && control->kind() == ControlKind::Picture) {
            return static_cast<Picture*>(control);
        }
    }
    return nullptr;
}

bool QtDesktop::bringToFront(std::uint32_t handle) {
    FormWindow* window = windowOf(handle);
    if (window == nullptr || !window->isVisible()) {
        return false;
    }
    window->raise();
    window->activateWindow();
    return true;
}

QWidget* QtDesktop::ownerOf(std::uint32_t handle) {
    applyVisibility();
    FormWindow* window = windowOf(handle);
    return window != nullptr && isSeen(*window) ? window : windowToAskIn();
}

void QtDesktop::popUpMenu(Menu& menu, Form&) {
    QMenu popUp;
    int chosen = -1;
    fillMenu(popUp, menu, [&](int entry) { chosen = entry; });
    popUp.exec(QCursor::pos());
    if (chosen >= 0) {
        menu.choose(chosen);
    }
}

void QtDesktop::beep() {
    QApplication::beep();
}

void QtDesktop::processEvents() {
    QCoreApplication::processEvents();
}

void QtDesktop::runBlocking(const std::function<void()>& call) {
    const BusyScope busy(context_);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    qApp->installEventFilter(this);
    blocking_ = true;
    std::exception_ptr failure;
    QEventLoop waiting;
    std::thread worker([&] {
        try {
            call();
        } catch (...) {
            failure = std::current_exception();
        }
        QMetaObject::invokeMethod(&waiting, &QEventLoop::quit, Qt::QueuedConnection);
    });
    waiting.exec();
    worker.join();
    blocking_ = false;
    qApp->removeEventFilter(this);
    QApplication::restoreOverrideCursor();
    if (failure) {
        std::rethrow_exception(failure);
    }
}

bool QtDesktop::eventFilter(QObject* watched, QEvent* event) {
    if (!blocking_) {
        return QObject::eventFilter(watched, event);
    }
    // Presses made while nothing can answer them must not be answered later.
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
        return true;
    case QEvent::Close:
        event->ignore();
        return true;
    default:
        return false;
    }
}

void QtDesktop::run() {
    if (!windows_.empty() && !context_.ending) {
        loop_.exec();
    }
}

void QtDesktop::quit() {
    loop_.quit();
}

void QtDesktop::forEachForm(const std::function<void(Form& form)>& act) const {
    const std::vector<FormWindow*> realised = windows_;
    for (const FormWindow* window : realised) {
        // What one form does may have unloaded others.
        if (std::find(windows_.begin(), windows_.end(), window) != windows_.end()) {
            act(window->form());
        }
    }
}

void QtDesktop::unloadForms() {
    forEachForm([](Form& form) { form.unload(UnloadMode::AppWindows); });
}

void QtDesktop::loseDisplay() {
    // The end of the session may have begun already and have met the lost display on its way.
    context_.ending = true;
    displayLost_ = true;
    for (FormWindow* window : windows_) {
        window->disconnectForm();
    }
    unloadForms();
}

void QtDesktop::pause() {
    forEachForm([](Form& form) { form.Pause.raise(); });
}

void QtDesktop::endSession() {
    if (context_.ending) {
        return;
    }
    context_.ending = true;
    unloadForms();
    // Boxes, dialogs, and what dialogs ask on their own.
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (auto* dialog = qobject_cast<QDialog*>(window);
            dialog != nullptr && dialog->isVisible()) {
            dialog->done(-1);
        }
    }
    quit();
}

} // namespace tarvik::face
