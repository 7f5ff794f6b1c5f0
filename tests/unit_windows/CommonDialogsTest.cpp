#include "windows/face/WindowsCommonDialogs.h"

#include "Later.h"
#include "support/Win32Windows.h"
#include "windows/face/WindowsDesktop.h"

#include <gtest/gtest.h>

#include <array>

namespace tarvik {
namespace {

constexpr int saveNameBox = 0x47C;
constexpr int openNameBox = 0x480;

/// The file dialog that is open in this process.
HWND openDialog() {
    for (const HWND window : topLevelWindows("#32770", GetCurrentProcessId())) {
        if (IsWindowVisible(window) != FALSE) {
            return window;
        }
    }
    return nullptr;
}

class CommonDialogsTest : public testing::Test {
protected:
    tarvik::OPENFILENAMEA record() {
        tarvik::OPENFILENAMEA data{};
        data.lStructSize = 76;
        data.lpstrFile = file.data();
        data.nMaxFile = static_cast<std::uint32_t>(file.size());
        data.lpstrFilter = "INI files\0*.ini\0\0";
        data.lpstrTitle = "Title of its own";
        return data;
    }

    /// Leaves the dialog as soon as it is open, by that button.
    static bool press(int button, std::string* caption = nullptr) {
        const HWND dialog = openDialog();
        if (dialog == nullptr) {
            return false;
        }
        if (caption != nullptr) {
            *caption = textOf(dialog);
        }
        return PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0) != FALSE;
    }

    const DialogPlacement stay = [](const ScreenRect& dialog, const ScreenRect&) { return dialog; };
    std::array<char, 260> file{};
    face::WindowsDesktop desktop;
    face::WindowsCommonDialogs dialogs{desktop};
};

TEST_F(CommonDialogsTest, ADialogThatIsCancelledHasNoError) {
    auto data = record();
    std::string caption;
    const Later cancel([&] { return press(IDCANCEL, &caption); });

    EXPECT_FALSE(dialogs.GetOpenFileNameA(&data, stay));

    EXPECT_EQ(dialogs.CommDlgExtendedError(), 0U);
    EXPECT_EQ(caption, "Title of its own");
}

TEST_F(CommonDialogsTest, ASaveDialogGivesTheNameThatWasEntered) {
    auto data = record();
    const Later save([&] {
        const HWND dialog = openDialog();
        HWND box = dialog == nullptr ? nullptr : GetDlgItem(dialog, saveNameBox);
        box = box == nullptr && dialog != nullptr ? GetDlgItem(dialog, openNameBox) : box;
        if (box == nullptr) {
            return false;
        }
        SendMessageA(box, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("C:\\backup.ini"));
        return press(IDOK);
    });

    EXPECT_TRUE(dialogs.GetSaveFileNameA(&data, stay));

    EXPECT_STREQ(file.data(), "C:\\backup.ini");
}

TEST_F(CommonDialogsTest, TheDialogIsPutWhereTheProgramSays) {
    const HWND owner = CreateWindowExA(0, "STATIC", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 120,
                                       300, 200, nullptr, nullptr, nullptr, nullptr);
    auto data = record();
    data.hwndOwner = owner;
    ScreenRect ownerSeen;
    int asked = 0;
    RECT place{};
    const Later cancel([&] {
        const HWND dialog = openDialog();
        if (dialog != nullptr) {
            GetWindowRect(dialog, &place);
        }
        return press(IDCANCEL);
    });

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

TEST_F(CommonDialogsTest, ARecordOfAnotherSizeIsAnError) {
    auto data = record();
    data.lStructSize = 5;

    EXPECT_FALSE(dialogs.GetOpenFileNameA(&data, stay));

    EXPECT_EQ(dialogs.CommDlgExtendedError(), 1U);
}

} // namespace
} // namespace tarvik
