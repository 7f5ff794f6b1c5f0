#include "Later.h"
#include "Win32FaceTest.h"
#include "support/FormOn.h"
#include "windows/face/ControlIds.h"

namespace tarvik {
namespace {

class DesktopTest : public Win32FaceTest {
protected:
    static OpenBox box() { return openBox(GetCurrentProcessId()); }
};

TEST_F(DesktopTest, WhileABoxIsOpenNeitherTimersNorOtherWindowsReachTheProgram) {
    int ticks = 0;
    int clicks = 0;
    form.timTick.Tick.connect([&] { ++ticks; });
    form.cmdOk.Click.connect([&] { ++clicks; });
    int rounds = 0;
    const Later look([&] {
        const OpenBox open = box();
        if (open.window == nullptr) {
            return false;
        }
        SendMessageA(window(), WM_TIMER, static_cast<WPARAM>(face::controlId(form.timTick)), 0);
        SendMessageA(windowOf(form.cmdOk), BM_CLICK, 0, 0);
        SendMessageA(window(), WM_SYSCOMMAND, SC_CLOSE, 0);
        ++rounds;
        return open.press(MsgBoxAnswer::Ok);
    });
    form.timTick.setInterval(10'000);
    form.timTick.setEnabled(true);

    desktop.messageBox({.text = "?", .caption = "T"});

    EXPECT_EQ(rounds, 1);
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(clicks, 0);
    EXPECT_TRUE(form.loaded());
}

/// A form that is never seen, with a menu and a timer.
class HiddenForm : public Form {
public:
    HiddenForm() : Form("frmHidden", "") {}
    Menu mnuPopUp{*this, "mnuPopUp", "mnuEntry", {"One & all", Menu::separator, "Two", "Three"}};
    Picture picHook{*this, "picHook"};
    Timer timTick{*this, "timTick"};
};

TEST_F(DesktopTest, AFormWithoutLayoutIsNeverSeenButItsTimersAndPicturesLive) {
    FormOn<HiddenForm> hidden{machine.platform.desktop};
    int ticks = 0;
    int moves = 0;
    hidden.timTick.Tick.connect([&] { ++ticks; });
    hidden.picHook.MouseMove.connect([&](int) { ++moves; });
    hidden.setVisible(true);
    hidden.timTick.setInterval(10);
    hidden.timTick.setEnabled(true);

    EXPECT_TRUE(spinUntil([&] { return ticks > 0; }));
    SendMessageA(reinterpret_cast<HWND>(std::uintptr_t{hidden.picHook.hWnd()}), WM_MOUSEMOVE, 0, 7);

    EXPECT_EQ(moves, 1);
    EXPECT_FALSE(IsWindowVisible(ownWindow("frmHidden")));
    hidden.unload();
}

std::string captionOf(HMENU menu, UINT place) {
    char text[64] = {};
    GetMenuStringA(menu, place, text, sizeof text, MF_BYPOSITION);
    return text;
}

TEST_F(DesktopTest, AMenuShowsItsEntriesAndRunsTheChosenOne) {
    FormOn<HiddenForm> hidden{machine.platform.desktop};
    hidden.load();
    hidden.mnuPopUp.setEntryEnabled(2, false);
    int chosen = -1;
    hidden.mnuPopUp.Click.connect([&](int entry) { chosen = entry; });
    show();
    std::vector<std::string> captions;
    bool greyed = false;
    const Later choose([&] {
        const HMENU menu = openMenu(GetCurrentProcessId());
        if (menu == nullptr) {
            return false;
        }
        for (UINT place = 0; place < 4; ++place) {
            captions.push_back(captionOf(menu, place));
        }
        greyed = (GetMenuState(menu, 2, MF_BYPOSITION) & MF_GRAYED) != 0;
        for (const WPARAM key : {VK_UP, VK_RETURN}) {
            PostMessageA(window(), WM_KEYDOWN, key, 1);
        }
        return true;
    });

    desktop.popUpMenu(hidden.mnuPopUp, form);

    EXPECT_EQ(captions, (std::vector<std::string>{"One && all", "", "Two", "Three"}));
    EXPECT_TRUE(greyed);
    EXPECT_EQ(chosen, 3);
    hidden.unload();
}

TEST_F(DesktopTest, EntriesAboveTheOwnOnesStandOnTopAndTellTheirNumbers) {
    FormOn<HiddenForm> hidden{machine.platform.desktop};
    hidden.load();
    hidden.mnuPopUp.setEntriesAbove({"Above"});
    int chosen = -1;
    hidden.mnuPopUp.Click.connect([&](int entry) { chosen = entry; });
    show();
    std::vector<std::string> captions;
    const Later choose([&] {
        const HMENU menu = openMenu(GetCurrentProcessId());
        if (menu == nullptr) {
            return false;
        }
        for (UINT place = 0; place < 3; ++place) {
            captions.push_back(captionOf(menu, place));
        }
        for (const WPARAM key : {VK_DOWN, VK_RETURN}) {
            PostMessageA(window(), WM_KEYDOWN, key, 1);
        }
        return true;
    });

    desktop.popUpMenu(hidden.mnuPopUp, form);

    EXPECT_EQ(captions, (std::vector<std::string>{"Above", "", "One && all"}));
    EXPECT_EQ(chosen, 4);
    hidden.unload();
}

TEST_F(DesktopTest, AMenuThatIsClosedRunsNothing) {
    FormOn<HiddenForm> hidden{machine.platform.desktop};
    hidden.load();
    int chosen = -1;
    hidden.mnuPopUp.Click.connect([&](int entry) { chosen = entry; });
    show();
    const Later close([&] {
        return openMenu(GetCurrentProcessId()) != nullptr &&
               PostMessageA(window(), WM_KEYDOWN, VK_ESCAPE, 1) != FALSE;
    });

    desktop.popUpMenu(hidden.mnuPopUp, form);

    EXPECT_EQ(chosen, -1);
    hidden.unload();
}

} // namespace
} // namespace tarvik
