#include "FileMode.h"
#include "linux/services/LinuxFiles.h"
#include "support/FileBytes.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarvik {
namespace {

using Outcome = Holding::Outcome;

class HeldFileTest : public testing::Test {
protected:
    HeldFileTest() : mask_(umask(022)) {}
    ~HeldFileTest() override { umask(mask_); }

    std::string in(const std::string& name) const { return folder.path() + "/" + name; }

    TemporaryFolder folder;
    LinuxFiles files;
    std::string path = in("Tarvik.journal");
    std::string ini = in("Tarvik.ini");

private:
    mode_t mask_;
};

TEST_F(HeldFileTest, ANewOneMayBeReadByThoseWhoMayReadTheIniFile) {
    for (const mode_t mode : {0600U, 0640U, 0664U}) {
        files.replace(ini, {"[Settings]\n"});
        chmod(ini.c_str(), mode);

        const Holding held = files.holdOrMake(path, 16, ini);

        EXPECT_EQ(modeOf(path), mode);
        held.file->remove();
    }
}

TEST_F(HeldFileTest, BesideAReadOnlyIniFileItCanBeWrittenAllTheSame) {
    files.replace(ini, {"[Settings]\n"});
    chmod(ini.c_str(), 0444);

    const Holding held = files.holdOrMake(path, 16, ini);

    EXPECT_EQ(modeOf(path), 0644U);
}

TEST_F(HeldFileTest, WithoutAnIniFileItIsAsAnyNewFile) {
    umask(027);

    const Holding held = files.holdOrMake(path, 16, ini);

    EXPECT_EQ(modeOf(path), 0640U);
}

TEST_F(HeldFileTest, ALinkIsRefusedAndItsTargetUntouched) {
    files.replace(in("target"), {"somebody's"});
    std::filesystem::create_symlink(in("target"), path);

    EXPECT_EQ(files.holdOrMake(path, 16, ini).outcome, Outcome::Refused);

    EXPECT_EQ(contentOf(in("target")), "somebody's");
}

TEST_F(HeldFileTest, ALinkToNothingIsRefusedAndItsTargetNotMade) {
    std::filesystem::create_symlink(in("target"), path);

    EXPECT_EQ(files.holdOrMake(path, 16, ini).outcome, Outcome::Refused);

    EXPECT_EQ(files.Dir(in("target")), FileKind::None);
}

TEST_F(HeldFileTest, APipeIsRefusedAtOnce) {
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);

    EXPECT_EQ(files.holdOrMake(path, 16, ini).outcome, Outcome::Refused);
}

TEST_F(HeldFileTest, AnotherUsersFileIsRefused) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "nobody else's file can be made";
    }
    files.replace(path, {"somebody's"});
    ASSERT_EQ(chown(path.c_str(), 12'345, static_cast<gid_t>(-1)), 0);

    EXPECT_EQ(files.holdOrMake(path, 16, ini).outcome, Outcome::Refused);
}

TEST_F(HeldFileTest, AFileThatSomebodyHasDeletedIsNotWrittenTo) {
    const Holding held = files.holdOrMake(path, 16, ini);
    std::filesystem::remove(path);

    EXPECT_EQ(held.file->write(0, "x"), ErrorNumber::FileNotFound);
}

TEST_F(HeldFileTest, WhatSomebodyHasPutInItsPlaceIsNotRemoved) {
    const Holding held = files.holdOrMake(path, 16, ini);
    files.replace(path, {"another's"});

    EXPECT_FALSE(held.file->remove());

    EXPECT_EQ(contentOf(path), "another's");
}

TEST_F(HeldFileTest, AKilledProgramHoldsItNoMore) {
    std::array<int, 2> ready{};
    ASSERT_EQ(pipe(ready.data()), 0);
    const pid_t other = fork();
    if (other == 0) {
        const Holding held = files.holdOrMake(path, 16, ini);
        const char sign = held.file ? 'y' : 'n';
        write(ready[1], &sign, 1) == 1 ? pause() : 0;
        _exit(0);
    }
    char sign = 0;
    ASSERT_EQ(read(ready[0], &sign, 1), 1);
    close(ready[0]);
    close(ready[1]);
    EXPECT_EQ(files.hold(path).outcome, Outcome::Busy);

    kill(other, SIGKILL);
    waitpid(other, nullptr, 0);

    EXPECT_EQ(files.hold(path).outcome, Outcome::Held);
}

/// A file manager moves it to the trash, say: what is written there nobody finds.
TEST_F(HeldFileTest, WhatLiesUnderAnotherNameIsWrittenNoMore) {
    const Holding held = files.holdOrMake(path, 16, ini);
    std::filesystem::rename(path, in("moved"));

    EXPECT_EQ(held.file->write(0, "abcd"), ErrorNumber::FileNotFound);

    files.replace(path, {"another"});
    EXPECT_EQ(held.file->write(0, "abcd"), ErrorNumber::FileNotFound);
    EXPECT_EQ(contentOf(path), "another");
}

} // namespace
} // namespace tarvik
