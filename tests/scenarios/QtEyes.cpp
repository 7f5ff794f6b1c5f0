#include "QtEyes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>

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

std::string textOf(const QSize& size) {
    return std::to_string(size.width()) + " x " + std::to_string(size.height());
}

bool isCut(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        return label->wordWrap() ? label->heightForWidth(label->width()) > label->height()
                                 : label->sizeHint().width() > label->width() ||
                                       label->sizeHint().height() > label->height();
    }
    return qobject_cast<const QAbstractButton*>(&widget) != nullptr &&
           widget.sizeHint().width() > widget.width();
}

/// By which role of the palette its text is painted; none for what shows no text of its own.
std::optional<QPalette::ColorRole> textRole(const QWidget& widget) {
    if (qobject_cast<const QLineEdit*>(&widget) != nullptr) {
        return QPalette::Text;
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

} // namespace

void QtEyes::remember() {
    sizes_.clear();
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible()) {
            sizes_[window] = window->size();
        }
    }
}

void QtEyes::compare() {
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        const auto before = sizes_.find(window);
        if (before != sizes_.end() && window->isVisible() && window->size() != before->second) {
            noted_ += nameOf(*window) + " was " + textOf(before->second) + " and is " +
                      textOf(window->size()) + "\n";
        }
    }
    sizes_.clear();
}

std::string QtEyes::complaints() {
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window->isMinimized()) {
            continue;
        }
        for (const QWidget* widget : window->findChildren<QWidget*>()) {
            if (!widget->isVisible()) {
                continue;
            }
            if (isCut(*widget)) {
                noted_ += nameOf(*widget) + " is cut\n";
            }
            if (!widget->isEnabled() && looksUsable(*widget)) {
                noted_ += nameOf(*widget) + " is disabled and does not look so\n";
            }
        }
    }
    return std::exchange(noted_, {});
}

} // namespace tarvik::scenarios
