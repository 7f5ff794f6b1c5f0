#include "HebrewPage.h"
#include "controls/ListView.h"
#include "support/FormOn.h"
#include "support/Win32Windows.h"
#include "windows/face/WindowsDesktop.h"

#include <commctrl.h>

#include <gtest/gtest.h>

#include <string>

namespace tarvik {
namespace {

const std::string turnedName = "\xF9\xF8 Bank \xFEgnp.exe";
const std::string shownName = "\xF9\xF8 Bank [U+200F]gnp.exe";

/// Controls that show a name from outside.
class NamesForm : public Form {
public:
    NamesForm() : Form("frmNames", "Names") {
        setLayout(column({item(lblName), item(lvwNames), item(cmdName)}));
    }

    Label lblName{*this, "lblName", {.caption = "Name"}};
    ListView lvwNames{*this, "lvwNames", {.columns = {{"Name"}}, .accessibleName = "All"}};
    CommandButton cmdName{*this, "cmdName", {.caption = "Name"}};
};

class OutsideNamesTest : public testing::Test {
protected:
    OutsideNamesTest() {
        form.setVisible(true);
        desktop.processEvents();
    }
    ~OutsideNamesTest() override {
        form.unload();
        desktop.processEvents();
    }

    face::WindowsDesktop desktop{hebrewPage()};
    FormOn<NamesForm> form{desktop};
};

TEST_F(OutsideNamesTest, ALabelTellsOfATurn) {
    form.lblName.setCaption(turnedName);

    EXPECT_EQ(textOf(windowOf(form.lblName)), shownName);
}

TEST_F(OutsideNamesTest, AButtonTellsOfATurn) {
    form.cmdName.setCaption(turnedName);

    EXPECT_EQ(textOf(windowOf(form.cmdName)), shownName);
}

TEST_F(OutsideNamesTest, ARowTellsOfATurn) {
    form.lvwNames.setRows(1, [](int, int) { return turnedName; }, {});
    char text[64] = {};
    LVITEMA cell{};
    cell.pszText = text;
    cell.cchTextMax = sizeof text;

    SendMessageA(windowOf(form.lvwNames), LVM_GETITEMTEXTA, 0, reinterpret_cast<LPARAM>(&cell));

    EXPECT_EQ(text, shownName);
}

TEST_F(OutsideNamesTest, ATextWithoutTurnsIsLeftAsItIs) {
    form.lblName.setCaption("\xF9\xF8 Bank");

    EXPECT_EQ(textOf(windowOf(form.lblName)), "\xF9\xF8 Bank");
}

} // namespace
} // namespace tarvik
