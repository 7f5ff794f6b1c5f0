#include "common/ProfileEngine.h"
#include "linux/services/LinuxFiles.h"
#include "scripted/ScriptedPlatform.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsBackup.h"
#include "settings/mdlSettingsLoad.h"
#include "settings/mdlSettingsLog.h"
#include "support/TemporaryFolder.h"
#include "wiring/World.h"

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <optional>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarvik {
namespace {

/// Runs the work in a process of its own that is killed when it is about to make its system call of
/// that number, counted from 0. True when the work came to its end before.
bool endsBeforeCut(const std::function<void()>& work, int cut) {
    const pid_t child = fork();
    if (child == 0) {
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        ::raise(SIGSTOP);
        work();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    for (int stops = 0; WIFSTOPPED(status); ++stops) {
        // The process stops when it enters a call and when it comes back.
        if (stops == 2 * cut + 1) {
            ::kill(child, SIGKILL);
        } else {
            ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        }
        waitpid(child, &status, 0);
    }
    return WIFEXITED(status);
}

/// The file system as a cut may leave it: a program on real files, everything else played.
class CutTest : public testing::Test {
protected:
    CutTest() {
        machine.program.folderPath = folder.path();
        machine.program.separator = '/';
    }

    std::string ini() const { return folder.path() + "/Tarvik.ini"; }
    std::string backup() const { return folder.path() + "/Tarvik.2026-11-16.ini"; }

    /// The content of a file; nothing when there is none.
    std::optional<std::string> read(const std::string& path) {
        std::string bytes;
        return files.read(path, bytes) ? std::nullopt : std::optional(bytes);
    }

    void write(const std::string& path, const std::string& bytes) {
        ASSERT_FALSE(files.replace(path, {bytes}));
    }

    /// Puts the files there as they are before the work.
    void prepare() {
        write(ini(), before);
        write(backup(), "[r]\nSent=1\n");
    }

    /// Runs the work on a program that has counted 77 bytes since its start.
    void onProgram(const std::function<void()>& work) {
        ProfileEngine profile(files, "\n");
        Platform platform = machine.withFiles(profile, files);
        World world(platform);
        SetIniFileName(true, false);
        LoadState();
        world.state.BytesRcvdTotal = 77;
        work();
    }

    TemporaryFolder folder;
    LinuxFiles files;
    ScriptedPlatform machine;
    const std::string before = "[Settings]\nLastState=r\nLastDateStamp=1\nDateStamp1=r\n[r]\nSent="
                               "5\nRcvd=7\nDuration=9\nIPAddress=\n";
};

TEST_F(CutTest, ASaveThatIsCutAnywhereLeavesTheOldFileOrTheNewOne) {
    prepare();
    onProgram([] { SaveState(); });
    const auto saved = read(ini());
    ASSERT_NE(saved, before);

    int cut = 0;
    for (bool ended = false; !ended; ++cut) {
        prepare();
        ended = endsBeforeCut([&] { onProgram([] { SaveState(); }); }, cut);

        const auto left = read(ini());
        EXPECT_TRUE(left == before || left == saved) << "cut " << cut;
    }

    EXPECT_GT(cut, 5);
    EXPECT_EQ(read(ini()), saved);
}

TEST_F(CutTest, ABackupThatIsCutAnywhereKeepsAWholeCopy) {
    prepare();
    onProgram([] { BackupINIFile(); });
    const auto earlier = std::optional<std::string>("[r]\nSent=1\n");
    const auto saved = read(backup());
    ASSERT_NE(saved, earlier);
    ASSERT_FALSE(read(ini()));

    int cut = 0;
    for (bool ended = false; !ended; ++cut) {
        prepare();
        ended = endsBeforeCut([&] { onProgram([] { BackupINIFile(); }); }, cut);

        const auto file = read(ini());
        const auto copy = read(backup());
        EXPECT_TRUE(file == before || file == saved || (!file && copy == saved)) << "cut " << cut;
        EXPECT_TRUE(copy == earlier || copy == saved) << "cut " << cut;
    }

    EXPECT_GT(cut, 10);
    EXPECT_EQ(read(backup()), saved);
    EXPECT_FALSE(read(ini()));
}

} // namespace
} // namespace tarvik
