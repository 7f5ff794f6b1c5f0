#include "Win32FaceTest.h"

#include "forms/frmHistory.h"
#include "forms/frmMain.h"
#include "forms/frmOptions.h"
#include "forms/frmStatistics.h"

#include <array>
#include <map>

namespace tarvik {
namespace {

constexpr int plain = 96;
constexpr int fine = 144;

/// The forms of the program, each in a real window.
class FormLooksTest : public Win32FaceTest {
protected:
    void open(Form& shown, int resolution = plain) {
        shown.setVisible(true);
        settle();
        const HWND window = ownWindow(shown.name());
        ASSERT_NE(window, nullptr);
        if (resolution != plain) {
            constexpr UINT resolutionChanged = 0x02E0;
            const RECT place{.left = 0, .top = 0, .right = 200, .bottom = 100};
            SendMessageA(window, resolutionChanged, MAKEWPARAM(resolution, resolution),
                         reinterpret_cast<LPARAM>(&place));
            settle();
        }
    }

    void close(Form& shown) {
        shown.unload();
        settle();
    }

    static RECT placeOf(HWND window) {
        RECT rect{};
        GetWindowRect(window, &rect);
        return rect;
    }

    static std::array<int, 2> sizeOf(const Form& shown) {
        const RECT rect = placeOf(ownWindow(shown.name()));
        return {static_cast<int>(rect.right - rect.left), static_cast<int>(rect.bottom - rect.top)};
    }

    /// Where each control stands on the screen.
    static std::map<std::string, std::array<int, 4>> placesOf(const Form& shown) {
        std::map<std::string, std::array<int, 4>> places;
        for (const Control* control : controlsInOrder(*shown.layout())) {
            const RECT rect = placeOf(windowOf(*control));
            places[control->name()] = {static_cast<int>(rect.left), static_cast<int>(rect.top),
                                       static_cast<int>(rect.right), static_cast<int>(rect.bottom)};
        }
        return places;
    }

