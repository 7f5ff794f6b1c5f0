#include "linux/face/LinuxNotificationArea.h"

#include "common/TrayLamp.h"
#include "controls/Form.h"
#include "linux/face/DrawingPainter.h"
#include "linux/face/FaceText.h"
#include "linux/face/QtDesktop.h"

#include <QGuiApplication>

#include <utility>

namespace tarvik::face {

namespace {

constexpr int leftButtonReleased = 514;
constexpr int rightButtonReleased = 517;

/// The longest that a panel is waited for when the icon is added, in milliseconds: whether the
/// window can be hidden behind the icon is asked soon after.
constexpr int longestPanelWait = 80;

Menu* menuOf(const ControlList& list) {
    for (Control* control : list.controls()) {
        if (control->kind() == ControlKind::Menu) {
            return static_cast<Menu*>(control);
        }
    }
    return nullptr;
}

/// How long the panel shows a note, in milliseconds.
constexpr int balloonTime = 10'000;

/// A window that comes to the front next shows this to the compositor; elsewhere nobody looks at
/// it.
void passActivationOn(const QString& token) {
    if (QGuiApplication::platformName().startsWith(QStringLiteral("wayland"))) {
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
    }
}

} // namespace

LinuxNotificationArea::LinuxNotificationArea(QtDesktop& desktop)
    : desktop_(desktop), notes_(passActivationOn) {}

LinuxNotificationArea::~LinuxNotificationArea() = default;

bool LinuxNotificationArea::Shell_NotifyIconA(std::uint32_t request, NOTIFYICONDATAA* data) {
    if (request == remove) {
        forgetAnswers();
    }
    if (desktop_.displayLost()) {
        // The icon has gone with the panel.
        return request == remove;
    }
    switch (request) {
    case add:
        picture_ = data->hWnd;
        return addIcon(*data);
    case modify:
        return (data->uFlags & info) != 0 ? showNote(*data) : isAdded() && showIcon(*data);
    case remove:
        return removeIcon();
    case setVersion:
        return isAdded();
    default:
        return false;
    }
}

bool LinuxNotificationArea::addIcon(const NOTIFYICONDATAA& data) {
    if (panels_ == nullptr) {
        panels_ = std::make_unique<ItemPanelWatch>([this] { followPanel(); });
        followPanel();
        if (item_ != nullptr) {
            item_->allowTime(longestPanelWait);
        }
    }
    return showIcon(data);
}

void LinuxNotificationArea::followPanel() {
    if (desktop_.displayLost()) {
        return;
    }
    if (panels_->panelIsThere()) {
        makeItem();
    } else {
        item_.reset();
        menu_.reset();
        makeIcon();
    }
    showLast();
}

/// The toolkit asks once in its life, at its first icon, whether there is a panel for items, and
/// waits for it then. From then on, having found none, it asks nobody but the display.
bool LinuxNotificationArea::iconWaitsForNobody() const {
    return iconWasMade_ || panels_->nobodyIsThere() ||
           (item_ != nullptr && item_->isRefusedAtOnce());
}

void LinuxNotificationArea::makeIcon() {
    if (icon_ != nullptr || !iconWaitsForNobody()) {
        return;
    }
    iconWasMade_ = true;
    icon_ = std::make_unique<QSystemTrayIcon>();
    // What the icon begins may take the icon away: it has to be out of its own handlers by then.
    connect(icon_.get(), &QSystemTrayIcon::activated, this, &LinuxNotificationArea::onActivated,
            Qt::QueuedConnection);
    connect(
        icon_.get(), &QSystemTrayIcon::messageClicked, this,
        [this] {
            if (const auto answered = std::exchange(balloonAnswered_, {})) {
                answered(noteClicked);
            }
        },
        Qt::QueuedConnection);
}

/// Nothing shows the item, though the panel's program has answered: there may be another panel,
/// which embeds icons.
void LinuxNotificationArea::showIconBesideItem() {
    if (!desktop_.displayLost()) {
        makeIcon();
        showLast();
    }
}

void LinuxNotificationArea::makeItem() {
    const Picture* picture = desktop_.pictureOf(picture_);
    Menu* model = picture == nullptr ? nullptr : menuOf(picture->list());
    if (item_ == nullptr && model != nullptr) {
        // Nor may what an entry or a click begins take away the item that is telling of it.
        const auto later = [this](auto&& action) {
            QMetaObject::invokeMethod(this, action, Qt::QueuedConnection);
        };
        menu_ = std::make_unique<TrayMenu>(
            *model, [this, later](int entry) { later([this, entry] { choose(entry); }); });
        item_ = std::make_unique<StatusNotifierItem>(
            *menu_,
            StatusNotifierItem::Events{
                .activated = [this, later] { later([this] { tellPicture(leftButtonReleased); }); },
                .taken = [this] { icon_.reset(); },
                .refused = [this] { showIconBesideItem(); }});
    }
    if (item_ != nullptr) {
        item_->offer();
    }
}

bool LinuxNotificationArea::showIcon(const NOTIFYICONDATAA& data) {
    which_ = data.hIcon;
    tip_ = shown(data.szTip);
    showLast();
    return (item_ != nullptr && item_->isTaken()) ||
           (icon_ != nullptr && QSystemTrayIcon::isSystemTrayAvailable());
}

void LinuxNotificationArea::showLast() {
    if (!which_) {
        return;
    }
    if (shownIcon_ != which_) {
        shownIcon_ = which_;
        iconImage_ = iconOf(trayDrawing(*which_));
    }
    if (item_ != nullptr) {
        item_->show(iconImage_, tip_);
    }
    if (icon_ != nullptr &&
        (!icon_->isVisible() || icon_->toolTip() != tip_ || icon_->property("which") != *which_)) {
        icon_->setProperty("which", *which_);
        icon_->setIcon(iconImage_);
        icon_->setToolTip(tip_);
        // Where no panel is there yet, the icon appears when one comes.
        icon_->show();
    }
}

bool LinuxNotificationArea::showNote(const NOTIFYICONDATAA& data) {
    const QString title = shown(data.szInfoTitle);
    const QString text = shownLines(data.szInfo);
    const auto milliseconds = static_cast<int>(data.uTimeoutOrVersion);
    if (notes_.show(title, text, milliseconds)) {
        balloonAnswered_ = {};
        return true;
    }
    if (!panelShowsNotes()) {
        return false;
    }
    forgetAnswers();
    icon_->showMessage(title, text, QSystemTrayIcon::Information, milliseconds);
    return true;
}

bool LinuxNotificationArea::tell(const DesktopNote& note, std::function<void(int)> answered) {
    if (desktop_.displayLost()) {
        return false;
    }
    const auto told = [this, answered = std::move(answered)](int how) {
        if (answered && desktop_.takesInput()) {
            answered(how);
        }
    };
    if (notes_.tell(note, told)) {
        balloonAnswered_ = {};
        return true;
    }
    if (!panelShowsNotes()) {
        return false;
    }
    forgetAnswers();
    balloonAnswered_ = told;
    const bool isWarning = note.urgency == DesktopNote::Urgency::Critical;
    icon_->showMessage(shown(note.title), shownLines(note.text),
                       isWarning ? QSystemTrayIcon::Warning : QSystemTrayIcon::Information,
                       balloonTime);
    return true;
}

bool LinuxNotificationArea::panelShowsNotes() const {
    return icon_ != nullptr && QSystemTrayIcon::isSystemTrayAvailable();
}

void LinuxNotificationArea::forgetAnswers() {
    notes_.forget();
    balloonAnswered_ = {};
}

bool LinuxNotificationArea::removeIcon() {
    if (!isAdded()) {
        return false;
    }
    panels_.reset();
    icon_.reset();
    item_.reset();
    menu_.reset();
    which_.reset();
    return true;
}

void LinuxNotificationArea::onActivated(QSystemTrayIcon::ActivationReason reason) {
    // The second click of two is told as a double click.
    if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick) {
        tellPicture(leftButtonReleased);
    } else if (reason == QSystemTrayIcon::Context) {
        tellPicture(rightButtonReleased);
    }
}

void LinuxNotificationArea::choose(int entry) {
    Picture* picture = desktop_.pictureOf(picture_);
    if (picture != nullptr && desktop_.takesInput()) {
        menuOf(picture->list())->choose(entry);
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
