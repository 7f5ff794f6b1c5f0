#include "SystemColours.h"

#include "support/FormOn.h"
#include "support/MemorySheet.h"

#include "support/ChartForm.h"
#include "support/Win32Machine.h"
#include "support/Win32Windows.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

class ChartFaceTest : public testing::Test {
protected:
    ChartFaceTest() {
        form.setVisible(true);
        settle();
    }
    ~ChartFaceTest() override {
        form.unload();
        settle();
    }

    void settle() { machine.desktop.processEvents(); }
    HWND window() const { return ownWindow("frmChart"); }
    HWND chart() const { return windowOf(form.chtValues); }

    SIZE chartSize() const {
        RECT area{};
        GetClientRect(chart(), &area);
        return {area.right, area.bottom};
    }

    Pixels image() const {
        const SIZE size = chartSize();
        const MemorySheet sheet(size.cx, size.cy);
        SendMessageA(chart(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(sheet.context()),
                     PRF_CLIENT);
        return sheet.pixels();
    }

    /// What lies on the screen.
    Pixels screen() const {
        const SIZE size = chartSize();
        const MemorySheet sheet(size.cx, size.cy);
        const HDC context = GetDC(chart());
        BitBlt(sheet.context(), 0, 0, size.cx, size.cy, context, 0, 0, SRCCOPY);
        ReleaseDC(chart(), context);
        return sheet.pixels();
    }

    int rowAfter(WPARAM key) const {
        SendMessageA(chart(), WM_KEYDOWN, key, 1);
        return form.chtValues.readRow();
    }

    /// A key as the loop of messages hands it on.
    void press(WPARAM key) {
        PostMessageA(chart(), WM_KEYDOWN, key, 1);
        settle();
    }

    void movePointer(int x) const {
        SendMessageA(chart(), WM_MOUSEMOVE, 0, MAKELPARAM(x, chartSize().cy / 2));
    }

    Win32Machine machine;
    FormOn<ChartForm> form{machine.platform.desktop};
};

TEST_F(ChartFaceTest, TheImageComesToTheScreen) {
    form.fill(24);

    UpdateWindow(chart());

    EXPECT_EQ(screen(), image());
}

TEST_F(ChartFaceTest, AChartThatHasGrownIsPaintedWhole) {
    RECT outer{};
    GetWindowRect(window(), &outer);

    SetWindowPos(window(), nullptr, 0, 0, outer.right - outer.left + 100,
                 outer.bottom - outer.top + 50, SWP_NOMOVE | SWP_NOZORDER);

    RECT stale{};
    GetUpdateRect(chart(), &stale, FALSE);
    EXPECT_EQ(stale.right - stale.left, chartSize().cx);
    EXPECT_EQ(stale.bottom - stale.top, chartSize().cy);
}

TEST_F(ChartFaceTest, ArrowKeysStayInTheChart) {
    form.fill(100);
    SetFocus(chart());

    press(VK_RIGHT);

    EXPECT_EQ(GetFocus(), chart());
    EXPECT_EQ(form.chtValues.readRow(), 0);
}

TEST_F(ChartFaceTest, APointerThatRestsLeavesTheReadingToTheKeys) {
    form.fill(24);
    image();
    movePointer(chartSize().cx / 2);
    rowAfter(VK_HOME);

    movePointer(chartSize().cx / 2);

    EXPECT_EQ(form.chtValues.readRow(), 0);
}

TEST_F(ChartFaceTest, AClickTakesTheFocusThere) {
    SetFocus(windowOf(form.cmdOk));

    SendMessageA(chart(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));

    EXPECT_EQ(GetFocus(), chart());
}

TEST_F(ChartFaceTest, TheTabKeyComesAndGoes) {
    SetFocus(chart());

    press(VK_TAB);
    EXPECT_EQ(GetFocus(), windowOf(form.cmdOk));
    EXPECT_NE(GetWindowLongA(chart(), GWL_STYLE) & WS_TABSTOP, 0);
}

TEST_F(ChartFaceTest, OtherColoursOfTheSystemLetItBePaintedAnew) {
    form.fill(24);
    settle();
    UpdateWindow(chart());

    const SystemColours dark(RGB(30, 32, 34), RGB(220, 220, 220));
    SendMessageA(window(), WM_SYSCOLORCHANGE, 0, 0);

    EXPECT_TRUE(GetUpdateRect(chart(), nullptr, FALSE));
}

} // namespace
} // namespace tarvik
