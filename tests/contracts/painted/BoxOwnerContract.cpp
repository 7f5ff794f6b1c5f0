#include "contracts/FaceContract.h"
#include "contracts/painted/PaintedFace.h"

namespace tarvik {
namespace {

class OtherForm : public Form {
public:
    OtherForm() : Form("frmOther", "Other") { setLayout(row({item(cmdAsk)})); }
    CommandButton cmdAsk{*this, "cmdAsk", {.caption = "Ask"}};
};

/// Boxes that come up by themselves, or while the program shows windows and puts them aside, stand
/// before a window that is seen.
class BoxOwnerContract : public FaceContract {
protected:
    BoxOwnerContract() { show(); }
    ~BoxOwnerContract() override {
        other.unload();
        face->settle();
    }

    std::string ownerOfBox() {
        std::string owner = "no box came";
        face->atNextBox([&](ShownBox& box) {
            owner = ownerOfOpenBox();
            box.press(MsgBoxAnswer::Ok);
        });
        face->desktop().messageBox({.text = "?", .caption = "T"});
        return owner;
    }

    FormOn<OtherForm> other{face->desktop()};
};

TEST_F(BoxOwnerContract, ABoxDoesNotGoAsideWithTheWindowThatIsPutAsideForIt) {
    form.setMinimised(true);

    EXPECT_EQ(ownerOfBox(), "");

    EXPECT_TRUE(face->isMinimised(form));
}

TEST_F(BoxOwnerContract, ABoxStandsBeforeTheWindowThatIsShownForIt) {
    form.setVisible(false);
    face->settle();

    form.setVisible(true);

    EXPECT_EQ(ownerOfBox(), "frmThrowAway");
}

TEST_F(BoxOwnerContract, EachBoxOfATickStandsBeforeTheWindowThatWasActive) {
    std::vector<std::string> owners;
    form.timTick.Tick.connect([&] {
        form.timTick.setEnabled(false);
        owners = {ownerOfBox(), ownerOfBox()};
    });
    other.setVisible(true);
    other.bringToFront();
    ASSERT_TRUE(face->waitUntil([&] { return isActive(other); }));

    form.timTick.setInterval(10'000);
    form.timTick.setEnabled(true);
    face->tickLate(form.timTick);

    EXPECT_EQ(owners, (std::vector<std::string>{"frmOther", "frmOther"}));
}

} // namespace
} // namespace tarvik
