#include "Driver.h"
#include "ExpectedBoxes.h"

#include "QtEyes.h"

#include "forms/Forms.h"
#include "linux/face/FaceText.h"
#include "linux/face/TrayMenu.h"
#include "support/QtMachine.h"
#include "support/QtWidgets.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTimer>

#include <array>
#include <utility>

namespace tarvik::scenarios {

namespace {

QString plain(QString text) {
    // Marks of mnemonics are for the eye only.
    text.replace(QStringLiteral("&&"), QStringLiteral("\x01"));
    text.remove(QLatin1Char('&'));
    return text.replace(QLatin1Char('\x01'), QLatin1Char('&'));
}

std::string textOf(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        QString text = label->buddy() != nullptr ? plain(label->text()) : label->text();
        return face::entered(text.replace(QLatin1Char('\n'), QStringLiteral("\r\n")));
    }
    if (const auto* edit = qobject_cast<const QLineEdit*>(&widget)) {
        return face::entered(edit->text());
    }
    if (const auto* box = qobject_cast<const QCheckBox*>(&widget)) {
        return boxText(box->isChecked(), face::entered(plain(box->text())));
    }
    if (const auto* option = qobject_cast<const QRadioButton*>(&widget)) {
        return boxText(option->isChecked(), face::entered(plain(option->text())));
    }
    if (const auto* area = qobject_cast<const QPlainTextEdit*>(&widget)) {
        return face::entered(
            area->toPlainText().replace(QLatin1Char('\n'), QStringLiteral("\r\n")));
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
        return face::entered(plain(button->text()));
    }
    if (const auto* combo = qobject_cast<const QComboBox*>(&widget)) {
        return face::entered(combo->currentText());
    }
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
        return face::entered(plain(group->title()));
    }
    if (const auto* bar = qobject_cast<const QProgressBar*>(&widget)) {
        return face::entered(bar->text());
    }
    return face::entered(widget.windowTitle()); // of a chart; nothing else has one
}

void collect(const QLayout& layout, std::vector<SeenControl>& seen) {
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem* item = layout.itemAt(i);
        if (const QLayout* inner = item->layout()) {
            collect(*inner, seen);
        } else if (const QWidget* widget = item->widget()) {
            if (widget->isHidden()) {
                continue;
            }
            seen.push_back(
                {face::entered(widget->objectName()), textOf(*widget), widget->isEnabled()});
            if (widget->layout() != nullptr) {
                collect(*widget->layout(), seen);
            }
        }
    }
}

QMessageBox::StandardButton buttonOf(MsgBoxAnswer answer) {
    switch (answer) {
    case MsgBoxAnswer::Ok:
        return QMessageBox::Ok;
    case MsgBoxAnswer::Cancel:
        return QMessageBox::Cancel;
    case MsgBoxAnswer::Yes:
        return QMessageBox::Yes;
    case MsgBoxAnswer::No:
        break;
    }
    return QMessageBox::No;
}

class QtDriver : public Driver {
public:
    QtDriver() {
        QObject::connect(&watch_, &QTimer::timeout, &watch_, [this] { answerOpenBox(); });
        watch_.start(5);
    }

    ScriptedPlatform& machine() override { return machine_.scripted; }
    Platform& platform() override { return machine_.platform; }

    void click(const std::string& name) override {
        const QPointer<QAbstractButton> button = qobject_cast<QAbstractButton*>(widget(name));
        const Acting acting(*this, *button->window());
        if (button->testAttribute(Qt::WA_TransparentForMouseEvents)) {
            return;
        }
        comeTo(*button, Qt::MouseFocusReason);
        button->click();
    }

    void type(const std::string& name, const std::string& keys) override {
        QWidget* box = widget(name);
        const Acting acting(*this, *box->window());
        box->clearFocus();
        comeTo(*box, Qt::TabFocusReason);
        for (const char key : keys) {
            const bool backspace = key == '\b';
            const int code = backspace ? Qt::Key_Backspace : Qt::Key_Any;
            const QString text = backspace ? QString() : QString(QLatin1Char(key));
            QKeyEvent down(QEvent::KeyPress, code, Qt::NoModifier, text);
            QCoreApplication::sendEvent(box, &down);
            QKeyEvent up(QEvent::KeyRelease, code, Qt::NoModifier, text);
            QCoreApplication::sendEvent(box, &up);
        }
    }

