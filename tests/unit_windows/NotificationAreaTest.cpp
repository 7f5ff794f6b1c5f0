#include "windows/face/WindowsNotificationArea.h"

#include "HebrewPage.h"
#include "PlayedTaskBar.h"
#include "support/Win32Windows.h"

#include "windows/face/DrawingRaster.h"

#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tarvik {

namespace {

/// A window that is never seen, for the icon's messages.
class NotificationAreaTest : public testing::Test {
protected:
    NotificationAreaTest()
        : window(CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                 GetModuleHandleA(nullptr), nullptr)) {}
    ~NotificationAreaTest() override { DestroyWindow(window); }

    bool ask(std::uint32_t request, TrayIcon icon = TrayIcon::imgSysTray) {
        auto record = iconOf(window, icon);
        return area.Shell_NotifyIconA(request, &record);
    }

    static constexpr UINT fairWhile = 20'000; ///< milliseconds
    HWND window;
    face::WindowsNotificationArea area{hebrewPage(), fairWhile};
};

TEST_F(NotificationAreaTest, AnIconIsAddedOnceChangedAndRemoved) {
    EXPECT_TRUE(ask(NotificationArea::add));
    EXPECT_FALSE(ask(NotificationArea::add));
    EXPECT_TRUE(ask(NotificationArea::modify, TrayIcon::imgSysTrayOnline));
    EXPECT_TRUE(ask(NotificationArea::remove));
    EXPECT_FALSE(ask(NotificationArea::modify));
}

TEST_F(NotificationAreaTest, TheOldestFormOfTheRecordIsTakenToo) {
    auto record = iconOf(window, TrayIcon::imgSysTrayOffline);
    record.cbSize = 88;

    EXPECT_TRUE(area.Shell_NotifyIconA(NotificationArea::add, &record));
    EXPECT_TRUE(area.Shell_NotifyIconA(NotificationArea::remove, &record));
}

TEST_F(NotificationAreaTest, TheProgramsRecordIsNotChanged) {
    auto record = iconOf(window, TrayIcon::imgSysTrayOnline);

    area.Shell_NotifyIconA(NotificationArea::add, &record);
    EXPECT_EQ(record.hIcon, 1U);

    area.Shell_NotifyIconA(NotificationArea::remove, &record);
}

TEST_F(NotificationAreaTest, AnIconComesBackWhenTheTaskBarWasStartedAnew) {
    ASSERT_TRUE(ask(NotificationArea::add));
    // The task bar lost the icon behind the program's back.
    ::NOTIFYICONDATAA lost{};
    lost.cbSize = 488;
    lost.hWnd = window;
    lost.uID = 1;
    ASSERT_TRUE(::Shell_NotifyIconA(NIM_DELETE, &lost));
    ASSERT_FALSE(ask(NotificationArea::modify));

    SendMessageA(FindWindowA("TarvikTaskBarWatcher", nullptr),
                 RegisterWindowMessageA("TaskbarCreated"), 0, 0);

    EXPECT_TRUE(ask(NotificationArea::modify));
    EXPECT_TRUE(ask(NotificationArea::remove));
}

TEST_F(NotificationAreaTest, ARemovedIconStaysAway) {
    ask(NotificationArea::add);
    ask(NotificationArea::remove);

    SendMessageA(FindWindowA("TarvikTaskBarWatcher", nullptr),
                 RegisterWindowMessageA("TaskbarCreated"), 0, 0);

    EXPECT_FALSE(ask(NotificationArea::modify));
}

/// An icon whose task bar is played by the test.
class NoteTest : public NotificationAreaTest {
protected:
    /// Shows a note; what stood in the record before is still there behind its end.
    void note(const std::string& text) {
        auto record = iconOf(window, TrayIcon::imgSysTray);
        record.uFlags = NotificationArea::info;
        record.dwInfoFlags = 1;
        std::memset(record.szInfo, '?', sizeof record.szInfo);
        std::strcpy(record.szInfo, text.c_str());
        std::strcpy(record.szInfoTitle, "Title");
        area.Shell_NotifyIconA(NotificationArea::modify, &record);
    }

    PlayedTaskBar taskBar;
};

TEST_F(NoteTest, EachNumberOfAnIconHasAnImageOfItsOwnAndAnUnknownOneTheFirsts) {
    for (std::uint32_t number = 0; number < 10; ++number) {
        auto record = iconOf(window, static_cast<TrayIcon>(number));
        area.Shell_NotifyIconA(NotificationArea::add, &record);
    }

    std::set<HICON> images;
    for (const PlayedTaskBar::Told& each : PlayedTaskBar::told) {
        images.insert(each.record.hIcon);
    }
    EXPECT_EQ(images.size(), 9U);
    EXPECT_EQ(images.count(nullptr), 0U);
    EXPECT_EQ(PlayedTaskBar::told.at(9).record.hIcon, PlayedTaskBar::told.at(0).record.hIcon);
}

