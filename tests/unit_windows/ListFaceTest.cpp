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

    Win32Machine machine;
    PlatformScope scope{machine.platform};
    ListForm form;
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
