#include "contracts/FaceUnderTest.h"
#include "contracts/FieldsForm.h"
#include "support/FormOn.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tarvik {
namespace {

using Told = std::vector<std::string>;

/// A window with the focus in its first field, and what its fields tell from then on.
class LeavingContract : public testing::Test {
protected:
    LeavingContract() {
        form.setVisible(true);
        EXPECT_TRUE(face->waitUntil([this] { return face->focused(form) == "cmdFirst"; }));
        face->goInto(form.txtOne);
        face->settle();
        for (TextBox* box : {&form.txtOne, &form.txtTwo}) {
            box->GotFocus.connect([this, box] { told.push_back("to " + box->name()); });
            box->LostFocus.connect([this, box] { told.push_back("from " + box->name()); });
        }
    }
    ~LeavingContract() override {
        form.unload();
        face->settle();
    }

    /// As it would check the field that is left.
    void atLeaving(std::function<void()> check) {
        form.txtOne.LostFocus.connect([this, check = std::move(check)] {
            told.emplace_back("from txtOne");
            check();
        });
    }
    void leave() { face->press(form.txtOne, FaceKey::Tab); }

    std::unique_ptr<FaceUnderTest> face = faceUnderTest();
    FormOn<FieldsForm> form{face->desktop()};
    Told told;
};

TEST_F(LeavingContract, IsToldBeforeTheNextFieldIsReached) {
    leave();

    EXPECT_EQ(told, (Told{"from txtOne", "to txtTwo"}));
}

TEST_F(LeavingContract, ByAClickIsToldOnce) {
    face->clickInto(form.txtTwo);

    EXPECT_EQ(told, (Told{"from txtOne", "to txtTwo"}));
}

TEST_F(LeavingContract, ForAButtonIsTold) {
    leave();
    told.clear();

    face->press(form.txtTwo, FaceKey::Tab);

    EXPECT_EQ(told, Told{"from txtTwo"});
}

TEST_F(LeavingContract, ForAnotherWindowIsNotTold) {
    FormOn<AsideForm> aside{face->desktop()};
    aside.setVisible(true);
    ASSERT_TRUE(face->waitUntil([&] { return face->focused(aside) == "txtAside"; }));
    form.bringToFront();
    ASSERT_TRUE(face->waitUntil([&] { return face->focused(form) == "txtOne"; }));
    aside.unload();
    face->settle();

    EXPECT_EQ(told, Told());
}

TEST_F(LeavingContract, ForABoxIsNotTold) {
    face->atNextBox([](ShownBox& box) { box.press(MsgBoxAnswer::Ok); });

    face->desktop().messageBox({.text = "?", .buttons = MsgBoxButtons::OkOnly, .caption = "T"});
    form.bringToFront();
    ASSERT_TRUE(face->waitUntil([&] { return face->focused(form) == "txtOne"; }));

    EXPECT_EQ(told, Told());
}

TEST_F(LeavingContract, OfAFieldThatIsDisabledIsNotTold) {
    form.txtOne.setEnabled(false);
    face->settle();

    EXPECT_EQ(std::count(told.begin(), told.end(), "from txtOne"), 0);
}

TEST_F(LeavingContract, OfAFieldThatIsHiddenIsNotTold) {
    form.txtOne.setVisible(false);
    face->settle();

    EXPECT_EQ(std::count(told.begin(), told.end(), "from txtOne"), 0);
}

TEST_F(LeavingContract, LetsAHandlerChangeWhatStandsAround) {
    atLeaving([this] {
        form.lblWhy.setCaption("wrong");
        form.cmdLast.setEnabled(false);
        form.cmdFirst.setEnabled(false);
        form.txtOne.select(1, 2);
    });

    leave();
    face->settle();

    EXPECT_EQ(told, (Told{"from txtOne", "to txtTwo"}));
    EXPECT_EQ(face->shown(form.lblWhy), "wrong");
    EXPECT_FALSE(face->isEnabled(form.cmdLast));
    EXPECT_EQ(face->selected(form.txtOne), "ne");
    EXPECT_EQ(face->focused(form), "txtTwo");
}

TEST_F(LeavingContract, LetsAHandlerDisableWhereTheFocusGoes) {
    atLeaving([this] { form.txtTwo.setEnabled(false); });

    leave();
    face->settle();

    EXPECT_EQ(told, Told{"from txtOne"});
}

TEST_F(LeavingContract, LetsAHandlerBringTheFocusBack) {
    atLeaving([this] { form.focusOn(form.txtOne); });

    leave();
    face->settle();

    EXPECT_EQ(told, (Told{"from txtOne", "to txtOne"}));
    EXPECT_EQ(face->focused(form), "txtOne");
}

TEST_F(LeavingContract, LetsAHandlerEndTheForm) {
    atLeaving([this] { form.unload(); });

    leave();
    face->settle();

    EXPECT_EQ(told, Told{"from txtOne"});
    EXPECT_FALSE(face->hasWindow(form));
}

TEST_F(LeavingContract, ByTheProgramIsToldAsByTheUser) {
    form.focusOn(form.txtTwo);
    face->settle();

    EXPECT_EQ(told, (Told{"from txtOne", "to txtTwo"}));
    EXPECT_EQ(face->focused(form), "txtTwo");
}

TEST_F(LeavingContract, IsNotForWhatCannotBeUsed) {
    form.txtTwo.setEnabled(false);
    form.cmdLast.setVisible(false);

    for (Control* control : std::vector<Control*>{&form.txtTwo, &form.cmdLast, &form.lblWhy}) {
        form.focusOn(*control);
        face->settle();
        EXPECT_EQ(face->focused(form), "txtOne") << control->name();
    }
}

TEST_F(LeavingContract, ByTheProgramWaitsForTheWindow) {
    FormOn<AsideForm> aside{face->desktop()};
    aside.setVisible(true);
    ASSERT_TRUE(face->waitUntil([&] { return face->focused(aside) == "txtAside"; }));

    form.focusOn(form.txtTwo);
    face->settle();
    EXPECT_EQ(face->focused(aside), "txtAside");
    form.bringToFront();

    EXPECT_TRUE(face->waitUntil([&] { return face->focused(form) == "txtTwo"; }));
    aside.unload();
    face->settle();
}

TEST_F(LeavingContract, ByTheProgramIsDoneWhereTheWindowOpens) {
    FormOn<AsideForm> aside{face->desktop()};
    form.txtTwo.setEnabled(false);
    form.setVisible(false);
    aside.setVisible(true);
    ASSERT_TRUE(face->waitUntil([&] { return face->focused(aside) == "txtAside"; }));

    form.txtTwo.setEnabled(true);
    form.setVisible(true);
    form.bringToFront();
    form.focusOn(form.txtTwo);

    EXPECT_TRUE(face->waitUntil([&] { return face->focused(form) == "txtTwo"; }));
    aside.unload();
    face->settle();
}

} // namespace
} // namespace tarvik
