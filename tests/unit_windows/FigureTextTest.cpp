#include "Win32FaceTest.h"
#include "support/MemorySheet.h"

namespace tarvik {
namespace {

/// Two figures, and something else for the keyboard.
class FigureForm : public Form {
public:
    FigureForm() : Form("frmFigures", "Figures") {
        setLayout(column({item(cmdOther), item(txtLeft).wide(20), item(txtRight).wide(20)}));
        setInitialFocus(cmdOther);
    }

    CommandButton cmdOther{*this, "cmdOther", {.caption = "Other"}};
    TextBox txtLeft{*this, "txtLeft", {.text = "1", .readOnly = true}};
    TextBox txtRight{
        *this, "txtRight", {.text = "1", .readOnly = true, .alignment = TextAlignment::Right}};
};

class FigureTextTest : public Win32FaceTest {
protected:
    FigureTextTest() {
        figures.setVisible(true);
        settle();
        // From here on the boxes know where their text stands.
        set("1,234");
        settle();
    }
    ~FigureTextTest() override {
        figures.unload();
        settle();
    }

    void set(const std::string& text) {
        figures.txtLeft.setText(text);
        figures.txtRight.setText(text);
    }

    /// What lies on the screen.
    static Pixels seen(const Control& control) {
        RECT area{};
        GetClientRect(windowOf(control), &area);
        const MemorySheet sheet(area.right, area.bottom);
        const HDC context = GetDC(windowOf(control));
        BitBlt(sheet.context(), 0, 0, area.right, area.bottom, context, 0, 0, SRCCOPY);
        ReleaseDC(windowOf(control), context);
        return sheet.pixels();
    }

    /// The same once the box has been asked for its text and has painted it.
    Pixels paintedByBox(const Control& control) {
        textOf(windowOf(control));
        RedrawWindow(windowOf(control), nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        settle();
        return seen(control);
    }

    void expectAsTheBoxPaintsIt() {
        for (const Control* box :
             {static_cast<Control*>(&figures.txtLeft), static_cast<Control*>(&figures.txtRight)}) {
            const Pixels drawn = seen(*box);
            EXPECT_TRUE(drawn == paintedByBox(*box)) << box->name();
        }
    }

    FormOn<FigureForm> figures{desktop};
};

TEST_F(FigureTextTest, AFigureLooksAsTheBoxItselfPaintsIt) {
    const Pixels before = seen(figures.txtRight);

    set("98,765,432");

    EXPECT_FALSE(seen(figures.txtRight) == before);
    expectAsTheBoxPaintsIt();
}

TEST_F(FigureTextTest, AnEmptyTextAndOneTooLongLookSoToo) {
    for (const std::string& text : {std::string(), std::string(60, 'W'), std::string("7"),
                                    std::string("\xFC\xE4"), std::string("12 KB")}) {
        set(text);
        settle(); // the box itself paints later
        expectAsTheBoxPaintsIt();
    }
}

TEST_F(FigureTextTest, AFigureThatWasCoveredIsPaintedAgain) {
    set("555");
    const Pixels before = seen(figures.txtRight);

    RedrawWindow(windowOf(figures.txtRight), nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    settle();

    EXPECT_TRUE(seen(figures.txtRight) == before);
    expectAsTheBoxPaintsIt();
}

TEST_F(FigureTextTest, WhoeverAsksTheBoxGetsTheFigure) {
    set("4,711");

    EXPECT_EQ(textOf(windowOf(figures.txtRight)), "4,711");
}

TEST_F(FigureTextTest, WhatIsSelectedIsTheFigure) {
    set("4,711");

    SetFocus(windowOf(figures.txtRight));
    SendMessageA(windowOf(figures.txtRight), EM_SETSEL, 0, -1);
    DWORD start = 9;
    DWORD end = 0;
    SendMessageA(windowOf(figures.txtRight), EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));

    EXPECT_EQ(start, 0U);
    EXPECT_EQ(end, 5U);
}

TEST_F(FigureTextTest, AFigureThatHasTheFocusChangesWithinTheBox) {
    SetFocus(windowOf(figures.txtRight));

    set("12");

    EXPECT_EQ(textOf(windowOf(figures.txtRight)), "12");
    EXPECT_EQ(figures.txtRight.text(), "12");
}

TEST_F(FigureTextTest, ADisabledFigureLooksDisabled) {
    set("8,888");
    const Pixels enabled = seen(figures.txtRight);

    figures.txtRight.setEnabled(false);
    settle();

    EXPECT_FALSE(seen(figures.txtRight) == enabled);
    set("9,999");
    settle();
    expectAsTheBoxPaintsIt();
}

TEST_F(FigureTextTest, AFigureFollowsTheSizeOfItsBox) {
    set("4,711");
    const HWND box = windowOf(figures.txtRight);
    RECT area{};
    GetClientRect(box, &area);

    SetWindowPos(box, nullptr, 0, 0, area.right + 40, area.bottom + 4, SWP_NOMOVE | SWP_NOZORDER);
    settle();
    set("4,712");
    settle();
    set("4,713");

    expectAsTheBoxPaintsIt();
}

TEST_F(FigureTextTest, TheModelIsNotToldOfItsOwnFigures) {
    int changes = 0;
    figures.txtRight.Change.connect([&] { ++changes; });

    set("3");
    set("4");
    textOf(windowOf(figures.txtRight));

    EXPECT_EQ(changes, 2);
    EXPECT_EQ(figures.txtRight.text(), "4");
}

} // namespace
} // namespace tarvik
