#include <winsock2.h>

#include "contracts/ServicesUnderTest.h"

#include "windows/services/WindowsClock.h"
#include "windows/services/WindowsLocale.h"
#include "windows/services/WindowsProgram.h"
#include "windows/services/WindowsSingleInstance.h"
#include "windows/services/WindowsSockets.h"
#include "windows/services/WindowsSystemErrorText.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <fstream>

namespace tarvik {

namespace {

/// The number that the system has for a language.
std::uint32_t numberOf(const std::string& name) {
    return name == "de_DE"   ? 0x0407
           : name == "en_US" ? 0x0409
           : name == "en_GB" ? 0x0809
           : name == "sv_SE" ? 0x041D
                             : 0;
}

std::vector<std::pair<std::string, LocaleData>>& foundLocales() {
    static std::vector<std::pair<std::string, LocaleData>> locales;
    return locales;
}

BOOL CALLBACK noteLocale(LPSTR name) {
    const auto number = static_cast<std::uint32_t>(std::stoul(name, nullptr, 16));
    foundLocales().emplace_back(name, localeDataOf(number));
    return TRUE;
}

std::vector<std::pair<std::string, LocaleData>> allLocales() {
    foundLocales().clear();
    EnumSystemLocalesA(noteLocale, LCID_SUPPORTED);
    EXPECT_GT(foundLocales().size(), 50U);
    return foundLocales();
}

/// This program, started by a test, leaves its environment at the path that it is given as
/// TARVIK_REPORT, and ends.
[[maybe_unused]] const bool reporter = [] {
    char path[MAX_PATH];
    const DWORD length = GetEnvironmentVariableA("TARVIK_REPORT", path, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) {
        return false;
    }
    const std::string beside = std::string(path) + ".new";
    {
        std::ofstream report(beside, std::ios::binary);
        char* const block = GetEnvironmentStringsA();
        for (const char* entry = block; *entry != '\0'; entry += std::strlen(entry) + 1) {
            report << entry << '\n';
        }
    }
    MoveFileA(beside.c_str(), path);
    std::_Exit(0);
}();

/// What stands at that path; nothing while that is not there or cannot be opened.
std::map<std::string, std::string> reportAt(const std::string& path) {
    std::map<std::string, std::string> environment;
    std::ifstream report(path, std::ios::binary);
    for (std::string line; std::getline(report, line);) {
        const std::size_t sign = line.find('=', 1);
        if (sign != std::string::npos) {
            std::string name = line.substr(0, sign);
            CharUpperA(name.data());
            environment[name] = line.substr(sign + 1);
        }
    }
    return environment;
}

/// The same once something stands there, which is then taken away.
std::map<std::string, std::string> takeReport(const std::string& path) {
    std::map<std::string, std::string> environment = reportAt(path);
    for (int waited = 0; environment.empty() && waited < 60'000; waited += 5) {
        Sleep(5);
        environment = reportAt(path);
    }
    std::filesystem::remove(path);
    return environment;
}

} // namespace

InstancesUnderTest instancesUnderTest() {
    return {.newProgram = [] { return std::make_unique<WindowsSingleInstance>(); },
            .unable = std::make_unique<WindowsSingleInstance>(),
            .impossible = "no\\such\\place"};
}

ClockUnderTest clockUnderTest() {
    return {.clock = std::make_unique<WindowsClock>(), .wallTime = [] {
                SYSTEMTIME now{};
                GetLocalTime(&now);
                return CivilTime{now.wYear, now.wMonth,  now.wDay,
                                 now.wHour, now.wMinute, now.wSecond};
            }};
}

ErrorTextsUnderTest errorTextsUnderTest() {
    return {.texts = std::make_unique<WindowsSystemErrorText>(),
            .known = 5,
            .text = {},
            .unknown = {0x20FFFFFFU}};
}

SocketsUnderTest socketsUnderTest() {
    return {.sockets = std::make_unique<WindowsSockets>(),
            .known = "localhost",
            .address = std::string("\x7F\0\0\x01", 4)};
}

ProgramUnderTest programUnderTest() {
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    const auto folder = std::make_shared<TemporaryFolder>();
    const std::string report = folder->path() + "\\report";
    const char* const ownPath = std::getenv("PATH");
    return {.program = std::make_unique<WindowsProgram>(),
            .folder = folderOfPath(path),
            .separator = '\\',
            .startable = path,
            .report = report,
            .reported = [folder, report] { return takeReport(report); },
            .path = ownPath == nullptr ? "" : ownPath,
            .refused = {"", "cmd.exe", "C:cmd.exe", "\\cmd.exe", "C:\\none.bat", "C:\\none.cmd",
                        "C:\\none", "C:\\none.exe\" /c"},
            .missing = folder->path() + "\\none.exe"};
}

LocalesUnderTest localesUnderTest() {
    return {.named = [](const std::string& name) { return localeDataOf(numberOf(name)); },
            .all = allLocales,
            .noBreakSpace = "\xA0"};
}

} // namespace tarvik
