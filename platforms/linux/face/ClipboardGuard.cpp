#include "linux/face/ClipboardGuard.h"

#include "linux/face/SelectionOwner.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>

#include <optional>

namespace tarvik::face {

namespace {

/// What the toolkit is about to read for that event; nothing for most.
std::optional<QClipboard::Mode> readFor(QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->matches(QKeySequence::Paste)) {
            return QClipboard::Clipboard;
        }
        return std::nullopt;
    case QEvent::ContextMenu:
        return QClipboard::Clipboard;
    case QEvent::MouseButtonRelease:
        if (static_cast<QMouseEvent*>(event)->button() == Qt::MiddleButton) {
            return QClipboard::Selection;
        }
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

/// A box whose text can be changed; one of several lines gets the mouse in an inner part.
bool takesText(const QObject* widget) {
    if (const auto* line = qobject_cast<const QLineEdit*>(widget)) {
        return !line->isReadOnly();
    }
    const auto* lines = qobject_cast<const QPlainTextEdit*>(widget);
    if (lines == nullptr && widget != nullptr) {
        lines = qobject_cast<const QPlainTextEdit*>(widget->parent());
    }
    return lines != nullptr && !lines->isReadOnly();
}

bool answers(QClipboard::Mode mode) {
    const QClipboard& clipboard = *QGuiApplication::clipboard();
    const bool own =
        mode == QClipboard::Clipboard ? clipboard.ownsClipboard() : clipboard.ownsSelection();
    return own || selectionOwnerAnswers(mode == QClipboard::Clipboard ? "CLIPBOARD" : "PRIMARY");
}

} // namespace

ClipboardGuard::ClipboardGuard() {
    if (QGuiApplication::platformName() == QStringLiteral("xcb")) {
        qApp->installEventFilter(this);
    }
}

bool ClipboardGuard::eventFilter(QObject* watched, QEvent* event) {
    const std::optional<QClipboard::Mode> read = readFor(event);
    if (read && takesText(watched) && !answers(*read)) {
        QApplication::beep();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tarvik::face
