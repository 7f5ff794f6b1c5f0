#include "contracts/FaceUnderTest.h"

#include "support/FormOn.h"
#include "support/ListForm.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

using Rows = std::vector<int>;

/// Choices, lists, long texts and frames.
class ListContract : public testing::Test {
protected:
    ListContract() {
        form.lvwRows.DblClick.connect([this] { opened.push_back(form.lvwRows.selectedRow()); });
        form.setVisible(true);
        face->settle();
    }
    ~ListContract() override {
        form.unload();
        face->settle();
    }

    std::unique_ptr<FaceUnderTest> face = faceUnderTest();
    FormOn<ListForm> form{face->desktop()};
    ListView& list = form.lvwRows;
    Rows opened; ///< the selected row each time
};

TEST_F(ListContract, AClickChoosesAnOptionAndTheOtherLosesIt) {
    face->click(form.optSecond);

    EXPECT_TRUE(form.optSecond.value());
    EXPECT_TRUE(face->isTicked(form.optSecond));
    EXPECT_FALSE(face->isTicked(form.optFirst));
}

TEST_F(ListContract, AClickOnTheChosenOptionLeavesItChosen) {
    face->click(form.optFirst);

    EXPECT_TRUE(form.optFirst.value());
    EXPECT_TRUE(face->isTicked(form.optFirst));
}

TEST_F(ListContract, TheRowsAreShown) {
    form.fill(3);

    EXPECT_EQ(face->rowCount(list), 3);
    EXPECT_EQ(face->cell(list, 2, 0), "3");
    EXPECT_EQ(face->cell(list, 2, 1), "row 3");
}

TEST_F(ListContract, OfAMillionRowsOnlyThoseThatAreSeenAreAskedFor) {
    form.fill(1'000'000);
    face->repaint(list);

    EXPECT_GT(form.cellsAsked, 0);
    EXPECT_LT(form.cellsAsked, 2000);
}

TEST_F(ListContract, TheUsersSelectionReachesTheModel) {
    form.fill(3);

    face->selectRow(list, 1);

    EXPECT_EQ(list.selectedRow(), 1);
}

TEST_F(ListContract, TheModelsSelectionIsShown) {
    form.fill(3);

    list.setSelectedRow(2);

    EXPECT_EQ(face->selectedRow(list), 2);
}

TEST_F(ListContract, WhatWasSelectedBeforeTheWindowWasMadeIsShown) {
    form.unload(); // the list of the other one has the same name
    face->settle();
    FormOn<ListForm> later{face->desktop()};
    later.fill(3);
    later.lvwRows.setSelectedRow(1);

    later.setVisible(true);
    face->settle();

    EXPECT_EQ(face->selectedRow(later.lvwRows), 1);
    later.unload();
    face->settle();
}

TEST_F(ListContract, OtherRowsTakeTheSelectionAway) {
    form.fill(3);
    list.setSelectedRow(2);

    form.fill(5);

    EXPECT_EQ(face->selectedRow(list), -1);
    EXPECT_EQ(list.selectedRow(), ListView::none);
}

TEST_F(ListContract, AClickSelectsTheRowAndOpensNothing) {
    form.fill(3);

    face->clickRow(list, 2);

    EXPECT_EQ(list.selectedRow(), 2);
    EXPECT_EQ(opened, Rows{});
}

TEST_F(ListContract, ADoubleClickOpensTheRow) {
    form.fill(3);

    face->doubleClickRow(list, 2);

    EXPECT_EQ(opened, Rows{2});
}

TEST_F(ListContract, EnterOpensTheSelectedRow) {
    form.fill(3);
    face->clickRow(list, 1);

    face->press(list, FaceKey::Enter);

    EXPECT_EQ(opened, Rows{1});
}

TEST_F(ListContract, ALetterDoesNotLookThroughAMillionRows) {
    form.fill(1'000'000);
    face->clickRow(list, 0);
    face->repaint(list);
    form.cellsAsked = 0;

    for (const char letter : {'X', 'R', '9'}) {
        face->typeLetter(list, letter);
    }

    EXPECT_LT(form.cellsAsked, 500);
    EXPECT_EQ(list.selectedRow(), 0);
    EXPECT_EQ(face->selectedRow(list), 0);
}

TEST_F(ListContract, HeadersMayBeFlat) {
    EXPECT_FALSE(face->hasFlatHeaders(list));

    list.setHeadersClickable(false);

    EXPECT_TRUE(face->hasFlatHeaders(list));
}

TEST_F(ListContract, ColumnsFitTheirLongestText) {
    const std::string longest = "a much longer name than the header";
    form.fill(1, {"1", longest});

    list.fitColumns(ColumnFit::Contents);

    EXPECT_GT(face->columnWidth(list, 1), face->textWidth(list, longest));
    EXPECT_LT(face->columnWidth(list, 0), face->columnWidth(list, 1));
}

TEST_F(ListContract, ALongTextIsShownInLines) {
    form.txtLines.setText("one\r\ntwo");

    EXPECT_EQ(face->lineCount(form.txtLines), 2);
    EXPECT_TRUE(face->isReadOnly(form.txtLines));
    EXPECT_EQ(form.txtLines.text(), "one\r\ntwo");
}

TEST_F(ListContract, AHiddenFrameHidesWhatItHolds) {
    form.frameText.setVisible(false);
    face->settle();
    EXPECT_FALSE(face->isVisible(form.txtLines));

    form.frameText.setVisible(true);
    face->settle();
    EXPECT_TRUE(face->isVisible(form.txtLines));
}

} // namespace
} // namespace tarvik
