#include "controls/Form.h"
#include "support/FormOn.h"
#include "support/QtMachine.h"
#include "support/QtWidgets.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QToolTip>

#include <gtest/gtest.h>

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
    OutsideNamesTest() {
        form.setVisible(true);
        takeQueued();
    }
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
