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
    HWND find(const Control& control) const {
        return GetDlgItem(window(), face::controlId(control));
    }
    HWND list() const { return find(form.lvwRows); }
    HWND header() const {
        return reinterpret_cast<HWND>(SendMessageA(list(), LVM_GETHEADER, 0, 0));
    }

    std::string shownCell(int row, int column) const {
        char text[64] = {};
        LVITEMA item{};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = sizeof text;
        SendMessageA(list(), LVM_GETITEMTEXTA, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
        return text;
    }

    LRESULT selectedRow() const {
        return SendMessageA(list(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
    }

    void select(int row) const {
        LVITEMA item{};
        item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageA(list(), LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
    }

    bool isChosen(const OptionButton& option) const {
        return SendMessageA(find(option), BM_GETCHECK, 0, 0) == BST_CHECKED;
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

    /// The left button goes down on a row, or down for the second time, and up again.
    void clickOn(int row, UINT down) {
        RECT place{.left = LVIR_BOUNDS, .top = 0, .right = 0, .bottom = 0};
        SendMessageA(list(), LVM_GETITEMRECT, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&place));
        const LPARAM at = MAKELPARAM(place.left + 10, (place.top + place.bottom) / 2);
        PostMessageA(list(), down, MK_LBUTTON, at);
        PostMessageA(list(), WM_LBUTTONUP, 0, at);
        settle();
    }

    std::vector<int> opened;
    Win32Machine machine;
    FormOn<ListForm> form{machine.platform.desktop};
};

TEST_F(ListFaceTest, AClickChoosesAnOptionAndTheOtherLosesIt) {
    SendMessageA(find(form.optSecond), BM_CLICK, 0, 0);

    EXPECT_TRUE(form.optSecond.value());
    EXPECT_TRUE(isChosen(form.optSecond));
    EXPECT_FALSE(isChosen(form.optFirst));
}

TEST_F(ListFaceTest, AClickOnTheChosenOptionLeavesItChosen) {
    SendMessageA(find(form.optFirst), BM_CLICK, 0, 0);

    EXPECT_TRUE(form.optFirst.value());
    EXPECT_TRUE(isChosen(form.optFirst));
}

TEST_F(ListFaceTest, TheRowsAreShown) {
    form.fill(3);

    EXPECT_EQ(SendMessageA(list(), LVM_GETITEMCOUNT, 0, 0), 3);
    EXPECT_EQ(shownCell(2, 0), "3");
    EXPECT_EQ(shownCell(2, 1), "row 3");
}

TEST_F(ListFaceTest, OfAMillionRowsOnlyThoseThatAreSeenAreAskedFor) {
    form.fill(1'000'000);
    UpdateWindow(list());
    settle();

    EXPECT_GT(form.cellsAsked, 0);
    EXPECT_LT(form.cellsAsked, 2000);
}

TEST_F(ListFaceTest, TheUsersSelectionReachesTheModel) {
    form.fill(3);

    select(1);

    EXPECT_EQ(form.lvwRows.selectedRow(), 1);
}

TEST_F(ListFaceTest, TheModelsSelectionIsShown) {
    form.fill(3);

    form.lvwRows.setSelectedRow(2);

    EXPECT_EQ(selectedRow(), 2);
}

TEST_F(ListFaceTest, OtherRowsTakeTheSelectionAway) {
    form.fill(3);
    form.lvwRows.setSelectedRow(2);

    form.fill(5);

    EXPECT_EQ(selectedRow(), -1);
}

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

TEST_F(ListFaceTest, EnterOpensTheSelectedRow) {
    form.fill(3);
    countOpened();
    SetFocus(list());
    select(1);

    press(VK_RETURN);

    EXPECT_EQ(opened, std::vector<int>{1});
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

TEST_F(ListFaceTest, ASingleClickSelectsAndADoubleClickOpens) {
    form.fill(3);
    countOpened();

    clickOn(2, WM_LBUTTONDOWN);
    EXPECT_EQ(form.lvwRows.selectedRow(), 2);
    EXPECT_TRUE(opened.empty());

    clickOn(2, WM_LBUTTONDBLCLK);
    EXPECT_EQ(opened, std::vector<int>{2});
}

TEST_F(ListFaceTest, ALetterDoesNotLookThroughAMillionRows) {
    form.fill(1'000'000);
    SetFocus(list());
    select(5);
    UpdateWindow(list());
    settle();
    form.cellsAsked = 0;

    press('9');
    press('Q');

    EXPECT_LT(form.cellsAsked, 500);
    EXPECT_EQ(form.lvwRows.selectedRow(), 5);
    EXPECT_EQ(selectedRow(), 5);
}

TEST_F(ListFaceTest, HeadersMayBeFlat) {
    EXPECT_NE(GetWindowLongA(header(), GWL_STYLE) & HDS_BUTTONS, 0);

    form.lvwRows.setHeadersClickable(false);

    EXPECT_EQ(GetWindowLongA(header(), GWL_STYLE) & HDS_BUTTONS, 0);
}

TEST_F(ListFaceTest, ColumnsFitTheirLongestText) {
    form.fill(1, {"1", "a much longer name than the header"});

    form.lvwRows.fitColumns(ColumnFit::Contents);

    const auto width = [this](WPARAM column) {
        return SendMessageA(list(), LVM_GETCOLUMNWIDTH, column, 0);
    };
    EXPECT_GT(width(1),
              SendMessageA(list(), LVM_GETSTRINGWIDTHA, 0,
                           reinterpret_cast<LPARAM>("a much longer name than the header")));
    EXPECT_LT(width(0), width(1));
}

TEST_F(ListFaceTest, ALongTextIsShownInLines) {
    form.txtLines.setText("one\r\ntwo");

    EXPECT_EQ(SendMessageA(find(form.txtLines), EM_GETLINECOUNT, 0, 0), 2);
    EXPECT_NE(GetWindowLongA(find(form.txtLines), GWL_STYLE) & ES_READONLY, 0);
}

TEST_F(ListFaceTest, ALongTextHasNoScrollBarAcross) {
    EXPECT_EQ(GetWindowLongA(find(form.txtLines), GWL_STYLE) & WS_HSCROLL, 0);
}

TEST_F(ListFaceTest, AHiddenFrameHidesWhatItHolds) {
    form.frameText.setVisible(false);
    settle();
    EXPECT_FALSE(IsWindowVisible(find(form.txtLines)));

    form.frameText.setVisible(true);
    settle();
    EXPECT_TRUE(IsWindowVisible(find(form.txtLines)));
}

} // namespace
} // namespace tarvik