TEST_F(NoteTest, ANoteReachesTheTaskBarWithEachLineEndedAsTheSystemWantsIt) {
    note("one\rtwo\r\nthree");

    ASSERT_EQ(PlayedTaskBar::told.size(), 1U);
    const PlayedTaskBar::Told& told = PlayedTaskBar::told.front();
    EXPECT_EQ(told.request, static_cast<DWORD>(NIM_MODIFY));
    EXPECT_EQ(told.record.uFlags, static_cast<UINT>(NIF_INFO));
    EXPECT_STREQ(told.record.szInfo, "one\r\ntwo\r\nthree");
    EXPECT_STREQ(told.record.szInfoTitle, "Title");
    EXPECT_EQ(told.record.dwInfoFlags, static_cast<DWORD>(NIIF_INFO));
}

TEST_F(NoteTest, ANoteThatOutgrowsTheRecordIsCutAndEnded) {
    note(std::string(200, 'a') + "\r" + std::string(54, 'b'));

    ASSERT_EQ(PlayedTaskBar::told.size(), 1U);
    const char* shown = PlayedTaskBar::told.front().record.szInfo;
    EXPECT_EQ(shown[255], '\0');
    EXPECT_EQ(std::string(shown, strnlen(shown, 256)),
              std::string(200, 'a') + "\r\n" + std::string(53, 'b'));
}

TEST_F(NoteTest, ANoteIsCutBeforeALineEndThatDoesNotFitWhole) {
    note(std::string(254, 'a') + "\r");

    ASSERT_EQ(PlayedTaskBar::told.size(), 1U);
    EXPECT_EQ(std::string(PlayedTaskBar::told.front().record.szInfo), std::string(254, 'a'));
}

TEST_F(NoteTest, ANoteTellsOfATurn) {
    note("Bank \xFEgnp.exe\rtwo");

    ASSERT_EQ(PlayedTaskBar::told.size(), 1U);
    EXPECT_STREQ(PlayedTaskBar::told.front().record.szInfo, "Bank [U+200F]gnp.exe\r\ntwo");
}

TEST_F(NoteTest, ATipTellsOfATurn) {
    auto record = iconOf(window, TrayIcon::imgSysTray);
    std::strcpy(record.szTip, "Bank \xFEgnp.exe");

    area.Shell_NotifyIconA(NotificationArea::add, &record);

    ASSERT_EQ(PlayedTaskBar::told.size(), 1U);
    EXPECT_STREQ(PlayedTaskBar::told.front().record.szTip, "Bank [U+200F]gnp.exe");
}

TEST_F(NoteTest, ATipThatOutgrowsTheOldestFormIsCutAndEnded) {
    auto record = iconOf(window, TrayIcon::imgSysTray);
    record.cbSize = 88;
    std::strcpy(record.szTip, (std::string(60, 'a') + "\xFE").c_str());

    area.Shell_NotifyIconA(NotificationArea::add, &record);

    ASSERT_EQ(PlayedTaskBar::told.size(), 1U);
    EXPECT_EQ(std::string(PlayedTaskBar::told.front().record.szTip, 64),
              std::string(60, 'a') + "[U+" + '\0');
}

TEST_F(NoteTest, ANoteDoesNotComeBackWithTheIcon) {
    ask(NotificationArea::add, TrayIcon::imgSysTrayOnline);
    note("once");
    PlayedTaskBar::told.clear();

    SendMessageA(FindWindowA("TarvikTaskBarWatcher", nullptr),
                 RegisterWindowMessageA("TaskbarCreated"), 0, 0);

    ASSERT_EQ(PlayedTaskBar::told.size(), 2U);
    const PlayedTaskBar::Told& again = PlayedTaskBar::told.front();
    EXPECT_EQ(again.request, static_cast<DWORD>(NIM_ADD));
    EXPECT_EQ(again.record.uFlags, static_cast<UINT>(NIF_MESSAGE | NIF_ICON | NIF_TIP));
    EXPECT_STREQ(again.record.szInfo, "");
    EXPECT_EQ(PlayedTaskBar::told.back().request, static_cast<DWORD>(NIM_SETVERSION));
}

/// A task bar on a thread of its own, before the system's, that does not answer until it is told
/// to.
class SilentTaskBar {
public:
    SilentTaskBar() {
        thread_ = CreateThread(nullptr, 0, run, this, 0, nullptr);
        WaitForSingleObject(made_, INFINITE);
    }
    ~SilentTaskBar() {
        answer();
        SetEvent(end_);
        WaitForSingleObject(thread_, INFINITE);
        for (const HANDLE handle : {thread_, made_, speak_, end_}) {
            CloseHandle(handle);
        }
    }
    SilentTaskBar(const SilentTaskBar&) = delete;
    SilentTaskBar& operator=(const SilentTaskBar&) = delete;

