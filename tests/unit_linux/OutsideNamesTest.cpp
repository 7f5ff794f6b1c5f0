#include "controls/Form.h"
#include "support/FormOn.h"
#include "support/QtMachine.h"
#include "support/QtWidgets.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTimer>
#include <QToolTip>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace tarvik {
namespace {

const std::string turnedName = "Bank\u202egnp.exe";
const QString shownName = QStringLiteral("Bank[U+202E]gnp.exe");

/// A control that shows names from outside.
class NamesForm : public Form {
public:
    NamesForm() : Form("frmNames", "Names") { setLayout(column({item(txtNames)})); }

    TextBox txtNames{
        *this, "txtNames", {.accessibleName = "All", .readOnly = true, .multiLine = true}};
};

class OutsideNamesTest : public testing::Test {
protected:
    OutsideNamesTest() { form.load(); }
    ~OutsideNamesTest() override { form.unload(); }

    QtMachine machine;
    FormOn<NamesForm> form{machine.platform.desktop};
};

TEST_F(OutsideNamesTest, SeveralLinesTellOfATurn) {
    form.txtNames.setText(turnedName + "\r\nsecond");

    EXPECT_EQ(theWidget<QPlainTextEdit>("txtNames").toPlainText(),
              shownName + QStringLiteral("\nsecond"));
    EXPECT_EQ(form.txtNames.text(), turnedName + "\r\nsecond");
}

TEST_F(OutsideNamesTest, ABoxOfTheToolkitIsPlain) {
    QMessageBox box(QMessageBox::NoIcon, QString(), QStringLiteral("<i>a</i>\u202e"));

    box.show();

    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.text(), QStringLiteral("<i>a</i>[U+202E]"));
}

TEST_F(OutsideNamesTest, TheToolkitsOwnBoldLineIsALine) {
    QMessageBox box(QMessageBox::NoIcon, QString(),
                    QStringLiteral("<b>The name \"<i>a\" cannot be used.</b><p>Try another."));

    box.show();

    EXPECT_EQ(box.text(), QStringLiteral("The name \"<i>a\" cannot be used.\nTry another."));
}

TEST_F(OutsideNamesTest, ALineBreakInANameIsToldInABoxOfTheToolkit) {
    QMessageBox box(QMessageBox::NoIcon, QString(),
                    QStringLiteral("a\nDo you want to delete it anyway?\nb\nFile not found.\n"
                                   "Please verify the correct file name was given."));

    box.show();

    EXPECT_EQ(box.text(), QStringLiteral("a[U+000A]Do you want to delete it anyway?[U+000A]b\n"
                                         "File not found.\n"
                                         "Please verify the correct file name was given."));
}

/// The size of a box of the program's with that text, and whether its button is on the screen.
struct BoxOnScreen {
    QSize size;
    bool fits = false;
    QString text;
};

BoxOnScreen boxWith(QtMachine& machine, const std::string& text) {
    BoxOnScreen shown;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            shown.size = box->size();
            shown.fits = box->screen()->availableSize().width() >= box->width() &&
                         box->screen()->availableSize().height() >= box->height();
            shown.text = box->text();
            box->close();
        }
    });
    look.start(5);
    machine.desktop.messageBox({.text = text, .caption = "T"});
    return shown;
}

TEST_F(OutsideNamesTest, ABoxOfThousandsOfLinesFitsTheScreenWithBothEndsOfItsText) {
    std::string lines;
    for (int i = 0; i < 2000; ++i) {
        lines += "x\n";
    }

    const BoxOnScreen shown = boxWith(machine, "Warning:\r" + lines + "\rTry help.");

    EXPECT_TRUE(shown.fits) << shown.size.width() << " x " << shown.size.height();
    EXPECT_TRUE(shown.text.startsWith(QStringLiteral("Warning:\nx\n")));
    EXPECT_TRUE(shown.text.endsWith(QStringLiteral("\nTry help.")));
    EXPECT_TRUE(shown.text.contains(QStringLiteral("\n...\n")));
}

TEST_F(OutsideNamesTest, ABoxOfAWordOfThousandsOfWideLettersFitsTheScreen) {
    const BoxOnScreen shown =
        boxWith(machine, "Warning:\r" + std::string(3000, 'W') + "\rTry help.");

    EXPECT_TRUE(shown.fits) << shown.size.width() << " x " << shown.size.height();
    EXPECT_TRUE(shown.text.endsWith(QStringLiteral("\nTry help.")));
}

TEST_F(OutsideNamesTest, AToolTipIsPlain) {
    QToolTip::showText(QPoint(1, 1), QStringLiteral("/data/<h1>folder"));

    const QLabel* tip = nullptr;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        tip = window->inherits("QTipLabel") ? qobject_cast<const QLabel*>(window) : tip;
    }

    ASSERT_NE(tip, nullptr);
    EXPECT_EQ(tip->textFormat(), Qt::PlainText);
}

} // namespace
} // namespace tarvik
