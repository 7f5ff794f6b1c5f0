#include "linux/face/ClipboardGuard.h"

#include "linux/face/SelectionOwner.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPlainTextEdit>

#include <optional>
#include <string>

namespace tarvik::face {

namespace {

/// A box whose text can be changed: one of the two, or none.
struct TextTaker {
    QLineEdit* line = nullptr;
    QPlainTextEdit* lines = nullptr;

    explicit operator bool() const { return line != nullptr || lines != nullptr; }
};

/// One of several lines gets the mouse in an inner part.
TextTaker takerOf(QObject* widget) {
    TextTaker taker{qobject_cast<QLineEdit*>(widget), qobject_cast<QPlainTextEdit*>(widget)};
    if (!taker && widget != nullptr) {
        taker.lines = qobject_cast<QPlainTextEdit*>(widget->parent());
    }
    const bool readOnly = taker.line != nullptr    ? taker.line->isReadOnly()
                          : taker.lines != nullptr ? taker.lines->isReadOnly()
                                                   : true;
    return readOnly ? TextTaker() : taker;
}

bool isOfX() {
    static const bool is = QGuiApplication::platformName() == QStringLiteral("xcb");
    return is;
}

/// The text to be pasted, "" for none; nothing, after a beep, where its holder keeps it back.
std::optional<QString> textIn(QClipboard::Mode mode) {
    const QClipboard& clipboard = *QGuiApplication::clipboard();
    const bool isMain = mode == QClipboard::Clipboard;
    if (!isOfX() || (isMain ? clipboard.ownsClipboard() : clipboard.ownsSelection())) {
        return clipboard.text(mode);
    }
    const std::optional<std::string> text = textOfSelection(isMain ? "CLIPBOARD" : "PRIMARY");
    if (!text) {
        QApplication::beep();
        return std::nullopt;
    }
    return QString::fromStdString(*text);
}

/// What other programs copy comes with blanks or a line end around it; a box of one line, which
/// holds a number or a name, takes it without them.
QString fitFor(const TextTaker& box, const QString& text) {
    return box.line != nullptr ? text.trimmed() : text;
}

/// As a key that types all of it: the form hears of it as of every other key.
void pasteByKey(QObject& watched, const TextTaker& box, const QKeyEvent& key) {
    const bool isPrimary = key.key() == Qt::Key_Insert &&
                           key.modifiers().testFlag(Qt::ShiftModifier) &&
                           key.modifiers().testFlag(Qt::ControlModifier);
    const QString text =
        textIn(isPrimary ? QClipboard::Selection : QClipboard::Clipboard).value_or(QString());
    QKeyEvent typed(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, fitFor(box, text));
    QCoreApplication::sendEvent(&watched, &typed);
}

void insert(const TextTaker& box, const QString& text) {
    if (box.line != nullptr) {
        box.line->insert(fitFor(box, text));
    } else {
        box.lines->insertPlainText(text);
    }
}

void pasteByMouse(const TextTaker& box, const QMouseEvent& mouse) {
    const std::optional<QString> text = textIn(QClipboard::Selection);
    if (!text || text->isEmpty()) {
        return;
    }
    if (box.line != nullptr) {
        box.line->deselect();
    } else {
        box.lines->setTextCursor(box.lines->cursorForPosition(mouse.position().toPoint()));
    }
    insert(box, *text);
}

/// The menu may stay open for long: its command asks anew.
void guardMenu(const QMenu& menu) {
    QWidget* parent = menu.parentWidget();
    const TextTaker box = takerOf(parent);
    for (QAction* action : menu.actions()) {
        if (!box || !action->text().startsWith(QStringLiteral("&Paste"))) {
            continue;
        }
        QObject::disconnect(action, &QAction::triggered, nullptr, nullptr);
        QObject::connect(action, &QAction::triggered, parent, [box] {
            const QString text = textIn(QClipboard::Clipboard).value_or(QString());
            if (!text.isEmpty()) {
                insert(box, text);
            }
        });
    }
}

/// The toolkit would read the clipboard for it, if it comes to a box that takes text.
bool readsClipboard(QEvent& event) {
    switch (event.type()) {
    case QEvent::KeyPress:
        return static_cast<QKeyEvent&>(event).matches(QKeySequence::Paste);
    case QEvent::MouseButtonRelease:
        return static_cast<QMouseEvent&>(event).button() == Qt::MiddleButton;
    default:
        return event.type() == QEvent::ContextMenu;
    }
}

/// Does what the toolkit would wait for; true when there is nothing left to do.
bool paste(QObject& watched, QEvent& event) {
    // Boxes that are only just made know nothing of themselves yet, and get other events.
    const TextTaker box = readsClipboard(event) ? takerOf(&watched) : TextTaker();
    if (!box) {
        return false;
    }
    switch (event.type()) {
    case QEvent::KeyPress:
        pasteByKey(watched, box, static_cast<QKeyEvent&>(event));
        return true;
    case QEvent::MouseButtonRelease:
        pasteByMouse(box, static_cast<QMouseEvent&>(event));
        return true;
    default: // its menu shows whether there is anything to paste
        return !textIn(QClipboard::Clipboard);
    }
}

} // namespace

ClipboardGuard::ClipboardGuard() {
    qApp->installEventFilter(this);
}

bool ClipboardGuard::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::DragEnter) {
        event->ignore();
        return true;
    }
    const auto* menu = qobject_cast<QMenu*>(watched);
    if (menu != nullptr && event->type() == QEvent::Show) {
        guardMenu(*menu);
    }
    return paste(*watched, *event);
}

} // namespace tarvik::face
