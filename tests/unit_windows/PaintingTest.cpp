#include "Win32FaceTest.h"
#include "support/MemorySheet.h"

namespace tarvik {
namespace {

/// Counts how often the ground of a window is erased.
class EraseCount {
public:
    explicit EraseCount(HWND watched) : watched_(watched) {
        SetWindowSubclass(watched_, onMessage, id, reinterpret_cast<DWORD_PTR>(this));
    }
    ~EraseCount() { RemoveWindowSubclass(watched_, onMessage, id); }
    EraseCount(const EraseCount&) = delete;
    EraseCount& operator=(const EraseCount&) = delete;

    int times = 0;

private:
    static constexpr UINT_PTR id = 4711;

    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM first, LPARAM second,
                                      UINT_PTR /*id*/, DWORD_PTR self) {
        reinterpret_cast<EraseCount*>(self)->times += message == WM_ERASEBKGND ? 1 : 0;
        return DefSubclassProc(window, message, first, second);
    }

    HWND watched_;
};

/// What a change paints: no more than it has to, and not less.
class PaintingTest : public Win32FaceTest {
protected:
    /// What lies on the screen.
    Pixels seen() {
        RECT area{};
        GetClientRect(window(), &area);
        const MemorySheet sheet(area.right, area.bottom);
        const HDC context = GetDC(window());
        BitBlt(sheet.context(), 0, 0, area.right, area.bottom, context, 0, 0, SRCCOPY);
        ReleaseDC(window(), context);
        return sheet.pixels();
    }

    /// The same once everything has been painted anew.
    Pixels paintedAnew() {
        RedrawWindow(window(), nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
        settle();
        return seen();
    }
};

TEST_F(PaintingTest, ATextThatTakesNoOtherRoomLeavesTheRestOfTheWindowAsItIs) {
    settle();
    const EraseCount grounds(window());

    form.lblPlain.setCaption("that & this");
    settle();

    EXPECT_EQ(grounds.times, 0);
    EXPECT_EQ(textOf(windowOf(form.lblPlain)), "that & this");
    EXPECT_TRUE(seen() == paintedAnew());
}

TEST_F(PaintingTest, WhatALongerTextMovesIsPaintedWholly) {
    const Pixels before = seen();

    form.lblPlain.setCaption("this, that & a good deal more than would ever have fitted");
    settle();

    EXPECT_FALSE(seen() == before);
    EXPECT_TRUE(seen() == paintedAnew());
}

TEST_F(PaintingTest, WhereAShorterTextLeavesRoomNothingIsLeftBehind) {
    form.lblPlain.setCaption("this, that & a good deal more than would ever have fitted");
    settle();

    form.lblPlain.setCaption("-");
    settle();

    EXPECT_TRUE(seen() == paintedAnew());
}

TEST_F(PaintingTest, WhatIsHiddenAndShownAgainLeavesNothingBehind) {
    const Pixels before = seen();

    form.chkTick.setVisible(false);
    settle();
    EXPECT_FALSE(seen() == before);
    EXPECT_TRUE(seen() == paintedAnew());

    form.chkTick.setVisible(true);
    settle();
    EXPECT_TRUE(seen() == before);
}

} // namespace
} // namespace tarvik
