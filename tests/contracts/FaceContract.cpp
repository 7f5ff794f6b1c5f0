#include "contracts/FaceUnderTest.h"

#include "support/FormOn.h"
#include "support/ThrowAwayForm.h"
#include "types/RunTimeError.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

class FaceContract : public testing::Test {
protected:
    FaceContract() { form.load(); }
    ~FaceContract() override {
        // What the handlers of the test wrote to is gone.
        form.QueryUnload.connect({});
        form.Unload.connect({});
        form.unload();
        face->settle();
    }

    void show() {
        form.setVisible(true);
        face->settle();
    }
    MsgBoxAnswer ask(MsgBoxButtons buttons) {
        return face->desktop().messageBox({.text = "?", .buttons = buttons, .caption = "T"});
    }

    std::unique_ptr<FaceUnderTest> face = faceUnderTest();
    FormOn<ThrowAwayForm> form{face->desktop()};
};

// Controls.

TEST_F(FaceContract, CaptionsMarkTheirMnemonicsAndNothingElse) {
    EXPECT_EQ(face->marked(form.frameAll), "All && sundry");
    EXPECT_EQ(face->marked(form.lblName), "&Name:");
    EXPECT_EQ(face->marked(form.cmdCancel), "&Cancel");
    EXPECT_EQ(face->marked(form.cmdOk), "OK");
    EXPECT_EQ(face->shown(form.lblPlain), "this & that");
}

TEST_F(FaceContract, TheWindowFollowsTheModel) {
    form.txtName.setText("second");
    form.lblName.setCaption("Other:");
    form.chkTick.setValue(1);
    form.cboList.addItem("a");
    form.cboList.addItem("b");
    form.cboList.setListIndex(1);
    form.cmdOk.setCaption("Go");
    form.cmdOk.setEnabled(false);
    form.chkTick.setVisible(false);
    form.txtName.setToolTip("other tip");

    EXPECT_EQ(face->shown(form.txtName), "second");
    EXPECT_EQ(face->shown(form.lblName), "Other:");
    EXPECT_TRUE(face->isTicked(form.chkTick));
    EXPECT_EQ(face->shown(form.cboList), "b");
    EXPECT_EQ(face->shown(form.cmdOk), "Go");
    EXPECT_FALSE(face->isEnabled(form.cmdOk));
    EXPECT_FALSE(face->isVisible(form.chkTick));
    EXPECT_EQ(face->tip(form.txtName), "other tip");
}

TEST_F(FaceContract, TheModelFollowsTheUser) {
    int changes = 0;
    int clicks = 0;
    form.cboList.addItem("a");
    form.txtName.Change.connect([&] { ++changes; });
    form.cmdOk.Click.connect([&] { ++clicks; });

    face->enter(form.txtName, 'x');
    face->click(form.chkTick);
    face->choose(form.cboList, 0);
    face->click(form.cmdOk);

    EXPECT_EQ(form.txtName.text(), "x");
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(form.chkTick.ticked());
    EXPECT_EQ(form.cboList.listIndex(), 0);
    EXPECT_EQ(clicks, 1);
}

TEST_F(FaceContract, WhatTheModelTellsDoesNotComeBackAsTheUsersDoing) {
    int ticks = 0;
    int chosen = 0;
    int changes = 0;
    form.chkTick.Click.connect([&] { ++ticks; });
    form.cboList.Click.connect([&] { ++chosen; });
    form.txtName.Change.connect([&] { ++changes; });
    form.cboList.addItem("a");
    form.cboList.addItem("b");

    form.chkTick.setValue(1);
    form.cboList.setListIndex(1);
    form.cboList.clear();
    form.txtName.setText("by the program");

    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(chosen, 1);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(form.cboList.listIndex(), -1);
}

TEST_F(FaceContract, AHandlerThatChangesWhatTheUserDidIsFollowed) {
    form.chkTick.Click.connect([&] { form.chkTick.setValue(0); });

    face->click(form.chkTick);

    EXPECT_FALSE(face->isTicked(form.chkTick));
}

TEST_F(FaceContract, TabsFollowTheLayout) {
    EXPECT_EQ(face->tabOrder(form, 5),
              (std::vector<std::string>{"txtName", "chkTick", "cboList", "cmdOk", "cmdCancel"}));
}

TEST_F(FaceContract, ATimerTicksWhileItIsEnabled) {
    int ticks = 0;
    form.timTick.Tick.connect([&] { ++ticks; });
    form.timTick.setInterval(1);
    form.timTick.setEnabled(true);

    EXPECT_TRUE(face->waitUntil([&] { return ticks >= 3; }));

    form.timTick.setEnabled(false);
    const int before = ticks;
    face->tickLate(form.timTick);
    EXPECT_EQ(ticks, before);
}

