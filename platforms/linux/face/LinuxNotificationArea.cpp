#include "linux/face/LinuxNotificationArea.h"

#include "common/TrayLamp.h"
#include "linux/face/DrawingPainter.h"
#include "linux/face/FaceText.h"
#include "linux/face/QtDesktop.h"
#include "ui/controls/Form.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>

namespace tarvik::face {

namespace {

constexpr int leftButtonReleased = 514;
constexpr int rightButtonReleased = 517;

/// A panel shows StatusNotifier items; the toolkit then makes one.
bool panelTakesItems() {
    const QDBusConnectionInterface* names = QDBusConnection::sessionBus().interface();
    if (names == nullptr) {
        return false;
    }
    const QDBusReply<bool> watched =
        names->isServiceRegistered(QStringLiteral("org.kde.StatusNotifierWatcher"));
    return watched.isValid() && watched.value();
}

Menu* menuOf(const Form& form) {
    for (Control* control : form.controls()) {
        if (control->kind() == ControlKind::Menu) {
            return static_cast<Menu*>(control);
        }
    }
    return nullptr;
}

QIcon trayIcon(std::uint32_t which) {
    return iconOf(statusLamp(lampOf(static_cast<TrayIcon>(which))));
}

} // namespace

LinuxNotificationArea::LinuxNotificationArea(QtDesktop& desktop) : desktop_(desktop) {}

LinuxNotificationArea::~LinuxNotificationArea() = default;

bool LinuxNotificationArea::Shell_NotifyIconA(std::uint32_t request, NOTIFYICONDATAA* data) {
    switch (request) {
    case add:
        picture_ = data->hWnd;
        if (icon_ == nullptr) {
            makeIcon();
        }
        return showIcon(*data);
    case modify:
        return (data->uFlags & info) != 0 ? showNote(*data) : icon_ != nullptr && showIcon(*data);
    case remove:
        return removeIcon();
    case setVersion:
        return icon_ != nullptr;
    default:
        return false;
    }
}

void LinuxNotificationArea::makeIcon() {
    icon_ = std::make_unique<QSystemTrayIcon>();
    // What the icon or its menu begins may take the icon away: it has to be out of its own handlers
    // by then.
    connect(icon_.get(), &QSystemTrayIcon::activated, this, &LinuxNotificationArea::onActivated,
            Qt::QueuedConnection);
    const Picture* picture = desktop_.pictureOf(picture_);
    Menu* model = picture == nullptr ? nullptr : menuOf(picture->form());
    if (model != nullptr && panelTakesItems()) {
        menu_ = std::make_unique<TrayMenu>(*model, [this](int entry) {
            QMetaObject::invokeMethod(
                this, [this, entry] { choose(entry); }, Qt::QueuedConnection);
        });
        icon_->setContextMenu(menu_.get());
    }
}

bool LinuxNotificationArea::showIcon(const NOTIFYICONDATAA& data) {
    const QString tipText = shown(data.szTip);
    if (!icon_->isVisible() || icon_->toolTip() != tipText ||
        icon_->property("which") != data.hIcon) {
        icon_->setProperty("which", data.hIcon);
        icon_->setIcon(trayIcon(data.hIcon));
        icon_->setToolTip(tipText);
        // Where no panel is there yet, the icon appears when one comes.
        icon_->show();
    }
    return QSystemTrayIcon::isSystemTrayAvailable();
}

bool LinuxNotificationArea::showNote(const NOTIFYICONDATAA& data) {
    const QString title = shown(data.szInfoTitle);
    const QString text = shownLines(data.szInfo);
    const auto milliseconds = static_cast<int>(data.uTimeoutOrVersion);
    if (notes_.show(title, text, milliseconds)) {
        return true;
    }
    if (icon_ == nullptr || !QSystemTrayIcon::isSystemTrayAvailable()) {
        return false;
    }
    icon_->showMessage(title, text, QSystemTrayIcon::Information, milliseconds);
    return true;
}

bool LinuxNotificationArea::removeIcon() {
    if (icon_ == nullptr) {
        return false;
    }
    icon_->hide();
    icon_->setContextMenu(nullptr);
    icon_.reset();
    menu_.reset();
    return true;
}

void LinuxNotificationArea::onActivated(QSystemTrayIcon::ActivationReason reason) {
    // The second click of two is told as a double click.
    if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick) {
        tellPicture(leftButtonReleased);
    } else if (reason == QSystemTrayIcon::Context && menu_ == nullptr) {
        tellPicture(rightButtonReleased);
    }
}

void LinuxNotificationArea::choose(int entry) {
    Picture* picture = desktop_.pictureOf(picture_);
    if (picture != nullptr && desktop_.takesInput()) {
        menuOf(picture->form())->choose(entry);
    }
}

void LinuxNotificationArea::tellPicture(int mouseMessage) {
    Picture* picture = desktop_.pictureOf(picture_);
    if (picture != nullptr && desktop_.takesInput()) {
        picture->MouseMove.raise(mouseMessage);
    }
}

bool LinuxNotificationArea::SetForegroundWindow(std::uint32_t window) {
    return desktop_.bringToFront(window);
}

} // namespace tarvik::face
