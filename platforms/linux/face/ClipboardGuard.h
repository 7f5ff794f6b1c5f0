#pragma once

#include <QObject>

namespace tarvik::face {

/// Keeps the window from waiting for a program that holds the clipboard, or something that is
/// dragged, and is halted: the toolkit gives such a one five seconds, three times over, when
/// something is pasted or the menu of a text box is opened. Here the text is asked for on a
/// connection of its own, in a fraction of a second, and pasted; where it does not come, there is a
/// beep instead, and no menu. Nothing is taken by dragging, as on other systems. Blanks and line
/// ends around a text are not pasted into a box of one line.
///
/// Works while it lives; on displays other than those of X the toolkit still asks for the text.
class ClipboardGuard : public QObject {
public:
    ClipboardGuard();

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace tarvik::face
