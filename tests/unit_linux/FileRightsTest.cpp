#include "common/ProfileEngine.h"
#include "linux/services/LinuxFiles.h"
#include "scripted/ScriptedPlatform.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsBackup.h"
#include "settings/mdlSettingsLog.h"
#include "startup/mdlStartUp.h"
#include "support/TemporaryFolder.h"
#include "wiring/World.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace tarvik {
namespace {

/// Who may read what is made of a file, on real files.
class FileRightsTest : public testing::Test {
protected:
    FileRightsTest() : mask_(umask(022)) {}
    ~FileRightsTest() override { umask(mask_); }

    static mode_t modeOf(const std::string& file) {
        struct stat info {};
        EXPECT_EQ(stat(file.c_str(), &info), 0) << file;
        return info.st_mode & 07777U;
    }
    void given(const std::string& file, const std::string& bytes, mode_t mode) {
        ASSERT_FALSE(files.replace(file, {bytes}));
        ASSERT_EQ(chmod(file.c_str(), mode), 0);
    }
    std::string content(const std::string& file) {
        std::string bytes;
        EXPECT_FALSE(files.read(file, bytes));
        return bytes;
    }

    TemporaryFolder folder;
    std::string path = folder.path() + "/Tarvik.ini";
    std::string copy = folder.path() + "/copy.ini";
    LinuxFiles files;

private:
    mode_t mask_;
};

TEST_F(FileRightsTest, ACopyMayBeReadByThoseWhoMayReadTheOriginal) {
    given(path, "secret", 0600);

    EXPECT_FALSE(files.FileCopy(path, copy));

    EXPECT_EQ(modeOf(copy), 0600U);
}

TEST_F(FileRightsTest, ACopyOverAFileOfAllHasTheRightsOfTheOriginal) {
    given(path, "secret", 0640);
    given(copy, "old", 0666);

    EXPECT_FALSE(files.FileCopy(path, copy));

    EXPECT_EQ(modeOf(copy), 0640U);
    EXPECT_EQ(content(copy), "secret");
}

TEST_F(FileRightsTest, TheFileThatFollowsADeletedOneHasItsRights) {
    given(path, "secret", 0600);
    files.Kill(path);

    EXPECT_FALSE(files.replace(path, {"next"}));

    EXPECT_EQ(modeOf(path), 0600U);
}

TEST_F(FileRightsTest, AFileThatAnotherProgramMadeMeanwhileKeepsItsOwnRights) {
    given(path, "secret", 0600);
    files.Kill(path);
    LinuxFiles other;
    other.replace(path, {"another's"});

    EXPECT_FALSE(files.replace(path, {"next"}));

    EXPECT_EQ(modeOf(path), 0644U);
}

TEST_F(FileRightsTest, AFileOfAnotherNameFollowsTheUsersMask) {
    given(path, "secret", 0600);
    files.Kill(path);

    EXPECT_FALSE(files.replace(copy, {"export"}));

    EXPECT_EQ(modeOf(copy), 0644U);
}

TEST_F(FileRightsTest, BackupAndFreshFileAreAsPrivateAsTheOldOne) {
    given(path, "[Settings]\nIsLocked=0\nLastState=r\nDateStamp1=r\nLastDateStamp=1\n[r]\nRcvd=7\n",
          0600);
    ScriptedPlatform machine;
    machine.program.folderPath = folder.path();
    machine.program.separator = '/';
    ProfileEngine profile(files, "\n");
    Platform platform = machine.withFiles(profile, files);
    World world(platform);
    InitApplicationStatus();

    EXPECT_TRUE(BackupINIFile());
    world.state.BytesRcvdTotal = 9;
    EXPECT_TRUE(SaveState());

    EXPECT_EQ(modeOf(folder.path() + "/Tarvik.2026-11-16.ini"), 0600U);
    EXPECT_EQ(modeOf(path), 0600U);
}

// Other names.

TEST_F(FileRightsTest, AFileGetsANameThatNothingHas) {
    given(path, "text", 0600);

    EXPECT_FALSE(files.Name(path, copy));

    EXPECT_EQ(folder.names(), std::vector<std::string>{"copy.ini"});
    EXPECT_EQ(content(copy), "text");
    EXPECT_EQ(modeOf(copy), 0600U);
}

TEST_F(FileRightsTest, ANameThatSomethingHasIsNotGivenAndBothStay) {
    given(path, "mine", 0600);
    given(copy, "other", 0644);

    EXPECT_EQ(files.Name(path, copy), ErrorNumber::FileAlreadyExists);

    EXPECT_EQ(content(path), "mine");
    EXPECT_EQ(content(copy), "other");
}

TEST_F(FileRightsTest, AFileThatIsNotThereGetsNoName) {
    EXPECT_EQ(files.Name(path, copy), ErrorNumber::FileNotFound);
}

// The last look.

TEST_F(FileRightsTest, TheLastLookIsTakenWhenTheNewFileIsComplete) {
    given(path, "old", 0600);
    std::size_t names = 0;

    EXPECT_FALSE(files.replaceIf(path, {"new"}, [&] {
        names = folder.names().size();
        return content(path) == "old";
    }));

    EXPECT_EQ(names, 2U);
    EXPECT_EQ(content(path), "new");
}

TEST_F(FileRightsTest, ALastLookThatFindsAnotherFileLeavesIt) {
    given(path, "old", 0600);

    EXPECT_EQ(files.replaceIf(path, {"new"},
                              [&] {
                                  LinuxFiles().replace(path, {"another's"});
                                  return false;
                              }),
              ErrorNumber::PathFileAccess);

    EXPECT_EQ(content(path), "another's");
    EXPECT_EQ(folder.names(), std::vector<std::string>{"Tarvik.ini"});
}

} // namespace
} // namespace tarvik