// Windows.

TEST_F(FaceContract, AFormIsShownHiddenAndMinimised) {
    EXPECT_FALSE(face->isSeen(form));
    show();
    EXPECT_TRUE(face->isSeen(form));
    form.setMinimised(true);
    face->settle();
    EXPECT_TRUE(face->isMinimised(form));
    show();
    EXPECT_FALSE(face->isMinimised(form));
    form.setVisible(false);
    face->settle();
    EXPECT_FALSE(face->isSeen(form));
}

TEST_F(FaceContract, AFormThatIsPutAsideAtOnceIsNeverSeen) {
    form.setVisible(true);
    form.bringToFront();
    form.setMinimised(true);
    EXPECT_FALSE(face->isSeen(form));

    face->settle();

    EXPECT_TRUE(face->isMinimised(form));
    EXPECT_TRUE(form.minimised());
}

TEST_F(FaceContract, AFormMayBeWithdrawnByItsOwnHandler) {
    form.cmdOk.Click.connect([&] { form.unload(); });

    face->click(form.cmdOk);
    form.txtName.setText("nobody shows this");
    face->settle();

    EXPECT_FALSE(face->hasWindow(form));
}

TEST_F(FaceContract, TheCloseBoxAsksTheForm) {
    std::vector<UnloadMode> modes;
    form.QueryUnload.connect([&](bool& cancel, UnloadMode mode) {
        modes.push_back(mode);
        cancel = true;
    });
    show();

    face->pressCloseBox(form);
    face->settle();

    EXPECT_EQ(modes, std::vector<UnloadMode>{UnloadMode::FormControlMenu});
    EXPECT_TRUE(form.loaded());
}

class PutAsideForm : public Form {
public:
    PutAsideForm() : Form("frmPutAside", "Put aside") {
        setLayout(column({item(cmdAside)}));
        setEscapeCloses();
    }
    CommandButton cmdAside{*this, "cmdAside", {.caption = "Aside"}};
};

TEST_F(FaceContract, WithoutACancelButtonEscapeDoesWhatTheCloseBoxDoes) {
    FormOn<PutAsideForm> aside{face->desktop()};
    std::vector<UnloadMode> modes;
    aside.QueryUnload.connect([&](bool& cancel, UnloadMode mode) {
        modes.push_back(mode);
        cancel = mode == UnloadMode::FormControlMenu;
    });
    aside.setVisible(true);
    face->settle();

    face->press(aside.cmdAside, FaceKey::Escape);

    EXPECT_EQ(modes, std::vector<UnloadMode>{UnloadMode::FormControlMenu});
    aside.unload();
    face->settle();
}

// Boxes.

TEST_F(FaceContract, ABoxShowsItsTextInLinesAndGivesTheAnswer) {
    using Lines = std::vector<std::string>;
    Lines lines;
    face->atNextBox([&](ShownBox& box) {
        lines = box.lines;
        EXPECT_EQ(box.caption, "Title");
        EXPECT_EQ(box.icon.value_or(MsgBoxIcon::Question), MsgBoxIcon::Question);
        box.press(MsgBoxAnswer::No);
    });

    EXPECT_EQ(face->desktop().messageBox({.text = "one\rtwo\r\nthree <b>",
                                          .buttons = MsgBoxButtons::YesNo,
                                          .icon = MsgBoxIcon::Question,
                                          .caption = "Title"}),
              MsgBoxAnswer::No);
    EXPECT_EQ(lines, (Lines{"one", "two", "three <b>"}));
}

struct AnswerCase {
    MsgBoxButtons buttons;
    MsgBoxAnswer answer;
};

class AnswerContract : public FaceContract, public testing::WithParamInterface<AnswerCase> {};

TEST_P(AnswerContract, EachButtonGivesItsAnswer) {
    face->atNextBox([](ShownBox& box) { box.press(GetParam().answer); });

    EXPECT_EQ(ask(GetParam().buttons), GetParam().answer);
}

