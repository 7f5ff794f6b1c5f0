#include "QtEyes.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QWindow>

#include <algorithm>
#include <optional>
#include <utility>

namespace tarvik::scenarios {

namespace {

std::string nameOf(const QWidget& widget) {
    const QWidget& window = *widget.window();
    const QString name = &window == &widget
                             ? widget.objectName()
                             : window.objectName() + QLatin1Char('.') + widget.objectName();
    return name.toStdString();
}

std::string nameOf(const QWidget* widget) {
    return widget == nullptr ? "nothing" : nameOf(*widget);
}

std::string textOf(const QSize& size) {
    return std::to_string(size.width()) + " x " + std::to_string(size.height());
}

/// A window of the program that a person sees; its boxes and what pops up are none.
bool isSeen(const QWidget* window) {
    return window != nullptr && window->windowType() == Qt::Window && window->isVisible() &&
           !window->isMinimized();
}

std::vector<QWidget*> seenWindows() {
    std::vector<QWidget*> seen;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (isSeen(window)) {
            seen.push_back(window);
        }
    }
    return seen;
}

bool isSmallerThan(const QSize& size, const QSize& needed) {
    return size.width() < needed.width() || size.height() < needed.height();
}

bool isCut(const QWidget& widget) {
    const auto* label = qobject_cast<const QLabel*>(&widget);
    const bool button = qobject_cast<const QAbstractButton*>(&widget) != nullptr;
    const bool frame = qobject_cast<const QGroupBox*>(&widget) != nullptr;
    if (label == nullptr && !button && !frame) {
        return false;
    }
    const QWidget& window = *widget.window();
    const QRect place(widget.mapTo(&window, QPoint()), widget.size());
    if (!window.rect().contains(place)) {
        return true;
    }
    if (label != nullptr && label->wordWrap()) {
        return label->heightForWidth(label->width()) > label->height();
    }
    return isSmallerThan(widget.size(), frame ? widget.minimumSizeHint() : widget.sizeHint());
}

/// By which role of the palette its text is painted; none for what shows no text of its own.
std::optional<QPalette::ColorRole> textRole(const QWidget& widget) {
    if (qobject_cast<const QLineEdit*>(&widget) != nullptr ||
        qobject_cast<const QPlainTextEdit*>(&widget) != nullptr ||
        qobject_cast<const QAbstractItemView*>(&widget) != nullptr) {
        return QPalette::Text;
    }
    if (qobject_cast<const QComboBox*>(&widget) != nullptr) {
        return QPalette::ButtonText;
    }
    const bool shows = qobject_cast<const QLabel*>(&widget) != nullptr ||
                       qobject_cast<const QAbstractButton*>(&widget) != nullptr;
    return shows ? std::optional(widget.foregroundRole()) : std::nullopt;
}

bool looksUsable(const QWidget& widget) {
    const std::optional<QPalette::ColorRole> role = textRole(widget);
    const QPalette colours = widget.palette();
    return role &&
           colours.color(QPalette::Disabled, *role) == colours.color(QPalette::Active, *role);
}

bool canTakeFocus(const QWidget* widget) {
    return widget != nullptr && widget->isVisible() && widget->isEnabled() &&
           widget->focusPolicy() != Qt::NoFocus;
}

bool hasPlaceForFocus(const QWidget& window) {
    const auto inside = window.findChildren<QWidget*>();
    return std::any_of(inside.begin(), inside.end(), [&](const QWidget* each) {
        return each->window() == &window && canTakeFocus(each);
    });
}

/// What is wrong with the focus while that window is the active one; empty when nothing is.
std::string lostFocus(const QWidget& window) {
    const QWidget* const focus = QApplication::focusWidget();
    const bool here = focus != nullptr && window.isAncestorOf(focus) && canTakeFocus(focus);
    if (here || !window.isEnabled() || !hasPlaceForFocus(window)) {
        return {};
    }
    return nameOf(window) + " is active and the focus is on " + nameOf(focus) + "\n";
}

/// What is wrong with the texts of a window.
std::string wrongIn(const QWidget& window) {
    std::string wrong;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible()) {
            continue;
        }
        if (isCut(*widget)) {
            wrong += nameOf(*widget) + " is cut\n";
        }
        if (!widget->isEnabled() && looksUsable(*widget)) {
            wrong += nameOf(*widget) + " is disabled and does not look so\n";
        }
    }
    return wrong;
}

