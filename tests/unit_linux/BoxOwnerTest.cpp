#include "ProgramTest.h"

#include <QApplication>
#include <QComboBox>
#include <QWindow>

#include <vector>

namespace tarvik {
namespace {

/// What the window manager brings to the front while a list is open is noticed too.
class BoxOwnerTest : public ProgramTest {
protected:
    BoxOwnerTest() {
        answerBoxes([this](QMessageBox& box) {
            owners.push_back(box.parentWidget());
            pressIn(box, QMessageBox::Ok);
        });
    }

    /// As the program does it: the window manager has no part in what the desktop is asked for.
    MsgBoxAnswer ask() { return machine.desktop.messageBox({.text = "?", .caption = "Q"}); }

    std::vector<QWidget*> owners;
};

TEST_F(BoxOwnerTest, ABoxStandsBeforeTheWindowThatCameToTheFrontWhileAListWasOpen) {
    QWidget* const history = &open(frmHistory());
    open(frmMain());
    frmMain().cboConnections.addItem("Harbour");
    auto& list = widget<QComboBox>(frmMain().cboConnections);
    list.showPopup();
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);

    frmHistory().bringToFront();
    ASSERT_TRUE(
        spinUntil([&] { return QGuiApplication::focusWindow() == history->windowHandle(); }));
    list.hidePopup();
    ask();

    EXPECT_EQ(owners, std::vector<QWidget*>{history});
}

} // namespace
} // namespace tarvik