    void choose(const std::string& name, const std::string& entry) override {
        auto* combo = qobject_cast<QComboBox*>(widget(name));
        const Acting acting(*this, *combo->window());
        comeTo(*combo, Qt::MouseFocusReason);
        combo->setCurrentIndex(combo->findText(face::shown(entry)));
    }

    void select(const std::string& name, int row) override {
        auto* list = qobject_cast<QTableView*>(widget(name));
        const Acting acting(*this, *list->window());
        comeTo(*list, Qt::MouseFocusReason);
        list->selectRow(row);
    }

    void open(const std::string& name) override {
        QWidget* const list = widget(name);
        const Acting acting(*this, *list->window());
        comeTo(*list, Qt::MouseFocusReason);
        QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(list, &enter);
    }

    std::string read(const std::string& name) override { return textOf(*widget(name)); }

    bool visible(const std::string& name) override {
        const QWidget* found = window(name);
        return found != nullptr && found->isVisible();
    }

    bool minimised(const std::string& name) override { return window(name)->isMinimized(); }

    void closeWindow(const std::string& name) override {
        QWidget* const closed = window(name);
        const Acting acting(*this, *closed);
        closed->close();
    }

    void clickTrayIcon() override { iconTells(leftButtonReleased); }

    void chooseTrayEntry(int entry) override {
        QCoreApplication::processEvents(); // a window that comes to the front closes menus
        QTimer chooser;
        QObject::connect(&chooser, &QTimer::timeout, &chooser, [entry] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (menu == nullptr) {
                return;
            }
            for (QAction* const action : menu->actions()) {
                if (face::numberOf(*action) == entry) {
                    menu->setActiveAction(action);
                }
            }
            QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
            QCoreApplication::sendEvent(menu, &enter);
        });
        chooser.start(5);
        iconTells(rightButtonReleased);
    }

    void answerNext(const std::string& text, MsgBoxButtons buttons, MsgBoxAnswer answer) override {
        boxes_.announce(face::shownLines(text).toStdString(), buttons, answer);
    }

    void answerEvery(Chooser choose) override {
        choose_ = std::move(choose);
        watch_.start(0);
    }

    void press(const std::string& name, Key key) override {
        static constexpr std::array<Qt::Key, keyCount> codes{
            Qt::Key_Tab,   Qt::Key_Return, Qt::Key_Escape, Qt::Key_Space,  Qt::Key_Left,
            Qt::Key_Right, Qt::Key_Up,     Qt::Key_Down,   Qt::Key_PageUp, Qt::Key_PageDown,
            Qt::Key_Home,  Qt::Key_End,    Qt::Key_F4};
        QWidget* const found = window(name);
        const Acting acting(*this, *found);
        activate(*found);
        QWidget* const popUp = QApplication::activePopupWidget();
        QWidget* const focus = popUp != nullptr ? popUp : found->focusWidget();
        const int code = codes.at(static_cast<std::size_t>(key));
        const QString text = key == Key::Space ? QStringLiteral(" ") : QString();
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QCoreApplication::postEvent(focus != nullptr ? focus : found,
                                        new QKeyEvent(type, code, Qt::NoModifier, text));
        }
    }

    void clickAt(const std::string& name, int x, int y, int times) override {
        QWidget* const found = window(name);
        const Acting acting(*this, *found);
        activate(*found);
        const QPoint place(found->width() * x / 1000, found->height() * y / 1000);
        QWidget* const child = found->childAt(place);
        QWidget* const hit = child != nullptr ? child : found;
        const QPointF inside = hit->mapFrom(found, place);
        const auto send = [&](QEvent::Type type, Qt::MouseButtons buttons) {
            QCoreApplication::postEvent(hit,
                                        new QMouseEvent(type, inside, hit->mapToGlobal(inside),
                                                        Qt::LeftButton, buttons, Qt::NoModifier));
        };
        for (int i = 0; i < times; ++i) {
            send(i % 2 == 1 ? QEvent::MouseButtonDblClick : QEvent::MouseButtonPress,
                 Qt::LeftButton);
            send(QEvent::MouseButtonRelease, Qt::NoButton);
        }
        QCoreApplication::processEvents();
        if (QWidget* const popUp = QApplication::activePopupWidget()) {
            popUp->close();
        }
    }

    void resize(const std::string& name, int width, int height) override {
        window(name)->resize(width, height);
        QCoreApplication::processEvents();
        eyes_.acceptSizes();
    }

    void settle() override {
        QCoreApplication::processEvents();
        activateAnother();
        eyes_.look();
    }

    std::string boxTrouble() override { return boxes_.trouble(); }

    std::string complaints() override { return eyes_.complaints(); }

    bool waitUntil(const std::function<bool()>& condition) override {
        constexpr qint64 deadline = 60'000;
        QElapsedTimer passed;
        passed.start();
        while (!condition() && passed.elapsed() < deadline) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        settle();
        return condition();
    }

    std::vector<SeenControl> controls(const std::string& name) override {
        std::vector<SeenControl> seen;
        collect(*window(name)->layout(), seen);
        return seen;
    }

