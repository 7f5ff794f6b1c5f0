#include "linux/services/LinuxFiles.h"

#include "common/ProfileEngine.h"
#include "support/FileBytes.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarvik {
namespace {

using FileNames = std::vector<std::string>;

void put(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

/// What is no ordinary file, under the name of one.
struct OddFile {
    const char* name;
    void (*make)(const std::string& path);
};

void makeSocket(const std::string& path) {
    const int file = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(file, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    close(file);
}

template <const char* const* target>
void makeLink(const std::string& path) {
    ASSERT_EQ(symlink(*target, path.c_str()), 0);
}

constexpr const char* zero = "/dev/zero";
constexpr const char* fullDevice = "/dev/full";
constexpr const char* null = "/dev/null";
constexpr const char* nowhere = "/nowhere/at/all";
constexpr const char* itself = "Tarvik.ini";
constexpr const char* root = "/";

class OddFileTest : public testing::TestWithParam<OddFile> {
protected:
    void SetUp() override {
        GetParam().make(path);
        before = infoOf(path);
        // A program that waits for a pipe's other end, or reads a device to its end, is ended.
        alarm(30);
    }
    void TearDown() override { alarm(0); }

    static struct stat infoOf(const std::string& path) {
        struct stat info {};
        EXPECT_EQ(lstat(path.c_str(), &info), 0);
        return info;
    }
    /// It is the same thing as before, and nothing is beside it.
    void expectUntouched() const {
        const struct stat now = infoOf(path);
        EXPECT_EQ(now.st_ino, before.st_ino);
        EXPECT_EQ(now.st_mode, before.st_mode);
        EXPECT_EQ(folder.names(), FileNames{"Tarvik.ini"});
    }

    TemporaryFolder folder;
    std::string path = folder.path() + "/Tarvik.ini";
    LinuxFiles files{folder.path()};
    struct stat before {};
};

TEST_P(OddFileTest, ItIsNotRead) {
    std::string bytes = "before";

    EXPECT_TRUE(files.read(path, bytes));

    EXPECT_EQ(bytes, "");
    EXPECT_FALSE(files.stamp(path));
    EXPECT_NE(files.Dir(path), FileKind::File);
    EXPECT_NE(files.Dir(path), FileKind::None);
}

TEST_P(OddFileTest, ItIsNotReplaced) {
    EXPECT_EQ(files.replace(path, {"x"}), ErrorNumber::PathFileAccess);

    expectUntouched();
}

TEST_P(OddFileTest, ItIsNeitherSourceNorTargetOfACopy) {
    const std::string good = folder.path() + "/good";
    put(good, "good");

    EXPECT_TRUE(files.FileCopy(path, good));
    EXPECT_TRUE(files.FileCopy(good, path));

    EXPECT_EQ(contentOf(good), "good");
    std::filesystem::remove(good);
    expectUntouched();
}

TEST_P(OddFileTest, AsSettingsItHasNoKeysAndIsNotWrittenTo) {
    ProfileEngine engine(files, "\n");
    std::array<char, 16> buffer{};

    EXPECT_EQ(engine.GetPrivateProfileStringA("a", "x", "none", buffer.data(), 16, path), 4U);
    EXPECT_FALSE(engine.WritePrivateProfileStringA("a", "x", "1", path));

    EXPECT_STREQ(buffer.data(), "none");
    expectUntouched();
}

INSTANTIATE_TEST_SUITE_P(
    All, OddFileTest,
    testing::Values(
        OddFile{"Directory", [](const std::string& path) { mkdir(path.c_str(), 0755); }},
        OddFile{"Pipe", [](const std::string& path) { mkfifo(path.c_str(), 0644); }},
        OddFile{"Socket", makeSocket}, OddFile{"LinkToZeros", makeLink<&zero>},
        OddFile{"LinkToFullDevice", makeLink<&fullDevice>},
        OddFile{"LinkToNullDevice", makeLink<&null>}, OddFile{"LinkToNothing", makeLink<&nowhere>},
        OddFile{"LinkToItself", makeLink<&itself>}, OddFile{"LinkToFolder", makeLink<&root>}),
    [](const auto& test) { return std::string(test.param.name); });

class HostileFilesTest : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string path = folder.path() + "/Tarvik.ini";
    LinuxFiles files{folder.path()};
};

TEST_F(HostileFilesTest, DevicesAreNeitherReadNorWrittenTo) {
    for (const char* device : {zero, fullDevice, null, "/dev/tty"}) {
        std::string bytes;
        EXPECT_TRUE(files.read(device, bytes)) << device;
        EXPECT_TRUE(files.replace(device, {"x"})) << device;
        EXPECT_EQ(files.Dir(device), FileKind::Other) << device;
    }
}

TEST_F(HostileFilesTest, ALinkThroughLinksStaysAndTheFileAtTheEndIsReplaced) {
    const std::string target = folder.path() + "/real.ini";
    put(target, "old");
    ASSERT_EQ(symlink("second", path.c_str()), 0);
    ASSERT_EQ(symlink("real.ini", (folder.path() + "/second").c_str()), 0);

    EXPECT_FALSE(files.replace(path, {"new"}));

    EXPECT_EQ(contentOf(target), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path() + "/second"));
}

TEST_F(HostileFilesTest, TheOtherNameOfAFileKeepsWhatItHad) {
    put(path, "old");
    const std::string other = folder.path() + "/other";
    ASSERT_EQ(link(path.c_str(), other.c_str()), 0);

    EXPECT_FALSE(files.replace(path, {"new"}));

    EXPECT_EQ(contentOf(other), "old");
}

TEST_F(HostileFilesTest, AFileThatWouldTakeAllMemoryIsNotRead) {
    const int file = open(path.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
    const bool made = ftruncate(file, off_t{1} << 40) == 0;
    close(file);
    if (!made) {
        GTEST_SKIP() << "no files of that size here";
    }
    std::string bytes;

    EXPECT_EQ(files.read(path, bytes), ErrorNumber::PathFileAccess);

    EXPECT_EQ(bytes, "");
}

TEST_F(HostileFilesTest, AThingPlantedUnderATemporaryNameIsNeitherFollowedNorTouched) {
    const std::string victim = folder.path() + "/victim";
    put(victim, "precious");
    ASSERT_EQ(symlink("victim", (folder.path() + "/.tarvik-aB3xYz.tmp").c_str()), 0);
    ASSERT_EQ(mkfifo((folder.path() + "/.tarvik-aaaaaa.tmp").c_str(), 0644), 0);
    ASSERT_EQ(mkdir((folder.path() + "/.tarvik-bbbbbb.tmp").c_str(), 0755), 0);

    EXPECT_FALSE(files.replace(path, {"new"}));

    EXPECT_EQ(contentOf(victim), "precious");
    EXPECT_EQ(folder.names().size(), 5U);
}

TEST_F(HostileFilesTest, ANameAsLongAsNamesCanBeIsWritten) {
    const std::string longest = folder.path() + "/" + std::string(255, 'n');

    EXPECT_FALSE(files.replace(longest, {"x"}));
    EXPECT_TRUE(files.replace(longest + "n", {"x"}));

    EXPECT_EQ(contentOf(longest), "x");
    EXPECT_EQ(folder.names().size(), 1U);
}

TEST_F(HostileFilesTest, EveryByteMayStandInANameOfAFileAndOfAFolder) {
    constexpr int together = 8; // every byte in some place, the first of eight in front
    for (int first = 0; first < 256; first += together) {
        std::string name;
        for (int byte = first; byte < first + together; ++byte) {
            name +=
                byte == 0 || byte == '/' ? std::string() : std::string(2, static_cast<char>(byte));
        }
        const std::string home = folder.path() + "/" + name;
        LinuxFiles own(home);
        const std::string inside = home + "/" + name;

        EXPECT_FALSE(own.replace(inside, {"a"})) << first;

        std::string bytes;
        EXPECT_FALSE(own.read(inside, bytes)) << first;
        EXPECT_EQ(bytes, "a") << first;
        EXPECT_FALSE(own.Kill(inside)) << first;
        EXPECT_EQ(rmdir(home.c_str()), 0) << first;
    }
}

/// What a user without power over others' files meets. Only root can play two users.
class OtherUserTest : public HostileFilesTest {
protected:
    static constexpr uid_t user = 65534;

    void SetUp() override {
        if (geteuid() != 0) {
            GTEST_SKIP() << "only root can play two users";
        }
        chmod(folder.path().c_str(), 0777);
    }

    /// What the call gives a process of that user.
    template <class Call>
    int asUser(Call&& call) {
        const pid_t child = fork();
        if (child == 0) {
            alarm(30);
            const bool changed = setgid(user) == 0 && setuid(user) == 0;
            _exit(changed ? call() : 255);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    /// A link of that user, to something that he may not write to.
    void plantLink(const std::string& link, const char* target) {
        EXPECT_EQ(asUser([&] { return symlink(target, link.c_str()); }), 0);
    }
    int replacedByUser() {
        return asUser([&] {
            const FileResult result = files.replace(path, {"new"});
            return result ? static_cast<int>(*result) : 0;
        });
    }
    static constexpr int denied = static_cast<int>(ErrorNumber::PermissionDenied);
};

TEST_F(OtherUserTest, AFileThatAnotherUserKeepsStaysAsItWas) {
    put(path, "old");
    chmod(path.c_str(), 0644);

    EXPECT_EQ(replacedByUser(), denied);

    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(folder.names(), FileNames{"Tarvik.ini"});
}

TEST_F(OtherUserTest, AFileThatMayNotBeReadIsTold) {
    put(path, "secret");
    chmod(path.c_str(), 0600);

    EXPECT_EQ(asUser([&] {
                  std::string bytes;
                  const FileResult result = files.read(path, bytes);
                  return result && bytes.empty() ? static_cast<int>(*result) : 0;
              }),
              denied);
}

TEST_F(OtherUserTest, AFolderThatMayNotBeWrittenIsTold) {
    chmod(folder.path().c_str(), 0755);

    EXPECT_EQ(replacedByUser(), denied);

    EXPECT_EQ(folder.names(), FileNames{});
}

TEST_F(OtherUserTest, WhatLiesInAClosedFolderIsNotTakenForMissing) {
    chmod(folder.path().c_str(), 0700);

    EXPECT_EQ(asUser([&] { return files.Dir(path) == FileKind::Other ? 1 : 0; }), 1);
    EXPECT_EQ(replacedByUser(), denied);
}

TEST_F(OtherUserTest, AFileThatTheUserMayWriteBecomesHisWithoutTheOldOnesPowers) {
    put(path, "old");
    chmod(path.c_str(), 04666);

    EXPECT_EQ(replacedByUser(), 0);

    struct stat info {};
    ASSERT_EQ(stat(path.c_str(), &info), 0);
    EXPECT_EQ(info.st_uid, user);
    EXPECT_EQ(info.st_mode & 07777U, 0606U);
    EXPECT_EQ(contentOf(path), "new");
}

TEST_F(OtherUserTest, InAFolderOfEverybodysNothingOfOthersIsTouched) {
    chmod(folder.path().c_str(), 01777);
    const std::string victim = folder.path() + "/victim";
    put(victim, "precious");
    ASSERT_EQ(symlink("victim", (folder.path() + "/.tarvik-aB3xYz.tmp").c_str()), 0);
    put(folder.path() + "/.tarvik-aaaaaa.tmp", "another's");

    EXPECT_EQ(replacedByUser(), 0);

    EXPECT_EQ(contentOf(path), "new");
    EXPECT_EQ(contentOf(victim), "precious");
    EXPECT_EQ(folder.names(),
              (FileNames{".tarvik-aB3xYz.tmp", ".tarvik-aaaaaa.tmp", "Tarvik.ini", "victim"}));
}

TEST_F(OtherUserTest, ALinkThatAnotherUserPlantedIsNotFollowed) {
    const std::string victim = folder.path() + "/victim";
    put(victim, "precious");
    plantLink(path, "victim");
    std::string bytes;

    EXPECT_EQ(files.read(path, bytes), ErrorNumber::PermissionDenied);
    EXPECT_EQ(files.replace(path, {"x"}), ErrorNumber::PermissionDenied);
    EXPECT_TRUE(files.FileCopy(path, folder.path() + "/copy"));
    EXPECT_TRUE(files.FileCopy(victim, path));

    EXPECT_EQ(bytes, "");
    EXPECT_FALSE(files.stamp(path));
    EXPECT_EQ(files.Dir(path), FileKind::Other);
    EXPECT_EQ(contentOf(victim), "precious");
    EXPECT_EQ(folder.names(), (FileNames{"Tarvik.ini", "victim"}));
}

TEST_F(OtherUserTest, ALinkOfTheUsersOwnThroughAnotherUsersIsNotFollowed) {
    const std::string victim = folder.path() + "/victim";
    put(victim, "precious");
    plantLink(folder.path() + "/second", "victim");
    ASSERT_EQ(symlink("second", path.c_str()), 0);

    EXPECT_EQ(files.replace(path, {"x"}), ErrorNumber::PermissionDenied);

    EXPECT_EQ(contentOf(victim), "precious");
}

TEST_F(OtherUserTest, AsSettingsAPlantedLinkHasNoKeysAndIsNotWrittenTo) {
    const std::string victim = folder.path() + "/victim";
    put(victim, "[Settings]\nLastState=r\n");
    plantLink(path, "victim");
    ProfileEngine profile(files, "\n");
    char text[16] = "";

    EXPECT_EQ(
        profile.GetPrivateProfileStringA("Settings", "LastState", "none", text, sizeof text, path),
        4U);
    EXPECT_FALSE(profile.WritePrivateProfileStringA("Settings", "LastState", "x", path));

    EXPECT_STREQ(text, "none");
    EXPECT_EQ(contentOf(victim), "[Settings]\nLastState=r\n");
}

TEST_F(OtherUserTest, NorIsOneThatTheOwnerOfTheFolderPlanted) {
    const std::string victim = folder.path() + "/victim";
    put(victim, "precious");
    plantLink(path, "victim");
    ASSERT_EQ(chown(folder.path().c_str(), user, static_cast<gid_t>(-1)), 0);

    EXPECT_EQ(files.replace(path, {"new"}), ErrorNumber::PermissionDenied);

    EXPECT_EQ(contentOf(victim), "precious");
}

TEST_F(OtherUserTest, ALinkThatTheAdministratorMadeIsFollowed) {
    put(folder.path() + "/real.ini", "old");
    chmod((folder.path() + "/real.ini").c_str(), 0666);
    ASSERT_EQ(symlink("real.ini", path.c_str()), 0);

    EXPECT_EQ(replacedByUser(), 0);

    EXPECT_EQ(contentOf(folder.path() + "/real.ini"), "new");
}

} // namespace
} // namespace tarvik
