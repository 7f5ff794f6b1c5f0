#include "controls/TestForm.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

using Texts = std::vector<std::string>;

/// A form on a scripted machine, and what came of it in order.
class FormTest : public testing::Test {
protected:
    FormTest() {
        form.setDesktop(machine.desktop);
        machine.desktop.fail = [](const std::string& what) { ADD_FAILURE() << what; };
        form.Initialize.connect([this] { log("Initialize"); });
        form.QueryUnload.connect([this](bool& cancel, UnloadMode mode) {
            asked.push_back(mode);
            log("QueryUnload");
            cancel = refuses;
        });
        form.Unload.connect([this] { log("Unload"); });
    }

    void log(const std::string& what) {
        happened.push_back(what + (realised() ? " with" : " without"));
    }
    bool realised() const { return machine.desktop.form("frmBare") != nullptr; }

    // A form outlives the desktop that shows it.
    BareForm form;
    ScriptedPlatform machine;
    Texts happened;
    std::vector<UnloadMode> asked;
    bool refuses = false;
};

TEST_F(FormTest, KnowsItsControlsByNameInTheOrderOfDeclaration) {
    Label first(form, "lblFirst", {.caption = "First"});
    Label second(form, "lblSecond", {.caption = "Second"});

    EXPECT_EQ(form.controls(), (std::vector<Control*>{&first, &second}));
    EXPECT_EQ(form.control("lblSecond"), &second);
    EXPECT_EQ(form.control("lblThird"), nullptr);
}

TEST_F(FormTest, KeepsItsButtonsAndFirstFocus) {
    CommandButton ok(form, "cmdOK", {.caption = "OK"});
    CommandButton cancel(form, "cmdCancel", {.caption = "Cancel"});
    TextBox box(form, "txtBox", {});
    form.setDefaultButton(ok);
    form.setCancelButton(cancel);
    form.setInitialFocus(box);

    EXPECT_EQ(form.defaultButton(), &ok);
    EXPECT_EQ(form.cancelButton(), &cancel);
    EXPECT_EQ(form.initialFocus(), &box);
}

TEST_F(FormTest, HasNoLayoutUntilOneIsSet) {
    Label label(form, "lblOnly", {.caption = "Only"});
    EXPECT_EQ(form.layout(), nullptr);

    form.setLayout(item(label));

    ASSERT_NE(form.layout(), nullptr);
    EXPECT_EQ(controlsInOrder(*form.layout()), std::vector<Control*>{&label});
}

TEST_F(FormTest, LoadingInitialisesThenMakesTheWindowHidden) {
    form.load();

    EXPECT_EQ(happened, Texts{"Initialize without"});
    EXPECT_TRUE(realised());
    EXPECT_TRUE(form.loaded());
    EXPECT_FALSE(form.visible());
}

TEST_F(FormTest, LoadingTwiceDoesNothingMore) {
    form.load();

    form.load();

    EXPECT_EQ(happened, Texts{"Initialize without"});
    EXPECT_EQ(machine.desktop.realisedForms(), std::vector<Form*>{&form});
}

TEST_F(FormTest, UnloadingAsksThenTellsThenTakesTheWindowAway) {
    form.setVisible(true);

    EXPECT_TRUE(form.unload());

    EXPECT_EQ(happened, (Texts{"Initialize without", "QueryUnload with", "Unload with"}));
    EXPECT_EQ(asked, std::vector<UnloadMode>{UnloadMode::FormCode});
    EXPECT_FALSE(realised());
    EXPECT_FALSE(form.loaded());
    EXPECT_FALSE(form.visible());
}

TEST_F(FormTest, ARefusedUnloadLeavesTheFormAsItWas) {
    form.setVisible(true);
    refuses = true;

    EXPECT_FALSE(form.unload(UnloadMode::FormControlMenu));

    EXPECT_EQ(asked, std::vector<UnloadMode>{UnloadMode::FormControlMenu});
    EXPECT_TRUE(realised());
    EXPECT_TRUE(form.visible());
}

TEST_F(FormTest, WhatIsNotLoadedIsNotUnloaded) {
    EXPECT_FALSE(form.unload());

    EXPECT_EQ(happened, Texts{});
}