private:
    /// The user acts in a window for its own lifetime; then what waits is handled and looked at.
    class Acting {
    public:
        Acting(QtDriver& driver, QWidget& window) : driver_(driver) {
            driver_.eyes_.userActsIn(&window);
        }
        ~Acting() {
            QCoreApplication::processEvents();
            driver_.eyes_.userActsIn(nullptr);
            driver_.settle();
        }
        Acting(const Acting&) = delete;
        Acting& operator=(const Acting&) = delete;

    private:
        QtDriver& driver_;
    };

    static void activate(QWidget& window) {
        if (!window.isActiveWindow()) {
            window.activateWindow();
            QCoreApplication::processEvents();
        }
    }

    /// As a click or the tab key comes to a widget.
    static void comeTo(QWidget& widget, Qt::FocusReason reason) {
        activate(*widget.window());
        const Qt::FocusPolicy needed =
            reason == Qt::MouseFocusReason ? Qt::ClickFocus : Qt::TabFocus;
        if ((widget.focusPolicy() & needed) != 0) {
            widget.setFocus(reason);
            QCoreApplication::processEvents();
        }
    }

    /// What a desktop does when the active window has gone; nobody else does it here.
    static void activateAnother() {
        if (QApplication::activeWindow() != nullptr) {
            return;
        }
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && !window->isMinimized()) {
                activate(*window);
                return;
            }
        }
    }

    /// The notification area is played: its messages go where the icon's record sends them.
    void iconTells(int message) {
        static_cast<Picture&>(*forms().frmSysTray.control("picSysTrayHook"))
            .MouseMove.raise(message);
        settle();
    }

    static QWidget* window(const std::string& name) {
        // A window of the same name that is waiting for its end is not the one meant.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
        return windowNamed(name);
    }

    static QWidget* widget(const std::string& name) {
        const std::size_t dot = name.find('.');
        return window(name.substr(0, dot))->findChild<QWidget*>(face::shown(name.substr(dot + 1)));
    }

    void answerOpenBox() {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr || !box->isVisible()) {
            return;
        }
        eyes_.lookAtBox(*box);
        if (choose_) {
            const auto buttons = box->buttons();
            const int chosen =
                choose_(face::entered(box->text()), static_cast<int>(buttons.size()));
            buttons.at(chosen)->click();
            return;
        }
        const std::string text = box->text().toStdString();
        const std::optional<MsgBoxAnswer> answer = boxes_.answerTo(text);
        QAbstractButton* const button = answer ? box->button(buttonOf(*answer)) : nullptr;
        if (button != nullptr) {
            button->click();
            return;
        }
        if (answer) {
            boxes_.noteMissingButton(text);
        }
        box->reject();
    }

    QtMachine machine_;
    QtEyes eyes_;
    QTimer watch_;
    ExpectedBoxes boxes_;
    Chooser choose_;
};

} // namespace

std::unique_ptr<Driver> makeDriver() {
    return std::make_unique<QtDriver>();
}

} // namespace tarvik::scenarios