INSTANTIATE_TEST_SUITE_P(All, AnswerContract,
                         testing::Values(AnswerCase{MsgBoxButtons::OkOnly, MsgBoxAnswer::Ok},
                                         AnswerCase{MsgBoxButtons::OkCancel, MsgBoxAnswer::Ok},
                                         AnswerCase{MsgBoxButtons::OkCancel, MsgBoxAnswer::Cancel},
                                         AnswerCase{MsgBoxButtons::YesNo, MsgBoxAnswer::Yes},
                                         AnswerCase{MsgBoxButtons::YesNo, MsgBoxAnswer::No},
                                         AnswerCase{MsgBoxButtons::YesNoCancel, MsgBoxAnswer::Yes},
                                         AnswerCase{MsgBoxButtons::YesNoCancel, MsgBoxAnswer::No},
                                         AnswerCase{MsgBoxButtons::YesNoCancel,
                                                    MsgBoxAnswer::Cancel}));

class ClosedBoxContract : public FaceContract, public testing::WithParamInterface<AnswerCase> {};

TEST_P(ClosedBoxContract, ClosingABoxDeclines) {
    if (!face->canClose(GetParam().buttons)) {
        GTEST_SKIP() << "this desktop gives such a box no way to be closed";
    }
    face->atNextBox([](ShownBox& box) { box.close(); });

    EXPECT_EQ(ask(GetParam().buttons), GetParam().answer);
}

INSTANTIATE_TEST_SUITE_P(All, ClosedBoxContract,
                         testing::Values(AnswerCase{MsgBoxButtons::OkOnly, MsgBoxAnswer::Ok},
                                         AnswerCase{MsgBoxButtons::OkCancel, MsgBoxAnswer::Cancel},
                                         AnswerCase{MsgBoxButtons::YesNo, MsgBoxAnswer::No},
                                         AnswerCase{MsgBoxButtons::YesNoCancel,
                                                    MsgBoxAnswer::Cancel}));

TEST_F(FaceContract, WhileABoxIsOpenNoTimerTicks) {
    int ticks = 0;
    int rounds = 0;
    form.timTick.Tick.connect([&] { ++ticks; });
    form.timTick.setInterval(10'000);
    form.timTick.setEnabled(true);
    face->atNextBox([&](ShownBox& box) {
        ++rounds;
        face->tickLate(form.timTick);
        box.press(MsgBoxAnswer::Ok);
    });

    ask(MsgBoxButtons::OkOnly);

    EXPECT_EQ(rounds, 1);
    EXPECT_EQ(ticks, 0);
}

// Running.

TEST_F(FaceContract, WhatABlockingCallThrowsIsThrownToTheCaller) {
    EXPECT_THROW(face->desktop().runBlocking([] { raise(ErrorNumber::Overflow); }), RunTimeError);
}

TEST_F(FaceContract, RunEndsWhenNoFormIsLeft) {
    face->runWith([&] { form.unload(); });
    face->desktop().run(); // nothing is realised: returns at once

    EXPECT_FALSE(form.loaded());
}

TEST_F(FaceContract, QuitEndsRunAndTheFormStays) {
    face->runWith([&] { face->desktop().quit(); });

    EXPECT_TRUE(form.loaded());
}

// The end of the session.

class EndOfSessionContract : public FaceContract {
protected:
    EndOfSessionContract() {
        form.QueryUnload.connect([this](bool&, UnloadMode mode) { modes.push_back(mode); });
        form.Unload.connect([this] { ++unloads; });
    }

    std::vector<UnloadMode> modes;
    int unloads = 0;
};

TEST_F(EndOfSessionContract, EveryFormIsUnloadedOnceAndTheProgramEnds) {
    face->runWith([&] {
        face->endSession();
        face->endSession();
    });

    EXPECT_EQ(modes, std::vector<UnloadMode>{UnloadMode::AppWindows});
    EXPECT_EQ(unloads, 1);
    EXPECT_FALSE(form.loaded());
    face->desktop().run(); // returns at once
}

TEST_F(EndOfSessionContract, AnOpenBoxIsClosedAsIfDeclined) {
    face->atNextBox([&](ShownBox&) { face->endSession(); });

    EXPECT_EQ(ask(MsgBoxButtons::YesNo), MsgBoxAnswer::No);

    EXPECT_EQ(unloads, 1);
}

TEST_F(EndOfSessionContract, ABoxOnTheWayIsAnsweredAsIfDeclined) {
    MsgBoxAnswer answer = MsgBoxAnswer::Yes;
    form.Unload.connect([&] { answer = ask(MsgBoxButtons::YesNo); });

    face->endSession();

    EXPECT_EQ(answer, MsgBoxAnswer::No);
}

TEST_F(EndOfSessionContract, AfterwardsNoWindowIsMade) {
    face->endSession();
    face->settle();

    form.setVisible(true);

    EXPECT_FALSE(face->hasWindow(form));
    face->desktop().run(); // returns at once
}

} // namespace
} // namespace tarvik
