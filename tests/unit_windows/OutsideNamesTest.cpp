#include "HebrewPage.h"
#include "Later.h"
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
    OutsideNamesTest() { form.load(); }
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

/// Shows a box with that text; its text and its place.
struct BoxOnScreen {
    std::string text;
    RECT place{};
};

BoxOnScreen boxWith(face::WindowsDesktop& desktop, const std::string& text) {
    BoxOnScreen shown;
    const Later press([&] {
        const OpenBox open = openBox(GetCurrentProcessId());
        shown.text = open.text;
        GetWindowRect(open.window, &shown.place);
        return open.window != nullptr && open.press(MsgBoxAnswer::Ok);
    });
    desktop.messageBox({.text = text, .caption = "T"});
    return shown;
}

void expectOnScreen(const RECT& place) {
    EXPECT_GE(place.left, 0);
    EXPECT_GE(place.top, 0);
    EXPECT_LE(place.right, GetSystemMetrics(SM_CXSCREEN));
    EXPECT_LE(place.bottom, GetSystemMetrics(SM_CYSCREEN));
}

TEST_F(OutsideNamesTest, ABoxOfAWordOfThousandsOfLettersFitsTheScreen) {
    const BoxOnScreen shown =
        boxWith(desktop, "Warning:\r" + std::string(3000, 'W') + "\rTry help.");

    expectOnScreen(shown.place);
    EXPECT_TRUE(shown.text.starts_with("Warning:")) << shown.text;
    EXPECT_TRUE(shown.text.ends_with("Try help.")) << shown.text;
}

TEST_F(OutsideNamesTest, ABoxOfThousandsOfLinesFitsTheScreen) {
    std::string lines;
    for (int i = 0; i < 2000; ++i) {
        lines += "x\r";
    }

    const BoxOnScreen shown = boxWith(desktop, "Warning:\r" + lines + "Try help.");

    expectOnScreen(shown.place);
    EXPECT_TRUE(shown.text.ends_with("Try help.")) << shown.text;
}

TEST_F(OutsideNamesTest, ATextWithoutTurnsIsLeftAsItIs) {
    form.lblName.setCaption("\xF9\xF8 Bank");

    EXPECT_EQ(textOf(windowOf(form.lblName)), "\xF9\xF8 Bank");
}

} // namespace
} // namespace tarvik