    void answer() const { SetEvent(speak_); }

private:
    static DWORD WINAPI run(void* own) {
        auto& bar = *static_cast<SilentTaskBar*>(own);
        WNDCLASSA kind{};
        kind.lpfnWndProc = DefWindowProcA;
        kind.hInstance = GetModuleHandleA(nullptr);
        kind.lpszClassName = "Shell_TrayWnd";
        RegisterClassA(&kind);
        const HWND window =
            CreateWindowExA(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, "Shell_TrayWnd", "", WS_POPUP, 0, 0,
                            0, 0, nullptr, nullptr, kind.hInstance, nullptr);
        SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        SetEvent(bar.made_);
        WaitForSingleObject(bar.speak_, INFINITE);
        while (MsgWaitForMultipleObjects(1, &bar.end_, FALSE, INFINITE, QS_ALLINPUT) !=
               WAIT_OBJECT_0) {
            MSG message{};
            while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
                DispatchMessageA(&message);
            }
        }
        DestroyWindow(window);
        return 0;
    }

    HANDLE made_ = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    HANDLE speak_ = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    HANDLE end_ = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    HANDLE thread_ = nullptr;
};

/// An icon whose task bar goes silent; what the system would tell that one is written down.
class SilentTaskBarTest : public testing::Test {
protected:
    SilentTaskBarTest() { bar.emplace(); }

    bool ask(std::uint32_t request, TrayIcon icon = TrayIcon::imgSysTray) {
        auto record = iconOf(GetDesktopWindow(), icon);
        return area.Shell_NotifyIconA(request, &record);
    }

    /// The icon was shown before the task bar fell silent.
    void givenAnIconBeforeTheSilence(face::WindowsNotificationArea& shower) {
        bar.reset();
        auto record = iconOf(GetDesktopWindow(), TrayIcon::imgSysTray);
        ASSERT_TRUE(shower.Shell_NotifyIconA(NotificationArea::add, &record));
        PlayedTaskBar::told.clear();
        bar.emplace();
    }

    static std::vector<DWORD> requests() {
        std::vector<DWORD> all;
        for (const PlayedTaskBar::Told& one : PlayedTaskBar::told) {
            all.push_back(one.request);
        }
        return all;
    }

    /// Handles messages until something was told; false when nothing is within a fair while.
    static bool spinUntilTold() {
        const auto handleMessages = [] {
            MSG message{};
            while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
                DispatchMessageA(&message);
            }
        };
        return spinUntil(handleMessages, [] { return !PlayedTaskBar::told.empty(); });
    }

    PlayedTaskBar system;
    std::optional<SilentTaskBar> bar;
    face::WindowsNotificationArea area{hebrewPage(), 200};
};

TEST_F(SilentTaskBarTest, ATaskBarThatDoesNotAnswerIsToldNothing) {
    EXPECT_FALSE(ask(NotificationArea::add));
    EXPECT_FALSE(ask(NotificationArea::modify, TrayIcon::imgSysTrayOnline));

    EXPECT_TRUE(PlayedTaskBar::told.empty());
}

TEST_F(SilentTaskBarTest, OnceItAnswersItIsToldTheNewestStateAlone) {
    ask(NotificationArea::add);
    ask(NotificationArea::modify, TrayIcon::imgSysTrayOffline);
    ask(NotificationArea::modify, TrayIcon::imgSysTrayOnline);
    auto online = iconOf(GetDesktopWindow(), TrayIcon::imgSysTrayOnline);

    bar->answer();
    ASSERT_TRUE(spinUntilTold());

    EXPECT_EQ(requests(), (std::vector<DWORD>{NIM_ADD, NIM_SETVERSION}));
    bar.reset();
    EXPECT_TRUE(area.Shell_NotifyIconA(NotificationArea::modify, &online));
    ASSERT_EQ(PlayedTaskBar::told.size(), 3U);
    EXPECT_EQ(PlayedTaskBar::told.front().record.hIcon, PlayedTaskBar::told.back().record.hIcon);
}

TEST_F(SilentTaskBarTest, AnotherTaskBarIsToldAtOnce) {
    ask(NotificationArea::add);
    ASSERT_TRUE(PlayedTaskBar::told.empty());

    SilentTaskBar other;
    other.answer();
    SendMessageA(FindWindowA("TarvikTaskBarWatcher", nullptr),
                 RegisterWindowMessageA("TaskbarCreated"), 0, 0);
    ASSERT_TRUE(spinUntilTold());

    EXPECT_EQ(requests(), (std::vector<DWORD>{NIM_ADD, NIM_SETVERSION}));
}

