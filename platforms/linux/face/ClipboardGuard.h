#pragma once

#include <QObject>

namespace tarvik::face {

/// Keeps the window from waiting for a program that holds the clipboard and is halted: the toolkit
/// gives such a one five seconds, three times over, when something is pasted or the menu of a text
/// box is opened. That is dropped with a beep instead. Works while it lives, on displays of X.
class ClipboardGuard : public QObject {
public:
    ClipboardGuard();

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace tarvik::face
