#include "linux/face/EndSignals.h"
#include "support/QtMachine.h"
#include "ui/controls/Form.h"

#include <QApplication>
#include <QMessageBox>
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
        form.Unload.connect([this] {
            desktop.messageBox({.text = "not shown", .caption = "T"});
            ++unloads;
        });
        form.load();
    }

    QtMachine machine;
    face::QtDesktop& desktop = machine.desktop;
    PlatformScope scope{machine.platform};
    PlainForm form;
    std::vector<UnloadMode> modes;
    int unloads = 0;
};

TEST_F(EndOfSessionTest, EveryFormIsUnloadedOnceAndTheProgramEnds) {
    QTimer::singleShot(10, qApp, [this] {
        desktop.endSession();
        desktop.endSession();
    });

    desktop.run();

    EXPECT_EQ(modes, std::vector<UnloadMode>{UnloadMode::AppWindows});
    EXPECT_EQ(unloads, 1);
    EXPECT_FALSE(form.loaded());
}

TEST_F(EndOfSessionTest, AnOpenBoxIsClosedAsIfDeclined) {
    QTimer::singleShot(50, qApp, [this] { desktop.endSession(); });

    EXPECT_EQ(desktop.messageBox({.text = "?", .buttons = MsgBoxButtons::YesNo, .caption = "T"}),
              MsgBoxAnswer::No);

    EXPECT_EQ(unloads, 1);
}

TEST_F(EndOfSessionTest, AfterwardsNoWindowIsMade) {
    desktop.endSession();

    form.setVisible(true);

    EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty() ||
                !QApplication::topLevelWidgets().front()->isVisible());
    desktop.run();
}

TEST_F(EndOfSessionTest, TheSignalsThatEndAProcessEndTheSession) {
    const face::EndSignals watch([this] { desktop.endSession(); });
    QTimer::singleShot(10, qApp, [] { std::raise(SIGTERM); });

    desktop.run();

    EXPECT_EQ(unloads, 1);
}

} // namespace
} // namespace tarvik
