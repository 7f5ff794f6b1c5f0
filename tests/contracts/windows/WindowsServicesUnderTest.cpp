#include <winsock2.h>

#include "contracts/ServicesUnderTest.h"

#include "windows/services/WindowsClock.h"
#include "windows/services/WindowsLocale.h"
#include "windows/services/WindowsProgram.h"
#include "windows/services/WindowsSingleInstance.h"
#include "windows/services/WindowsSockets.h"
#include "windows/services/WindowsSystemErrorText.h"

#include <gtest/gtest.h>

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
    return {.program = std::make_unique<WindowsProgram>(),
            .folder = folderOfPath(path),
            .separator = '\\'};
}

LocalesUnderTest localesUnderTest() {
    return {.named = [](const std::string& name) { return localeDataOf(numberOf(name)); },
            .all = allLocales,
            .noBreakSpace = "\xA0"};
}

} // namespace tarvik
