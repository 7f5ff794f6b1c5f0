#include "windows/services/ProgramStart.h"

#include "support/TemporaryFolder.h"
#include "windows/services/SystemHeader.h"
#include "windows/services/WindowsProgram.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string>

namespace tarvik {
namespace {

/// This program, started by a test, tells whether a handle is one of its own, and ends.
[[maybe_unused]] const bool handleTeller = [] {
    char told[MAX_PATH + 32];
    const DWORD length = GetEnvironmentVariableA("TARVIK_HANDLE", told, sizeof told);
    if (length == 0 || length >= sizeof told) {
        return false;
    }
    const std::string text = told;
    const auto handle = reinterpret_cast<HANDLE>(
        static_cast<std::uintptr_t>(std::stoul(text.substr(0, text.find('|')))));
    DWORD flags = 0;
    const bool known = GetHandleInformation(handle, &flags) != FALSE;
    const std::string path = text.substr(text.find('|') + 1);
    std::ofstream(path + ".new") << (known ? "known" : "unknown") << ' '
                                 << (GetConsoleWindow() == nullptr ||
                                             IsWindowVisible(GetConsoleWindow()) == FALSE
                                         ? "unseen"
                                         : "seen");
    MoveFileA((path + ".new").c_str(), path.c_str());
    std::_Exit(0);
}();

std::string pathOfThisProgram() {
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    return path;
}

bool waitFor(const std::string& path) {
    for (int waited = 0; !std::filesystem::exists(path) && waited < 60'000; waited += 5) {
        Sleep(5);
    }
    return std::filesystem::exists(path);
}

TEST(ProgramStartTest, AProgramIsAFullPathOfAFileThatIsOne) {
    for (const wchar_t* path : {L"C:\\a.exe", L"d:/Tools/b c.EXE", L"\\\\host\\share\\a.com"}) {
        EXPECT_TRUE(isProgramPath(path)) << std::filesystem::path(path);
    }
    for (const wchar_t* path :
         {L"", L"a.exe", L"C:a.exe", L"\\a.exe", L"1:\\a.exe", L"C:\\a.bat", L"C:\\a.cmd",
          L"C:\\a.exe.", L"C:\\a.exe ", L"C:\\a", L"C:\\a.exe\" b.exe", L"file:///C:/a.exe"}) {
        EXPECT_FALSE(isProgramPath(path)) << std::filesystem::path(path);
    }
}

TEST(ProgramStartTest, TheEnvironmentIsInOrderAndEachNameStandsInItOnce) {
    SetEnvironmentVariableW(L"Tarvik_Place", L"before");

    const std::wstring block =
        environmentBlockWith({{L"TARVIK_PLACE", L"after"}, {L"zz_tarvik", L"\x20AC="}});
    SetEnvironmentVariableW(L"Tarvik_Place", nullptr);

    EXPECT_EQ(block.find(L"before"), std::wstring::npos);
    EXPECT_NE(block.find(std::wstring(L"\0TARVIK_PLACE=after\0", 20)), std::wstring::npos);
    EXPECT_NE(block.find(std::wstring(L"\0zz_tarvik=\x20AC=\0", 14)), std::wstring::npos);
    EXPECT_LT(block.find(L"TARVIK_PLACE"), block.find(L"zz_tarvik"));
    EXPECT_TRUE(block.ends_with(std::wstring(2, L'\0')));
}

TEST(ProgramStartTest, NoHandleGoesAlongAndNoConsoleIsSeen) {
    const TemporaryFolder folder;
    const std::string report = folder.path() + "\\report";
    SECURITY_ATTRIBUTES passedOn{sizeof passedOn, nullptr, TRUE};
    // Far beyond the numbers of what such a process opens itself.
    std::vector<HANDLE> handles;
    for (int i = 0; i < 2000; ++i) {
        handles.push_back(CreateEventA(&passedOn, TRUE, FALSE, nullptr));
    }
    const auto number = std::to_string(reinterpret_cast<std::uintptr_t>(handles.back()));

    EXPECT_TRUE(
        WindowsProgram().launch(pathOfThisProgram(), {{"TARVIK_HANDLE", number + '|' + report}}));

    EXPECT_TRUE(waitFor(report));
    std::string told;
    std::getline(std::ifstream(report), told);
    EXPECT_EQ(told, "unknown unseen");
    std::for_each(handles.begin(), handles.end(), CloseHandle);
}

} // namespace
} // namespace tarvik