TEST_F(SilentTaskBarTest, AnIconThatWasThereBeforeIsChangedOnceItAnswers) {
    face::WindowsNotificationArea patient{hebrewPage(), 2000};
    ASSERT_NO_FATAL_FAILURE(givenAnIconBeforeTheSilence(patient));
    auto record = iconOf(GetDesktopWindow(), TrayIcon::imgSysTrayOnline);

    EXPECT_TRUE(patient.Shell_NotifyIconA(NotificationArea::modify, &record));
    EXPECT_TRUE(PlayedTaskBar::told.empty());
    bar->answer();
    ASSERT_TRUE(spinUntilTold());

    EXPECT_EQ(requests(), std::vector<DWORD>{NIM_MODIFY});
}

TEST_F(SilentTaskBarTest, AnIconThatWasTakenAwayMeanwhileIsTakenAwayOnceItAnswers) {
    face::WindowsNotificationArea patient{hebrewPage(), 2000};
    ASSERT_NO_FATAL_FAILURE(givenAnIconBeforeTheSilence(patient));
    auto record = iconOf(GetDesktopWindow(), TrayIcon::imgSysTray);

    EXPECT_TRUE(patient.Shell_NotifyIconA(NotificationArea::remove, &record));
    EXPECT_TRUE(PlayedTaskBar::told.empty());
    bar->answer();
    ASSERT_TRUE(spinUntilTold());

    EXPECT_EQ(requests(), std::vector<DWORD>{NIM_DELETE});
}

TEST_F(NotificationAreaTest, TheVersionIsThatOfAFamilyWithBalloons) {
    const std::uint32_t version = area.GetVersion();

    EXPECT_EQ(version & 0x80000000U, 0U);
    EXPECT_GE(version & 0xFFU, 5U);
}

Drawing disc() {
    return {{{.type = DrawingShape::Type::Circle,
              .points = {{0.5, 0.5}, {0.9, 0.5}},
              .colour = {200, 100, 50}}}};
}

std::uint32_t pointOf(const face::Raster& raster, int column, int row) {
    return raster.points[static_cast<std::size_t>(row * raster.side + column)];
}

TEST(DrawingRasterTest, ADrawingCoversItsBackgroundWithSmoothEdges) {
    const face::Raster raster = face::rasterOn(disc(), 20, {255, 255, 255});

    EXPECT_EQ(pointOf(raster, 0, 0), 0xFFFFFFFFU);
    EXPECT_EQ(pointOf(raster, 10, 10), 0xFFC86432U);
    int between = 0;
    for (const std::uint32_t point : raster.points) {
        between += point != 0xFFFFFFFFU && point != 0xFFC86432U ? 1 : 0;
    }
    EXPECT_GT(between, 10);
}

TEST(DrawingRasterTest, ADrawingAloneIsTransparentAroundIt) {
    const face::Raster raster = face::rasterAlone(disc(), 20);

    EXPECT_EQ(pointOf(raster, 0, 0), 0U);
    EXPECT_EQ(pointOf(raster, 10, 10), 0xFFC86432U);
}

TEST(DrawingRasterTest, LinesAndPolygonsAreDrawn) {
    const Drawing drawing{{{.type = DrawingShape::Type::Polygon,
                            .points = {{0, 0}, {0.4, 0}, {0.4, 1}, {0, 1}},
                            .colour = {0, 0, 255}},
                           {.type = DrawingShape::Type::Line,
                            .points = {{0.7, 0}, {0.7, 1}},
                            .colour = {0, 255, 0},
                            .stroke = 0.2}}};

    const face::Raster raster = face::rasterOn(drawing, 20, {255, 255, 255});

    EXPECT_EQ(pointOf(raster, 3, 10), 0xFF0000FFU);
    EXPECT_EQ(pointOf(raster, 14, 10), 0xFF00FF00U);
    EXPECT_EQ(pointOf(raster, 10, 10), 0xFFFFFFFFU);
}

TEST(DrawingRasterTest, AnIconHasTheSizeAskedFor) {
    const HICON icon = face::makeIcon(disc(), 20);
    ICONINFO info{};
    ASSERT_TRUE(GetIconInfo(icon, &info));
    BITMAP bitmap{};
    GetObjectA(info.hbmColor, sizeof bitmap, &bitmap);

    EXPECT_EQ(bitmap.bmWidth, 20);
    EXPECT_EQ(bitmap.bmHeight, 20);

    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    DestroyIcon(icon);
}

} // namespace
} // namespace tarvik
