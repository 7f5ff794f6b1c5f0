#include "windows/face/WindowsCommonDialogs.h"

#include "Later.h"
#include "OpenDialog.h"
#include "Win32FaceTest.h"

#include "support/TemporaryFolder.h"
#include "windows/services/WindowsFiles.h"

#include <array>
#include <string>
#include <vector>

namespace tarvik {
namespace {

/// Leaves the dialog as soon as it is open, by that button; notes where it stood.
bool leave(int button, RECT* place = nullptr) {
    const HWND dialog = openDialog();
    if (dialog == nullptr) {
        return false;
    }
    if (place != nullptr) {
        GetWindowRect(dialog, place);
    }
    return press(dialog, button);
}

/// A fair while from now on.
class Deadline {
public:
    bool over() const { return GetTickCount64() - begin_ > 60'000; }

private:
    ULONGLONG begin_ = GetTickCount64();
};

/// A file dialog on a desktop with the window of a form.
class CommonDialogsTest : public Win32FaceTest {
protected:
    tarvik::OPENFILENAMEA record() {
        tarvik::OPENFILENAMEA data{};
        data.lStructSize = 76;
        data.lpstrFile = file.data();
        data.nMaxFile = static_cast<std::uint32_t>(file.size());
        data.lpstrFilter = "INI files\0*.ini\0\0";
        return data;
    }

    /// Shows a dialog and, while it is open, ends the session; one that stays open all the same is
    /// left in the end.
    bool openUntilTheSessionEnds() {
        auto data = record();
        bool ended = false;
        const Deadline deadline;
        const Later end([&] {
            if (!ended && openDialog() != nullptr) {
                ended = true;
                desktop.end(UnloadMode::AppWindows);
            }
            leftByTest = deadline.over() && leave(IDCANCEL);
            return leftByTest;
        });
        return dialogs.GetOpenFileNameA(&data, stay);
    }

    bool leftByTest = false;
    const DialogPlacement stay = [](const ScreenRect& dialog, const ScreenRect&) { return dialog; };
    std::array<char, 260> file{};
    face::WindowsCommonDialogs dialogs{desktop};
};

TEST_F(CommonDialogsTest, TheDialogIsPutWhereTheProgramSays) {
    const HWND owner = CreateWindowExA(0, "STATIC", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 120,
                                       300, 200, nullptr, nullptr, nullptr, nullptr);
    auto data = record();
    data.hwndOwner = owner;
    ScreenRect ownerSeen;
    int asked = 0;
    RECT place{};
    const Later cancel([&] { return leave(IDCANCEL, &place); });

    dialogs.GetOpenFileNameA(&data, [&](const ScreenRect& dialog, const ScreenRect& around) {
        ownerSeen = around;
        ++asked;
        return ScreenRect{37, 41, dialog.width, dialog.height};
    });

    EXPECT_EQ(asked, 1);
    EXPECT_EQ(ownerSeen.width, 300);
    EXPECT_EQ(ownerSeen.height, 200);
    EXPECT_EQ(place.left, 37);
    EXPECT_EQ(place.top, 41);
    DestroyWindow(owner);
}

/// The overwrite question, asked about a file of that name that is there.
class OverwriteTest : public testing::Test {
protected:
    static constexpr std::uint32_t overwritePrompt = 0x2;

    void givenFile(const std::string& name) {
        path = folder.path() + "\\" + name;
        WindowsFiles().replace(path, {"of great value"});
    }

