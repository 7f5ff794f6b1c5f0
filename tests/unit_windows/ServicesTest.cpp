#include <winsock2.h>

#include "support/TemporaryFolder.h"
#include "windows/services/Library.h"
#include "windows/services/WindowsInternetState.h"
#include "windows/services/WindowsLocale.h"
#include "windows/services/WindowsProgram.h"
#include "windows/services/WindowsSockets.h"
#include "windows/services/WindowsSystemErrorText.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

TEST(ProgramTest, ADriveThatWasPulledOutOpensNoBoxOfTheSystems) {
    const UINT before = SetErrorMode(0);

    const WindowsProgram program;

    EXPECT_EQ(SetErrorMode(before), UINT{SEM_FAILCRITICALERRORS});
}

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

TEST(SocketsTest, AHostThatNobodyKnowsLeavesAnError) {
    WindowsSockets sockets;
    tarvik::WSADATA data{};
    tarvik::HOSTENT host;
    ASSERT_EQ(sockets.WSAStartup(0x0101, &data), 0);

    sockets.gethostbyname("no-such-host.invalid", &host);

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

TEST(LocaleFormsTest, TheProgramUsesTheUsersOwn) {
    WindowsLocale locale;

    EXPECT_EQ(locale.data(), localeDataOf(LOCALE_USER_DEFAULT));
}

TEST(LocaleFormsTest, AMiddleDotIsOneOfTheCodePage) {
    const CodePage western{.toUtf8 = [](std::string_view) { return std::string("\xC2\xB7"); },
                           .fromUtf8 = [](std::string_view) { return std::string("\xB7"); }};

    EXPECT_EQ(localeDataOf(LOCALE_USER_DEFAULT, western).middleDot, "\xB7");
}

TEST(LocaleFormsTest, WhereTheCodePageHasNoMiddleDotAHyphenStandsForIt) {
    const CodePage without{.fromUtf8 = [](std::string_view) { return std::string("?"); }};

    EXPECT_EQ(localeDataOf(LOCALE_USER_DEFAULT, without).middleDot, "-");
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
