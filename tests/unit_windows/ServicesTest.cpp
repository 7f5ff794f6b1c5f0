#include <winsock2.h>

#include "support/TemporaryFolder.h"
#include "windows/services/Library.h"
#include "windows/services/WindowsClock.h"
#include "windows/services/WindowsInternetState.h"
#include "windows/services/WindowsLocale.h"
#include "windows/services/WindowsProgram.h"
#include "windows/services/WindowsSingleInstance.h"
#include "windows/services/WindowsSockets.h"
#include "windows/services/WindowsSystemErrorText.h"

#include "types/Convert.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

constexpr std::uint32_t taken = 183;

TEST(LibraryTest, AFunctionOfTheSystemIsFound) {
    Library library("kernel32.dll");

    EXPECT_NE(library.function<DWORD WINAPI()>("GetTickCount"), nullptr);
    EXPECT_EQ(library.function<DWORD WINAPI()>("NoSuchFunction"), nullptr);
}

TEST(LibraryTest, ALibraryThatIsNotThereHasNoFunctions) {
    Library library("no-such-library.dll");

    EXPECT_EQ(library.function<DWORD WINAPI()>("GetTickCount"), nullptr);
}

TEST(LibraryTest, OnlyTheSystemsFolderIsLookedInto) {
    // The program's own folder comes first where the system may choose.
    char program[MAX_PATH];
    GetModuleFileNameA(nullptr, program, MAX_PATH);
    const std::string name = "tarvik-planted.dll";
    const std::string planted = folderOfPath(program) + "\\" + name;
    ASSERT_TRUE(CopyFileA((systemFolder() + "\\version.dll").c_str(), planted.c_str(), FALSE));
    Library library(name);

    EXPECT_EQ(library.function<DWORD WINAPI()>("GetFileVersionInfoA"), nullptr);

    DeleteFileA(planted.c_str());
}

TEST(SingleInstanceTest, TheSecondHolderIsToldThatTheNameIsTaken) {
    WindowsSingleInstance first;
    WindowsSingleInstance second;
    std::uint32_t error = 1;

    const std::int32_t held = first.CreateMutexA("{tarvik-test}", &error);
    EXPECT_GE(held, 1);
    EXPECT_EQ(error, 0U);
    const std::int32_t other = second.CreateMutexA("{tarvik-test}", &error);
    EXPECT_GE(other, 1);
    EXPECT_EQ(error, taken);

    EXPECT_TRUE(second.CloseHandle(other));
    EXPECT_TRUE(first.CloseHandle(held));
    const std::int32_t again = second.CreateMutexA("{tarvik-test}", &error);
    EXPECT_EQ(error, 0U);
    EXPECT_TRUE(second.CloseHandle(again));
}

TEST(SingleInstanceTest, ANameThatCannotBeUsedIsAnErrorWithoutAHandle) {
    WindowsSingleInstance instances;
    std::uint32_t error = 0;

    EXPECT_EQ(instances.CreateMutexA("no\\such\\place", &error), 0);

    EXPECT_NE(error, 0U);
    EXPECT_FALSE(instances.CloseHandle(0));
}

struct LineCase {
    const char* whole;
    const char* arguments;
};

class CommandLineTest : public testing::TestWithParam<LineCase> {};

TEST_P(CommandLineTest, TheProgramsNameIsLeftOut) {
    EXPECT_EQ(argumentsOf(GetParam().whole), GetParam().arguments);
}

INSTANTIATE_TEST_SUITE_P(
    All, CommandLineTest,
    testing::Values(LineCase{"tarvik.exe", ""}, LineCase{"tarvik.exe  /r  /m", "/r  /m"},
                    LineCase{"\"C:\\Program Files\\tarvik.exe\" /run", "/run"},
                    LineCase{"\"C:\\a b\\tarvik.exe\"/run", "/run"},
                    LineCase{"\"C:\\a b\\tarvik.exe\"", ""}, LineCase{"\"C:\\a b", ""},
                    LineCase{"tarvik.exe\t\"a b\"", "\"a b\""}, LineCase{"", ""}));

TEST(ProgramTest, TheFolderIsTheProgramsOwnWhereTheUserMayWrite) {
    WindowsProgram program;
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, MAX_PATH);

    EXPECT_EQ(program.folder(), folderOfPath(path));
    EXPECT_EQ(program.pathSeparator(), '\\');
}

TEST(ProgramTest, OnlyARootKeepsItsSeparator) {
    EXPECT_EQ(folderOfPath("C:\\tarvik.exe"), "C:\\");
    EXPECT_EQ(folderOfPath("C:\\Prog\\tarvik.exe"), "C:\\Prog");
    EXPECT_EQ(folderOfPath("\\\\server\\share\\tarvik.exe"), "\\\\server\\share");
    EXPECT_EQ(folderOfPath("tarvik.exe"), "");
}

