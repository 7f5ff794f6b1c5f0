#include "contracts/FaceContract.h"

namespace tarvik {
namespace {

/// A window that is seen, with the focus in its list.
class FocusContract : public FaceContract {
protected:
    FocusContract() {
        show();
        EXPECT_TRUE(face->waitUntil([this] { return face->focused(form) == "cboList"; }))
            << "The focus does not begin where the form says.";
    }
};

TEST_F(FocusContract, TheTabKeyMovesTheFocus) {
    face->press(form.cboList, FaceKey::Tab);

    EXPECT_EQ(face->focused(form), "cmdOk");
}

TEST_F(FocusContract, TheMnemonicOfALabelMovesToItsInput) {
    face->pressMnemonic(form, 'n');

    EXPECT_EQ(face->focused(form), "txtName");
}

TEST_F(FocusContract, EnterPressesTheDefaultButtonAndEscapeTheOther) {
    std::string clicks;
    form.cmdOk.Click.connect([&] { clicks += "OK "; });
    form.cmdCancel.Click.connect([&] { clicks += "Cancel "; });

    face->press(form.cboList, FaceKey::Enter);
    face->press(form.cboList, FaceKey::Escape);

    EXPECT_EQ(clicks, "OK Cancel ");
}

} // namespace
} // namespace tarvik
