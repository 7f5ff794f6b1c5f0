#include "controls/Form.h"
#include "linux/face/Palette.h"
#include "support/FormOn.h"
#include "support/QtMachine.h"
#include "support/ThrowAwayForm.h"
#include "types/RunTimeError.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

#include <csignal>
#include <thread>

namespace tarvik {
namespace {

class FaceTest : public testing::Test {
protected:
    FaceTest() { form.load(); }
    ~FaceTest() override {
        // What the handlers of the test wrote to is gone.
        form.QueryUnload.connect({});
        form.Unload.connect({});
        form.unload();
    }

    template <class Widget>
    Widget* find(const char* name) {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (auto* found = window->findChild<Widget*>(QString::fromLatin1(name))) {
                return found;
            }
        }
        return nullptr;
    }

    QWidget* window() { return find<QPushButton>("cmdOk")->window(); }

    static bool spinUntil(const std::function<bool()>& condition) {
        QElapsedTimer passed;
        passed.start();
        while (!condition() && passed.elapsed() < 10'000) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        }
        return condition();
    }

    /// Presses that button of the next message box.
    void pressInBox(QMessageBox::StandardButton button,
                    std::function<void(QMessageBox&)> look = {}) {
        auto* watch = new QTimer(&desktop);
        QObject::connect(watch, &QTimer::timeout, watch, [watch, button, look] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                watch->stop();
                if (look) {
                    look(*box);
                }
                box->button(button)->click();
            }
        });
        watch->start(5);
    }

    QtMachine machine;
    face::QtDesktop& desktop = machine.desktop;
    FormOn<ThrowAwayForm> form{machine.platform.desktop};
};

TEST_F(FaceTest, EveryControlHasAWidgetWithItsName) {
    EXPECT_NE(find<QGroupBox>("frameAll"), nullptr);
    EXPECT_NE(find<QLabel>("lblName"), nullptr);
    EXPECT_NE(find<QLineEdit>("txtName"), nullptr);
    EXPECT_NE(find<QWidget>("picLamp"), nullptr);
    EXPECT_NE(find<QCheckBox>("chkTick"), nullptr);
    EXPECT_NE(find<QComboBox>("cboList"), nullptr);
    EXPECT_NE(find<QPushButton>("cmdOk"), nullptr);
    EXPECT_EQ(find<QPushButton>("cmdOk")->accessibleDescription(), QStringLiteral("id:cmdOk"));
    EXPECT_EQ(window()->windowTitle(), QStringLiteral("Throw-away"));
}

TEST_F(FaceTest, AControlThatIsEnabledAgainHasTheFocusAgain) {
    find<QPushButton>("cmdOk")->setFocus();

    form.cmdOk.setEnabled(false);
    EXPECT_NE(window()->focusWidget(), find<QPushButton>("cmdOk"));
    form.cmdOk.setEnabled(true);

    EXPECT_EQ(window()->focusWidget(), find<QPushButton>("cmdOk"));
}

TEST_F(FaceTest, AControlThatIsEnabledAgainLeavesTheFocusWhereTheUserPutIt) {
    find<QPushButton>("cmdOk")->setFocus();

    form.cmdOk.setEnabled(false);
    find<QLineEdit>("txtName")->setFocus();
    form.cmdOk.setEnabled(true);

    EXPECT_EQ(window()->focusWidget(), find<QLineEdit>("txtName"));
}

TEST_F(FaceTest, CaptionsMarkTheirMnemonicsAndNothingElse) {
    EXPECT_EQ(find<QGroupBox>("frameAll")->title(), QStringLiteral("All && sundry"));
    EXPECT_EQ(find<QLabel>("lblName")->text(), QStringLiteral("&Name:"));
    EXPECT_EQ(find<QLabel>("lblName")->buddy(), find<QLineEdit>("txtName"));
    EXPECT_EQ(find<QPushButton>("cmdCancel")->text(), QStringLiteral("&Cancel"));
    EXPECT_EQ(find<QPushButton>("cmdOk")->text(), QStringLiteral("OK"));
}

TEST_F(FaceTest, WidgetsFollowTheModel) {
    form.txtName.setText("second");
    form.lblName.setCaption("Other:");
    form.chkTick.setValue(1);
    form.cboList.addItem("a");
    form.cboList.addItem("b");
    form.cboList.setListIndex(1);
    form.cmdOk.setCaption("Go");
    form.cmdOk.setEnabled(false);
    form.chkTick.setVisible(false);
    form.txtName.setToolTip("other tip");

    EXPECT_EQ(find<QLineEdit>("txtName")->text(), QStringLiteral("second"));
    EXPECT_EQ(find<QLabel>("lblName")->text(), QStringLiteral("Other:"));
    EXPECT_TRUE(find<QCheckBox>("chkTick")->isChecked());
    EXPECT_EQ(find<QComboBox>("cboList")->currentText(), QStringLiteral("b"));
    EXPECT_EQ(find<QPushButton>("cmdOk")->text(), QStringLiteral("Go"));
    EXPECT_FALSE(find<QPushButton>("cmdOk")->isEnabled());
    EXPECT_TRUE(find<QCheckBox>("chkTick")->isHidden());
    EXPECT_EQ(find<QLineEdit>("txtName")->toolTip(), QStringLiteral("other tip"));
}

