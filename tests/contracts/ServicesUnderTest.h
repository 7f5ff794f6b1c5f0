#pragma once

#include "ports/Clock.h"
#include "ports/Program.h"
#include "ports/SingleInstance.h"
#include "ports/Sockets.h"
#include "ports/SystemErrorText.h"
#include "types/Convert.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tarvik {

// The small services of one implementation, each with what a test must know of the machine that it
// runs on. Those of the platform that this program of tests is for are given by the functions.

struct InstancesUnderTest {
    /// The instances as one more program has them.
    std::function<std::unique_ptr<SingleInstance>()> newProgram;
    /// Instances that can hold nothing of that name.
    std::unique_ptr<SingleInstance> unable;
    std::string impossible;
};
InstancesUnderTest instancesUnderTest();

struct ClockUnderTest {
    std::unique_ptr<Clock> clock;
    /// The machine's local time, asked in another way.
    std::function<CivilTime()> wallTime;
};
ClockUnderTest clockUnderTest();

struct ErrorTextsUnderTest {
    std::unique_ptr<SystemErrorText> texts;
    std::uint32_t known = 0;
    /// The text of the known one, where it is the same on every machine.
    std::optional<std::string> text;
    std::vector<std::uint32_t> unknown;
};
ErrorTextsUnderTest errorTextsUnderTest();

struct SocketsUnderTest {
    std::unique_ptr<Sockets> sockets;
    /// A host that is known; empty for the machine's own name.
    std::string known;
    /// An address that it has, where it is the same on every machine.
    std::optional<std::string> address;
};
SocketsUnderTest socketsUnderTest();

struct ProgramUnderTest {
    std::unique_ptr<Program> program;
    /// Where the running program lies, in a folder that the user may write to.
    std::string folder;
    char separator = '/';
    /// A program that can be started; it leaves its environment at the path that it is given as
    /// TARVIK_REPORT.
    std::string startable;
    std::string report;
    /// The environment that it was started with, once it is left there; empty when that is not
    /// within a fair while.
    std::function<std::map<std::string, std::string>()> reported;
    /// The value of PATH that this process has itself.
    std::string path;
    /// What is no program, or lies nowhere.
    std::vector<std::string> refused;
    /// A full path where nothing lies.
    std::string missing;
};
ProgramUnderTest programUnderTest();

/// How 18:40:05 on 16 November 2026 and 1234567.5 are written in a language.
struct LocaleCase {
    std::string name; ///< "de_DE"
    std::string date;
    std::string time;
    std::string number; ///< with "_" for the blank that keeps a number on its line
};

struct LocalesUnderTest {
    /// The forms of a language, "de_DE".
    std::function<LocaleData(const std::string& name)> named;
    /// All that the machine has, under the names that it has for them.
    std::function<std::vector<std::pair<std::string, LocaleData>>()> all;
    /// The blank between thousands that keeps a number on its line, in this system's code page.
    std::string noBreakSpace;
    /// Languages that only this system has, or in bytes of its own.
    std::vector<LocaleCase> ownCases = {};
};
LocalesUnderTest localesUnderTest();

} // namespace tarvik
