#include "Win32FaceTest.h"
#include "contracts/FieldsForm.h"

namespace tarvik {
namespace {

/// A quiet window over the one in which the user works.
class QuietFormTest : public Win32FaceTest {
protected:
    QuietFormTest() {
        form.bringToFront();
        EXPECT_TRUE(spinUntil([this] { return GetActiveWindow() == window(); }));
        quiet.setVisible(true);
        settle();
    }
    ~QuietFormTest() override {
        quiet.unload();
        settle();
    }

    HWND quietWindow() const { return ownWindow("frmAside"); }

    /// Whether one stands before the other.
    static bool isBefore(HWND front, HWND behind) {
        HWND next = front;
        while (next != nullptr && next != behind) {
            next = GetWindow(next, GW_HWNDNEXT);
        }
        return next == behind;
    }

    FormOn<AsideForm> quiet{machine.platform.desktop, true};
};

TEST_F(QuietFormTest, ItStandsBeforeTheOthersAndIsNotActive) {
    EXPECT_TRUE(isBefore(quietWindow(), window()));
    EXPECT_EQ(GetActiveWindow(), window());
}

TEST_F(QuietFormTest, ItComesToTheFrontAgainWithoutBecomingActive) {
    SetWindowPos(window(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    ASSERT_TRUE(isBefore(window(), quietWindow()));

    quiet.bringToFront();
    settle();

    EXPECT_TRUE(isBefore(quietWindow(), window()));
    EXPECT_EQ(GetActiveWindow(), window());
}

TEST_F(QuietFormTest, ItIsRestoredBeforeTheOthersWithoutBecomingActive) {
    quiet.setMinimised(true);
    settle();
    ASSERT_TRUE(IsIconic(quietWindow()));

    quiet.setVisible(true);
    settle();

    EXPECT_FALSE(IsIconic(quietWindow()));
    EXPECT_TRUE(isBefore(quietWindow(), window()));
    EXPECT_EQ(GetActiveWindow(), window());
}

} // namespace
} // namespace tarvik
