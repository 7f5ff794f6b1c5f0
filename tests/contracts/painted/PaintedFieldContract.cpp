#include "contracts/FaceContract.h"
#include "contracts/painted/PaintedFace.h"

#include <string>

namespace tarvik {
namespace {

using PaintedFieldContract = FaceContract;

TEST_F(PaintedFieldContract, ComingBackToTheWindowIsNotComingToTheField) {
    TextBox& field = form.txtName;
    show();
    field.GotFocus.connect([&] { field.select(0, static_cast<int>(field.text().size())); });
    face->goInto(field);
    face->settle();
    face->type(field, 'a');
    face->type(field, 'b');
    {
        const auto other = otherWindow(form);
        face->settle();
        ASSERT_FALSE(isActive(form));
    }
    ASSERT_TRUE(face->waitUntil([&] { return isActive(form); }));
    face->settle();

    face->type(field, 'c');

    EXPECT_EQ(field.text(), "abc");
}

/// Labels of both kinds.
class LabelForm : public Form {
public:
    LabelForm() : Form("frmLabels", "Labels") {
        setLayout(column({item(lblWrapped).wide(20).tall(4), item(lblPlain), item(cmdOther)}));
        setInitialFocus(cmdOther);
    }

    Label lblWrapped{*this, "lblWrapped", {.caption = "HH\r\nHH", .wrapped = true}};
    Label lblPlain{*this, "lblPlain", {.caption = "HH"}};
    CommandButton cmdOther{*this, "cmdOther", {.caption = "Other"}};
};

class PaintedLabelContract : public testing::Test {
protected:
    PaintedLabelContract() {
        form.setVisible(true);
        face->settle();
    }
    ~PaintedLabelContract() override {
        form.unload();
        face->settle();
    }

    std::unique_ptr<FaceUnderTest> face = faceUnderTest();
    FormOn<LabelForm> form{face->desktop()};
};

TEST_F(PaintedLabelContract, AWrappedLabelShowsTheLinesOfItsText) {
    form.lblWrapped.setCaption("HH\r\nHH\r\nHH");
    face->settle();

    EXPECT_EQ(paintedLines(form.lblPlain), 1);
    EXPECT_EQ(paintedLines(form.lblWrapped), 3);
}

TEST_F(PaintedLabelContract, AWrappedLabelBreaksALineThatIsTooLong) {
    std::string words;
    for (int i = 0; i < 12; ++i) {
        words += "HHHH ";
    }

    form.lblWrapped.setCaption(words);
    face->settle();

    EXPECT_GE(paintedLines(form.lblWrapped), 2);
}

} // namespace
} // namespace tarvik
