#include "support/FormOn.h"
#include "support/MemorySheet.h"

#include "controls/ChartPalette.h"
#include "support/ChartForm.h"
#include "support/Win32Machine.h"
#include "support/Win32Windows.h"
#include "windows/face/ControlIds.h"

#include <commctrl.h>

#include <gtest/gtest.h>

#include <array>

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
    HWND find(const Control& control) const {
        return GetDlgItem(window(), face::controlId(control));
    }
    HWND chart() const { return find(form.chtValues); }

    SIZE chartSize() const {
        RECT area{};
        GetClientRect(chart(), &area);
        return {area.right, area.bottom};
    }

    Pixels picture() const {
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

TEST_F(ChartFaceTest, TheChartIsPainted) {
    const Colour line = ChartPalette::on({255, 255, 255}, {0, 0, 0}).columns[0];
    const auto colour = static_cast<std::uint32_t>(line.red << 16 | line.green << 8 | line.blue);
    const auto before = picture().countOf(colour);

    form.fill(24);

    EXPECT_GT(picture().countOf(colour), before + 100);
}

TEST_F(ChartFaceTest, ThePictureComesToTheScreen) {
    form.fill(24);

    UpdateWindow(chart());

    EXPECT_EQ(screen(), picture());
}

TEST_F(ChartFaceTest, AMillionRowsArePainted) {
    const Pixels empty = picture();

    form.fill(1'000'000);

    EXPECT_GT(differingPart(picture(), empty), 0.05);
}

TEST_F(ChartFaceTest, TheChartGrowsWithTheWindow) {
    const SIZE before = chartSize();
    RECT outer{};
    GetWindowRect(window(), &outer);

    SetWindowPos(window(), nullptr, 0, 0, outer.right - outer.left + 100,
                 outer.bottom - outer.top + 50, SWP_NOMOVE | SWP_NOZORDER);

    EXPECT_EQ(chartSize().cx, before.cx + 100);
    EXPECT_EQ(chartSize().cy, before.cy + 50);
    RECT stale{};
    GetUpdateRect(chart(), &stale, FALSE);
    EXPECT_EQ(stale.right - stale.left, chartSize().cx);
    EXPECT_EQ(stale.bottom - stale.top, chartSize().cy);
}

TEST_F(ChartFaceTest, KeysMoveTheReading) {
    form.fill(100);

    EXPECT_EQ(rowAfter(VK_RIGHT), 0);
    EXPECT_EQ(rowAfter(VK_RIGHT), 1);
    EXPECT_EQ(rowAfter(VK_LEFT), 0);
    EXPECT_EQ(rowAfter(VK_NEXT), 5);
    EXPECT_EQ(rowAfter(VK_PRIOR), 0);
    EXPECT_EQ(rowAfter(VK_END), 99);
    EXPECT_EQ(rowAfter(VK_HOME), 0);
}

TEST_F(ChartFaceTest, ArrowKeysStayInTheChart) {
    form.fill(100);
    SetFocus(chart());

    press(VK_RIGHT);

    EXPECT_EQ(GetFocus(), chart());
    EXPECT_EQ(form.chtValues.readRow(), 0);
}

TEST_F(ChartFaceTest, WhatIsReadIsPainted) {
    form.fill(24);
    const Pixels before = picture();

    rowAfter(VK_HOME);
    const Pixels first = picture();
    rowAfter(VK_END);

    EXPECT_NE(first, before);
    EXPECT_NE(picture(), first);
}

TEST_F(ChartFaceTest, ThePointerReadsRowAfterRow) {
    form.fill(24);
    picture();
    std::vector<int> rows;
    for (int x = 0; x < chartSize().cx; ++x) {
        movePointer(x);
        if (rows.empty() || rows.back() != form.chtValues.readRow()) {
            rows.push_back(form.chtValues.readRow());
        }
    }

    std::vector<int> expected{Chart::none};
    for (int row = 0; row < 24; ++row) {
        expected.push_back(row);
    }
    expected.push_back(Chart::none);
    EXPECT_EQ(rows, expected);
}

TEST_F(ChartFaceTest, NothingIsReadWhenThePointerHasLeft) {
    form.fill(24);
    picture();
    movePointer(chartSize().cx / 2);
    EXPECT_NE(form.chtValues.readRow(), Chart::none);

    SendMessageA(chart(), WM_MOUSELEAVE, 0, 0);

    EXPECT_EQ(form.chtValues.readRow(), Chart::none);
}

TEST_F(ChartFaceTest, APointerThatRestsLeavesTheReadingToTheKeys) {
    form.fill(24);
    picture();
    movePointer(chartSize().cx / 2);
    rowAfter(VK_HOME);

    movePointer(chartSize().cx / 2);

    EXPECT_EQ(form.chtValues.readRow(), 0);
}

TEST_F(ChartFaceTest, AClickTakesTheFocusThere) {
    SetFocus(find(form.cmdOk));

    SendMessageA(chart(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));

    EXPECT_EQ(GetFocus(), chart());
}

TEST_F(ChartFaceTest, TheTabKeyComesAndGoes) {
    SetFocus(chart());

    press(VK_TAB);
    EXPECT_EQ(GetFocus(), find(form.cmdOk));
    EXPECT_NE(GetWindowLongA(chart(), GWL_STYLE) & WS_TABSTOP, 0);
}

TEST_F(ChartFaceTest, TheFocusIsSeen) {
    SendMessageA(window(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
    SetFocus(find(form.cmdOk));
    const Pixels without = picture();

    SetFocus(chart());

    const double differing = differingPart(picture(), without);
    EXPECT_GT(differing, 0);
    EXPECT_LT(differing, 0.02);
}

TEST_F(ChartFaceTest, EnterAndEscapeReachTheButtons) {
    std::string clicks;
    form.cmdOk.Click.connect([&] { clicks += "OK "; });
    form.cmdCancel.Click.connect([&] { clicks += "Cancel "; });
    SetFocus(chart());

    press(VK_RETURN);
    press(VK_ESCAPE);

    EXPECT_EQ(clicks, "OK Cancel ");
}

TEST_F(ChartFaceTest, AScreenReaderKnowsTheTitleWhatIsDrawnAndWhatIsRead) {
    form.fill(24);

    EXPECT_EQ(textOf(chart()), "Traffic. Line chart; 1 to 24, 24 in all; from 100 to 123");
    rowAfter(VK_HOME);
    EXPECT_EQ(textOf(chart()), "Traffic. 1: 100");
    form.chtValues.setTitle("Cost");
    EXPECT_EQ(textOf(chart()), "Traffic. 1: 100"); // the values are still those of the traffic
    form.fill(10);
    EXPECT_EQ(textOf(chart()), "Cost. Line chart; 1 to 10, 10 in all; from 100 to 109");
    form.chtValues.setEmptyText("Press OK.");
    form.fill(0);
    EXPECT_EQ(textOf(chart()), "Cost. Press OK.");
}

/// The system's colours of windows and their text, for a while.
class SystemColours {
public:
    SystemColours(COLORREF background, COLORREF text) {
        const std::array<COLORREF, 2> colours{background, text};
        SetSysColors(2, places.data(), colours.data());
    }
    ~SystemColours() { SetSysColors(2, places.data(), before_.data()); }
    SystemColours(const SystemColours&) = delete;
    SystemColours& operator=(const SystemColours&) = delete;

private:
    static constexpr std::array<INT, 2> places{COLOR_WINDOW, COLOR_WINDOWTEXT};
    std::array<COLORREF, 2> before_{GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_WINDOWTEXT)};
};

TEST_F(ChartFaceTest, DarkColoursMakeADarkPicture) {
    form.fill(24);
    const Pixels light = picture();
    settle();
    UpdateWindow(chart());

    const SystemColours dark(RGB(30, 32, 34), RGB(220, 220, 220));
    SendMessageA(window(), WM_SYSCOLORCHANGE, 0, 0);

    EXPECT_TRUE(GetUpdateRect(chart(), nullptr, FALSE)) << "it is to be painted anew";
    EXPECT_EQ(picture().at(2, 2), 0x1E2022U);
    EXPECT_GT(differingPart(picture(), light), 0.9);
}

TEST_F(ChartFaceTest, ProgressIsShown) {
    const auto shown = [this] { return SendMessageA(find(form.prgDone), PBM_GETPOS, 0, 0); };
    EXPECT_EQ(classOf(find(form.prgDone)), PROGRESS_CLASSA);
    EXPECT_EQ(shown(), 0);
    EXPECT_EQ(SendMessageA(find(form.prgDone), PBM_GETRANGE, FALSE, 0), 100);

    form.prgDone.setValue(40);
    EXPECT_EQ(shown(), 40);

    form.prgDone.setValue(10);
    EXPECT_EQ(shown(), 10);
}

} // namespace
} // namespace tarvik
