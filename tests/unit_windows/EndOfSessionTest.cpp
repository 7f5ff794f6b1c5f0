#include "Later.h"
#include "Win32FaceTest.h"

namespace tarvik {
namespace {

class EndOfSessionTest : public Win32FaceTest {
protected:
    EndOfSessionTest() {
        form.QueryUnload.connect([this](bool&, UnloadMode mode) { modes.push_back(mode); });
        form.Unload.connect([this] {
            desktop.messageBox({.text = "not shown", .caption = "T"});
            ++unloads;
        });
    }

    /// As the system ends a session: every window is asked, then told.
    void endSession() {
        const HWND told = window();
        EXPECT_TRUE(SendMessageA(told, WM_QUERYENDSESSION, 0, 0));
        SendMessageA(told, WM_ENDSESSION, TRUE, 0);
    }

    std::vector<UnloadMode> modes;
    int unloads = 0;
};

TEST_F(EndOfSessionTest, EverythingIsDoneBeforeTheMessageReturns) {
    endSession();

    EXPECT_EQ(modes, std::vector<UnloadMode>{UnloadMode::AppWindows});
    EXPECT_EQ(unloads, 1);
    EXPECT_FALSE(form.loaded());
    desktop.run(); // returns at once
}

TEST_F(EndOfSessionTest, ASessionThatGoesOnAfterAllChangesNothing) {
    SendMessageA(window(), WM_QUERYENDSESSION, 0, 0);
    SendMessageA(window(), WM_ENDSESSION, FALSE, 0);

    EXPECT_TRUE(modes.empty());
    EXPECT_TRUE(form.loaded());
}

TEST_F(EndOfSessionTest, ASystemThatNeedsTheProgramsFilesEndsTheProgramAlone) {
    constexpr LPARAM programIsToEnd = 1;

    SendMessageA(window(), WM_ENDSESSION, TRUE, programIsToEnd);

    EXPECT_EQ(modes, std::vector<UnloadMode>{UnloadMode::AppTaskManager});
    EXPECT_EQ(unloads, 1);
}

TEST_F(EndOfSessionTest, TheListOfTasksEndsTheProgram) {
    show();

    PostMessageA(window(), WM_CLOSE, 0, 0);
    settle();

    EXPECT_EQ(modes, std::vector<UnloadMode>{UnloadMode::AppTaskManager});
    EXPECT_FALSE(form.loaded());
    desktop.run(); // returns at once
}

TEST_F(EndOfSessionTest, TheListOfTasksIsNotRefused) {
    form.QueryUnload.connect([this](bool& cancel, UnloadMode mode) {
        cancel = mode == UnloadMode::FormControlMenu;
        modes.push_back(mode);
    });
    SendMessageA(window(), WM_SYSCOMMAND, SC_CLOSE, 0);
    ASSERT_TRUE(form.loaded());

    SendMessageA(window(), WM_CLOSE, 0, 0);

    EXPECT_EQ(modes,
              (std::vector<UnloadMode>{UnloadMode::FormControlMenu, UnloadMode::AppTaskManager}));
    EXPECT_FALSE(form.loaded());
}

TEST_F(EndOfSessionTest, TheListOfTasksEndsAProgramThatAsksSomething) {
    const Later end([&] {
        if (openBox(GetCurrentProcessId()).window == nullptr) {
            return false;
        }
        PostMessageA(window(), WM_CLOSE, 0, 0);
        return true;
    });

    EXPECT_EQ(desktop.messageBox({.text = "?", .buttons = MsgBoxButtons::YesNo, .caption = "T"}),
              MsgBoxAnswer::No);

    EXPECT_EQ(modes, std::vector<UnloadMode>{UnloadMode::AppTaskManager});
    EXPECT_FALSE(form.loaded());
}

TEST_F(EndOfSessionTest, BeforeTheEndOfASessionTheFormIsToldAsBeforeSleep) {
    int pauses = 0;
    form.Pause.connect([&] { ++pauses; });

    EXPECT_TRUE(SendMessageA(window(), WM_QUERYENDSESSION, 0, 0));

    EXPECT_EQ(pauses, 1);
    EXPECT_TRUE(form.loaded());
    EXPECT_TRUE(modes.empty());
}

TEST_F(EndOfSessionTest, ThatTheMachineGoesToSleepIsAgreedTo) {
    EXPECT_TRUE(SendMessageA(window(), WM_POWERBROADCAST, PBT_APMSUSPEND, 0));
}

TEST_F(EndOfSessionTest, OtherNewsOfThePowerSupplyIsNoMatter) {
    int pauses = 0;
    form.Pause.connect([&] { ++pauses; });

    for (const WPARAM news :
         {PBT_APMRESUMEAUTOMATIC, PBT_APMRESUMESUSPEND, PBT_APMPOWERSTATUSCHANGE}) {
        EXPECT_TRUE(SendMessageA(window(), WM_POWERBROADCAST, news, 0));
    }

    EXPECT_EQ(pauses, 0);
}

} // namespace
} // namespace tarvik