    /// Works the dialog and each question that comes: the question is answered by the next of the
    /// buttons, a dialog by OK with the name that it shows or, without one, with the path; once the
    /// answers are used up it is cancelled.
    bool save(std::vector<int> answers, std::uint32_t flags) {
        tarvik::OPENFILENAMEA data{};
        data.lStructSize = 76;
        data.lpstrFile = file.data();
        data.nMaxFile = static_cast<std::uint32_t>(file.size());
        data.Flags = flags;
        std::size_t answered = 0;
        const Deadline deadline;
        const Later work([&] {
            for (const HWND window : topLevelWindows("#32770", GetCurrentProcessId())) {
                if (IsWindowVisible(window) == FALSE || window == last) {
                    continue;
                }
                last = window;
                if (textOf(window) == questionCaption) {
                    questions.push_back(textOf(GetDlgItem(window, 0xFFFF)));
                    defaults.push_back(GetDlgCtrlID(GetFocus()));
                    const int button = answered < answers.size() ? answers[answered] : IDYES;
                    ++answered;
                    PostMessageA(window, WM_COMMAND, static_cast<WPARAM>(button), 0);
                    return false;
                }
                const bool again = !names.empty();
                const HWND box = nameBoxOf(window);
                if (!again) {
                    SendMessageA(box, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
                }
                names.push_back(textOf(box));
                const bool go = !again || answered < answers.size();
                PostMessageA(window, WM_COMMAND, static_cast<WPARAM>(go ? IDOK : IDCANCEL), 0);
            }
            return deadline.over();
        });
        const bool saved = dialogs.GetSaveFileNameA(
            &data, [](const ScreenRect& dialog, const ScreenRect&) { return dialog; });
        flagsAfter = data.Flags;
        return saved;
    }

    face::WindowsDesktop desktop{windowsCodePage()};
    face::WindowsCommonDialogs dialogs{desktop};
    TemporaryFolder folder;
    std::string path;
    std::array<char, 260> file{};
    HWND last = nullptr;
    std::vector<std::string> questions;
    std::vector<int> defaults; ///< the buttons of Enter
    std::vector<std::string> names;
    std::uint32_t flagsAfter = 0;
};

TEST_F(OverwriteTest, EnterMeansNoAndTheOptionIsLeftAsItWas) {
    givenFile("backup.ini");

    EXPECT_TRUE(save({IDYES}, overwritePrompt));

    EXPECT_EQ(defaults, std::vector<int>{IDNO});
    EXPECT_EQ(flagsAfter & overwritePrompt, overwritePrompt);
}

TEST_F(OverwriteTest, AfterNoTheDialogComesAgainWithTheSameName) {
    givenFile("backup.ini");

    EXPECT_FALSE(save({IDNO}, overwritePrompt));

    ASSERT_EQ(names.size(), 2U);
    EXPECT_NE(names[1].find("backup"), std::string::npos) << names[1];
}

TEST_F(OverwriteTest, AfterNoTheSameNameMayStillBeChosen) {
    givenFile("backup.ini");

    EXPECT_TRUE(save({IDNO, IDYES}, overwritePrompt));

    EXPECT_EQ(questions.size(), 2U);
    EXPECT_EQ(std::string(file.data()), path);
}

/// Lets a window of another kind become active while a dialog is being made, for its own lifetime.
class OtherWindowFirst {
public:
    OtherWindowFirst() {
        other = nullptr;
        hook_ = SetWindowsHookExA(WH_CBT, onEvent, nullptr, GetCurrentThreadId());
    }
    ~OtherWindowFirst() {
        UnhookWindowsHookEx(hook_);
        DestroyWindow(other);
    }
    OtherWindowFirst(const OtherWindowFirst&) = delete;
    OtherWindowFirst& operator=(const OtherWindowFirst&) = delete;

    static RECT place() {
        RECT rect{};
        GetWindowRect(other, &rect);
        return rect;
    }

private:
    static LRESULT CALLBACK onEvent(int code, WPARAM first, LPARAM second) {
        if (code == HCBT_CREATEWND && other == nullptr &&
            classOf(reinterpret_cast<HWND>(first)) == "#32770") {
            other = GetDesktopWindow(); // its own making is none
            other = CreateWindowExA(0, "STATIC", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 200, 210,
                                    300, 200, nullptr, nullptr, nullptr, nullptr);
            SetActiveWindow(other);
        }
        return CallNextHookEx(nullptr, code, first, second);
    }

