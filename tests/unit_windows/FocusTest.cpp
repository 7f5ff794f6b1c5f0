#include "Win32FaceTest.h"
#include "support/FormOn.h"

namespace tarvik {
namespace {

/// Buttons of which one works for a while: everything but the last is disabled meanwhile.
class WorkForm : public Form {
public:
    WorkForm() : Form("frmWork", "Work") {
        setLayout(column(
            {row({item(chkFirst), item(cmdWork), item(cmdNext)}), item(cmdStop), item(cmdCancel)}));
        setInitialFocus(cmdWork);
        setCancelButton(cmdCancel);
        cmdStop.setVisible(false);
    }

    void setWorking(bool working) {
        chkFirst.setEnabled(!working);
        cmdWork.setEnabled(!working);
        cmdNext.setEnabled(!working);
        cmdStop.setVisible(working);
    }

    CheckBox chkFirst{*this, "chkFirst", {.caption = "First"}};
    CommandButton cmdWork{*this, "cmdWork", {.caption = "Work"}};
    CommandButton cmdNext{*this, "cmdNext", {.caption = "Next"}};
    CommandButton cmdStop{*this, "cmdStop", {.caption = "Stop"}};
    CommandButton cmdCancel{*this, "cmdCancel", {.caption = "Cancel"}};
};

class FocusTest : public Win32FaceTest {
protected:
    FocusTest() {
        work.setVisible(true);
        work.bringToFront();
        EXPECT_TRUE(spinUntil([this] { return GetFocus() == windowOf(work.cmdWork); }));
    }
    ~FocusTest() override {
        work.unload();
        settle();
    }

    HWND workWindow() const { return ownWindow("frmWork"); }

    void workFor(bool working) {
        work.setWorking(working);
        settle();
    }

    FormOn<WorkForm> work{machine.platform.desktop};
};

TEST_F(FocusTest, AButtonThatCouldNotBeUsedHasTheFocusAgain) {
    workFor(true);
    workFor(false);

    EXPECT_EQ(GetFocus(), windowOf(work.cmdWork));
}

TEST_F(FocusTest, MeanwhileTheFormHasTheKeyboard) {
    int cancelled = 0;
    work.cmdCancel.Click.connect([&] { ++cancelled; });

    workFor(true);
    EXPECT_EQ(GetFocus(), workWindow());
    press(VK_SPACE);
    press(VK_RETURN);
    EXPECT_EQ(cancelled, 0);
    press(VK_ESCAPE);

    EXPECT_EQ(cancelled, 1);
}

TEST_F(FocusTest, MeanwhileTabGoesOnFromWhereTheFocusWas) {
    workFor(true);

    press(VK_TAB);
    EXPECT_EQ(GetFocus(), windowOf(work.cmdStop));
    press(VK_TAB);
    EXPECT_EQ(GetFocus(), windowOf(work.cmdCancel));
}

TEST_F(FocusTest, AFocusThatTheUserMovedStaysThere) {
    workFor(true);
    press(VK_TAB);
    press(VK_TAB);

    workFor(false);

    EXPECT_EQ(GetFocus(), windowOf(work.cmdCancel));
}

TEST_F(FocusTest, TheFocusOfAHiddenButtonGoesBackToTheOneBefore) {
    workFor(true);
    press(VK_TAB);
    ASSERT_EQ(GetFocus(), windowOf(work.cmdStop));

    workFor(false);

    EXPECT_EQ(GetFocus(), windowOf(work.cmdWork));
}

TEST_F(FocusTest, EnterPressesTheButtonThatHasTheFocusAgain) {
    int presses = 0;
    work.cmdWork.Click.connect([&] { ++presses; });
    workFor(true);
    workFor(false);

    press(VK_RETURN);

    EXPECT_EQ(presses, 1);
}

TEST_F(FocusTest, AWindowThatComesBackDuringWorkIsGivenItsFocusAfterIt) {
    workFor(true);
    show(); // another window of the program
    SetActiveWindow(window());
    settle();
    workFor(false);
    ASSERT_NE(GetActiveWindow(), workWindow());

    SetActiveWindow(workWindow());
    settle();

    EXPECT_EQ(GetFocus(), windowOf(work.cmdWork));
}

TEST_F(FocusTest, AWindowThatWasHiddenHasItsFocusWhereItWas) {
    SetFocus(windowOf(work.cmdNext));

    work.setVisible(false);
    settle();
    work.setVisible(true);
    work.bringToFront();

    EXPECT_TRUE(spinUntil([this] { return GetFocus() == windowOf(work.cmdNext); }));
}

TEST_F(FocusTest, AWindowThatIsOpenedAgainBeginsAnewWhereItsFocusCannotBe) {
    SetFocus(windowOf(work.cmdNext));

    work.setVisible(false);
    settle();
    work.cmdNext.setEnabled(false);
    work.setVisible(true);
    work.bringToFront();

    EXPECT_TRUE(spinUntil([this] { return GetFocus() == windowOf(work.cmdWork); }));
}

TEST_F(FocusTest, AWindowThatIsOpenedAgainBeginsWithTheFirstThatCanBeUsed) {
    work.setVisible(false);
    settle();
    work.cmdWork.setEnabled(false);
    work.setVisible(true);
    work.bringToFront();

    EXPECT_TRUE(spinUntil([this] { return GetFocus() == windowOf(work.chkFirst); }));
}

TEST_F(FocusTest, AWindowThatWasMinimisedHasItsFocusWhereItWas) {
    SetFocus(windowOf(work.cmdNext));

    ShowWindow(workWindow(), SW_MINIMIZE);
    settle();
    ShowWindow(workWindow(), SW_RESTORE);

    EXPECT_TRUE(spinUntil([this] { return GetFocus() == windowOf(work.cmdNext); }));
}

/// Arrows: a window with a frame, with boxes that only show something, and with options.
class ArrowsForm : public Form {
public:
    ArrowsForm() : Form("frmArrows", "Arrows") {
        setLayout(
            column({frame(frameState, column({item(lblState), item(chkState)})),
                    row({item(optOne), item(optOther)}), row({item(cmdOk), item(cmdCancel)})}));
        setInitialFocus(cmdOk);
    }
    Frame frameState{*this, "frameState", {"State"}};
    Label lblState{*this, "lblState", {"State:"}};
    CheckBox chkState{*this, "chkState", {.caption = "On", .readOnly = true}};
    OptionButton optOne{*this, "optOne", {.caption = "One", .value = true}};
    OptionButton optOther{*this, "optOther", {.caption = "Other"}};
    CommandButton cmdOk{*this, "cmdOk", {.caption = "OK"}};
    CommandButton cmdCancel{*this, "cmdCancel", {.caption = "Cancel"}};
};

class ArrowsTest : public Win32FaceTest {
protected:
    ArrowsTest() {
        arrows.setVisible(true);
        arrows.bringToFront();
        EXPECT_TRUE(spinUntil([this] { return GetFocus() == windowOf(arrows.cmdOk); }));
    }
    ~ArrowsTest() override {
        arrows.unload();
        settle();
    }

