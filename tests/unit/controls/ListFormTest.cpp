#include "../../support/ListForm.h"
#include "../../support/FormOn.h"

#include "scripted/ScriptedPlatform.h"
#include "scripted/TextPicture.h"
#include "types/RunTimeError.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

class ListFormTest : public testing::Test {
protected:
    ListFormTest() { form.load(); }
    ~ListFormTest() override { form.unload(); }

    ScriptedPlatform machine;
    FormOn<ListForm> form{machine.platform.desktop};
};

TEST_F(ListFormTest, ChoosingAnOptionTakesTheChoiceFromTheOthers) {
    form.optSecond.setValue(true);

    EXPECT_TRUE(form.optSecond.value());
    EXPECT_FALSE(form.optFirst.value());
}

TEST_F(ListFormTest, OnlyTheChosenOptionTellsOfAClick) {
    int first = 0;
    int second = 0;
    form.optFirst.Click.connect([&] { ++first; });
    form.optSecond.Click.connect([&] { ++second; });

    form.optSecond.setValue(true);
    form.optSecond.setValue(true);

    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
}

TEST_F(ListFormTest, AListAsksForTheTextsOfItsRows) {
    form.fill(3);

    EXPECT_EQ(form.lvwRows.rowCount(), 3);
    EXPECT_EQ(form.lvwRows.cell(2, 0), "3");
    EXPECT_EQ(form.lvwRows.cell(2, 1), "row 3");
}

TEST_F(ListFormTest, OutsideTheListThereIsNoText) {
    form.fill(3);

    EXPECT_EQ(form.lvwRows.cell(3, 0), "");
    EXPECT_EQ(form.lvwRows.cell(-1, 0), "");
    EXPECT_EQ(form.lvwRows.cell(0, 2), "");
    EXPECT_EQ(form.lvwRows.cell(0, -1), "");
}

TEST_F(ListFormTest, AMillionRowsAskForNothingBeforeTheyAreSeen) {
    form.fill(1'000'000);

    EXPECT_EQ(form.cellsAsked, 0);
}

TEST_F(ListFormTest, OtherRowsTakeTheSelectionAway) {
    form.fill(3);
    form.lvwRows.setSelectedRow(2);

    form.fill(5);

    EXPECT_EQ(form.lvwRows.selectedRow(), ListView::none);
}

TEST_F(ListFormTest, ARowThatIsNotThereCannotBeSelected) {
    form.fill(3);

    EXPECT_THROW(form.lvwRows.setSelectedRow(3), RunTimeError);
    EXPECT_THROW(form.lvwRows.setSelectedRow(-2), RunTimeError);
    EXPECT_EQ(form.lvwRows.selectedRow(), ListView::none);
}

TEST_F(ListFormTest, WhatAHiddenFrameHoldsIsNotSeen) {
    form.frameText.setVisible(false);

    const std::vector<Control*> seen = seenControlsInOrder(*form.layout());

    EXPECT_EQ(seen, (std::vector<Control*>{&form.optFirst, &form.optSecond, &form.frameList,
                                           &form.lvwRows, &form.txtOther}));
}

TEST_F(ListFormTest, ThePictureShowsChoicesRowsAndLines) {
    form.fill(2);
    form.lvwRows.setSelectedRow(1);
    form.txtLines.setText("one\r\ntwo");

    // clang-format off
    EXPECT_EQ(textPicture(form),
        "+- List ---------------------------------+\n"
        "| (o) First  ( ) Second                  |\n"
        "| +- Rows -----------------------------+ |\n"
        "| |   ID|Name                          | |\n"
        "| |   1|row 1                          | |\n"
        "| | > 2|row 2                          | |\n"
        "| |                                    | |\n"
        "| |                                    | |\n"
        "| +------------------------------------+ |\n"
        "| +- Text -----------------------------+ |\n"
        "| | ( one                            ) | |\n"
        "| | ( two                            ) | |\n"
        "| |                                    | |\n"
        "| +------------------------------------+ |\n"
        "| [                                    ] |\n"
        "+----------------------------------------+\n");
    // clang-format on
}

} // namespace
} // namespace tarvik
