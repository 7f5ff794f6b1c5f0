#include "controls/Form.h"
#include "linux/face/EndSignals.h"
#include "support/FormOn.h"
#include "support/QtMachine.h"
#include "support/QtWidgets.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

#include <gtest/gtest.h>

#include <csignal>

namespace tarvik {
namespace {

class PlainForm : public Form {
public:
    PlainForm() : Form("frmPlain", "Plain") { setLayout(column({item(cmdOk)})); }
    CommandButton cmdOk{*this, "cmdOk", {.caption = "OK"}};
};

class EndOfSessionTest : public testing::Test {
protected:
    EndOfSessionTest() {
        form.QueryUnload.connect([this](bool&, UnloadMode mode) { modes.push_back(mode); });
        form.Unload.connect([this] { ++unloads; });
        form.load();
    }

    /// The form's own window; null when there is none.
    static QWidget* window() { return windowNamed("frmPlain"); }

    /// A lost display leaves the windows where they are.
    static void deleteWindows() {
        while (QWidget* left = window()) {
            delete left;
        }
    }

    QtMachine machine;
    face::QtDesktop& desktop = machine.desktop;
    FormOn<PlainForm> form{machine.platform.desktop};
    std::vector<UnloadMode> modes;
    int unloads = 0;
};

TEST_F(EndOfSessionTest, ABoxOnTheWayIsWrittenInsteadOfShown) {
    form.Unload.connect([this] {
        EXPECT_EQ(desktop.messageBox(
                      {.text = "Save?\rNow?", .buttons = MsgBoxButtons::YesNo, .caption = "T"}),
                  MsgBoxAnswer::No);
    });
    testing::internal::CaptureStderr();

    desktop.endSession();

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "T Save?\nNow?\n");
}

TEST_F(EndOfSessionTest, WithoutADisplayEveryFormIsUnloadedAndNoWindowTouched) {
    form.setVisible(true);
    QCoreApplication::processEvents();
    const QPointer<QWidget> shown = window();
    ASSERT_TRUE(shown->isVisible());

    desktop.loseDisplay();

    EXPECT_EQ(modes, std::vector<UnloadMode>{UnloadMode::AppWindows});
    EXPECT_EQ(unloads, 1);
    EXPECT_FALSE(form.loaded());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_FALSE(shown.isNull());
    EXPECT_TRUE(shown->isVisible());
    deleteWindows();
}

TEST_F(EndOfSessionTest, ADisplayThatIsLostOnTheWayDoesNotKeepTheRestFromTheEnd) {
    FormOn<PlainForm> second{machine.platform.desktop};
    second.load();
    int others = 0;
    second.Unload.connect([&] { ++others; });
    form.Unload.connect([this] {
        ++unloads;
        desktop.loseDisplay();
    });

    desktop.endSession();

    EXPECT_EQ(unloads, 1);
    EXPECT_EQ(others, 1);
    deleteWindows();
}

TEST_F(EndOfSessionTest, WithoutADisplayNoBoxIsShown) {
    desktop.loseDisplay();
    testing::internal::CaptureStderr();

    EXPECT_EQ(desktop.messageBox({.text = "?", .buttons = MsgBoxButtons::OkCancel, .caption = "T"}),
              MsgBoxAnswer::Cancel);

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "T ?\n");
    deleteWindows();
}

TEST_F(EndOfSessionTest, TheSignalsThatEndAProcessEndTheSession) {
    const face::EndSignals watch([this] { desktop.endSession(); });
    QTimer::singleShot(10, qApp, [] { std::raise(SIGTERM); });

    desktop.run();

    EXPECT_EQ(unloads, 1);
}

} // namespace
} // namespace tarvik