    /// Whom the focus comes to, one press after the other.
    std::vector<HWND> walk(WPARAM arrow, int presses) {
        std::vector<HWND> way;
        for (int i = 0; i < presses; ++i) {
            press(arrow);
            way.push_back(GetFocus());
        }
        return way;
    }

    FormOn<ArrowsForm> arrows{machine.platform.desktop};
};

TEST_F(ArrowsTest, ArrowsLeadFromButtonToButton) {
    const std::vector<HWND> buttons{windowOf(arrows.cmdCancel), windowOf(arrows.cmdOk),
                                    windowOf(arrows.cmdCancel)};

    EXPECT_EQ(walk(VK_RIGHT, 3), buttons);
    EXPECT_EQ(walk(VK_UP, 2), (std::vector<HWND>{buttons[1], buttons[2]}));
}

TEST_F(ArrowsTest, ArrowsLeadFromOptionToOption) {
    SetFocus(windowOf(arrows.optOne));

    EXPECT_EQ(walk(VK_LEFT, 2),
              (std::vector<HWND>{windowOf(arrows.optOther), windowOf(arrows.optOne)}));
}

/// A box of many lines in which nothing can be written, and a button.
class LinesForm : public Form {
public:
    LinesForm() : Form("frmLines", "Lines") {
        setLayout(column({item(txtLines).tall(3), item(cmdCancel)}));
        setInitialFocus(txtLines);
        setCancelButton(cmdCancel);
    }
    TextBox txtLines{*this, "txtLines", {.toolTip = "Lines", .readOnly = true, .multiLine = true}};
    CommandButton cmdCancel{*this, "cmdCancel", {.caption = "Cancel"}};
};

class LinesTest : public Win32FaceTest {
protected:
    LinesTest() {
        lines.cmdCancel.Click.connect([this] { ++cancelled; });
        form.QueryUnload.connect([this](bool&, UnloadMode mode) { modes.push_back(mode); });
        lines.setVisible(true);
        lines.bringToFront();
        EXPECT_TRUE(spinUntil([this] { return GetFocus() == windowOf(lines.txtLines); }));
    }
    ~LinesTest() override {
        modes.clear();
        lines.unload();
        settle();
    }

    std::vector<UnloadMode> modes;
    int cancelled = 0;
    FormOn<LinesForm> lines{machine.platform.desktop};
};

TEST_F(LinesTest, EscapeIsTheCancelButtonAndEndsNothing) {
    press(VK_ESCAPE);
    settle();

    EXPECT_EQ(cancelled, 1);
    EXPECT_TRUE(modes.empty());
    EXPECT_TRUE(form.loaded());
}

TEST_F(LinesTest, TheTabKeyLeavesTheBox) {
    press(VK_TAB);

    EXPECT_EQ(GetFocus(), windowOf(lines.cmdCancel));
}

} // namespace
} // namespace tarvik
