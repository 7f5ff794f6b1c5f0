#include "controls/TestForm.h"

#include "support/ErrorOf.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

constexpr auto subscriptOutOfRange = static_cast<int>(ErrorNumber::SubscriptOutOfRange);

/// A form of its own and a count of how often an event came.
class ControlKindsTest : public testing::Test {
protected:
    BareForm form;
    int raised = 0;

    std::function<void()> count() {
        return [this] { ++raised; };
    }
};

TEST_F(ControlKindsTest, ALabelKeepsWhatItWasSetUpWith) {
    TextBox box(form, "txtBox", {});

    const Label label(
        form, "lblBox",
        {.caption = "Box:", .alignment = TextAlignment::Right, .mnemonic = 'B', .labelled = &box});

    EXPECT_EQ(label.caption(), "Box:");
    EXPECT_EQ(label.alignment(), TextAlignment::Right);
    EXPECT_EQ(label.mnemonic(), 'B');
    EXPECT_EQ(label.labelled(), &box);
    EXPECT_EQ(label.foreColour(), (Colour{0, 0, 0}));
}

TEST_F(ControlKindsTest, ATextBoxRaisesChangeWithTheNewTextInPlace) {
    TextBox box(form, "txtBox", {.text = "old"});
    std::string seen;
    box.Change.connect([&] { seen = box.text(); });

    box.setText("new");

    EXPECT_EQ(seen, "new");
}

TEST_F(ControlKindsTest, ATextBoxRaisesNothingForTheTextItHas) {
    TextBox box(form, "txtBox", {.text = "same"});
    box.Change.connect(count());

    box.setText("same");

    EXPECT_EQ(raised, 0);
}

TEST_F(ControlKindsTest, TheProgramMayWriteIntoAReadOnlyBox) {
    TextBox box(form, "txtBox", {.readOnly = true});

    box.setText("figure");

    EXPECT_TRUE(box.readOnly());
    EXPECT_EQ(box.text(), "figure");
}

TEST_F(ControlKindsTest, ACheckBoxStartsUnticked) {
    const CheckBox box(form, "chkBox", {.caption = "Box", .mnemonic = 'x'});

    EXPECT_EQ(box.value(), 0);
    EXPECT_FALSE(box.ticked());
    EXPECT_EQ(box.mnemonic(), 'x');
}

TEST_F(ControlKindsTest, AnyValueButNoughtTicksACheckBox) {
    CheckBox box(form, "chkBox", {.caption = "Box"});

    box.setValue(7);

    EXPECT_EQ(box.value(), 1);
    EXPECT_TRUE(box.ticked());
}

TEST_F(ControlKindsTest, ACheckBoxRaisesClickForAChangeOnly) {
    CheckBox box(form, "chkBox", {.caption = "Box"});
    box.Click.connect(count());

    box.setValue(1);
    box.setValue(2);
    EXPECT_EQ(raised, 1);
    box.setValue(0);

    EXPECT_EQ(raised, 2);
}

TEST_F(ControlKindsTest, AButtonRaisesClickAtEachPress) {
    CommandButton button(form, "cmdButton", {.caption = "Button"});
    button.Click.connect(count());

    button.press();
    button.press();

    EXPECT_EQ(raised, 2);
}

TEST_F(ControlKindsTest, ADisabledButtonCannotBePressed) {
    CommandButton button(form, "cmdButton", {.caption = "Button", .enabled = false});
    button.Click.connect(count());

    button.press();

    EXPECT_EQ(raised, 0);
}

TEST_F(ControlKindsTest, AFrameAndAPictureKeepWhatTheyShow) {
    const Frame frame(form, "fraBox", {"Title"});
    Picture picture(form, "picLamp");
    const Drawing drawing{{{DrawingShape::Type::Circle, {{0.5, 0.5}, {1, 0.5}}, {0, 128, 0}, 0.1}}};

    picture.setDrawing(drawing);

    EXPECT_EQ(frame.caption(), "Title");
    EXPECT_EQ(picture.drawing(), drawing);
}

TEST_F(ControlKindsTest, ATimerStartsSwitchedOffWithoutAnInterval) {
    Timer timer(form, "timTick");
    timer.Tick.connect(count());

    timer.fire();

    EXPECT_FALSE(timer.enabled());
    EXPECT_EQ(timer.interval(), 0);
    EXPECT_EQ(raised, 0);
}

TEST_F(ControlKindsTest, AnEnabledTimerTicksWhenItsTimeIsUp) {
    Timer timer(form, "timTick");
    timer.Tick.connect(count());
    timer.setEnabled(true);

    timer.fire();

    EXPECT_EQ(raised, 1);
}

class ComboBoxTest : public ControlKindsTest {
protected:
    ComboBoxTest() {
        combo.addItem("Harbour");
        combo.addItem("Ridge");
        combo.Click.connect(count());
    }

    ComboBox combo{form, "cboList", {.toolTip = "tip", .accessibleName = "List"}};
};

TEST_F(ComboBoxTest, NothingIsSelectedAtFirst) {
    EXPECT_EQ(combo.listCount(), 2);
    EXPECT_EQ(combo.listIndex(), -1);
    EXPECT_EQ(combo.text(), "");
    EXPECT_EQ(combo.toolTip(), "tip");
    EXPECT_EQ(combo.accessibleName(), "List");
}

