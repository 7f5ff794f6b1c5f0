#include "contracts/ServicesUnderTest.h"

#include "scripted/ScriptedServices.h"

namespace tarvik {

InstancesUnderTest instancesUnderTest() {
    auto unable = std::make_unique<ScriptedInstances>();
    unable->handle = 0;
    unable->error = 5;
    const auto held = std::make_shared<ScriptedInstances::Names>();
    return {.newProgram =
                [held] {
                    auto program = std::make_unique<ScriptedInstances>();
                    program->held = held;
                    return program;
                },
            .unable = std::move(unable),
            .impossible = "{A}"};
}

ClockUnderTest clockUnderTest() {
    auto clock = std::make_unique<ScriptedClock>();
    const Date now = clock->now;
    return {.clock = std::move(clock), .wallTime = [now] { return now.civil(); }};
}

ErrorTextsUnderTest errorTextsUnderTest() {
    return {.texts = std::make_unique<ScriptedErrorTexts>(),
            .known = 5,
            .text = "Access is denied.\r\n",
            .unknown = {3, 599, 4'000'000'000}};
}

SocketsUnderTest socketsUnderTest() {
    const std::string address("\x0A\x00\x00\x11", 4);
    auto sockets = std::make_unique<ScriptedSockets>();
    sockets->host.h_name = sockets->hostName;
    sockets->host.h_addr_list = {address};
    return {.sockets = std::move(sockets), .known = "", .address = address};
}

ProgramUnderTest programUnderTest() {
    auto program = std::make_unique<ScriptedProgram>();
    const ScriptedProgram* const started = program.get();
    const auto reported = [started] {
        std::map<std::string, std::string> environment{{"PATH", "C:\\Tools"}};
        if (!started->launches.empty()) {
            const auto& variables = started->launches.back().variables;
            environment.insert(variables.begin(), variables.end());
        }
        return environment;
    };
    return {.program = std::move(program),
            .folder = "C:\\Prog",
            .separator = '\\',
            .startable = "C:\\Tools\\Note.exe",
            .report = "C:\\Report",
            .reported = reported,
            .path = "C:\\Tools",
            .refused = {"", "Note.exe", "Tools\\Note.exe", "\\Note.exe", "C:Note.exe"},
            .missing = "C:\\none.exe"};
}

LocalesUnderTest localesUnderTest() {
    std::vector<std::pair<std::string, LocaleData>> all{
        {"de_DE", germanLocale()},  {"en_US", americanLocale()}, {"en_GB", britishLocale()},
        {"sv_SE", swedishLocale()}, {"fr_FR", frenchLocale()},   {"de_CH", swissLocale()},
        {"fi_FI", finnishLocale()}, {"ja_JP", japaneseLocale()}};
    const auto named = [all](const std::string& name) {
        for (const auto& [each, data] : all) {
            if (each == name) {
                return data;
            }
        }
        return LocaleData{};
    };
    return {.named = named, .all = [all] { return all; }, .noBreakSpace = "\xC2\xA0"};
}

} // namespace tarvik
