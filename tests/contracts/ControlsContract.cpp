#include "contracts/FaceContract.h"

namespace tarvik {
namespace {

class ControlsContract : public FaceContract {
protected:
    ControlsContract() { show(); }

    void hide() {
        form.setVisible(false);
        face->settle();
    }
    void changeAll() {
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
    }
    void expectAllChanged() {
        EXPECT_EQ(face->shown(form.txtName), "second");
        EXPECT_EQ(face->shown(form.lblName), "Other:");
        EXPECT_TRUE(face->isTicked(form.chkTick));
        EXPECT_EQ(face->shown(form.cboList), "b");
        EXPECT_EQ(face->shown(form.cmdOk), "Go");
        EXPECT_FALSE(face->isEnabled(form.cmdOk));
        EXPECT_FALSE(face->isVisible(form.chkTick));
        EXPECT_EQ(face->tip(form.txtName), "other tip");
    }
};

TEST_F(ControlsContract, CaptionsMarkTheirMnemonicsAndNothingElse) {
    EXPECT_EQ(face->marked(form.frameAll), "All && sundry");
    EXPECT_EQ(face->marked(form.lblName), "&Name:");
    EXPECT_EQ(face->marked(form.cmdCancel), "&Cancel");
    EXPECT_EQ(face->marked(form.cmdOk), "OK");
    EXPECT_EQ(face->shown(form.lblPlain), "this & that");
}

TEST_F(ControlsContract, TheWindowFollowsTheModel) {
    changeAll();

    expectAllChanged();
}

TEST_F(ControlsContract, AWindowThatWasHiddenShowsWhatHasChanged) {
    hide();
    changeAll();

    show();

    expectAllChanged();
}

TEST_F(ControlsContract, AWindowThatWasMinimisedShowsWhatHasChanged) {
    form.setMinimised(true);
    face->settle();
    changeAll();

    show();

    expectAllChanged();
}

TEST_F(ControlsContract, WhatIsChangedBackWhileNobodySeesItIsAsBefore) {
    hide();
    form.txtName.setText("between");
    form.cmdOk.setEnabled(false);
    form.txtName.setText("first");
    form.cmdOk.setEnabled(true);

    show();

    EXPECT_EQ(face->shown(form.txtName), "first");
    EXPECT_TRUE(face->isEnabled(form.cmdOk));
}

TEST_F(ControlsContract, TheModelFollowsTheUser) {
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

TEST_F(ControlsContract, WhatTheModelTellsDoesNotComeBackAsTheUsersDoing) {
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

TEST_F(ControlsContract, AHandlerThatChangesWhatTheUserDidIsFollowed) {
    form.chkTick.Click.connect([&] { form.chkTick.setValue(0); });

    face->click(form.chkTick);

    EXPECT_FALSE(face->isTicked(form.chkTick));
}

TEST_F(ControlsContract, TabsFollowTheLayout) {
    EXPECT_EQ(face->tabOrder(form, 5),
              (std::vector<std::string>{"txtName", "chkTick", "cboList", "cmdOk", "cmdCancel"}));
}

TEST_F(ControlsContract, ATimerTicksWhileItIsEnabled) {
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

} // namespace
} // namespace tarvik
