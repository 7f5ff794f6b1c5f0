#include "support/FormOn.h"
#include "support/ListForm.h"
#include "support/Win32Machine.h"
#include "support/Win32Windows.h"
#include "windows/face/ControlIds.h"

#include <commctrl.h>

#include <gtest/gtest.h>

namespace tarvik {
namespace {

class ListFaceTest : public testing::Test {
protected:
    ListFaceTest() {
        form.setVisible(true);
        settle();
    }
    ~ListFaceTest() override {
        form.unload();
        settle();
    }

    void settle() { machine.desktop.processEvents(); }
    HWND window() const { return ownWindow("frmList"); }
    HWND list() const { return windowOf(form.lvwRows); }
    void select(int row) const {
        LVITEMA item{};
        item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageA(list(), LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
    }

    /// Writes down which rows are opened.
    void countOpened() {
        form.lvwRows.DblClick.connect([this] { opened.push_back(form.lvwRows.selectedRow()); });
    }

    /// A key goes down and up in the window that has the focus.
    void press(WPARAM key) {
        constexpr LPARAM comesUp = 0xC0000001;
        PostMessageA(GetFocus(), WM_KEYDOWN, key, 1);
        PostMessageA(GetFocus(), WM_KEYUP, key, comesUp);
        settle();
    }

    std::vector<int> opened;
    Win32Machine machine;
    FormOn<ListForm> form{machine.platform.desktop};
};

TEST_F(ListFaceTest, ADoubleClickIsToldForTheSelectedRow) {
    form.fill(3);
    int clicks = 0;
    form.lvwRows.DblClick.connect([&] { clicks += 1 + form.lvwRows.selectedRow(); });
    select(1);
    NMHDR news{list(), static_cast<UINT_PTR>(face::controlId(form.lvwRows)),
               static_cast<UINT>(NM_DBLCLK)};

    SendMessageA(window(), WM_NOTIFY, news.idFrom, reinterpret_cast<LPARAM>(&news));

    EXPECT_EQ(clicks, 2);
}

TEST_F(ListFaceTest, EnterWithoutASelectedRowOpensNothing) {
    form.fill(3);
    countOpened();
    SetFocus(list());

    press(VK_RETURN);

    EXPECT_TRUE(opened.empty());
}

TEST_F(ListFaceTest, SpaceOpensNothing) {
    form.fill(3);
    countOpened();
    SetFocus(list());
    select(1);

    press(VK_SPACE);

    EXPECT_TRUE(opened.empty());
}

TEST_F(ListFaceTest, ALongTextHasNoScrollBarAcross) {
    EXPECT_EQ(GetWindowLongA(windowOf(form.txtLines), GWL_STYLE) & WS_HSCROLL, 0);
}

} // namespace
} // namespace tarvik
