#include "contracts/ServicesUnderTest.h"

#include "linux/services/LinuxClock.h"
#include "linux/services/LinuxLocale.h"
#include "linux/services/LinuxProgram.h"
#include "linux/services/LinuxSingleInstance.h"
#include "linux/services/LinuxSockets.h"
#include "linux/services/LinuxSystemErrorText.h"
#include "support/TemporaryFolder.h"

#include <QThread>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>

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

/// A program that leaves its environment at the path that it is given as TARVIK_REPORT.
std::string newReporter(const TemporaryFolder& folder) {
    const std::string path = folder.path() + "/a program's name";
    std::ofstream(path) << "#!/bin/sh\nenv > \"$TARVIK_REPORT.new\"\n"
                           "mv \"$TARVIK_REPORT.new\" \"$TARVIK_REPORT\"\n";
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    return path;
}

/// What stands at that path once something does, which is then taken away.
std::map<std::string, std::string> takeReport(const std::string& path) {
    for (int waited = 0; !std::filesystem::exists(path) && waited < 60'000; waited += 5) {
        QThread::msleep(5);
    }
    std::map<std::string, std::string> environment;
    std::ifstream report(path);
    for (std::string line; std::getline(report, line);) {
        const std::size_t sign = line.find('=');
        if (sign != std::string::npos) {
            environment[line.substr(0, sign)] = line.substr(sign + 1);
        }
    }
    std::filesystem::remove(path);
    return environment;
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
    const auto folder = std::make_shared<TemporaryFolder>();
    const std::string report = folder->path() + "/report";
    return {.program = std::make_unique<LinuxProgram>(std::vector<std::string>{}),
            .folder = std::filesystem::read_symlink("/proc/self/exe").parent_path().string(),
            .separator = '/',
            .startable = newReporter(*folder),
            .report = report,
            .reported = [folder, report] { return takeReport(report); },
            .path = std::getenv("PATH"),
            .refused = {"", "true", "bin/true", "./true"},
            .missing = folder->path() + "/none"};
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
