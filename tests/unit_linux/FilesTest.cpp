#include "FileMode.h"
#include "linux/services/LinuxFiles.h"

#include "support/FileBytes.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarvik {
namespace {

class FilesTest : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string path = folder.path() + "/Tarvik.ini";
    LinuxFiles files;
};

TEST_F(FilesTest, TheModeOfTheOldFileStays) {
    files.replace(path, {"a"});
    chmod(path.c_str(), 0640);

    files.replace(path, {"b"});

    EXPECT_EQ(modeOf(path), 0640U);
}

TEST_F(FilesTest, ANewFileFollowsTheUsersMask) {
    const mode_t before = umask(027);

    files.replace(path, {"a"});

    umask(before);
    EXPECT_EQ(modeOf(path), 0640U);
}

TEST_F(FilesTest, ACopyHasTheModeOfTheOriginal) {
    files.replace(path, {"secret"});
    chmod(path.c_str(), 0640);
    const std::string copy = folder.path() + "/copy.ini";
    files.replace(copy, {"old"});
    chmod(copy.c_str(), 0666);

    EXPECT_FALSE(files.FileCopy(path, copy));

    EXPECT_EQ(modeOf(copy), 0640U);
}

TEST_F(FilesTest, AFileThatAnotherProgramMadeMeanwhileKeepsItsOwnMode) {
    files.replace(path, {"secret"});
    chmod(path.c_str(), 0600);
    files.Kill(path);
    LinuxFiles().replace(path, {"another's"});
    chmod(path.c_str(), 0644);

    EXPECT_FALSE(files.replace(path, {"next"}));

    EXPECT_EQ(modeOf(path), 0644U);
}

TEST_F(FilesTest, AfterADeletionAFileOfAnotherNameFollowsTheUsersMask) {
    const mode_t before = umask(022);
    files.replace(path, {"secret"});
    chmod(path.c_str(), 0600);
    files.Kill(path);
    const std::string other = folder.path() + "/export.csv";

    EXPECT_FALSE(files.replace(other, {"export"}));

    umask(before);
    EXPECT_EQ(modeOf(other), 0644U);
}

TEST_F(FilesTest, TheHomeFolderIsTheUsersAlone) {
    const std::string home = folder.path() + "/share/velmars-tarvik";
    LinuxFiles own(home);

    EXPECT_FALSE(own.replace(home + "/Tarvik.ini", {"x"}));

    EXPECT_EQ(modeOf(home), 0700U);
}

TEST_F(FilesTest, APipeIsNeitherReadNorReplacedAndHoldsNothingUp) {
    mkfifo(path.c_str(), 0644);
    std::string bytes;

    EXPECT_EQ(files.Dir(path), FileKind::Other);
    EXPECT_TRUE(files.read(path, bytes));
    EXPECT_TRUE(files.replace(path, {"x"}));
    EXPECT_EQ(files.Dir(path), FileKind::Other);
}

TEST_F(FilesTest, ALinkStaysAndItsTargetIsReplaced) {
    const std::string target = folder.path() + "/real.ini";
    files.replace(target, {"old"});
    ASSERT_EQ(symlink(target.c_str(), path.c_str()), 0);

    EXPECT_FALSE(files.replace(path, {"new"}));

    std::string bytes;
    files.read(target, bytes);
    EXPECT_EQ(bytes, "new");
    struct stat info {};
    lstat(path.c_str(), &info);
    EXPECT_TRUE(S_ISLNK(info.st_mode));
}

TEST_F(FilesTest, AFullDiskLeavesTheOldFileAndNoOther) {
    files.replace(path, {"old"});
    // A limit on file sizes stands for the disk: the system answers a write beyond it the same way.
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = before;
    small.rlim_cur = 4096;
    setrlimit(RLIMIT_FSIZE, &small);

    const FileResult result = files.replace(path, {std::string(10'000, 'x')});

    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(result, ErrorNumber::DiskFull);
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(folder.names(), std::vector<std::string>{"Tarvik.ini"});
}

} // namespace
} // namespace tarvik