TEST(ProgramTest, AFolderThatCannotBeWrittenToIsFoundOutWithoutATrace) {
    const TemporaryFolder folder;

    EXPECT_TRUE(canWriteIn(folder.path()));
    EXPECT_TRUE(folder.names().empty());
    EXPECT_FALSE(canWriteIn(folder.path() + "\\none"));
}

TEST(ProgramTest, APathBeyondTheCodePageIsToldByItsShortNames) {
    const TemporaryFolder folder;
    std::wstring name(folder.path().begin(), folder.path().end());
    name += L"\\\u4E2D\u6587\u5B57\u6A21\u677F";
    ASSERT_TRUE(CreateDirectoryW(name.c_str(), nullptr));

    const std::string path = codePagePath(name);

    ASSERT_FALSE(path.empty());
    EXPECT_EQ(path.find('?'), std::string::npos);
    EXPECT_NE(GetFileAttributesA(path.c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(ClockTest, DateAndTimeArePartsOfNow) {
    WindowsClock clock;
    SYSTEMTIME before{};
    GetLocalTime(&before);

    const CivilTime date = clock.currentDate().civil();
    const CivilTime time = clock.currentTime().civil();

    EXPECT_NEAR(date.year, before.wYear, 1);
    EXPECT_EQ(date.hour * 3600 + date.minute * 60 + date.second, 0);
    const int passed = (time.hour * 3600 + time.minute * 60 + time.second) -
                       (before.wHour * 3600 + before.wMinute * 60 + before.wSecond);
    EXPECT_LT((passed + 86'400) % 86'400, 60);
}

TEST(SystemErrorTest, AKnownNumberHasAText) {
    WindowsSystemErrorText texts;
    char buffer[512] = {};

    const std::uint32_t length =
        texts.FormatMessageA(4096, nullptr, 5, 0, buffer, sizeof buffer, nullptr);

    EXPECT_GT(length, 5U);
    EXPECT_EQ(std::string(buffer).size(), length);
}

TEST(SystemErrorTest, AnUnknownNumberHasNone) {
    WindowsSystemErrorText texts;
    char buffer[512] = "before";

    EXPECT_EQ(texts.FormatMessageA(4096, nullptr, 0x20FFFFFF, 0, buffer, sizeof buffer, nullptr),
              0U);

    EXPECT_STREQ(buffer, "before");
}

TEST(SystemErrorTest, ATextWithPlacesForValuesIsShownAsItStands) {
    WindowsSystemErrorText texts;
    char buffer[512] = {};
    constexpr std::uint32_t notAProgram = 193; // "%1 is not ..."

    EXPECT_GT(texts.FormatMessageA(4096, nullptr, notAProgram, 0, buffer, sizeof buffer, nullptr),
              0U);
}

TEST(InternetStateTest, BothQuestionsGiveTheSameAnswer) {
    WindowsInternetState internet;
    std::uint32_t flags = 0xFFFFFFFF;
    std::uint32_t more = 0xFFFFFFFF;
    char name[513] = "before";

    const bool connected = internet.InternetGetConnectedState(&flags, 0);

    EXPECT_EQ(internet.InternetGetConnectedStateExA(&more, name, 512, 0), connected);
    EXPECT_NE(flags, 0xFFFFFFFF);
    EXPECT_EQ(flags, more);
    if (!connected) {
        EXPECT_STREQ(name, "before");
    }
}

TEST(SocketsTest, TheHostHasANameAndAddresses) {
    WindowsSockets sockets;
    tarvik::WSADATA data{};
    ASSERT_EQ(sockets.WSAStartup(0x0101, &data), 0);
    EXPECT_EQ(data.wVersion, 0x0101);
    EXPECT_GE(data.iMaxSockets, 1);

    char name[256] = {};
    EXPECT_EQ(sockets.gethostname(name, sizeof name), 0);
    EXPECT_NE(name[0], '\0');
    tarvik::HOSTENT host;
    EXPECT_TRUE(sockets.gethostbyname("localhost", &host));
    ASSERT_FALSE(host.h_addr_list.empty());
    EXPECT_EQ(host.h_length, 4);
    EXPECT_EQ(host.h_addr_list.front(), std::string("\x7F\0\0\x01", 4));

    EXPECT_EQ(sockets.WSACleanup(), 0);
}

TEST(SocketsTest, EndingWhatWasNotStartedIsAnError) {
    WindowsSockets sockets;

    EXPECT_EQ(sockets.WSACleanup(), 10093);
}

TEST(SocketsTest, AHostThatNobodyKnowsHasNoEntry) {
    WindowsSockets sockets;
    tarvik::WSADATA data{};
    tarvik::HOSTENT host;
    ASSERT_EQ(sockets.WSAStartup(0x0101, &data), 0);

    EXPECT_FALSE(sockets.gethostbyname("no-such-host.invalid", &host));
    EXPECT_NE(sockets.WSAGetLastError(), 0);

    sockets.WSACleanup();
}

struct PatternCase {
    const char* system;
    const char* program;
};

class PatternTest : public testing::TestWithParam<PatternCase> {};

TEST_P(PatternTest, TheSystemsPatternsAreTakenOver) {
    EXPECT_EQ(translatedPattern(GetParam().system), GetParam().program);
}

INSTANTIATE_TEST_SUITE_P(All, PatternTest,
                         testing::Values(PatternCase{"dd.MM.yyyy", "dd.MM.yyyy"},
                                         PatternCase{"M/d/yy", "M/d/yyyy"},
                                         PatternCase{"ddd dd-MMM-yy", "dd-MMM-yyyy"},
                                         PatternCase{"yyyy. MM. dd.", "yyyy. MM. dd."},
                                         PatternCase{"d.M.yyyy 'r.'", "d.M.yyyy r."},
                                         PatternCase{"dddd, d MMMM yyyy", "d MMMM yyyy"},
                                         PatternCase{"gg yyyy/MM/dd", "yyyy/MM/dd"},
                                         PatternCase{"d 'de' MMMM yyyy", "d' de 'MMMM yyyy"},
                                         PatternCase{"h:mm:ss tt", "h:mm:ss tt"},
                                         PatternCase{"HH:mm:ss t", "HH:mm:ss tt"},
                                         PatternCase{"HH 'h' mm 'm' ss", "HH' h 'mm' m 'ss"}));

struct LocaleCase {
    std::uint32_t locale;
    const char* date;
    const char* time;
    const char* number;
};

class LocaleTest : public testing::TestWithParam<LocaleCase> {};

TEST_P(LocaleTest, GivesTheFormsOfTheLanguageWithFullYears) {
    const LocaleData data = localeDataOf(GetParam().locale);
    const Date date = Date::fromCivil({2026, 11, 16, 18, 40, 5});

    EXPECT_EQ(shortDateText(date, data), GetParam().date);
    EXPECT_EQ(longTimeText(date, data), GetParam().time);
    EXPECT_EQ(formatGrouped(1'234'567.5, 1, data), GetParam().number);
}

// German, English of the United States, English of the United Kingdom, Swedish.
INSTANTIATE_TEST_SUITE_P(
    All, LocaleTest,
    testing::Values(LocaleCase{0x0407, "16.11.2026", "18:40:05", "1.234.567,5"},
                    LocaleCase{0x0409, "11/16/2026", "6:40:05 PM", "1,234,567.5"},
                    LocaleCase{0x0809, "16/11/2026", "18:40:05", "1,234,567.5"},
                    LocaleCase{0x041D, "2026-11-16", "18:40:05",
                               "1\xA0"
                               "234\xA0"
                               "567,5"}));

std::vector<std::uint32_t>& foundLocales() {
    static std::vector<std::uint32_t> locales;
    return locales;
}

BOOL CALLBACK noteLocale(LPSTR name) {
    foundLocales().push_back(static_cast<std::uint32_t>(std::stoul(name, nullptr, 16)));
    return TRUE;
}

TEST(LocaleFormsTest, EveryLocaleOfTheSystemReadsBackWhatItWrites) {
    EnumSystemLocalesA(noteLocale, LCID_SUPPORTED);
    ASSERT_GT(foundLocales().size(), 50U);
    const Date evening = Date::fromCivil({2026, 11, 16, 18, 40, 5});
    const Date morning = Date::fromCivil({1999, 1, 2, 0, 5, 59});
    for (const std::uint32_t locale : foundLocales()) {
        const LocaleData data = localeDataOf(locale);
        for (const Date date : {evening, morning}) {
            const std::string text = toText(date, data);
            double serial = -1;
            try {
                serial = textToDate(text, data).serial();
            } catch (const RunTimeError&) {
                serial = -2;
            }
            EXPECT_EQ(serial, date.serial()) << std::hex << locale << ": " << text;
        }
        const Currency amount = Currency::fromScaled(12'345'678'901'234);
        EXPECT_EQ(textToCurrency(toText(amount, data), data), amount) << std::hex << locale;
    }
}

TEST(LocaleFormsTest, TheProgramUsesTheUsersOwn) {
    WindowsLocale locale;

    EXPECT_EQ(locale.data(), localeDataOf(LOCALE_USER_DEFAULT));
}

// Last, for the libraries stay, and some of them start the sockets.
TEST(OldSystemTest, WhatItAsksForByNameDoesNotComeFromTheProgramsFolder) {
    char program[MAX_PATH];
    GetModuleFileNameA(nullptr, program, MAX_PATH);
    const std::string planted = folderOfPath(program) + "\\xmllite.dll";
    ASSERT_TRUE(CopyFileA((systemFolder() + "\\version.dll").c_str(), planted.c_str(), FALSE));
    ASSERT_EQ(GetModuleHandleA("xmllite.dll"), nullptr) << "it is loaded before it is planted";

    loadWhatTheSystemAsksForByName();
    const HMODULE found = LoadLibraryA("xmllite.dll");

    EXPECT_NE(GetProcAddress(found, "CreateXmlReader"), nullptr) << "the planted one was loaded";
    DeleteFileA(planted.c_str());
}

} // namespace
} // namespace tarvik
