#include "contracts/painted/OutsideNames.h"

#include "support/FormOn.h"

#include <gtest/gtest.h>

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
    OutsideNamesContract() { form.load(); }
    ~OutsideNamesContract() override {
        form.unload();
        machine.face->settle();
    }

    OutsideNamesUnderTest machine = outsideNamesUnderTest();
    FormOn<OutsideForm> form{machine.face->desktop()};
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
    std::vector<std::string> lines;
    machine.face->atNextBox([&](ShownBox& box) {
        lines = box.lines;
        box.press(MsgBoxAnswer::Ok);
    });

    machine.face->desktop().messageBox({.text = machine.turned, .caption = "T"});

    EXPECT_EQ(lines, std::vector<std::string>{machine.told});
}

} // namespace
} // namespace tarvik