TEST_F(ComboBoxTest, EachNewEntryIsTold) {
    const RecordingView view(combo);

    combo.addItem("Ridge");

    EXPECT_EQ(combo.items(), (std::vector<std::string>{"Harbour", "Ridge", "Ridge"}));
    EXPECT_EQ(view.told, Told{Property::Items});
}

TEST_F(ComboBoxTest, OtherEntriesAreToldOnceAndNoneIsSelected) {
    combo.setListIndex(1);
    const RecordingView view(combo);

    combo.setItems({"Moor", "Dune", "Pier"});

    EXPECT_EQ(combo.items(), (std::vector<std::string>{"Moor", "Dune", "Pier"}));
    EXPECT_EQ(combo.listIndex(), -1);
    EXPECT_EQ(view.told, Told{Property::Items});
}

TEST_F(ComboBoxTest, SelectingTellsAndRaisesClickOnce) {
    const RecordingView view(combo);

    combo.setListIndex(1);
    combo.setListIndex(1);

    EXPECT_EQ(combo.text(), "Ridge");
    EXPECT_EQ(view.told, Told{Property::ListIndex});
    EXPECT_EQ(raised, 1);
}

TEST_F(ComboBoxTest, TheSelectionCanBeTakenBack) {
    combo.setListIndex(0);

    combo.setListIndex(ComboBox::none);

    EXPECT_EQ(combo.text(), "");
    EXPECT_EQ(raised, 2);
}

TEST_F(ComboBoxTest, APositionWithoutAnEntryIsAnError) {
    combo.setListIndex(1);

    EXPECT_EQ(errorOf([&] { combo.setListIndex(2); }), subscriptOutOfRange);
    EXPECT_EQ(errorOf([&] { combo.setListIndex(-2); }), subscriptOutOfRange);

    EXPECT_EQ(combo.listIndex(), 1);
}

TEST_F(ComboBoxTest, ClearingTakesEntriesAndSelectionAndTellsOnce) {
    combo.setListIndex(1);
    const RecordingView view(combo);

    combo.clear();
    combo.clear();

    EXPECT_EQ(combo.listCount(), 0);
    EXPECT_EQ(combo.listIndex(), -1);
    EXPECT_EQ(view.told, Told{Property::Items});
}

class MenuTest : public ControlKindsTest {
protected:
    MenuTest() {
        menu.Click.connect([this](int index) { chosen.push_back(index); });
    }

    Menu menu{form, "mnuMenu", "mnuEntry", {"Open", "-", "Close"}};
    std::vector<int> chosen;
};

TEST_F(MenuTest, KnowsItsEntriesByNumber) {
    EXPECT_EQ(menu.entryName(), "mnuEntry");
    EXPECT_EQ(menu.entries().size(), 3U);
    EXPECT_EQ(menu.entry(0).caption, "Open");
    EXPECT_TRUE(menu.entry(1).isSeparator());
    EXPECT_FALSE(menu.entry(2).isSeparator());
    EXPECT_TRUE(menu.entry(2).enabled);
}

TEST_F(MenuTest, AChosenEntryRaisesClickWithItsNumber) {
    menu.choose(2);

    EXPECT_EQ(chosen, std::vector<int>{2});
}

TEST_F(MenuTest, ADisabledEntryAndALineCannotBeChosen) {
    menu.setEntryEnabled(0, false);

    menu.choose(0);
    menu.choose(1);

    EXPECT_EQ(chosen, std::vector<int>{});
}

TEST_F(MenuTest, EntriesAboveItsOwnAreNumberedBehindThoseWithALineBetween) {
    menu.setEntriesAbove({"New", "Newer"});

    EXPECT_EQ(menu.order(), (std::vector<int>{3, 4, 5, 0, 1, 2}));
    EXPECT_EQ(menu.entry(4).caption, "Newer");
    EXPECT_TRUE(menu.entry(5).isSeparator());
}

TEST_F(MenuTest, OtherEntriesAboveTakeThePlaceOfThoseThatWereThere) {
    menu.setEntriesAbove({"New", "Newer"});

    menu.setEntriesAbove({"Newest"});
    EXPECT_EQ(menu.order(), (std::vector<int>{3, 4, 0, 1, 2}));
    EXPECT_EQ(menu.entry(3).caption, "Newest");

    menu.setEntriesAbove({});
    EXPECT_EQ(menu.order(), (std::vector<int>{0, 1, 2}));
}

TEST_F(MenuTest, AChosenEntryAboveRaisesClickWithItsNumber) {
    menu.setEntriesAbove({"New"});

    menu.choose(3);

    EXPECT_EQ(chosen, std::vector<int>{3});
}

TEST_F(MenuTest, ANumberWithoutAnEntryIsAnError) {
    EXPECT_EQ(errorOf([&] { menu.choose(3); }), subscriptOutOfRange);
    EXPECT_EQ(errorOf([&] { menu.choose(-1); }), subscriptOutOfRange);
    EXPECT_EQ(errorOf([&] { menu.setEntryCaption(3, "No"); }), subscriptOutOfRange);
    EXPECT_EQ(errorOf([&] { menu.setEntryEnabled(-1, false); }), subscriptOutOfRange);
}

} // namespace
} // namespace tarvik
