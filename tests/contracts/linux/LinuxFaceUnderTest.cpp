#include "contracts/FaceUnderTest.h"
#include "contracts/painted/OutsideNames.h"

#include "support/QtMachine.h"
#include "support/QtWidgets.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFocusEvent>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProgressBar>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

#include <stdexcept>

namespace tarvik {
namespace {

QWidget* windowOf(const ControlList& list) {
    return windowNamed(list.name());
}

Qt::Key keyOf(FaceKey key) {
    switch (key) {
    case FaceKey::Enter:
        return Qt::Key_Return;
    case FaceKey::Escape:
        return Qt::Key_Escape;
    case FaceKey::Tab:
        return Qt::Key_Tab;
    case FaceKey::Delete:
        return Qt::Key_Delete;
    case FaceKey::Left:
        return Qt::Key_Left;
    case FaceKey::Right:
        return Qt::Key_Right;
    case FaceKey::PageUp:
        return Qt::Key_PageUp;
    case FaceKey::PageDown:
        return Qt::Key_PageDown;
    case FaceKey::Home:
        return Qt::Key_Home;
    case FaceKey::End:
        return Qt::Key_End;
    default:
        return Qt::Key_Space;
    }
}

class QtBox : public ShownBox {
public:
    explicit QtBox(QMessageBox& box) : box_(box) {
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        for (const QString& line : box.text().split(QLatin1Char('\n'))) {
            lines.push_back(line.toStdString());
        }
        caption = box.windowTitle().toStdString();
        icon = box.icon() == QMessageBox::Question ? MsgBoxIcon::Question : MsgBoxIcon::None;
    }

