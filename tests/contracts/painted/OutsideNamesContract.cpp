#include "contracts/painted/OutsideNames.h"
#include "contracts/painted/PaintedFace.h"

#include "support/FormOn.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tarvik {
namespace {

/// Controls that show a name from outside, and one in which the user writes.
class OutsideForm : public Form {
public:
    OutsideForm() : Form("frmOutside", "Names") {
        setLayout(column({item(cboNames), item(txtName), item(txtOwn)}));
    }

    ComboBox cboNames{*this, "cboNames", {.accessibleName = "Names"}};
    TextBox txtName{*this, "txtName", {.accessibleName = "Name", .readOnly = true}};
    TextBox txtOwn{*this, "txtOwn", {.accessibleName = "Own"}};
};

class OutsideNamesContract : public testing::Test {
protected:
    OutsideNamesContract() {
        form.setVisible(true);
        machine.face->settle();
    }
    ~OutsideNamesContract() override {
        form.unload();
        machine.face->settle();
    }

    /// Notes what is seen of a box with that text.
    void showBox(const std::string& text) {
        machine.face->atNextBox([this](ShownBox& box) {
            shown = box.lines;
            fits = openBoxFitsTheScreen();
            box.press(MsgBoxAnswer::Ok);
        });
        machine.face->desktop().messageBox({.text = text, .caption = "T"});
    }

    OutsideNamesUnderTest machine = outsideNamesUnderTest();
    FormOn<OutsideForm> form{machine.face->desktop()};
    std::vector<std::string> shown{""};
    bool fits = false;
};

TEST_F(OutsideNamesContract, AListTellsOfATurnAndKeepsTheTrueName) {
    form.cboNames.addItem(machine.turned);

    machine.face->choose(form.cboNames, 0);

    EXPECT_EQ(machine.face->shown(form.cboNames), machine.told);
    EXPECT_EQ(form.cboNames.text(), machine.turned);
}

TEST_F(OutsideNamesContract, ATextThatIsOnlyReadTellsOfATurn) {
    form.txtName.setText(machine.turned);

    EXPECT_EQ(machine.face->shown(form.txtName), machine.told);
    EXPECT_EQ(form.txtName.text(), machine.turned);
}

TEST_F(OutsideNamesContract, ATextOfTheUsersOwnIsLeftAsItIs) {
    form.txtOwn.setText(machine.turned);

    EXPECT_EQ(machine.face->shown(form.txtOwn), machine.turned);
}

TEST_F(OutsideNamesContract, ABoxTellsOfATurn) {
    showBox(machine.turned);

    EXPECT_EQ(shown, std::vector<std::string>{machine.told});
}

TEST_F(OutsideNamesContract, ABoxOfThousandsOfLinesFitsTheScreenWithBothEndsOfItsText) {
    std::string lines;
    for (int i = 0; i < 2000; ++i) {
        lines += "x\r";
    }

    showBox("Warning:\r" + lines + "Try help.");

    EXPECT_TRUE(fits);
    EXPECT_EQ(shown.front(), "Warning:");
    EXPECT_EQ(shown.back(), "Try help.");
    EXPECT_EQ(std::count(shown.begin(), shown.end(), "..."), 1);
}

TEST_F(OutsideNamesContract, ABoxOfAWordOfThousandsOfWideLettersFitsTheScreen) {
    showBox("Warning:\r" + std::string(3000, 'W') + "\rTry help.");

    EXPECT_TRUE(fits);
    EXPECT_EQ(shown.front(), "Warning:");
    EXPECT_EQ(shown.back(), "Try help.");
}

} // namespace
} // namespace tarvik