    /// The row of the screen in which the painted text of a window begins: the first that holds
    /// anything but the window's ground, so far inside.
    static int topOfText(HWND window, int inside) {
        RedrawWindow(window, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW);
        RECT area{};
        GetClientRect(window, &area);
        POINT origin{};
        ClientToScreen(window, &origin);
        const HDC context = GetDC(window);
        const COLORREF ground = GetPixel(context, area.right - 1 - inside, area.bottom - 1);
        int top = -1;
        for (int y = 0; y < area.bottom && top < 0; ++y) {
            for (int x = inside; x < area.right - inside && top < 0; ++x) {
                top = GetPixel(context, x, y) != ground ? y : -1;
            }
        }
        ReleaseDC(window, context);
        return origin.y + top;
    }
};

TEST_F(FormLooksTest, AWindowThatWasMinimisedComesBackAsLargeAsItWas) {
    FormOn<FrmMain> shown{machine.platform.desktop};
    ASSERT_NO_FATAL_FAILURE(open(shown));
    SetWindowPos(ownWindow(shown.name()), nullptr, 0, 0, 1, 1, SWP_NOMOVE | SWP_NOZORDER);
    const auto smallest = sizeOf(shown);

    shown.setMinimised(true);
    settle();
    shown.setVisible(true);
    settle();

    EXPECT_EQ(sizeOf(shown), smallest);
    close(shown);
}

TEST_F(FormLooksTest, StartingAndStoppingMonitoringMovesNothing) {
    for (const int resolution : {plain, fine}) {
        FormOn<FrmMain> main{machine.platform.desktop};
        ASSERT_NO_FATAL_FAILURE(open(main, resolution));
        const auto before = placesOf(main);

        main.cmdMonitor.setCaption("Stop Monitoring");
        main.lblMonitoring.setCaption("Monitoring: active");
        settle();

        EXPECT_EQ(placesOf(main), before);
        close(main);
    }
}

TEST_F(FormLooksTest, AnotherUnitMovesNothing) {
    FormOn<FrmMain> main{machine.platform.desktop};
    ASSERT_NO_FATAL_FAILURE(open(main));
    const auto before = placesOf(main);

    for (const std::string unit : {"(KBytes):", "(MBytes):", "(GBytes):"}) {
        main.lblTransferCurrent.setCaption("current " + unit);
        main.lblTransferTotal.setCaption("total " + unit);
        settle();
        EXPECT_EQ(placesOf(main), before) << unit;
    }
    close(main);
}

TEST_F(FormLooksTest, TheColumnsOfTheOptionsEndOnOneLine) {
    for (const int resolution : {plain, fine}) {
        FormOn<FrmOptions> options{machine.platform.desktop};
        ASSERT_NO_FATAL_FAILURE(open(options, resolution));

        EXPECT_EQ(placeOf(windowOf(options.frameMisc)).bottom,
                  placeOf(windowOf(options.frameTransferReset)).bottom);
        EXPECT_EQ(placeOf(windowOf(options.frameStartUp)).top,
                  placeOf(windowOf(options.frameWarnings)).top);
        close(options);
    }
}

TEST_F(FormLooksTest, TheOptionsCannotBeMaximised) {
    FormOn<FrmOptions> options{machine.platform.desktop};
    FormOn<FrmHistory> history{machine.platform.desktop};
    ASSERT_NO_FATAL_FAILURE(open(options));
    ASSERT_NO_FATAL_FAILURE(open(history));

    EXPECT_EQ(GetWindowLongA(ownWindow("frmOptions"), GWL_STYLE) & WS_MAXIMIZEBOX, 0);
    EXPECT_NE(GetWindowLongA(ownWindow("frmHistory"), GWL_STYLE) & WS_MAXIMIZEBOX, 0);
    close(options);
    close(history);
}

TEST_F(FormLooksTest, TheTextOfABoxStandsAsHighAsThatOfItsLabel) {
    for (const int resolution : {plain, fine}) {
        FormOn<FrmMain> main{machine.platform.desktop};
        ASSERT_NO_FATAL_FAILURE(open(main, resolution));
        main.lblDurationTotal.setCaption("HHHH");
        main.txtDurationTotal.setText("HHHH");
        settle();

        EXPECT_EQ(topOfText(windowOf(main.txtDurationTotal), 3),
                  topOfText(windowOf(main.lblDurationTotal), 0));
        close(main);
    }
}

/// Everything that is painted of a window.
std::vector<COLORREF> pixelsOf(HWND window) {
    UpdateWindow(window);
    RECT area{};
    GetClientRect(window, &area);
    std::vector<COLORREF> pixels;
    const HDC context = GetDC(window);
    for (int y = 0; y < area.bottom; ++y) {
        for (int x = 0; x < area.right; ++x) {
            pixels.push_back(GetPixel(context, x, y));
        }
    }
    ReleaseDC(window, context);
    return pixels;
}

TEST_F(FormLooksTest, ABoxThatOnlyShowsSomethingKnowsNothingOfTheMouse) {
    FormOn<FrmStatistics> statistics{machine.platform.desktop};
    ASSERT_NO_FATAL_FAILURE(open(statistics));
    const HWND box = windowOf(statistics.chkConnected);
    ASSERT_TRUE(spinUntil([&] { return GetFocus() == windowOf(statistics.chkActiveConnection); }));
    const auto before = pixelsOf(box);

    SendMessageA(box, WM_MOUSEMOVE, 0, MAKELPARAM(4, 4));
    EXPECT_EQ(pixelsOf(box), before);
    SendMessageA(box, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
    EXPECT_EQ(pixelsOf(box), before);
    SendMessageA(box, WM_LBUTTONUP, 0, MAKELPARAM(4, 4));

    EXPECT_EQ(GetFocus(), windowOf(statistics.chkActiveConnection));
    EXPECT_EQ(pixelsOf(box), before);
    close(statistics);
}

} // namespace
} // namespace tarvik
