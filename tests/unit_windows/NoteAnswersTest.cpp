#include "windows/face/WindowsNotificationArea.h"

#include "HebrewPage.h"
#include "Later.h"
#include "PlayedTaskBar.h"
#include "forms/frmSysTray.h"
#include "support/FormOn.h"
#include "support/Win32Machine.h"
#include "support/Win32Windows.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarvik {
namespace {

/// A note that can be answered, of an icon whose task bar is played by the test.
class AnsweredNoteTest : public testing::Test {
protected:
    AnsweredNoteTest() {
        tray.load();
        record.hWnd = tray.picSysTrayHook.hWnd();
        area.Shell_NotifyIconA(NotificationArea::add, &record);
        PlayedTaskBar::told.clear();
    }
    ~AnsweredNoteTest() override {
        area.Shell_NotifyIconA(NotificationArea::remove, &record);
        tray.picSysTrayHook.MouseMove.connect({});
        tray.unload();
    }

    bool tell(const DesktopNote& note = {.title = "80 %", .text = "Harbour"}) {
        return area.tell(note, [this](int how) { answers.push_back(how); });
    }
    /// As the task bar tells the icon's window.
    void news(UINT what) {
        SendMessageA(reinterpret_cast<HWND>(std::uintptr_t{record.hWnd}), WM_MOUSEMOVE, 1,
                     static_cast<LPARAM>(what));
    }

    PlayedTaskBar taskBar;
    Win32Machine machine;
    FormOn<FrmSysTray> tray{machine.desktop};
    tarvik::NOTIFYICONDATAA record = iconOf(nullptr, TrayIcon::imgSysTray);
    std::vector<int> answers;
    static constexpr UINT fairWhile = 20'000; ///< milliseconds
    face::WindowsNotificationArea area{hebrewPage(), fairWhile};
};

TEST_F(AnsweredNoteTest, ItReachesTheTaskBarUnlessTheUserWantsQuiet) {
    EXPECT_TRUE(tell({.title = "Bank \xFEgnp", .text = "one\rtwo", .buttons = {"Silence"}}));

    ASSERT_EQ(PlayedTaskBar::told.size(), 1U);
    const PlayedTaskBar::Told& told = PlayedTaskBar::told.front();
    EXPECT_EQ(told.request, static_cast<DWORD>(NIM_MODIFY));
    EXPECT_EQ(told.record.uFlags, static_cast<UINT>(NIF_INFO));
    EXPECT_EQ(told.record.uID, 1U);
    EXPECT_STREQ(told.record.szInfo, "one\r\ntwo");
    EXPECT_STREQ(told.record.szInfoTitle, "Bank [U+200F]gnp");
    EXPECT_EQ(told.record.dwInfoFlags, 0x81U);
}

TEST_F(AnsweredNoteTest, ACriticalOneIsAWarning) {
    tell({.title = "100 %", .text = "x", .urgency = DesktopNote::Urgency::Critical});

    ASSERT_EQ(PlayedTaskBar::told.size(), 1U);
    EXPECT_EQ(PlayedTaskBar::told.front().record.dwInfoFlags, 0x82U);
}

TEST_F(AnsweredNoteTest, TextsThatOutgrowTheRecordAreCutAndEndedAndNoneIsABlank) {
    tell({.title = std::string(80, 't'), .text = std::string(300, 'a')});
    tell({.title = "x", .text = ""});

    ASSERT_EQ(PlayedTaskBar::told.size(), 2U);
    EXPECT_EQ(PlayedTaskBar::told.front().record.szInfo, std::string(255, 'a'));
    EXPECT_EQ(PlayedTaskBar::told.front().record.szInfoTitle, std::string(63, 't'));
    EXPECT_STREQ(PlayedTaskBar::told.back().record.szInfo, " ");
}

TEST_F(AnsweredNoteTest, AClickOnItIsItsAnswerOnce) {
    tell();
    news(NIN_BALLOONSHOW);
    news(NIN_BALLOONUSERCLICK);
    news(NIN_BALLOONUSERCLICK);

    EXPECT_EQ(answers, std::vector<int>{NotificationArea::noteClicked});
}

TEST_F(AnsweredNoteTest, OneThatHasGoneIsNotAnswered) {
    for (const UINT gone : {NIN_BALLOONHIDE, NIN_BALLOONTIMEOUT}) {
        tell();
        news(NIN_BALLOONSHOW);
        news(gone);
        news(NIN_BALLOONUSERCLICK);
    }

    EXPECT_TRUE(answers.empty());
}

TEST_F(AnsweredNoteTest, ThatTheOneBeforeHasGoneLeavesTheAnswerOfTheNext) {
    tell();
    news(NIN_BALLOONSHOW);
    tell();
    news(NIN_BALLOONHIDE);
    news(NIN_BALLOONSHOW);
    news(NIN_BALLOONUSERCLICK);

    EXPECT_EQ(answers, std::vector<int>{NotificationArea::noteClicked});
}

TEST_F(AnsweredNoteTest, ALaterNoteOrTheEndOfTheIconOrOfTheTaskBarDropsTheAnswer) {
    auto later = record;
    later.uFlags = NotificationArea::info;
    tell();
    area.Shell_NotifyIconA(NotificationArea::modify, &later);
    news(NIN_BALLOONUSERCLICK);
    tell();
    SendMessageA(FindWindowA("TarvikTaskBarWatcher", nullptr),
                 RegisterWindowMessageA("TaskbarCreated"), 0, 0);
    news(NIN_BALLOONUSERCLICK);
    tell();
    area.Shell_NotifyIconA(NotificationArea::remove, &record);
    news(NIN_BALLOONUSERCLICK);

    EXPECT_TRUE(answers.empty());
}

TEST_F(AnsweredNoteTest, TheIconsMouseMessagesReachTheProgramAsBefore) {
    std::vector<int> messages;
    tray.picSysTrayHook.MouseMove.connect([&](int message) { messages.push_back(message); });
    tell();

    news(WM_LBUTTONUP);
    news(WM_RBUTTONUP);

    EXPECT_EQ(messages, (std::vector<int>{514, 517}));
}

TEST_F(AnsweredNoteTest, WhileABoxIsOpenAClickIsNoAnswer) {
    tell();
    bool clicked = false;
    const Later click([&] {
        const OpenBox open = openBox(GetCurrentProcessId());
        if (open.window == nullptr) {
            return false;
        }
        news(NIN_BALLOONUSERCLICK);
        clicked = true;
        return open.press(MsgBoxAnswer::Ok);
    });

    machine.desktop.messageBox({.text = "?", .caption = "T"});

    EXPECT_TRUE(clicked);
    EXPECT_TRUE(answers.empty());
}

TEST_F(AnsweredNoteTest, WithoutAnIconOrWithOneOfTheOldestFormThereIsNone) {
    area.Shell_NotifyIconA(NotificationArea::remove, &record);
    EXPECT_FALSE(tell());
    record.cbSize = 88;
    area.Shell_NotifyIconA(NotificationArea::add, &record);
    PlayedTaskBar::told.clear();

    EXPECT_FALSE(tell());

    EXPECT_TRUE(PlayedTaskBar::told.empty());
}

} // namespace
} // namespace tarvik
