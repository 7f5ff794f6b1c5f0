#include "Waiting.h"
#include "forms/StatusLamp.h"
#include "forms/frmSysTray.h"
#include "linux/face/DrawingPainter.h"
#include "linux/face/LinuxNotificationArea.h"
#include "support/FormOn.h"
#include "support/QtMachine.h"
#include "support/QtWidgets.h"
#include "support/ThrowAwayForm.h"

#include <QApplication>
#include <QImage>

#include <gtest/gtest.h>

namespace tarvik {
namespace {

class HandleTest : public testing::Test {
protected:
    HandleTest() { form.load(); }
    ~HandleTest() override { form.unload(); }

    void show() {
        form.setVisible(true);
        ASSERT_TRUE(spinUntil([] { return windowNamed("frmThrowAway")->isActiveWindow(); }));
    }

    static constexpr std::uint32_t unknown = 4'000'000'000U;

    QtMachine machine;
    face::QtDesktop& desktop = machine.desktop;
    FormOn<ThrowAwayForm> form{machine.platform.desktop};
};

TEST_F(HandleTest, APictureIsKnownByItsNumber) {
    show();
    EXPECT_EQ(desktop.pictureOf(form.picLamp.hWnd()), &form.picLamp);
}

TEST_F(HandleTest, APictureOfAFormThatIsNeverSeenIsKnownToo) {
    FormOn<FrmSysTray> tray{machine.platform.desktop};
    tray.load();

    EXPECT_EQ(desktop.pictureOf(tray.picSysTrayHook.hWnd()), &tray.picSysTrayHook);

    tray.unload();
}

TEST_F(HandleTest, AnUnknownNumberIsNoPicture) {
    EXPECT_EQ(desktop.pictureOf(unknown), nullptr);
    EXPECT_EQ(desktop.pictureOf(0), nullptr);
}

TEST_F(HandleTest, AnotherControlIsNoPicture) {
    show();
    ASSERT_NE(form.txtName.hWnd(), 0U);

    EXPECT_EQ(desktop.pictureOf(form.txtName.hWnd()), nullptr);
}

TEST_F(HandleTest, AnUnloadedFormsPictureIsUnknown) {
    show();
    const std::uint32_t number = form.picLamp.hWnd();

    form.unload();

    EXPECT_EQ(desktop.pictureOf(number), nullptr);
    EXPECT_EQ(form.picLamp.hWnd(), 0U);
}

TEST_F(HandleTest, AFormThatIsLoadedAgainHasAnotherNumber) {
    const std::uint32_t number = form.hWnd();

    form.unload();
    form.load();

    EXPECT_NE(form.hWnd(), 0U);
    EXPECT_NE(form.hWnd(), number);
}

TEST_F(HandleTest, AWindowIsBroughtToTheFrontByItsNumber) {
    show();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(spinUntil([&] { return other.isActiveWindow(); }));

    EXPECT_TRUE(desktop.bringToFront(form.hWnd()));

    EXPECT_TRUE(spinUntil([] { return windowNamed("frmThrowAway")->isActiveWindow(); }));
}

TEST_F(HandleTest, TheNotificationAreaBringsAWindowToTheFront) {
    show();
    face::LinuxNotificationArea area(desktop);

    EXPECT_TRUE(area.SetForegroundWindow(form.hWnd()));
    EXPECT_FALSE(area.SetForegroundWindow(unknown));
}

TEST_F(HandleTest, AHiddenWindowIsNotBroughtToTheFront) {
    EXPECT_FALSE(desktop.bringToFront(form.hWnd()));

    EXPECT_FALSE(windowNamed("frmThrowAway")->isVisible());
}

TEST_F(HandleTest, AnUnknownWindowIsNotBroughtToTheFront) {
    show();

    EXPECT_FALSE(desktop.bringToFront(unknown));
    EXPECT_FALSE(desktop.bringToFront(form.picLamp.hWnd()));
}

TEST_F(HandleTest, AWindowOwnsWhatNamesItsNumber) {
    class OtherForm : public Form {
    public:
        OtherForm() : Form("frmOther", "Other") { setLayout(item(cmdOther)); }
        CommandButton cmdOther{*this, "cmdOther", {.caption = "Other"}};
    };
    FormOn<OtherForm> other{machine.platform.desktop};
    other.setVisible(true);
    ASSERT_TRUE(spinUntil([] { return windowNamed("frmOther")->isVisible(); }));
    show();

    EXPECT_EQ(desktop.ownerOf(other.hWnd()), windowNamed("frmOther"));

    other.unload();
}

TEST_F(HandleTest, TheWindowTheUserWorksInOwnsWhatNamesNone) {
    show();

    EXPECT_EQ(desktop.ownerOf(unknown), windowNamed("frmThrowAway"));
    EXPECT_EQ(desktop.ownerOf(0), windowNamed("frmThrowAway"));
}

TEST_F(HandleTest, AHiddenWindowOwnsNothing) {
    EXPECT_EQ(desktop.ownerOf(form.hWnd()), nullptr);
}

QImage imageOf(LampState state, int side) {
    return face::iconOf(statusLamp(state)).pixmap(side, side).toImage();
}

bool blank(const QImage& image) {
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) != 0) {
                return false;
            }
        }
    }
    return true;
}

TEST(TrayIconTest, AnIconHasTheSizesThatPanelsUse) {
    const QIcon icon = face::iconOf(statusLamp(LampState::Online));

    QList<QSize> sizes;
    for (const int side : {16, 22, 24, 32, 48, 64}) {
        sizes << QSize(side, side);
    }
    EXPECT_EQ(icon.availableSizes(), sizes);
}

TEST(TrayIconTest, AnIconIsSeenInEverySize) {
    for (const int side : {16, 22, 24, 32, 48, 64}) {
        const QImage image = imageOf(LampState::NotMonitoring, side);

        EXPECT_EQ(image.size(), QSize(side, side));
        EXPECT_FALSE(blank(image)) << side;
    }
}

TEST(TrayIconTest, AnEmptyDrawingIsABlankIcon) {
    EXPECT_TRUE(blank(face::iconOf({}).pixmap(16, 16).toImage()));
}

TEST(TrayIconTest, TheThreeLampsDifferInTheSmallestSize) {
    const QImage idle = imageOf(LampState::NotMonitoring, 16);
    const QImage waiting = imageOf(LampState::Waiting, 16);
    const QImage online = imageOf(LampState::Online, 16);

    EXPECT_NE(idle, waiting);
    EXPECT_NE(idle, online);
    EXPECT_NE(waiting, online);
}

} // namespace
} // namespace tarvik
