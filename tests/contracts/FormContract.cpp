#include "contracts/FaceContract.h"

namespace tarvik {
namespace {

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

TEST_F(FaceContract, AFormKnowsThatTheUserPutItAsideAndBroughtItBack) {
    show();

    face->minimiseByHand(form);
    EXPECT_TRUE(face->waitUntil([this] { return form.minimised(); }));
    face->restoreByHand(form);
    EXPECT_TRUE(face->waitUntil([this] { return !form.minimised(); }));
}

TEST_F(FaceContract, AFormMayBeWithdrawnByItsOwnHandler) {
    form.cmdOk.Click.connect([&] { form.unload(); });
    show();

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

} // namespace
} // namespace tarvik
