#include "contracts/FaceContract.h"

#include <string>
#include <vector>

namespace tarvik {
namespace {

using Events = std::vector<std::string>;

/// A field to write in, which has not the focus, in a window that is seen.
class TextFieldContract : public FaceContract {
protected:
    TextFieldContract() { show(); }

    /// Writes down each event of the field with the text that it has then, in the model and for the
    /// eye.
    void writeDownEvents() {
        const auto note = [this](const char* event) {
            seen.push_back(std::string(event) + " " + field.text() + "/" + face->shown(field));
        };
        field.GotFocus.connect([note] { note("GotFocus"); });
        field.KeyDown.connect([note] { note("KeyDown"); });
        field.Change.connect([note] { note("Change"); });
        field.KeyUp.connect([note] { note("KeyUp"); });
    }
    /// The user goes on writing behind what stands there.
    void goBehindTheText() {
        face->goInto(field);
        face->settle();
        face->selectByHand(field, static_cast<int>(field.text().size()), 0);
    }

    TextBox& field = form.txtName;
    Events seen;
};

TEST_F(TextFieldContract, ComingToItIsTold) {
    writeDownEvents();

    face->goInto(field);

    EXPECT_EQ(seen, Events{"GotFocus first/first"});
}

TEST_F(TextFieldContract, ComingByAClickIsToldOnce) {
    writeDownEvents();

    face->clickInto(field);

    EXPECT_EQ(seen, Events{"GotFocus first/first"});
}

TEST_F(TextFieldContract, AnotherClickIntoItIsNotToldAsComing) {
    face->clickInto(field);
    writeDownEvents();

    face->clickInto(field);

    EXPECT_EQ(seen, Events());
}

TEST_F(TextFieldContract, WhatIsSelectedOnComingByAClickStaysSelected) {
    field.GotFocus.connect([this] { field.select(0, 5); });

    face->clickInto(field);
    face->settle();

    EXPECT_EQ(face->selected(field), "first");
}

TEST_F(TextFieldContract, AKeyIsToldBeforeItChangesTheTextAndAfterwards) {
    goBehindTheText();
    writeDownEvents();

    face->type(field, 'x');

    EXPECT_EQ(seen, (Events{"KeyDown first/first", "Change firstx/firstx", "KeyUp firstx/firstx"}));
}

TEST_F(TextFieldContract, WhatAHandlerPutsBackIsShown) {
    goBehindTheText();
    field.KeyUp.connect([this] { field.setText("back"); });

    face->type(field, 'x');

    EXPECT_EQ(face->shown(field), "back");
}

TEST_F(TextFieldContract, APartIsSelectedWhenTheModelSaysSo) {
    goBehindTheText();

    field.select(1, 3);
    face->settle();

    EXPECT_EQ(face->selected(field), "irs");
}

TEST_F(TextFieldContract, APartIsSelectedAgainAfterTheUserSelectedAnother) {
    goBehindTheText();
    field.select(1, 3);
    face->settle();
    face->selectByHand(field, 0, 2);

    field.select(1, 3);
    face->settle();

    EXPECT_EQ(face->selected(field), "irs");
}

TEST_F(TextFieldContract, TypingReplacesWhatIsSelectedOnComing) {
    field.GotFocus.connect([this] { field.select(0, 5); });
    face->goInto(field);
    face->settle();

    face->type(field, 'x');

    EXPECT_EQ(field.text(), "x");
}

TEST_F(TextFieldContract, WhileABoxIsOpenItTellsNothing) {
    writeDownEvents();
    bool boxCame = false;
    face->atNextBox([&](ShownBox& box) {
        boxCame = true;
        face->goInto(field);
        face->type(field, 'x');
        box.press(MsgBoxAnswer::Ok);
    });

    ask(MsgBoxButtons::OkOnly);

    EXPECT_TRUE(boxCame);
    EXPECT_EQ(seen, Events());
    EXPECT_EQ(field.text(), "first");
    EXPECT_EQ(face->shown(field), "first");
}

TEST_F(TextFieldContract, AKeyThatGoesDownMayEndItsForm) {
    goBehindTheText();
    field.KeyDown.connect([this] { form.unload(); });

    face->type(field, 'x');
    face->settle();

    EXPECT_FALSE(face->hasWindow(form));
    EXPECT_EQ(field.text(), "first");
}

TEST_F(TextFieldContract, AKeyThatComesUpMayEndItsForm) {
    goBehindTheText();
    field.KeyUp.connect([this] { form.unload(); });

    face->type(field, 'x');
    face->settle();

    EXPECT_FALSE(face->hasWindow(form));
    EXPECT_EQ(field.text(), "firstx");
}

TEST_F(TextFieldContract, BlanksWithinAPastedTextStay) {
    field.setText("");
    face->goInto(field);

    face->paste(field, " a b ");

    EXPECT_EQ(field.text(), "a b");
}

class PasteContract : public TextFieldContract, public testing::WithParamInterface<const char*> {};

TEST_P(PasteContract, LeavesOutWhatStandsAroundTheText) {
    field.setText("15");
    face->goInto(field);
    face->settle();
    face->selectByHand(field, 1, 0);

    face->paste(field, GetParam());

    EXPECT_EQ(field.text(), "195");
}

INSTANTIATE_TEST_SUITE_P(Each, PasteContract,
                         testing::Values("9", "9\n", "9\r\n", " 9", "9 ", "\t9\n", "\t9\r\n",
                                         "\n\n9\n", "\r\n9\r\n"));

} // namespace
} // namespace tarvik
