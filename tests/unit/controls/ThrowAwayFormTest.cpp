#include "controls/Form.h"
#include "scripted/ScriptedPlatform.h"
#include "scripted/TextPicture.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

/// A form that no platform has ever heard of, with one control of each kind.
class FrmThrowAway : public Form {
public:
    FrmThrowAway() : Form("frmThrowAway", "Throw-away") {
        cboUnit.addItem("Bytes");
        cboUnit.addItem("Kilo-Bytes");
        cmdReset.Click.connect([this] { resets++; });
        chkLimit.Click.connect([this] { txtLimit.setEnabled(chkLimit.ticked()); });
        cboUnit.Click.connect([this] { lblUnit.setCaption(cboUnit.text()); });
        timBlink.Tick.connect([this] { blinks++; });
        mnuMenu.Click.connect([this](int entry) { chosen = mnuMenu.entry(entry).caption; });
        txtLimit.setEnabled(false);
        // clang-format off
        setLayout(column({
            frame(fraLimit, grid(3, {
                item(chkLimit), item(txtLimit).wide(8), item(cboUnit).wide(10),
                item(picLamp),  item(lblUnit),          blank(),
            })),
            row({space(), item(cmdReset)}),
        }));
        // clang-format on
    }

    Frame fraLimit{*this, "fraLimit", {"Limit"}};
    CheckBox chkLimit{*this, "chkLimit", {.caption = "At"}};
    TextBox txtLimit{*this, "txtLimit", {.text = "100", .alignment = TextAlignment::Right}};
    ComboBox cboUnit{*this, "cboUnit", {.accessibleName = "Unit"}};
    Picture picLamp{*this, "picLamp"};
    Label lblUnit{*this, "lblUnit", {.caption = "no unit"}};
    CommandButton cmdReset{*this, "cmdReset", {.caption = "Reset"}};
    Timer timBlink{*this, "timBlink"};
    Menu mnuMenu{*this, "mnuMenu", "mnuEntry", {"Show", "-", "Hide"}};

    int resets = 0;
    int blinks = 0;
    std::string chosen;
};

class ThrowAwayFormTest : public testing::Test {
protected:
    ThrowAwayFormTest() {
        form.setDesktop(machine.desktop);
        machine.desktop.fail = [](const std::string& what) { ADD_FAILURE() << what; };
        form.setVisible(true);
    }

    FrmThrowAway form;
    ScriptedPlatform machine;
};

TEST_F(ThrowAwayFormTest, IsShownWithoutThePlatformKnowingIt) {
    EXPECT_EQ(machine.desktop.form("frmThrowAway"), &form);
    EXPECT_EQ(textPicture(form), "+- Throw-away -----------------------------+\n"
                                 "| +- Limit ------------------------------+ |\n"
                                 "| | [ ] At  [      100 ]  [           v] | |\n"
                                 "| | (*)     no unit                      | |\n"
                                 "| +--------------------------------------+ |\n"
                                 "|                                < Reset > |\n"
                                 "+------------------------------------------+\n");
}

TEST_F(ThrowAwayFormTest, WhatTheUserDoesReachesItsHandlersAndComesBackToBeSeen) {
    form.chkLimit.setValue(1);
    form.cboUnit.setListIndex(1);
    form.cmdReset.press();

    EXPECT_TRUE(form.txtLimit.enabled());
    EXPECT_EQ(form.lblUnit.caption(), "Kilo-Bytes");
    EXPECT_EQ(form.resets, 1);
    EXPECT_EQ(machine.desktop.changesTold,
              (std::vector<std::string>{"frmThrowAway.chkLimit", "frmThrowAway.txtLimit",
                                        "frmThrowAway.cboUnit", "frmThrowAway.lblUnit"}));
}

TEST_F(ThrowAwayFormTest, ItsTimerLivesByThePlatformsTime) {
    form.timBlink.setInterval(500);
    form.timBlink.setEnabled(true);

    machine.desktop.advance(1700);

    EXPECT_EQ(form.blinks, 3);
}

TEST_F(ThrowAwayFormTest, ItsMenuOpensAndIsLeftWithAnEntry) {
    machine.desktop.menuChoice = 2;

    machine.desktop.popUpMenu(form.mnuMenu, form);

    EXPECT_EQ(form.chosen, "Hide");
}

TEST_F(ThrowAwayFormTest, ItsCloseBoxTakesItAway) {
    form.unload(UnloadMode::FormControlMenu);

    EXPECT_EQ(machine.desktop.form("frmThrowAway"), nullptr);
}

} // namespace
} // namespace tarvik
