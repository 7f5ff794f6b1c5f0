#include "scripted/ScriptedServices.h"

#include "types/Convert.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

TEST(ScriptedClockTest, StandsStillUntilItIsMoved) {
    ScriptedClock clock;
    clock.set({2026, 11, 16, 23, 59, 59});

    EXPECT_EQ(clock.currentTime(), clock.currentTime());
    clock.advanceSeconds(1);

    EXPECT_EQ(clock.currentDate(), Date::fromCivil({2026, 11, 17, 0, 0, 0}));
}

TEST(ScriptedClockTest, MidnightMayPassBetweenTwoReadings) {
    ScriptedClock clock;
    clock.set({2026, 11, 16, 23, 59, 59});
    clock.secondsPerReading = 2;

    const Date date = clock.currentDate();
    const Date time = clock.currentTime();

    EXPECT_EQ(date, Date::fromCivil({2026, 11, 16, 0, 0, 0}));
    EXPECT_EQ(longTimeText(time, LocaleData{}), "00:00:01");
}

TEST(ScriptedClockTest, TheZoneIsHowFarTheWallClockIsAheadUnlessOneIsGiven) {
    ScriptedClock clock;
    clock.set({2026, 11, 16, 13, 45, 22});

    EXPECT_EQ(clock.minutesAhead(0), 330);
    clock.zone = [](std::int64_t moment) { return moment < 1000 ? 60 : 120; };

    EXPECT_EQ(clock.minutesAhead(999), 60);
    EXPECT_EQ(clock.minutesAhead(1000), 120);
}

TEST(ScriptedInstancesTest, AnswersAsScriptedAndNotesWhatItWasAsked) {
    ScriptedInstances instances;
    instances.error = 183;
    std::uint32_t error = 0;

    const std::int32_t handle = instances.CreateMutexA("Name", &error);
    instances.CloseHandle(handle);

    EXPECT_EQ(error, 183U);
    EXPECT_EQ(instances.namesAsked, std::vector<std::string>{"Name"});
    EXPECT_EQ(instances.handlesClosed, std::vector<std::int32_t>{41});
}

TEST(ScriptedNotificationAreaTest, NotesEachRequestWithACopyOfItsRecord) {
    ScriptedNotificationArea area;
    NOTIFYICONDATAA data{};
    data.uID = 1;
    area.Shell_NotifyIconA(NotificationArea::add, &data);
    data.uID = 2;
    area.present = false;

    EXPECT_FALSE(area.Shell_NotifyIconA(NotificationArea::modify, &data));

    ASSERT_EQ(area.requests.size(), 2U);
    EXPECT_EQ(area.requests[0].data.uID, 1U);
    EXPECT_EQ(area.requests[1].request, 1U);
    EXPECT_EQ(area.GetVersion(), 5U);
}

class ScriptedNotesTest : public testing::Test {
protected:
    bool tell() {
        return area.tell(note, [this](int how) { answers.push_back(how); });
    }
    bool ask(std::uint32_t request, std::uint32_t flags) {
        NOTIFYICONDATAA data{};
        data.uFlags = flags;
        return area.Shell_NotifyIconA(request, &data);
    }

    DesktopNote note{.title = "80 %", .text = "Harbour", .buttons = {"Silence", "Details"}};
    std::vector<int> answers;
    ScriptedNotificationArea area;
};

TEST_F(ScriptedNotesTest, ANoteIsRememberedAndAnsweredOnce) {
    EXPECT_TRUE(tell());

    EXPECT_TRUE(area.answer(1));
    EXPECT_FALSE(area.answer(1));

    EXPECT_EQ(area.notes, std::vector<DesktopNote>{note});
    EXPECT_EQ(answers, std::vector<int>{1});
}

TEST_F(ScriptedNotesTest, AClickOnTheNoteItselfIsAnAnswer) {
    tell();

    EXPECT_TRUE(area.answer(NotificationArea::noteClicked));

    EXPECT_EQ(answers, std::vector<int>{NotificationArea::noteClicked});
}

TEST_F(ScriptedNotesTest, ADesktopWithoutNotesShowsNone) {
    area.present = false;

    EXPECT_FALSE(tell());

    EXPECT_TRUE(area.notes.empty());
    EXPECT_FALSE(area.answer(NotificationArea::noteClicked));
}

TEST_F(ScriptedNotesTest, ADesktopThatOnlyShowsNotesShowsIt) {
    area.present = false;
    area.onlyNotes = true;

    EXPECT_TRUE(tell());
}

TEST_F(ScriptedNotesTest, WhatIsNotThereIsNotPressed) {
    tell();

    EXPECT_FALSE(area.answer(2));
    EXPECT_FALSE(area.answer(-2));
    area.notesHaveButtons = false;
    EXPECT_FALSE(area.answer(0));

    EXPECT_TRUE(answers.empty());
    EXPECT_TRUE(area.answer(NotificationArea::noteClicked));
}

TEST_F(ScriptedNotesTest, ANoteThatHasGoneIsNotAnswered) {
    tell();
    area.closeNote();
    EXPECT_FALSE(area.answer(0));

    tell();
    ask(NotificationArea::modify, NotificationArea::info);
    EXPECT_FALSE(area.answer(0));

    tell();
    ask(NotificationArea::remove, 0);
    EXPECT_FALSE(area.answer(0));
    EXPECT_TRUE(answers.empty());
}

TEST_F(ScriptedNotesTest, AChangeOfTheIconLeavesTheNote) {
    tell();

    ask(NotificationArea::modify, NotificationArea::icon | NotificationArea::tip);

    EXPECT_TRUE(area.answer(0));
}