    void press(MsgBoxAnswer answer) override {
        switch (answer) {
        case MsgBoxAnswer::Ok:
            return box_.button(QMessageBox::Ok)->click();
        case MsgBoxAnswer::Cancel:
            return box_.button(QMessageBox::Cancel)->click();
        case MsgBoxAnswer::Yes:
            return box_.button(QMessageBox::Yes)->click();
        case MsgBoxAnswer::No:
            return box_.button(QMessageBox::No)->click();
        }
    }
    void close() override { box_.close(); }

private:
    QMessageBox& box_;
};

/// The toolkit's desktop without a screen activates whatever is shown. Any other leaves the keys
/// where they are when a window says that it does not want them.
class QuietShowing : public QObject {
public:
    QuietShowing() {
        if (QGuiApplication::platformName() == QStringLiteral("offscreen")) {
            qApp->installEventFilter(this);
        }
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        QWindow* const before = QGuiApplication::focusWindow();
        if (event->type() == QEvent::Show && before != nullptr && before != watched &&
            watched->isWindowType() && watched->property("_q_showWithoutActivating").toBool()) {
            before_ = before;
        }
        return false;
    }
    /// Once all that waited is done.
    void giveKeysBack() {
        if (QWindow* const before = before_) {
            before_.clear();
            before->requestActivate();
            QCoreApplication::processEvents();
        }
    }

private:
    QPointer<QWindow> before_;
};

class LinuxFaceUnderTest : public FaceUnderTest {
public:
    Desktop& desktop() override { return machine_.desktop; }
    void settle() override {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        quietShowing_.giveKeysBack();
    }
    bool waitUntil(const std::function<bool()>& condition) override {
        return QTest::qWaitFor(condition, 10'000);
    }
    void runWith(const std::function<void()>& meanwhile) override {
        QTimer::singleShot(10, qApp, meanwhile);
        machine_.desktop.run();
    }
    void atNextBox(std::function<void(ShownBox&)> act) override {
        watch_.disconnect(); // from what the box before was for
        QObject::connect(&watch_, &QTimer::timeout, &watch_, [this, act = std::move(act)] {
            if (auto* open = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                watch_.stop();
                QtBox box(*open);
                act(box);
            }
        });
        watch_.start(5);
    }
    bool canClose(MsgBoxButtons) const override { return true; }
    void endSession() override { machine_.desktop.endSession(); }
    void goToSleep() override { machine_.desktop.pause(); }

    bool hasWindow(const Form& form) const override { return windowOf(form) != nullptr; }
    bool isSeen(const Form& form) const override { return windowOf(form)->isVisible(); }
    bool isMinimised(const Form& form) const override { return windowOf(form)->isMinimized(); }
    void pressCloseBox(const Form& form) override { windowOf(form)->close(); }
    void minimiseByHand(Form& form) override {
        windowOf(form)->showMinimized();
        // Another window is the active one then.
        elsewhere_ = std::make_unique<QWidget>();
        elsewhere_->show();
        activate(*elsewhere_);
    }
    void restoreByHand(Form& form) override {
        windowOf(form)->showNormal();
        activate(*windowOf(form));
        elsewhere_.reset();
    }
    std::vector<std::string> tabOrder(const Form& form, int count) const override {
        std::vector<std::string> names;
        const Control& first = **std::find_if(
            form.controls().begin(), form.controls().end(),
            [](const Control* control) { return control->kind() == ControlKind::TextBox; });
        for (QWidget* next = &theWidgetOf<QWidget>(first); static_cast<int>(names.size()) < count;
             next = next->nextInFocusChain()) {
            if (next->focusPolicy() != Qt::NoFocus &&
                !next->objectName().startsWith(QStringLiteral("qt_"))) {
                names.push_back(next->objectName().toStdString());
            }
        }
        return names;
    }
    std::string focused(const Form& form) const override {
        const QWidget* there = QApplication::focusWidget();
        return there == nullptr || there->window() != windowOf(form)
                   ? std::string()
                   : there->objectName().toStdString();
    }
    void pressMnemonic(Form& form, char letter) override {
        QTest::keyClick(windowOf(form)->focusWidget(), letter, Qt::AltModifier);
    }

    std::string marked(const Control& control) const override {
        QWidget& found = theWidgetOf<QWidget>(control);
        if (const auto* group = qobject_cast<const QGroupBox*>(&found)) {
            return group->title().toStdString();
        }
        if (const auto* label = qobject_cast<const QLabel*>(&found)) {
            return label->text().toStdString();
        }
        return dynamic_cast<QAbstractButton&>(found).text().toStdString();
    }
    std::string shown(const Control& control) const override {
        QWidget& found = theWidgetOf<QWidget>(control);
        if (const auto* edit = qobject_cast<const QLineEdit*>(&found)) {
            return edit->text().toStdString();
        }
        if (const auto* combo = qobject_cast<const QComboBox*>(&found)) {
            return combo->currentText().toStdString();
        }
        return marked(control); // nothing that is read here has a mnemonic
    }
    bool isTicked(const Control& control) const override {
        return theWidgetOf<QAbstractButton>(control).isChecked();
    }
    bool isEnabled(const Control& control) const override {
        return theWidgetOf<QWidget>(control).isEnabled();
    }
    bool isVisible(const Control& control) const override {
        const QWidget& found = theWidgetOf<QWidget>(control);
        return found.isVisibleTo(found.window());
    }
    std::string tip(const Control& control) const override {
        return theWidgetOf<QWidget>(control).toolTip().toStdString();
    }
    std::string spoken(const Control& control) const override {
        QAccessibleInterface* accessible =
            QAccessible::queryAccessibleInterface(&theWidgetOf<QWidget>(control));
        EXPECT_EQ(accessible->role(), QAccessible::Chart);
        return accessible->text(QAccessible::Name).toStdString();
    }
    void click(Control& control) override { theWidgetOf<QAbstractButton>(control).click(); }
    void press(Control& control, FaceKey key) override {
        QWidget& target = theWidgetOf<QWidget>(control);
        target.setFocus();
        const QPointer<QWindow> window = target.window()->windowHandle();
        QTest::keyPress(window, keyOf(key));
        if (window != nullptr) { // the key may have ended its form
            QTest::keyRelease(window, keyOf(key));
        }
    }
    void enter(TextBox& field, char text) override {
        emit theWidgetOf<QLineEdit>(field).textEdited(QString(QLatin1Char(text)));
    }
    void choose(ComboBox& list, int entry) override {
        theWidgetOf<QComboBox>(list).setCurrentIndex(entry);
    }
    void goInto(TextBox& field) override {
        auto& edit = theWidgetOf<QLineEdit>(field);
        if (QApplication::activeModalWidget() != nullptr) {
            QFocusEvent come(QEvent::FocusIn, Qt::TabFocusReason);
            QCoreApplication::sendEvent(&edit, &come);
            return;
        }
        activate(*edit.window());
        edit.setFocus(Qt::TabFocusReason);
        EXPECT_TRUE(edit.hasFocus());
    }
    void clickInto(TextBox& field) override {
        const auto& edit = theWidgetOf<QLineEdit>(field);
        activate(*edit.window());
        QTest::mouseClick(edit.window()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          edit.mapTo(edit.window(), QPoint(3, edit.height() / 2)));
        EXPECT_TRUE(edit.hasFocus());
    }
    void type(TextBox& field, char letter) override {
        auto& edit = theWidgetOf<QLineEdit>(field);
        const int key = Qt::Key_A + (letter - 'a');
        for (const QEvent::Type way : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(way, key, Qt::NoModifier, QString(QLatin1Char(letter)));
            QCoreApplication::sendEvent(&edit, &event);
        }
    }
    void typeOn(char letter) override { QTest::keyClick(QGuiApplication::focusWindow(), letter); }
    void paste(TextBox& field, const std::string& text) override {
        QGuiApplication::clipboard()->setText(QString::fromStdString(text));
        QTest::keyClick(theWidgetOf<QLineEdit>(field).window()->windowHandle(), Qt::Key_V,
                        Qt::ControlModifier);
    }
    void selectByHand(TextBox& field, int start, int length) override {
        theWidgetOf<QLineEdit>(field).setSelection(start, length);
    }
    std::string selected(const TextBox& field) const override {
        return theWidgetOf<QLineEdit>(field).selectedText().toStdString();
    }
    void tickLate(Timer& timer) override {
        // Long enough for several, if they came.
        timer.setInterval(1);
        QTest::qWait(30);
    }
    int lineCount(const TextBox& area) const override {
        return theWidgetOf<QPlainTextEdit>(area).blockCount();
    }
    bool isReadOnly(const TextBox& area) const override {
        return theWidgetOf<QPlainTextEdit>(area).isReadOnly();
    }
    int percent(const ProgressBar& bar) const override {
        const auto& shownBar = theWidgetOf<QProgressBar>(bar);
        EXPECT_EQ(shownBar.maximum(), 100);
        EXPECT_EQ(shownBar.accessibleName(), QStringLiteral("Done"));
        EXPECT_EQ(shownBar.text(), QStringLiteral("%1 %").arg(shownBar.value()));
        return shownBar.value();
    }

    int rowCount(const ListView& list) const override { return table(list).model()->rowCount(); }
    std::string cell(const ListView& list, int row, int column) const override {
        return table(list).model()->index(row, column).data().toString().toStdString();
    }
    int selectedRow(const ListView& list) const override {
        const QModelIndexList rows = table(list).selectionModel()->selectedRows();
        return rows.isEmpty() ? -1 : rows.front().row();
    }
    void selectRow(ListView& list, int row) override { table(list).selectRow(row); }
    void clickRow(ListView& list, int row) override {
        QTest::mouseClick(table(list).window()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          placeOf(list, row));
    }
    void doubleClickRow(ListView& list, int row) override {
        QTest::mouseDClick(table(list).window()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                           placeOf(list, row));
    }
    void typeLetter(ListView& list, char letter) override {
        QTest::keyClick(table(list).window()->windowHandle(), letter);
        QCoreApplication::processEvents();
    }
    bool hasFlatHeaders(const ListView& list) const override {
        return !table(list).horizontalHeader()->sectionsClickable();
    }
    int columnWidth(const ListView& list, int column) const override {
        return table(list).columnWidth(column);
    }
    int textWidth(const ListView& list, const std::string& text) const override {
        return table(list).fontMetrics().horizontalAdvance(QString::fromStdString(text));
    }
    void repaint(ListView& list) override {
        QCoreApplication::processEvents();
        table(list).grab();
    }

private:
    static void activate(QWidget& window) {
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitFor([&] { return window.isActiveWindow(); }, 10'000));
    }
    static QTableView& table(const ListView& list) { return theWidgetOf<QTableView>(list); }
    static QPoint placeOf(const ListView& list, int row) {
        const QTableView& shownTable = table(list);
        const QPoint inList = shownTable.visualRect(shownTable.model()->index(row, 1)).center();
        return shownTable.viewport()->mapTo(shownTable.window(), inList);
    }

    QtMachine machine_;
    QuietShowing quietShowing_;
    QTimer watch_;
    std::unique_ptr<QWidget> elsewhere_;
};

} // namespace

std::unique_ptr<FaceUnderTest> faceUnderTest() {
    return std::make_unique<LinuxFaceUnderTest>();
}

OutsideNamesUnderTest outsideNamesUnderTest() {
    return {.face = faceUnderTest(), .turned = "Bank\u202egnp.exe", .told = "Bank[U+202E]gnp.exe"};
}

} // namespace tarvik