TEST_F(FaceTest, TheModelFollowsTheUser) {
    int changes = 0;
    int clicks = 0;
    form.cboList.addItem("a");
    form.txtName.Change.connect([&] { ++changes; });
    form.cmdOk.Click.connect([&] { ++clicks; });

    emit find<QLineEdit>("txtName")->textEdited(QStringLiteral("typed"));
    find<QCheckBox>("chkTick")->click();
    find<QComboBox>("cboList")->setCurrentIndex(0);
    find<QPushButton>("cmdOk")->click();

    EXPECT_EQ(form.txtName.text(), "typed");
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(form.chkTick.ticked());
    EXPECT_EQ(form.cboList.listIndex(), 0);
    EXPECT_EQ(clicks, 1);
}

TEST_F(FaceTest, WhatTheModelTellsDoesNotComeBackAsTheUsersDoing) {
    int ticks = 0;
    form.chkTick.Click.connect([&] { ++ticks; });
    form.cboList.addItem("a");
    form.cboList.addItem("b");
    int chosen = 0;
    form.cboList.Click.connect([&] { ++chosen; });

    form.chkTick.setValue(1);
    form.cboList.setListIndex(1);
    form.cboList.clear();

    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(chosen, 1);
    EXPECT_EQ(form.cboList.listIndex(), -1);
}

TEST_F(FaceTest, AHandlerThatChangesWhatTheUserDidIsFollowed) {
    form.chkTick.Click.connect([&] { form.chkTick.setValue(0); });

    find<QCheckBox>("chkTick")->click();

    EXPECT_FALSE(find<QCheckBox>("chkTick")->isChecked());
}

TEST_F(FaceTest, AFormIsShownHiddenAndMinimised) {
    EXPECT_FALSE(window()->isVisible());
    form.setVisible(true);
    QCoreApplication::processEvents();
    EXPECT_TRUE(window()->isVisible());
    form.setMinimised(true);
    QCoreApplication::processEvents();
    EXPECT_TRUE(window()->isMinimized());
    form.setVisible(true);
    QCoreApplication::processEvents();
    EXPECT_FALSE(window()->isMinimized());
    form.setVisible(false);
    QCoreApplication::processEvents();
    EXPECT_FALSE(window()->isVisible());
}

TEST_F(FaceTest, AFormThatIsPutAsideAtOnceIsNeverSeen) {
    form.setVisible(true);
    form.bringToFront();
    form.setMinimised(true);
    EXPECT_FALSE(window()->isVisible());

    QCoreApplication::processEvents();

    EXPECT_TRUE(window()->isMinimized());
    EXPECT_TRUE(form.minimised());
}

TEST_F(FaceTest, ABoxShowsItsTextInLinesAndGivesTheAnswer) {
    pressInBox(QMessageBox::No, [](const QMessageBox& box) {
        EXPECT_EQ(box.text(), QStringLiteral("one\ntwo\nthree <b>"));
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.icon(), QMessageBox::Question);
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Title"));
    });

    EXPECT_EQ(desktop.messageBox({.text = "one\rtwo\r\nthree <b>",
                                  .buttons = MsgBoxButtons::YesNo,
                                  .icon = MsgBoxIcon::Question,
                                  .caption = "Title"}),
              MsgBoxAnswer::No);
}

class PutAsideForm : public Form {
public:
    PutAsideForm() : Form("frmPutAside", "Put aside") {
        setLayout(column({item(cmdAside)}));
        setEscapeCloses();
    }
    CommandButton cmdAside{*this, "cmdAside", {.caption = "Aside"}};
};

TEST_F(FaceTest, WithoutACancelButtonEscapeDoesWhatTheCloseBoxDoes) {
    FormOn<PutAsideForm> aside{machine.platform.desktop};
    std::vector<UnloadMode> modes;
    aside.QueryUnload.connect([&](bool& cancel, UnloadMode mode) {
        modes.push_back(mode);
        cancel = mode == UnloadMode::FormControlMenu;
    });
    aside.setVisible(true);
    QCoreApplication::processEvents();
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);

    QCoreApplication::sendEvent(find<QPushButton>("cmdAside"), &escape);

    EXPECT_EQ(modes, std::vector<UnloadMode>{UnloadMode::FormControlMenu});
    aside.unload();
}

struct EscapeCase {
    MsgBoxButtons buttons;
    MsgBoxAnswer answer;
};

class EscapeTest : public FaceTest, public testing::WithParamInterface<EscapeCase> {};

TEST_P(EscapeTest, ClosingABoxDeclines) {
    QTimer::singleShot(50, qApp, [] { QApplication::activeModalWidget()->close(); });

    EXPECT_EQ(desktop.messageBox({.text = "?", .buttons = GetParam().buttons, .caption = "T"}),
              GetParam().answer);
}

