#include "contracts/ServicesUnderTest.h"

#include "linux/services/LinuxClock.h"
#include "linux/services/LinuxLocale.h"
#include "linux/services/LinuxProgram.h"
#include "linux/services/LinuxSingleInstance.h"
#include "linux/services/LinuxSockets.h"
#include "linux/services/LinuxSystemErrorText.h"
#include "support/TemporaryFolder.h"

#include <ctime>
#include <filesystem>

namespace tarvik {

namespace {

std::vector<std::pair<std::string, LocaleData>> allLocales() {
    std::vector<std::pair<std::string, LocaleData>> all;
    for (const QLocale& locale : QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript,
                                                          QLocale::AnyTerritory)) {
        all.emplace_back(locale.name().toStdString(), localeDataOf(locale));
    }
    return all;
}

} // namespace

InstancesUnderTest instancesUnderTest() {
    const auto folder = std::make_shared<TemporaryFolder>();
    return {
        .newProgram = [folder] { return std::make_unique<LinuxSingleInstance>(folder->path()); },
        .unable = std::make_unique<LinuxSingleInstance>("/dev/null/none"),
        .impossible = "{A}"};
}

ClockUnderTest clockUnderTest() {
    return {.clock = std::make_unique<LinuxClock>(), .wallTime = [] {
                const std::time_t now = std::time(nullptr);
                std::tm local{};
                localtime_r(&now, &local);
                return CivilTime{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                                 local.tm_hour,        local.tm_min,     local.tm_sec};
            }};
}

ErrorTextsUnderTest errorTextsUnderTest() {
    return {.texts = std::make_unique<LinuxSystemErrorText>(),
            .known = 2,
            .text = "No such file or directory",
            .unknown = {599U, 4'000'000'000U}};
}

SocketsUnderTest socketsUnderTest() {
    return {.sockets = std::make_unique<LinuxSockets>(), .known = "", .address = {}};
}

ProgramUnderTest programUnderTest() {
    return {.program = std::make_unique<LinuxProgram>(std::vector<std::string>{}),
            .folder = std::filesystem::read_symlink("/proc/self/exe").parent_path().string(),
            .separator = '/'};
}

LocalesUnderTest localesUnderTest() {
    return {.named =
                [](const std::string& name) {
                    return localeDataOf(QLocale(QString::fromStdString(name)));
                },
            .all = allLocales,
            .noBreakSpace = "\xC2\xA0",
            .ownCases = {{"fr_FR", "16/11/2026", "18:40:05",
                          "1\xE2\x80\xAF"
                          "234\xE2\x80\xAF"
                          "567,5"},
                         {"C", "16 Nov 2026", "18:40:05", "1,234,567.5"}}};
}

} // namespace tarvik