TEST(ScriptedProgramTest, RemembersWhatWasStartedWithWhat) {
    ScriptedProgram program;

    EXPECT_TRUE(program.launch("C:\\Tools\\a.exe", {{"TARVIK_LINE", "Harbour"}}));
    program.launchFails = true;
    EXPECT_FALSE(program.launch("C:\\Tools\\b.exe", {}));

    ASSERT_EQ(program.launches.size(), 1U);
    EXPECT_EQ(program.launches[0].path, "C:\\Tools\\a.exe");
    EXPECT_EQ(program.launches[0].variables.at(0).second, "Harbour");
}

TEST(ScriptedProgramTest, AFullPathIsOneOfTheMachinesKind) {
    ScriptedProgram program;
    program.separator = '/';

    EXPECT_TRUE(program.launch("/usr/bin/true", {}));
    EXPECT_FALSE(program.launch("C:\\Tools\\a.exe", {}));
}

TEST(ScriptedErrorTextsTest, KnowsAccessDeniedAndWhatATestAdds) {
    ScriptedErrorTexts texts;
    texts.texts[2] = "File not found.";
    char buffer[8] = "before";

    EXPECT_EQ(texts.FormatMessageA(4096, nullptr, 3, 0, buffer, sizeof buffer, nullptr), 0U);
    EXPECT_STREQ(buffer, "before");
    EXPECT_EQ(texts.FormatMessageA(4096, nullptr, 2, 0, buffer, sizeof buffer, nullptr), 7U);
    EXPECT_STREQ(buffer, "File no");
    EXPECT_EQ(texts.FormatMessageA(4096, nullptr, 5, 0, buffer, sizeof buffer, nullptr), 7U);
    EXPECT_STREQ(buffer, "Access ");
}

TEST(ScriptedInternetStateTest, TellsFlagsEitherWayAndCutsTheName) {
    ScriptedInternetState internet;
    internet.flagWord = 0x51;
    std::uint32_t flags = 0;
    char name[5] = "none";
    EXPECT_FALSE(internet.InternetGetConnectedStateExA(&flags, name, sizeof name, 0));
    EXPECT_STREQ(name, "none");

    internet.connected = true;
    internet.name = "Harbour";

    EXPECT_TRUE(internet.InternetGetConnectedState(&flags, 0));
    EXPECT_EQ(flags, 0x51U);
    EXPECT_TRUE(internet.InternetGetConnectedStateExA(&flags, name, sizeof name, 0));
    EXPECT_STREQ(name, "Harb");
}

TEST(ScriptedSocketsTest, TheNameFailsOnDemand) {
    ScriptedSockets sockets;
    char name[32];
    EXPECT_EQ(sockets.gethostname(name, sizeof name), 0);
    EXPECT_STREQ(name, "testhost");

    sockets.hostNameFails = true;

    EXPECT_EQ(sockets.gethostname(name, sizeof name), -1);
}

TEST(ScriptedDialogsTest, AreLeftWithANameOrCancelled) {
    ScriptedDialogs dialogs;
    char file[8] = "";
    OPENFILENAMEA data{};
    data.lpstrFilter = "INI\0*.ini\0\0";
    data.lpstrTitle = "Open";
    data.lpstrInitialDir = "C:\\";
    data.lpstrFile = file;
    data.nMaxFile = sizeof file;
    const auto place = [](const ScreenRect&, const ScreenRect& owner) { return owner; };

    EXPECT_FALSE(dialogs.GetOpenFileNameA(&data, place));
    EXPECT_EQ(dialogs.CommDlgExtendedError(), 0U);
    dialogs.chosen = "C:\\a.ini";
    EXPECT_TRUE(dialogs.GetSaveFileNameA(&data, place));

    EXPECT_STREQ(file, "C:\\a.in");
    EXPECT_EQ(dialogs.filter, std::string("INI\0*.ini\0\0", 11));
    EXPECT_EQ(dialogs.placed.left, 200);
}

struct NamedLocale {
    const char* name;
    LocaleData data;
    const char* date;
    const char* time;
    const char* number;
};

class ScriptedLocaleTest : public testing::TestWithParam<NamedLocale> {};

TEST_P(ScriptedLocaleTest, WritesItsOwnForms) {
    const Date moment = Date::fromCivil({2026, 11, 6, 8, 5, 2});

    EXPECT_EQ(shortDateText(moment.dateOnly(), GetParam().data), GetParam().date);
    EXPECT_EQ(longTimeText(moment.timeOnly(), GetParam().data), GetParam().time);
    EXPECT_EQ(formatGrouped(1234567.0, 2, GetParam().data), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(
    Named, ScriptedLocaleTest,
    testing::Values(NamedLocale{"German", germanLocale(), "06.11.2026", "08:05:02", "1.234.567,00"},
                    NamedLocale{"American", americanLocale(), "11/6/2026", "8:05:02 AM",
                                "1,234,567.00"},
                    NamedLocale{"Swedish", swedishLocale(), "2026-11-06", "08:05:02",
                                "1\xC2\xA0"
                                "234\xC2\xA0"
                                "567,00"},
                    NamedLocale{"French", frenchLocale(), "06/11/2026", "08:05:02",
                                "1\xE2\x80\xAF"
                                "234\xE2\x80\xAF"
                                "567,00"},
                    NamedLocale{"Swiss", swissLocale(), "06.11.2026", "08:05:02", "1’234’567.00"},
                    NamedLocale{"Finnish", finnishLocale(), "6.11.2026", "8.05.02",
                                "1\xC2\xA0"
                                "234\xC2\xA0"
                                "567,00"},
                    NamedLocale{"Japanese", japaneseLocale(), "2026年11月6日", "午前8時05分02秒",
                                "1,234,567.00"}),
    [](const auto& tested) { return tested.param.name; });

} // namespace
} // namespace tarvik