INSTANTIATE_TEST_SUITE_P(All, EscapeTest,
                         testing::Values(EscapeCase{MsgBoxButtons::OkOnly, MsgBoxAnswer::Ok},
                                         EscapeCase{MsgBoxButtons::OkCancel, MsgBoxAnswer::Cancel},
                                         EscapeCase{MsgBoxButtons::YesNo, MsgBoxAnswer::No},
                                         EscapeCase{MsgBoxButtons::YesNoCancel,
                                                    MsgBoxAnswer::Cancel}));

TEST_F(FaceTest, ATimerTicksWhileItIsEnabled) {
    int ticks = 0;
    form.timTick.Tick.connect([&] { ++ticks; });
    form.timTick.setInterval(1);
    form.timTick.setEnabled(true);

    EXPECT_TRUE(spinUntil([&] { return ticks >= 3; }));

    form.timTick.setEnabled(false);
    const int before = ticks;
    spinUntil([end = QDeadlineTimer(30)] { return end.hasExpired(); });
    EXPECT_EQ(ticks, before);
}

TEST_F(FaceTest, WhileABoxIsOpenNoTimerTicks) {
    int ticks = 0;
    form.timTick.Tick.connect([&] { ++ticks; });
    form.timTick.setInterval(1);
    form.timTick.setEnabled(true);
    int ticksAtTheEnd = -1;
    QTimer::singleShot(100, qApp, [&] {
        ticksAtTheEnd = ticks;
        QApplication::activeModalWidget()->close();
    });

    desktop.messageBox({.text = "?", .caption = "T"});

    EXPECT_EQ(ticksAtTheEnd, 0);
}

TEST_F(FaceTest, WhileACallBlocksTheWindowIsPaintedButTakesNoInput) {
    form.setVisible(true);
    int clicks = 0;
    form.cmdOk.Click.connect([&] { ++clicks; });
    bool painted = false;
    auto* button = find<QPushButton>("cmdOk");
    QTimer::singleShot(10, qApp, [&] {
        button->click();
        const QPointF middle = button->rect().center();
        QMouseEvent press(QEvent::MouseButtonPress, middle, button->mapToGlobal(middle),
                          Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(button, &press);
        painted = true;
        EXPECT_NE(QApplication::overrideCursor(), nullptr);
        EXPECT_FALSE(button->isDown());
    });
    std::thread::id worker;

    desktop.runBlocking([&] {
        worker = std::this_thread::get_id();
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    });

    EXPECT_TRUE(painted);
    EXPECT_EQ(clicks, 0);
    EXPECT_NE(worker, std::this_thread::get_id());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(FaceTest, WhatABlockingCallThrowsIsThrownToTheCaller) {
    EXPECT_THROW(desktop.runBlocking([] { raise(ErrorNumber::Overflow); }), RunTimeError);
}

TEST_F(FaceTest, AFormMayBeWithdrawnByItsOwnHandler) {
    form.cmdOk.Click.connect([&] { form.unload(); });
    auto* button = find<QPushButton>("cmdOk");
    const QPointer<QWidget> shownWindow = button->window();

    button->click();

    EXPECT_FALSE(shownWindow.isNull());
    form.txtName.setText("nobody shows this");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(shownWindow.isNull());
}

TEST_F(FaceTest, RunEndsWhenNoFormIsLeft) {
    QTimer::singleShot(10, qApp, [this] { form.unload(); });

    desktop.run();
    desktop.run(); // nothing is realised: returns at once

    SUCCEED();
}

TEST_F(FaceTest, TabsFollowTheLayout) {
    std::vector<QString> order;
    for (QWidget* widget = find<QLineEdit>("txtName"); order.size() < 5;
         widget = widget->nextInFocusChain()) {
        if (widget->focusPolicy() != Qt::NoFocus &&
            !widget->objectName().startsWith(QStringLiteral("qt_"))) {
            order.push_back(widget->objectName());
        }
    }

    EXPECT_EQ(order, (std::vector<QString>{QStringLiteral("txtName"), QStringLiteral("chkTick"),
                                           QStringLiteral("cboList"), QStringLiteral("cmdOk"),
                                           QStringLiteral("cmdCancel")}));
}

TEST(PaletteTest, BlackIsThePalettesOwnColour) {
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(40, 40, 40));
    dark.setColor(QPalette::WindowText, QColor(230, 230, 230));

    EXPECT_EQ(face::readableColour({0, 0, 0}, dark), QColor(230, 230, 230));
}

TEST(PaletteTest, AColourIsMadeReadableOnLightAndDark) {
    for (const int shade : {0, 40, 128, 240, 255}) {
        QPalette palette;
        palette.setColor(QPalette::Window, QColor(shade, shade, shade));
        const QColor red = face::readableColour({192, 0, 0}, palette);

        EXPECT_GE(face::contrastRatio(red, palette.color(QPalette::Window)), 4.5) << shade;
    }
}

TEST(PaletteTest, AReadableColourStaysAsItIs) {
    QPalette light;
    light.setColor(QPalette::Window, QColor(240, 240, 240));

    EXPECT_EQ(face::readableColour({192, 0, 0}, light), QColor(192, 0, 0));
}

} // namespace
} // namespace tarvik
