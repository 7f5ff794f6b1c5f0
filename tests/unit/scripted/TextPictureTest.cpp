#include "scripted/TextPicture.h"

#include "controls/Chart.h"
#include "controls/TestForm.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

class TextPictureTest : public testing::Test {
protected:
    BareForm form;

    /// The inner part of the only line that a form of one row has.
    std::string lineOf(LayoutNode root) {
        form.setLayout(std::move(root));
        const std::string picture = textPicture(form);
        const std::size_t begin = picture.find("\n| ") + 3;
        return picture.substr(begin, picture.find(" |\n") - begin);
    }
};

TEST_F(TextPictureTest, AFormWithoutALayoutHasNoPicture) {
    EXPECT_EQ(textPicture(form), "");
}

TEST_F(TextPictureTest, TheFormsCaptionStandsInItsBorder) {
    Label label(form, "lblOnly", {.caption = "Hello"});
    form.setLayout(item(label));

    EXPECT_EQ(textPicture(form), "+- Bare -+\n"
                                 "| Hello  |\n"
                                 "+--------+\n");
}

TEST_F(TextPictureTest, ALabelIsAlignedInItsRoom) {
    Label left(form, "lblLeft", {.caption = "left"});
    Label right(form, "lblRight", {.caption = "right", .alignment = TextAlignment::Right});
    Label centre(form, "lblCentre", {.caption = "mid", .alignment = TextAlignment::Centre});

    EXPECT_EQ(lineOf(row({item(left).wide(7), item(right).wide(7), item(centre).wide(7)})),
              "left       right    mid  ");
}

TEST_F(TextPictureTest, ACarriageReturnSeparatesTheLinesOfALabel) {
    Label label(form, "lblText", {.caption = "First line\rSecond"});
    form.setLayout(item(label));

    EXPECT_EQ(textPicture(form), "+- Bare -----+\n"
                                 "| First line |\n"
                                 "| Second     |\n"
                                 "+------------+\n");
}

TEST_F(TextPictureTest, AnItemOfTwoLinesTakesTwoRows) {
    Label label(form, "lblOnly", {.caption = "Hello"});
    form.setLayout(item(label).tall(2));

    EXPECT_EQ(textPicture(form), "+- Bare -+\n"
                                 "| Hello  |\n"
                                 "|        |\n"
                                 "+--------+\n");
}

TEST_F(TextPictureTest, TextBoxesShowWhetherTheyCanBeTypedInto) {
    TextBox open(form, "txtOpen", {.text = "12"});
    TextBox shut(form, "txtShut",
                 {.text = "1,204", .readOnly = true, .alignment = TextAlignment::Right});

    EXPECT_EQ(lineOf(row({item(open).wide(5), item(shut).wide(8)})), "[ 12    ]  (    1,204 )");
}

TEST_F(TextPictureTest, AChartShowsItsTitleOnItsFirstLine) {
    Chart chart(form, "chtOnly", {.title = "Traffic"});
    form.setLayout(item(chart).tall(2));

    EXPECT_EQ(textPicture(form), "+- Bare -----------+\n"
                                 "| [chart: Traffic] |\n"
                                 "|                  |\n"
                                 "+------------------+\n");
}

TEST_F(TextPictureTest, AProgressBarShowsItsPercentage) {
    ProgressBar bar(form, "prgOnly", {});
    bar.setValue(40);

    EXPECT_EQ(lineOf(item(bar)), "[ 40 % ]");
    EXPECT_EQ(lineOf(item(bar).wide(12)), "[ 40 %     ]");
}

TEST_F(TextPictureTest, CheckBoxesShowTheirTick) {
    CheckBox off(form, "chkOff", {.caption = "Off"});
    CheckBox on(form, "chkOn", {.caption = "On"});
    on.setValue(1);

    EXPECT_EQ(lineOf(row({item(off), item(on)})), "[ ] Off  [x] On");
}

TEST_F(TextPictureTest, ButtonsShowWhetherTheyCanBePressed) {
    CommandButton go(form, "cmdGo", {.caption = "Go"});
    CommandButton stop(form, "cmdStop", {.caption = "Stop", .enabled = false});

    EXPECT_EQ(lineOf(row({item(go), item(stop)}).sameSize()), "<  Go  >  - Stop -");
}

TEST_F(TextPictureTest, AComboBoxShowsTheSelectedEntry) {
    ComboBox empty(form, "cboEmpty", {});
    ComboBox chosen(form, "cboChosen", {});
    chosen.addItem("Ridge");
    chosen.setListIndex(0);

    EXPECT_EQ(lineOf(row({item(empty).wide(3), item(chosen)})), "[    v]  [Ridge v]");
}

TEST_F(TextPictureTest, APictureIsAMark) {
    Picture lamp(form, "picLamp");
    Label label(form, "lblLamp", {.caption = "on"});

    EXPECT_EQ(lineOf(row({item(lamp), item(label)})), "(*)  on");
}

TEST_F(TextPictureTest, WhatIsHiddenLeavesItsPlaceEmpty) {
    Label seen(form, "lblSeen", {.caption = "a caption"});
    Label hidden(form, "lblHidden", {.caption = "secret"});
    hidden.setVisible(false);

    EXPECT_EQ(lineOf(row({item(hidden), item(seen)})), "        a caption");
}

TEST_F(TextPictureTest, LettersOfSeveralBytesTakeOneCell) {
    Label label(form, "lblLong", {.caption = "Größe 日本 ✓"});
    form.setLayout(item(label));

    EXPECT_EQ(textPicture(form), "+- Bare -----+\n"
                                 "| Größe 日本 ✓ |\n"
                                 "+------------+\n");
}

TEST_F(TextPictureTest, AStrayByteTakesOneCellAndAControlCharacterIsABlank) {
    TextBox box(form, "txtBox",
                {.text = "a\xFF"
                         "b\nc"});

    EXPECT_EQ(lineOf(item(box)), "[ a\xFF"
                                 "b c ]");
}

TEST_F(TextPictureTest, AWholeFormIsReadable) {
    Frame line(form, "fraLine", {"Line"});
    Label lblEntry(form, "lblEntry", {.caption = "Entry:"});
    ComboBox cboEntry(form, "cboEntry", {});
    Label lblUser(form, "lblUser", {.caption = "User name:"});
    TextBox txtUser(form, "txtUser", {.text = "guest"});
    CheckBox chkSave(form, "chkSave", {.caption = "Keep the password"});
    CommandButton cmdOK(form, "cmdOK", {.caption = "OK"});
    CommandButton cmdCancel(form, "cmdCancel", {.caption = "Cancel"});
    cboEntry.addItem("Harbour");
    cboEntry.setListIndex(0);
    form.setLayout(row({
        column({
                   frame(line, grid(2,
                                    {
                                        item(lblEntry), item(cboEntry).wide(12).share(1), //
                                        item(lblUser), item(txtUser).share(1),            //
                                    })),
                   item(chkSave),
               })
            .share(1),
        column({item(cmdOK), item(cmdCancel), space()}),
    }));

    EXPECT_EQ(textPicture(form), "+- Bare ---------------------------------------+\n"
                                 "| +- Line -----------------------+  <   OK   > |\n"
                                 "| | Entry:      [Harbour      v] |  < Cancel > |\n"
                                 "| | User name:  [ guest        ] |             |\n"
                                 "| +------------------------------+             |\n"
                                 "| [ ] Keep the password                        |\n"
                                 "+----------------------------------------------+\n");
}

} // namespace
} // namespace tarvik
