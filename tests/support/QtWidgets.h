#pragma once

#include "controls/Control.h"
#include "controls/ControlList.h"

#include <QApplication>
#include <QString>
#include <QWidget>
#include <stdexcept>
#include <string>

namespace tarvik {

/// The window, menu or tip of that name; null when there is none.
inline QWidget* windowNamed(const std::string& name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == QString::fromStdString(name)) {
            return window;
        }
    }
    return nullptr;
}

/// The widget of that kind and name, in whatever window it stands; null when there is none.
template <class Widget = QWidget>
Widget* widgetNamed(const std::string& name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* found = window->findChild<Widget*>(QString::fromStdString(name))) {
            return found;
        }
    }
    return nullptr;
}

/// The same where a test makes no sense without it.
template <class Widget = QWidget>
Widget& theWidget(const std::string& name) {
    if (Widget* found = widgetNamed<Widget>(name)) {
        return *found;
    }
    throw std::runtime_error(name);
}

/// The window of a form.
inline QWidget& theWindowOf(const ControlList& list) {
    if (QWidget* found = windowNamed(list.name())) {
        return *found;
    }
    throw std::runtime_error(list.name());
}

/// The widget that shows the control.
template <class Widget = QWidget>
Widget& theWidgetOf(const Control& control) {
    if (auto* found = theWindowOf(control.list())
                          .findChild<Widget*>(QString::fromStdString(control.name()))) {
        return *found;
    }
    throw std::runtime_error(control.name());
}

} // namespace tarvik
