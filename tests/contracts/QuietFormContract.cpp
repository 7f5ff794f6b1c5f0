#include "contracts/FaceUnderTest.h"
#include "contracts/FieldsForm.h"
#include "support/FormOn.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

/// The user types in the field of one window when another one comes.
class QuietFormContract : public testing::Test {
protected:
    QuietFormContract() {
        form.setVisible(true);
        EXPECT_TRUE(face->waitUntil([this] { return face->focused(form) == "cmdFirst"; }));
        form.txtOne.setText("");
        face->goInto(form.txtOne);
        face->settle();
        form.txtOne.LostFocus.connect([this] { ++left; });
    }
    ~QuietFormContract() override {
        form.unload();
        face->settle();
    }

    void expectTypingGoesOn() {
        face->settle();
        face->typeOn('x');
        EXPECT_EQ(form.txtOne.text(), "x");
        EXPECT_EQ(face->focused(form), "txtOne");
        EXPECT_EQ(left, 0);
    }

    std::unique_ptr<FaceUnderTest> face = faceUnderTest();
    FormOn<FieldsForm> form{face->desktop()};
    int left = 0;
};

TEST_F(QuietFormContract, AnyOtherFormTakesTheFocusWhenItIsShown) {
    FormOn<AsideForm> loud{face->desktop()};

    loud.setVisible(true);

    EXPECT_TRUE(face->waitUntil([&] { return face->focused(loud) == "txtAside"; }));
    face->typeOn('x');
    EXPECT_EQ(form.txtOne.text(), "");
    EXPECT_EQ(loud.txtAside.text(), "x");
    loud.unload();
    face->settle();
}

TEST_F(QuietFormContract, IsShownWhileTypingGoesOn) {
    FormOn<AsideForm> quiet{face->desktop(), true};

    quiet.setVisible(true);
    quiet.bringToFront();

    expectTypingGoesOn();
    EXPECT_TRUE(face->isSeen(quiet));
    quiet.unload();
    face->settle();
}

TEST_F(QuietFormContract, ComesBackWhileTypingGoesOn) {
    FormOn<AsideForm> quiet{face->desktop(), true};
    quiet.setVisible(true);
    face->settle();
    quiet.setMinimised(true);
    face->settle();
    ASSERT_TRUE(face->waitUntil([&] { return face->isMinimised(quiet); }));

    quiet.setVisible(true);

    expectTypingGoesOn();
    EXPECT_FALSE(face->isMinimised(quiet));
    quiet.unload();
    face->settle();
}

TEST_F(QuietFormContract, IsShownAgainWhileTypingGoesOn) {
    FormOn<AsideForm> quiet{face->desktop(), true};
    quiet.setVisible(true);
    face->settle();
    quiet.setVisible(false);
    face->settle();

    quiet.setVisible(true);

    expectTypingGoesOn();
    EXPECT_TRUE(face->isSeen(quiet));
    quiet.unload();
    face->settle();
}

TEST_F(QuietFormContract, HasTheFocusOnceTheUserClicksIntoIt) {
    FormOn<AsideForm> quiet{face->desktop(), true};
    quiet.setVisible(true);
    face->settle();

    face->clickInto(quiet.txtAside);
    face->typeOn('x');

    EXPECT_EQ(quiet.txtAside.text(), "x");
    EXPECT_EQ(face->focused(quiet), "txtAside");
    quiet.unload();
    face->settle();
}

} // namespace
} // namespace tarvik
