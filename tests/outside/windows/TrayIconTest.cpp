#include "RunningProgram.h"

#include <gtest/gtest.h>

#include <shellapi.h>

#include <array>
#include <optional>

namespace tarvik {
namespace {

/// Presses a button of the mouse at that place of the screen and lets it go, as a hand would.
void clickAt(const POINT& place, DWORD down, DWORD up) {
    SetCursorPos(place.x, place.y);
    std::array<INPUT, 2> moves{};
    moves[0].type = INPUT_MOUSE;
    moves[0].mi.dwFlags = down;
    moves[1].type = INPUT_MOUSE;
    moves[1].mi.dwFlags = up;
    SendInput(static_cast<UINT>(moves.size()), moves.data(), sizeof(INPUT));
}

void leftClickAt(const POINT& place) {
    clickAt(place, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
}

void rightClickAt(const POINT& place) {
    clickAt(place, MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP);
}

HWND taskBar() {
    const std::vector<HWND> found = topLevelWindows("Shell_TrayWnd", 0);
    return found.empty() ? nullptr : found.front();
}

/// The middle of the first icon of Wine's task bar, which is at its right end.
POINT placeOfIcon() {
    RECT bar{};
    GetWindowRect(taskBar(), &bar);
    return {.x = bar.right - GetSystemMetrics(SM_CXSMICON) / 2, .y = (bar.top + bar.bottom) / 2};
}

/// Takes the icons away that programs left which were ended hard: each goes, and the next moves up,
/// when the pointer is told to be over it.
void sweepTaskBar() {
    POINT place = placeOfIcon();
    ScreenToClient(taskBar(), &place);
    constexpr int moreThanAnyRunLeaves = 100;
    for (int i = 0; i < moreThanAnyRunLeaves; ++i) {
        answerOf(taskBar(), WM_MOUSEMOVE, 0, MAKELPARAM(place.x, place.y));
    }
}

/// The program beside the icon that it has in Wine's task bar.
class TrayIconTest : public testing::Test {
protected:
    void SetUp() override {
        GetDesktopWindow(); // brings the task bar along
        ASSERT_TRUE(RunningProgram::waitUntil([] { return taskBar() != nullptr; }));
        sweepTaskBar();
        installation.setIni("[Settings]\r\nRefreshInterval=100\r\n");
        program.emplace(installation);
        ASSERT_TRUE(program->waitForMainWindow());
    }

    DWORD process() const { return GetProcessId(program->process()); }

    /// The icon as the task bar knows it.
    ::NOTIFYICONDATAA icon() const {
        const std::vector<HWND> owners = topLevelWindows("frmSysTray", process());
        ::NOTIFYICONDATAA record{};
        record.cbSize = sizeof record;
        record.hWnd = owners.empty() ? nullptr : GetWindow(owners.front(), GW_CHILD);
        record.uID = 1;
        return record;
    }

    /// The task bar shows that icon: a change of nothing is refused for any other.
    static bool isShown(::NOTIFYICONDATAA icon) {
        return Shell_NotifyIconA(NIM_MODIFY, &icon) != FALSE;
    }

    bool waitForIcon() const {
        return RunningProgram::waitUntil([this] { return isShown(icon()); });
    }

    void clickOnIcon() const {
        ASSERT_TRUE(waitForIcon());
        leftClickAt(placeOfIcon());
    }

    bool waitUntilSeen(bool seen) const {
        return RunningProgram::waitUntil(
            [&] { return (IsWindowVisible(program->mainWindow()) != FALSE) == seen; });
    }

    HWND menu() const {
        const std::vector<HWND> found = topLevelWindows("#32768", process());
        return found.empty() ? nullptr : found.front();
    }

    /// It is seen, and its thread reads its clicks.
    bool menuTakesClicks() const {
        GUITHREADINFO seen{};
        seen.cbSize = sizeof seen;
        GetGUIThreadInfo(GetWindowThreadProcessId(program->mainWindow(), nullptr), &seen);
        return IsWindowVisible(menu()) != FALSE && (seen.flags & GUI_INMENUMODE) != 0;
    }

    /// Opens the icon's menu and clicks on its first entry.
    void chooseFirstEntry() const {
        ASSERT_TRUE(waitForIcon());
        rightClickAt(placeOfIcon());
        ASSERT_TRUE(RunningProgram::waitUntil([this] { return menuTakesClicks(); }));
        RECT area{};
        GetWindowRect(menu(), &area);
        const int entry = GetSystemMetrics(SM_CYMENU);
        leftClickAt({.x = area.left + entry, .y = area.top + entry / 2 + 2});
    }

    Installation installation{"tarvik-demo.exe"};
    std::optional<RunningProgram> program;
};

TEST_F(TrayIconTest, ARunningProgramHasAnIconInTheTaskBar) {
    EXPECT_TRUE(waitForIcon());
}

TEST_F(TrayIconTest, AProgramThatQuitsTakesItsIconAlong) {
    ASSERT_TRUE(waitForIcon());
    const ::NOTIFYICONDATAA shown = icon();

    program->click("cmdQuit");

    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_FALSE(isShown(shown));
}

TEST_F(TrayIconTest, ALeftClickOnTheIconHidesTheMainWindow) {
    ASSERT_NO_FATAL_FAILURE(clickOnIcon());

    EXPECT_TRUE(waitUntilSeen(false));
}

TEST_F(TrayIconTest, ALeftClickOnTheIconShowsAHiddenMainWindow) {
    ASSERT_NO_FATAL_FAILURE(clickOnIcon());
    ASSERT_TRUE(waitUntilSeen(false));

    ASSERT_NO_FATAL_FAILURE(clickOnIcon());

    EXPECT_TRUE(waitUntilSeen(true));
}

TEST_F(TrayIconTest, ALeftClickOnTheIconBringsAMinimisedMainWindowBack) {
    ASSERT_TRUE(waitForIcon());
    ShowWindow(program->mainWindow(), SW_MINIMIZE);
    ASSERT_TRUE(
        RunningProgram::waitUntil([&] { return IsIconic(program->mainWindow()) != FALSE; }));

    ASSERT_NO_FATAL_FAILURE(clickOnIcon());

    EXPECT_TRUE(RunningProgram::waitUntil([&] {
        return IsIconic(program->mainWindow()) == FALSE &&
               IsWindowVisible(program->mainWindow()) != FALSE;
    }));
}

TEST_F(TrayIconTest, TheIconLeavesTheFocusWhereItWas) {
    const auto focus = [this] {
        GUITHREADINFO seen{};
        seen.cbSize = sizeof seen;
        GetGUIThreadInfo(GetWindowThreadProcessId(program->mainWindow(), nullptr), &seen);
        return seen.hwndFocus;
    };
    ASSERT_TRUE(
        RunningProgram::waitUntil([&] { return focus() == program->control("cmdMonitor"); }));
    PostMessageA(program->control("cmdMonitor"), WM_KEYDOWN, VK_TAB, 1);
    ASSERT_TRUE(
        RunningProgram::waitUntil([&] { return focus() == program->control("cmdConnect"); }));

    ASSERT_NO_FATAL_FAILURE(clickOnIcon());
    ASSERT_TRUE(waitUntilSeen(false));
    ASSERT_NO_FATAL_FAILURE(clickOnIcon());
    ASSERT_TRUE(waitUntilSeen(true));

    EXPECT_TRUE(
        RunningProgram::waitUntil([&] { return focus() == program->control("cmdConnect"); }));
}

TEST_F(TrayIconTest, TheFirstEntryOfTheIconsMenuHidesTheMainWindow) {
    ASSERT_NO_FATAL_FAILURE(chooseFirstEntry());

    EXPECT_TRUE(waitUntilSeen(false));
}

TEST_F(TrayIconTest, TheFirstEntryOfTheIconsMenuShowsAHiddenMainWindow) {
    ASSERT_NO_FATAL_FAILURE(clickOnIcon());
    ASSERT_TRUE(waitUntilSeen(false));

    ASSERT_NO_FATAL_FAILURE(chooseFirstEntry());

    EXPECT_TRUE(waitUntilSeen(true));
}

} // namespace
} // namespace tarvik