TEST_F(FormTest, UnloadingFromItsOwnUnloadHandlerDoesNothing) {
    form.load();
    bool again = true;
    form.Unload.connect([&] { again = form.unload(); });

    EXPECT_TRUE(form.unload());

    EXPECT_FALSE(again);
    EXPECT_EQ(asked.size(), 1U);
}

TEST_F(FormTest, AnUnloadedFormCanBeLoadedAgain) {
    form.load();
    form.unload();

    form.load();

    EXPECT_TRUE(realised());
    EXPECT_EQ(happened.back(), "Initialize without");
}

TEST_F(FormTest, ShowingLoadsFirst) {
    form.setVisible(true);

    EXPECT_TRUE(form.loaded());
    EXPECT_TRUE(form.visible());
    EXPECT_EQ(machine.desktop.visibilityTold, Texts{"frmBare shown"});
}

TEST_F(FormTest, HidingDoesNotLoad) {
    form.setVisible(false);

    EXPECT_FALSE(form.loaded());
}

TEST_F(FormTest, ShowingWhatIsShownTellsNothing) {
    form.setVisible(true);

    form.setVisible(true);

    EXPECT_EQ(machine.desktop.visibilityTold, Texts{"frmBare shown"});
}

TEST_F(FormTest, MinimisingIsToldOnce) {
    form.setVisible(true);
    machine.desktop.visibilityTold.clear();

    form.setMinimised(true);
    form.setMinimised(true);

    EXPECT_TRUE(form.minimised());
    EXPECT_EQ(machine.desktop.visibilityTold, Texts{"frmBare minimised"});
}

TEST_F(FormTest, ShowingRestoresAMinimisedWindow) {
    form.setVisible(true);
    form.setMinimised(true);
    machine.desktop.visibilityTold.clear();

    form.setVisible(true);

    EXPECT_FALSE(form.minimised());
    EXPECT_EQ(machine.desktop.visibilityTold, Texts{"frmBare shown"});
}

TEST_F(FormTest, HidingAMinimisedWindowLeavesItRestored) {
    form.setVisible(true);
    form.setMinimised(true);

    form.setVisible(false);

    EXPECT_FALSE(form.visible());
    EXPECT_FALSE(form.minimised());
    EXPECT_EQ(machine.desktop.visibilityTold.back(), "frmBare hidden");
}

TEST_F(FormTest, UnloadingForgetsThatItWasMinimised) {
    form.setVisible(true);
    form.setMinimised(true);

    form.unload();

    EXPECT_FALSE(form.minimised());
}

TEST_F(FormTest, MovesTheFocusOnlyToWhatIsSeenAndCanBeUsed) {
    Label label{form, "lblPlain", {.caption = "Plain"}};
    TextBox hidden{form, "txtHidden", {}};
    TextBox disabled{form, "txtDisabled", {}};
    TextBox usable{form, "txtUsable", {}};
    TextBox elsewhere{form, "txtElsewhere", {}};
    form.setLayout(column({item(label), item(hidden), item(disabled), item(usable)}));
    hidden.setVisible(false);
    disabled.setEnabled(false);
    form.focusOn(usable); // nothing shows it
    form.setVisible(true);

    for (Control* control : form.controls()) {
        form.focusOn(*control);
    }

    EXPECT_EQ(machine.desktop.focusMoved, Texts{"frmBare.txtUsable"});
    form.unload();
}

TEST_F(FormTest, IsQuietOnlyIfItSaysSo) {
    class Quiet : public Form {
    public:
        Quiet() : Form("frmQuiet", "Quiet") { setQuiet(); }
    };

    EXPECT_TRUE(Quiet().isQuiet());
    EXPECT_FALSE(form.isQuiet());
}

TEST_F(FormTest, ComesToTheFrontOnlyWhileItHasAWindow) {
    form.bringToFront();
    form.load();
    form.bringToFront();

    EXPECT_EQ(machine.desktop.broughtToFront, Texts{"frmBare"});
}

} // namespace
} // namespace tarvik
