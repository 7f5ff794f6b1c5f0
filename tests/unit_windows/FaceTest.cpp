#include "Win32FaceTest.h"

#include "windows/face/ControlIds.h"
#include "windows/face/TextColour.h"

namespace tarvik {
namespace {

RECT placeOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect;
}

using FaceTest = Win32FaceTest;

TEST_F(FaceTest, EveryControlIsFoundByItsNumber) {
    for (const Control* control : form.controls()) {
        if (control->kind() != ControlKind::Timer) {
            EXPECT_NE(windowOf(*control), nullptr) << control->name();
            EXPECT_EQ(face::controlWithId(form, face::controlId(*control)), control);
        }
    }
    EXPECT_EQ(face::controlId(form.frameAll), 1000);
    EXPECT_EQ(face::controlWithId(form, 999), nullptr);
    EXPECT_EQ(face::controlWithId(form, 2000), nullptr);
    EXPECT_EQ(textOf(window()), "Throw-away");
}

TEST_F(FaceTest, ControlsAreTheSystemsOwn) {
    EXPECT_EQ(classOf(windowOf(form.frameAll)), "Button");
    EXPECT_EQ(classOf(windowOf(form.lblName)), "Static");
    EXPECT_EQ(classOf(windowOf(form.txtName)), "Edit");
    EXPECT_EQ(classOf(windowOf(form.chkTick)), "Button");
    EXPECT_EQ(classOf(windowOf(form.cboList)), "ComboBox");
    EXPECT_EQ(classOf(windowOf(form.cmdOk)), "Button");
}

TEST_F(FaceTest, BytesOfTheCodePageAreShownAsTheyAre) {
    form.txtName.setText("\xE9\xDF");

    EXPECT_EQ(textOf(windowOf(form.txtName)), "\xE9\xDF");
}

TEST_F(FaceTest, NoControlIsCutOffOrLiesOverAnother) {
    show();
    const RECT frame = placeOf(windowOf(form.frameAll));
    std::vector<RECT> seen;
    for (const Control* control : form.controls()) {
        if (control->kind() == ControlKind::Timer || control == &form.frameAll) {
            continue;
        }
        const RECT rect = placeOf(windowOf(*control));
        EXPECT_TRUE(rect.left >= frame.left && rect.right <= frame.right && rect.top >= frame.top &&
                    rect.bottom <= frame.bottom)
            << control->name();
        for (const RECT& other : seen) {
            RECT common{};
            EXPECT_FALSE(IntersectRect(&common, &rect, &other)) << control->name();
        }
        seen.push_back(rect);
    }
}

TEST_F(FaceTest, ALongerCaptionMakesRoomForItself) {
    show();
    const auto widthOf = [](const RECT& rect) { return rect.right - rect.left; };
    const auto before = widthOf(placeOf(window()));

    form.lblName.setCaption("A caption that is very much longer than the one that stood there:");
    settle();

    EXPECT_GT(widthOf(placeOf(window())), before);
}

TEST_F(FaceTest, TheWindowCannotBeMadeSmallerThanItsControls) {
    show();
    const RECT before = placeOf(window());

    SetWindowPos(window(), nullptr, 0, 0, 20, 20, SWP_NOMOVE | SWP_NOZORDER);

    const RECT after = placeOf(window());
    EXPECT_EQ(after.right - after.left, before.right - before.left);
    EXPECT_EQ(after.bottom - after.top, before.bottom - before.top);
}

TEST_F(FaceTest, AWindowOnAFinerScreenGrowsWithItsFont) {
    show();
    const RECT before = placeOf(windowOf(form.cmdOk));
    const RECT window = placeOf(this->window());
    constexpr UINT resolutionChanged = 0x02E0;
    constexpr int twice = 192;

    SendMessageA(this->window(), resolutionChanged, MAKEWPARAM(twice, twice),
                 reinterpret_cast<LPARAM>(&window));

    const RECT after = placeOf(windowOf(form.cmdOk));
    EXPECT_GT(after.bottom - after.top, (before.bottom - before.top) * 3 / 2);
}

TEST_F(FaceTest, ALabelTakesTheColourOfItsText) {
    show();
    form.lblPlain.setForeColour({192, 0, 0});
    const HDC context = GetDC(windowOf(form.lblPlain));

    SendMessageA(window(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
                 reinterpret_cast<LPARAM>(windowOf(form.lblPlain)));
    EXPECT_EQ(GetTextColor(context), RGB(192, 0, 0));
    SendMessageA(window(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
                 reinterpret_cast<LPARAM>(windowOf(form.lblName)));
    EXPECT_EQ(GetTextColor(context), GetSysColor(COLOR_WINDOWTEXT));

    ReleaseDC(windowOf(form.lblPlain), context);
}

TEST(TextColourTest, BlackIsTheUsersOwnColour) {
    EXPECT_EQ(face::textColour({}, RGB(255, 255, 255), false), GetSysColor(COLOR_WINDOWTEXT));
    EXPECT_EQ(face::textColour({192, 0, 10}, RGB(255, 255, 255), false), RGB(192, 0, 10));
}

TEST(TextColourTest, WithStrongContrastEveryTextHasTheUsersColour) {
    EXPECT_EQ(face::textColour({192, 0, 10}, RGB(255, 255, 255), true),
              GetSysColor(COLOR_WINDOWTEXT));
}

TEST_F(FaceTest, APictureIsPainted) {
    show();
    const HWND lamp = windowOf(form.picLamp);
    RECT area{};
    GetClientRect(lamp, &area);
    RedrawWindow(lamp, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);

    const HDC context = GetDC(lamp);
    EXPECT_EQ(GetPixel(context, area.right / 2, area.bottom / 2), RGB(10, 200, 30));
    EXPECT_EQ(GetPixel(context, 0, 0), GetSysColor(COLOR_3DFACE));
    ReleaseDC(lamp, context);
}

TEST_F(FaceTest, APointerOverThePictureIsToldToIt) {
    int place = 0;
    form.picLamp.MouseMove.connect([&](int x) { place = x; });

    SendMessageA(windowOf(form.picLamp), WM_MOUSEMOVE, 0, 517);

    EXPECT_EQ(place, 517);
}

TEST_F(FaceTest, TheModelKnowsItsWindows) {
    const auto number = [](HWND handle) {
        return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(handle));
    };

    EXPECT_EQ(form.hWnd(), number(window()));
    EXPECT_EQ(form.picLamp.hWnd(), number(windowOf(form.picLamp)));
    EXPECT_EQ(form.timTick.hWnd(), 0U);
}

} // namespace
} // namespace tarvik
