#include "Waiting.h"
#include "controls/Form.h"
#include "support/FormOn.h"
#include "support/QtMachine.h"
#include "support/QtWidgets.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <QWindow>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarvik {
namespace {

/// Two fields that stand behind a button, which has the focus first, and a label.
class FieldForm : public Form {
public:
    FieldForm() : Form("frmField", "Fields") {
        setLayout(column({
            item(cmdOk),
            item(txtFirst).wide(20),
            row({item(lblSecond), item(txtSecond).wide(20)}),
            item(lblPlain),
        }));
        setInitialFocus(cmdOk);
    }

    CommandButton cmdOk{*this, "cmdOk", {.caption = "OK"}};
    TextBox txtFirst{*this, "txtFirst", {}};
    TextBox txtSecond{*this, "txtSecond", {}};
    Label lblSecond{
        *this, "lblSecond", {.caption = "Second:", .mnemonic = 'S', .labelled = &txtSecond}};
    Label lblPlain{*this, "lblPlain", {.caption = "plain"}};
};

/// Notes why a widget gets the focus.
class FocusReasons : public QObject {
public:
    explicit FocusReasons(QWidget* watched) { watched->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::FocusIn) {
            seen.push_back(static_cast<QFocusEvent*>(event)->reason());
        }
        return false;
    }

    std::vector<Qt::FocusReason> seen;
};

class TextFieldTest : public testing::Test {
protected:
    TextFieldTest() {
        form.setVisible(true);
        takeQueued();
        EXPECT_TRUE(spinUntil([] { return widgetNamed("cmdOk")->hasFocus(); }));
    }
    ~TextFieldTest() override { form.unload(); }

    /// One key event, as the window hands it to whatever has the focus.
    static void key(QEvent::Type type, int code, const QString& text = {}, bool repeated = false,
                    Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QKeyEvent event(type, code, modifiers, text, repeated);
        QCoreApplication::sendEvent(widgetNamed("cmdOk")->window()->windowHandle(), &event);
    }
    static void press(int code, const QString& text = {}) {
        key(QEvent::KeyPress, code, text);
        key(QEvent::KeyRelease, code, text);
    }

    /// A press and a release in the middle of a widget, as the window hands them on.
    static void click(QWidget* target) {
        const QPointF inside = target->mapTo(target->window(), target->rect().center());
        const QPointF global = target->window()->mapToGlobal(inside);
        QWindow* window = target->window()->windowHandle();
        QMouseEvent down(QEvent::MouseButtonPress, inside, inside, global, Qt::LeftButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window, &down);
        QMouseEvent up(QEvent::MouseButtonRelease, inside, inside, global, Qt::LeftButton,
                       Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window, &up);
    }

    QtMachine machine;
    FormOn<FieldForm> form{machine.platform.desktop};
};

TEST_F(TextFieldTest, OnlyTheFieldThatIsReachedRaisesGotFocus) {
    std::vector<std::string> reached;
    form.txtFirst.GotFocus.connect([&] { reached.emplace_back("first"); });
    form.txtSecond.GotFocus.connect([&] { reached.emplace_back("second"); });

    press(Qt::Key_Tab);
    press(Qt::Key_Tab);

    EXPECT_EQ(reached, (std::vector<std::string>{"first", "second"}));
}

TEST_F(TextFieldTest, APopupThatGivesTheFocusBackRaisesNothing) {
    int times = 0;
    press(Qt::Key_Tab);
    form.txtFirst.GotFocus.connect([&] { ++times; });
    const FocusReasons reasons(widgetNamed("txtFirst"));
    QMenu popup;
    popup.addAction(QStringLiteral("Entry"));
    popup.popup(QPoint(0, 0));
    ASSERT_TRUE(spinUntil([&] { return QApplication::activePopupWidget() == &popup; }));

    popup.close();

    EXPECT_TRUE(spinUntil([&] { return !reasons.seen.empty(); }));
    EXPECT_EQ(reasons.seen, std::vector{Qt::PopupFocusReason});
    EXPECT_EQ(times, 0);
}

TEST_F(TextFieldTest, AKeyThatRepeatsComesUpOnce) {
    int downs = 0;
    int ups = 0;
    press(Qt::Key_Tab);
    form.txtFirst.KeyDown.connect([&] { ++downs; });
    form.txtFirst.KeyUp.connect([&] { ++ups; });

    key(QEvent::KeyPress, Qt::Key_A, QStringLiteral("a"));
    key(QEvent::KeyRelease, Qt::Key_A, QStringLiteral("a"), true);
    key(QEvent::KeyPress, Qt::Key_A, QStringLiteral("a"), true);
    const int upsWhileHeld = ups;
    key(QEvent::KeyRelease, Qt::Key_A, QStringLiteral("a"));

    EXPECT_EQ(form.txtFirst.text(), "aa");
    EXPECT_EQ(downs, 2);
    EXPECT_EQ(upsWhileHeld, 0);
    EXPECT_EQ(ups, 1);
}

TEST_F(TextFieldTest, TheSelectionCountsBytesWhereCharactersHaveMore) {
    form.txtFirst.setText("\u00e4\u00f6\u20ac x\u00fcz");

    form.txtFirst.select(8, 3);

    EXPECT_EQ(widgetNamed<QLineEdit>("txtFirst")->selectionStart(), 4);
    EXPECT_EQ(widgetNamed<QLineEdit>("txtFirst")->selectedText(), QStringLiteral("x\u00fc"));
}

TEST_F(TextFieldTest, ASelectionMadeAfterTheClickIsMadeOnce) {
    form.txtFirst.setText("1234");
    click(widgetNamed("txtFirst"));

    form.txtFirst.select(0, 4);
    widgetNamed<QLineEdit>("txtFirst")->setSelection(0, 2);
    ASSERT_TRUE(takeQueued());

    EXPECT_EQ(widgetNamed<QLineEdit>("txtFirst")->selectedText(), QStringLiteral("12"));
}

TEST_F(TextFieldTest, ALaterClickPutsTheSelectionAside) {
    form.txtFirst.setText("1234");
    form.txtFirst.GotFocus.connect([&] { form.txtFirst.select(0, 4); });
    click(widgetNamed("txtFirst"));
    ASSERT_TRUE(takeQueued());

    click(widgetNamed("txtFirst"));
    ASSERT_TRUE(takeQueued());

    EXPECT_EQ(widgetNamed<QLineEdit>("txtFirst")->selectedText(), QString());
}

TEST_F(TextFieldTest, AFormMayBeUnloadedByGotFocusBeforeTheSelectionIsMadeAgain) {
    form.txtFirst.setText("1234");
    const QPointer<QLineEdit> edit = widgetNamed<QLineEdit>("txtFirst");
    form.txtFirst.GotFocus.connect([&] {
        form.txtFirst.select(0, 4);
        form.unload();
    });

    click(edit);

    EXPECT_FALSE(form.loaded());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(edit.isNull());
    ASSERT_TRUE(takeQueued());
}

TEST_F(TextFieldTest, AnyOtherLabelStaysInOneLine) {
    auto* label = qobject_cast<QLabel*>(widgetNamed("lblPlain"));

    form.lblPlain.setCaption("many words that do not find room in a single line of this label");

    EXPECT_TRUE(spinUntil(
        [&] { return label->width() >= label->fontMetrics().horizontalAdvance(label->text()); }));
    EXPECT_LT(label->sizeHint().height(), 2 * label->fontMetrics().lineSpacing());
}

} // namespace
} // namespace tarvik
