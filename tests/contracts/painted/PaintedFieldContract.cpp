#include "common/ReadableColour.h"
#include "contracts/FaceContract.h"
#include "contracts/painted/PaintedFace.h"

#include <algorithm>
#include <functional>
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

/// A form that a handler of its own ends.
class OwnEndContract : public FaceContract {
protected:
    OwnEndContract() { show(); }

    /// What is to happen in the handler of that control.
    std::function<void()> endBy(const Control& control) {
        isThere = presenceOf(control);
        return [this] {
            form.unload();
            wasThere = isThere();
        };
    }
    void expectOutlived() {
        EXPECT_TRUE(wasThere);
        EXPECT_FALSE(isThere());
    }

    std::function<bool()> isThere;
    bool wasThere = false;
};

TEST_F(OwnEndContract, AFieldOutlivesAKeyGoingDown) {
    form.txtName.KeyDown.connect(endBy(form.txtName));
    face->goInto(form.txtName);

    face->press(form.txtName, FaceKey::Delete);
    face->settle();

    expectOutlived();
    EXPECT_EQ(form.txtName.text(), "first");
}

TEST_F(OwnEndContract, AFieldOutlivesAKeyComingUp) {
    form.txtName.KeyUp.connect(endBy(form.txtName));
    face->goInto(form.txtName);

    face->press(form.txtName, FaceKey::Delete);
    face->settle();

    expectOutlived();
}

TEST_F(OwnEndContract, AButtonOutlivesItsClick) {
    form.cmdOk.Click.connect(endBy(form.cmdOk));

    face->click(form.cmdOk);
    face->settle();

    expectOutlived();
}

/// Labels of both kinds, and a field that takes no typing.
class LabelForm : public Form {
public:
    LabelForm() : Form("frmLabels", "Labels") {
        setLayout(column({item(lblWrapped).wide(20).tall(4), item(lblPlain),
                          item(txtFixed).wide(20), item(cmdOther)}));
        setInitialFocus(cmdOther);
    }

    Label lblWrapped{*this, "lblWrapped", {.caption = "HH\r\nHH", .wrapped = true}};
    Label lblPlain{*this, "lblPlain", {.caption = "HH"}};
    TextBox txtFixed{*this, "txtFixed", {.text = "HH", .readOnly = true}};
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

TEST_F(PaintedLabelContract, ARedTextCanBeReadOnADarkWindow) {
    constexpr Colour ground{32, 32, 32};
    form.lblPlain.setForeColour({192, 0, 0});

    const auto dark = otherGround(ground);
    face->settle();

    double best = 0;
    for (const std::uint32_t one : pixelsOf(form.lblPlain).values) {
        const Colour colour{static_cast<int>(one >> 16 & 0xFFU), static_cast<int>(one >> 8 & 0xFFU),
                            static_cast<int>(one & 0xFFU)};
        best = std::max(best, face::contrastRatio(colour, ground));
    }
    EXPECT_GE(best, 4.5);
}

TEST_F(PaintedLabelContract, AFieldThatTakesNoTypingStandsOnTheGroundOfItsWindow) {
    const auto dark = otherGround({30, 32, 34});
    face->settle();

    const Pixels field = pixelsOf(form.txtFixed);
    EXPECT_GT(field.countOf(0x1E2022), field.width * field.height / 2);
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
