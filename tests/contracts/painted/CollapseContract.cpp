#include "contracts/FaceUnderTest.h"
#include "contracts/painted/PaintedFace.h"

#include "support/FormOn.h"

#include <gtest/gtest.h>

#include <memory>

namespace tarvik {
namespace {

enum class Foot { None, Fixed, Collapsing };

/// Fields and buttons side by side, as in the main window, and a line of two labels at the foot.
class FootForm : public Form {
public:
    explicit FootForm(Foot foot) : Form("frmFoot", "Foot") {
        LayoutNode all = row({
            column(
                {frame(frameAll, column({item(txtOne).wide(20).share(1), item(txtTwo)})), space()})
                .share(1),
            column({item(cmdOne), space(), item(cmdTwo)}).sameSize(),
        });
        LayoutNode line = row({item(lblPlan).wide(10).share(1), item(lblMore).wide(10)});
        switch (foot) {
        case Foot::None:
            setLayout(std::move(all));
            break;
        case Foot::Fixed:
            setLayout(column({std::move(all), std::move(line)}));
            break;
        case Foot::Collapsing:
            setLayout(column({std::move(all), std::move(line).collapsing()}));
            lblPlan.setVisible(false);
            lblMore.setVisible(false);
        }
        setInitialFocus(cmdOne);
    }

    Frame frameAll{*this, "frameAll", {"All"}};
    TextBox txtOne{*this, "txtOne", {.readOnly = true}};
    TextBox txtTwo{*this, "txtTwo", {}};
    CommandButton cmdOne{*this, "cmdOne", {.caption = "One"}};
    CommandButton cmdTwo{*this, "cmdTwo", {.caption = "Two"}};
    Label lblPlan{*this, "lblPlan", {.caption = "12 days and 4.5 GB are left of what was bought"}};
    Label lblMore{*this, "lblMore", {.caption = "more"}};
};

/// A field and a frame that collapses.
class OddsForm : public Form {
public:
    OddsForm() : Form("frmOdds", "Odds") {
        setLayout(column({item(cmdOne), frame(frameMore, column({item(txtMore)})).collapsing(),
                          item(txtLast).collapsing()}));
    }

    CommandButton cmdOne{*this, "cmdOne", {.caption = "One"}};
    Frame frameMore{*this, "frameMore", {"More"}};
    TextBox txtMore{*this, "txtMore", {}};
    TextBox txtLast{*this, "txtLast", {}};
};

using Size = std::array<int, 2>;

class CollapseContract : public testing::TestWithParam<int> {
protected:
    CollapseContract() {
        without = sizeOfNew(Foot::None);
        with = sizeOfNew(Foot::Fixed);
        open(form);
    }
    ~CollapseContract() override { close(form); }

    void open(Form& shown) {
        shown.setVisible(true);
        face->settle();
        moveToResolution(shown, GetParam());
        face->settle();
    }
    void close(Form& shown) {
        shown.unload();
        face->settle();
    }
    Size sizeOfNew(Foot foot) {
        FormOn<FootForm> shown{face->desktop(), foot};
        open(shown);
        const Size size = sizeOf(shown);
        close(shown);
        return size;
    }
    void showLine(bool seen) {
        form.lblPlan.setVisible(seen);
        form.lblMore.setVisible(seen);
        face->settle();
    }
    Size size() const { return sizeOf(form); }
    /// As wide as before, and as high as with a line that is always there.
    Size withLine() const { return {without[0], with[1]}; }
    int line() const { return with[1] - without[1]; }

    std::unique_ptr<FaceUnderTest> face = faceUnderTest();
    FormOn<FootForm> form{face->desktop(), Foot::Collapsing};
    Size without{};
    Size with{};
};

TEST_P(CollapseContract, AHiddenLineTakesNoRoom) {
    EXPECT_EQ(size(), without);
    EXPECT_GT(line(), 0);
}

TEST_P(CollapseContract, AWindowAtItsLeastHeightGetsAsMuchHigherAsTheLineNeeds) {
    showLine(true);

    EXPECT_EQ(size(), withLine());
}

TEST_P(CollapseContract, AndAsMuchLowerWhenTheLineGoes) {
    for (int i = 0; i < 3; ++i) {
        showLine(true);
        showLine(false);
        EXPECT_EQ(size(), without);
    }
}

TEST_P(CollapseContract, OfALineWithTwoOneAloneKeepsTheRoom) {
    form.lblMore.setVisible(true);
    face->settle();
    EXPECT_EQ(size(), withLine());

    form.lblPlan.setVisible(true);
    face->settle();
    form.lblMore.setVisible(false);
    face->settle();

    EXPECT_EQ(size(), withLine());
}

TEST_P(CollapseContract, ALargerWindowKeepsItsSize) {
    enlarge(form, 30, line() + 20);
    face->settle();
    const Size before = size();

    showLine(true);
    EXPECT_EQ(size(), before);
    showLine(false);

    EXPECT_EQ(size(), before);
}

TEST_P(CollapseContract, AWindowThatIsALittleLargerGetsAsHighAsItMust) {
    enlarge(form, 30, 1);
    face->settle();

    showLine(true);

    EXPECT_EQ(size(), (Size{without[0] + 30, with[1]}));
}

TEST_P(CollapseContract, AWiderWindowOnlyGetsHigher) {
    enlarge(form, 30, 0);
    face->settle();

    showLine(true);
    EXPECT_EQ(size(), (Size{without[0] + 30, with[1]}));
    showLine(false);

    EXPECT_EQ(size(), (Size{without[0] + 30, without[1]}));
}

TEST_P(CollapseContract, NoWindowGetsSmallerThanWithItsLine) {
    showLine(true);
    const Size before = size();

    enlarge(form, 0, -line());
    face->settle();

    EXPECT_EQ(size(), before);
}

TEST_P(CollapseContract, ALineThatCameWhileTheWindowWasHiddenHasItsRoom) {
    form.setVisible(false);
    face->settle();
    showLine(true);

    form.setVisible(true);
    face->settle();

    EXPECT_EQ(size(), withLine());
}

TEST_P(CollapseContract, AWindowThatOpensWithItsLineIsNoWider) {
    form.unload();
    face->settle();
    form.lblPlan.setVisible(true);

    open(form);

    EXPECT_EQ(size(), withLine());
}

TEST_P(CollapseContract, AFrameAndAFieldCollapseEachOnItsOwn) {
    FormOn<OddsForm> odds{face->desktop()};
    open(odds);
    const Size all = sizeOf(odds);
    odds.frameMore.setVisible(false);
    face->settle();
    const Size withoutFrame = sizeOf(odds);
    odds.txtLast.setVisible(false);
    face->settle();
    const Size least = sizeOf(odds);
    EXPECT_LT(withoutFrame[1], all[1]);
    EXPECT_LT(least[1], withoutFrame[1]);

    odds.txtMore.setVisible(false); // keeps its room in the frame
    odds.frameMore.setVisible(true);
    odds.txtLast.setVisible(true);
    face->settle();

    EXPECT_EQ(sizeOf(odds), all);
    close(odds);
}

INSTANTIATE_TEST_SUITE_P(At, CollapseContract, testing::ValuesIn(resolutions()),
                         testing::PrintToStringParamName());

} // namespace
} // namespace tarvik
