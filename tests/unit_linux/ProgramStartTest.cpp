#include "linux/services/ProgramStart.h"

#include "linux/services/LinuxProgram.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace tarvik {
namespace {

bool waitUntil(const std::function<bool()>& condition) {
    constexpr useconds_t moment = 5'000;
    for (int i = 0; !condition() && i < 12'000; ++i) {
        usleep(moment);
    }
    return condition();
}

/// Ended children of this process that nobody has asked for.
int endedChildren() {
    int count = 0;
    for (const auto& process : std::filesystem::directory_iterator("/proc")) {
        std::ifstream stat(process.path() / "stat");
        std::string text;
        std::getline(stat, text);
        std::istringstream fields(text.substr(std::min(text.size(), text.rfind(')') + 1)));
        char state = '\0';
        pid_t parent = 0;
        fields >> state >> parent;
        count += state == 'Z' && parent == getpid() ? 1 : 0;
    }
    return count;
}

/// A small program of the test's own, and what it tells.
class ProgramStartTest : public testing::Test {
protected:
    /// Starts a script that writes to the file, and reads what it has written.
    std::string told(const std::string& script,
                     const std::vector<std::pair<std::string, std::string>>& variables = {}) {
        const std::string report = folder.path() + "/report";
        write(script, report);
        EXPECT_TRUE(program.launch(path, variables));
        EXPECT_TRUE(waitUntil([&] { return std::filesystem::exists(report); }));
        std::stringstream text;
        text << std::ifstream(report).rdbuf();
        return text.str();
    }

    void write(const std::string& script, const std::string& report) const {
        std::ofstream(path) << "#!/bin/sh\n{ " << script << "; } > '" << report << ".new'\nmv '"
                            << report << ".new' '" << report << "'\n";
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    }

    TemporaryFolder folder;
    std::string path = folder.path() + "/told";
    LinuxProgram program{{}};
};

TEST_F(ProgramStartTest, NoOpenFileGoesAlong) {
    constexpr int number = 200;
    ASSERT_EQ(dup2(STDERR_FILENO, number), number);

    const std::string files = told("for i in 3 4 5 6 7 8 9 200; do "
                                   "[ -e /proc/$$/fd/$i ] && echo $i; done; readlink /proc/$$/fd/0 "
                                   "/proc/$$/fd/2");
    close(number);

    EXPECT_EQ(files, "/dev/null\n/dev/null\n");
}

TEST_F(ProgramStartTest, NoSignalStaysBlockedOrIgnored) {
    sigset_t some{};
    sigset_t before{};
    sigemptyset(&some);
    sigaddset(&some, SIGUSR1);
    sigaddset(&some, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &some, &before);
    const auto pipeBefore = std::signal(SIGPIPE, SIG_IGN);

    const std::string kept = told("grep -E 'Sig(Blk|Ign)' /proc/$$/status | tr -d '[:alpha:]'");
    std::signal(SIGPIPE, pipeBefore);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);

    EXPECT_EQ(kept, ":\t0000000000000000\n:\t0000000000000000\n");
}

TEST_F(ProgramStartTest, ItBelongsToNobodyAndLeavesNoProcessBehind) {
    const std::string parent = told("cut -d' ' -f4,6 /proc/$$/stat");

    const std::string own = std::to_string(getpid()) + " ";
    EXPECT_FALSE(parent.starts_with(own)) << parent;
    EXPECT_NE(parent, "");
    EXPECT_NE(parent.substr(parent.find(' ')), " " + std::to_string(getsid(0)) + "\n");
    EXPECT_EQ(endedChildren(), 0);
}

TEST_F(ProgramStartTest, ItGetsNoArgumentsAndItsWholePathAsItsName) {
    EXPECT_EQ(told("echo \"$# $0\""), "0 " + path + "\n");
}

TEST_F(ProgramStartTest, AVariableTakesThePlaceOfTheOneThatIsThere) {
    setenv("TARVIK_PLACE", "before", 1);

    const std::string text = told("echo \"$TARVIK_PLACE\"", {{"TARVIK_PLACE", "a\nb $(c)"}});
    unsetenv("TARVIK_PLACE");

    EXPECT_EQ(text, "a\nb $(c)\n");
}

TEST_F(ProgramStartTest, WhatTheDesktopGaveThisProgramAloneIsNotPassedOn) {
    setenv("XDG_ACTIVATION_TOKEN", "mine", 1);
    setenv("DESKTOP_STARTUP_ID", "mine", 1);

    const std::string text = told("echo \"[$XDG_ACTIVATION_TOKEN$DESKTOP_STARTUP_ID]\"");
    unsetenv("XDG_ACTIVATION_TOKEN");
    unsetenv("DESKTOP_STARTUP_ID");

    EXPECT_EQ(text, "[]\n");
}

TEST_F(ProgramStartTest, WhatMayNotBeRunOrIsNoProgramLeavesNothingBehind) {
    std::ofstream(path) << "exit 0\n";
    EXPECT_TRUE(program.launch(path, {}));
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    EXPECT_TRUE(program.launch(path, {}));
    EXPECT_TRUE(program.launch(folder.path(), {}));

    EXPECT_EQ(endedChildren(), 0);
}

TEST_F(ProgramStartTest, AProcessWithOtherRightsThanItsUsersStartsNothing) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only the administrator can take other rights";
    }
    write("echo ran", folder.path() + "/report");
    const pid_t child = fork();
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        const bool before = hasOtherRightsThanItsUser();
        const bool changed = seteuid(nobody) == 0;
        const bool started = program.launch(path, {});
        _exit(!before && changed && hasOtherRightsThanItsUser() && !started ? 0 : 1);
    }
    int status = 1;
    waitpid(child, &status, 0);

    EXPECT_EQ(status, 0);
    EXPECT_FALSE(std::filesystem::exists(folder.path() + "/report"));
}

} // namespace
} // namespace tarvik