    static inline HWND other = nullptr;
    HHOOK hook_ = nullptr;
};

TEST_F(CommonDialogsTest, AWindowThatIsNoDialogIsNotTakenForIt) {
    auto data = record();
    int asked = 0;
    RECT place{};
    const Later cancel([&] { return leave(IDCANCEL, &place); });
    const OtherWindowFirst before;

    dialogs.GetOpenFileNameA(&data, [&](const ScreenRect& dialog, const ScreenRect&) {
        ++asked;
        return ScreenRect{37, 41, dialog.width, dialog.height};
    });

    EXPECT_EQ(asked, 1);
    EXPECT_EQ(place.left, 37);
    EXPECT_EQ(place.top, 41);
    EXPECT_EQ(OtherWindowFirst::place().left, 200);
}

TEST_F(CommonDialogsTest, ARecordOfAnotherSizeIsAnError) {
    auto data = record();
    data.lStructSize = 5;

    EXPECT_FALSE(dialogs.GetOpenFileNameA(&data, stay));

    EXPECT_EQ(dialogs.CommDlgExtendedError(), 1U);
}

TEST_F(CommonDialogsTest, WhileADialogIsOpenAButtonOfAFormDoesNothing) {
    int clicks = 0;
    form.cmdOk.Click.connect([&] { ++clicks; });
    auto data = record();
    const Later click([&] {
        if (openDialog() == nullptr) {
            return false;
        }
        SendMessageA(windowOf(form.cmdOk), BM_CLICK, 0, 0);
        return leave(IDCANCEL);
    });

    dialogs.GetOpenFileNameA(&data, stay);

    EXPECT_TRUE(click.done());
    EXPECT_EQ(clicks, 0);
}

TEST_F(CommonDialogsTest, AfterADialogAButtonOfAFormWorksAgain) {
    int clicks = 0;
    form.cmdOk.Click.connect([&] { ++clicks; });
    auto data = record();
    const Later cancel([] { return leave(IDCANCEL); });
    dialogs.GetOpenFileNameA(&data, stay);

    SendMessageA(windowOf(form.cmdOk), BM_CLICK, 0, 0);

    EXPECT_EQ(clicks, 1);
}

TEST_F(CommonDialogsTest, WhileADialogIsOpenTimersGoOn) {
    int ticks = 0;
    form.timTick.Tick.connect([&] { ticks += openDialog() != nullptr ? 1 : 0; });
    form.timTick.setInterval(10);
    form.timTick.setEnabled(true);
    auto data = record();
    const Deadline deadline;
    const Later wait([&] { return (ticks >= 3 || deadline.over()) && leave(IDCANCEL); });

    dialogs.GetOpenFileNameA(&data, stay);

    EXPECT_GE(ticks, 3);
}

TEST_F(CommonDialogsTest, TheEndOfTheSessionClosesADialogAsIfCancelled) {
    file = {'a', '.', 'i', 'n', 'i'};

    EXPECT_FALSE(openUntilTheSessionEnds());

    EXPECT_FALSE(leftByTest);
    EXPECT_STREQ(file.data(), "a.ini");
}

TEST_F(CommonDialogsTest, TheEndOfTheSessionUnloadsTheFormsBehindADialog) {
    int unloads = 0;
    form.Unload.connect([&] { unloads += openDialog() != nullptr ? 1 : 0; });

    openUntilTheSessionEnds();

    EXPECT_EQ(unloads, 1);
    EXPECT_FALSE(form.loaded());
}

TEST_F(CommonDialogsTest, OnceTheSessionEndsNoDialogIsShown) {
    desktop.end(UnloadMode::AppWindows);
    auto data = record();
    int placed = 0;
    const Later cancel([] { return leave(IDCANCEL); });

    EXPECT_FALSE(dialogs.GetSaveFileNameA(&data, [&](const ScreenRect& dialog, const ScreenRect&) {
        ++placed;
        return dialog;
    }));

    EXPECT_EQ(placed, 0);
    EXPECT_FALSE(cancel.done());
}

} // namespace
} // namespace tarvik