/// The main window has one line more while a plan is on.
bool hasPlanLine(const QWidget& window) {
    const auto* const line = window.findChild<QWidget*>(QStringLiteral("lblPlan"));
    return line != nullptr && line->isVisible();
}

} // namespace

QtEyes::QtEyes() {
    qApp->installEventFilter(this);
    QObject::connect(qApp, &QGuiApplication::focusWindowChanged, this, [this](QWindow* active) {
        for (QWidget* window : seenWindows()) {
            active_ = window->windowHandle() == active ? window : active_.data();
        }
    });
}

bool QtEyes::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint && watched->isWidgetType()) {
        painted_.insert(static_cast<const QWidget*>(watched)->window());
    }
    return false;
}

void QtEyes::compareSizes(bool complain) {
    std::erase_if(known_, [](const Known& each) { return each.window.isNull(); });
    for (QWidget* window : seenWindows()) {
        const auto before = std::find_if(known_.begin(), known_.end(),
                                         [&](const Known& each) { return each.window == window; });
        if (before == known_.end()) {
            known_.push_back({window, window->size(), hasPlanLine(*window)});
            continue;
        }
        const bool mayGrow =
            hasPlanLine(*window) != before->hasPlanLine && window->width() == before->size.width();
        before->hasPlanLine = hasPlanLine(*window);
        if (complain && !mayGrow && window->size() != before->size) {
            noted_ += nameOf(*window) + " was " + textOf(before->size) + " and is " +
                      textOf(window->size()) + "\n";
        }
        before->size = window->size();
    }
}

void QtEyes::look() {
    compareSizes(true);
    const QWidget* const active = QApplication::activeWindow();
    if (isSeen(active) && QApplication::activePopupWidget() == nullptr) {
        noted_ += lostFocus(*active);
    }
}

/// The windows before which a box may stand: the one in which the user acts, as far as a person can
/// see it; or else the one that was active, or else the main window, or else any.
std::vector<QWidget*> QtEyes::windowsThatMayAsk() const {
    for (QWidget* one : {actor_.data(), active_.data()}) {
        if (isSeen(one)) {
            return {one};
        }
    }
    const std::vector<QWidget*> seen = seenWindows();
    const auto main = std::find_if(seen.begin(), seen.end(), [](const QWidget* window) {
        return window->objectName() == QLatin1String("frmMain");
    });
    return main == seen.end() ? seen : std::vector{*main};
}

void QtEyes::lookAtBox(const QMessageBox& box) {
    QWidget* const owner = box.parentWidget();
    const std::vector<QWidget*> may = windowsThatMayAsk();
    const bool fits =
        may.empty() ? owner == nullptr : std::find(may.begin(), may.end(), owner) != may.end();
    if (!fits) {
        noted_ += "A box stands before " + nameOf(owner) + " instead of " +
                  nameOf(may.empty() ? nullptr : may.front()) + ": " + box.text().toStdString() +
                  "\n";
    } else if (owner != nullptr && !owner->isEnabled()) {
        noted_ += "A box stands before " + nameOf(owner) + ", which is disabled\n";
    }
}

std::string QtEyes::complaints() {
    for (const QWidget* window : seenWindows()) {
        if (painted_.contains(window)) {
            noted_ += wrongIn(*window);
        }
    }
    painted_.clear();
    return std::exchange(noted_, {});
}

} // namespace tarvik::scenarios
