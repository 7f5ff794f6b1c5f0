#include "linux/services/LinuxProgram.h"
#include "linux/services/LinuxSingleInstance.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarvik {
namespace {

TEST(SingleInstanceTest, ANameDiesWithAHolderThatIsKilled) {
    const TemporaryFolder folder;
    std::array<int, 2> ready{};
    ASSERT_EQ(pipe(ready.data()), 0);
    const pid_t child = fork();
    if (child == 0) {
        std::uint32_t error = 0;
        LinuxSingleInstance held(folder.path());
        held.CreateMutexA("{A}", &error);
        const char byte = 1;
        _exit(write(ready[1], &byte, 1) == 1 && pause() != 0 ? 0 : 1);
    }
    char byte = 0;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    LinuxSingleInstance instances(folder.path());
    std::uint32_t error = 99;
    const std::int32_t handle = instances.CreateMutexA("{A}", &error);
    EXPECT_EQ(error, 183U);
    instances.CloseHandle(handle);

    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);

    instances.CreateMutexA("{A}", &error);
    EXPECT_EQ(error, 0U);
}

/// What somebody may have planted under the name of the lock file.
class PlantedLockTest : public testing::Test {
protected:
    const TemporaryFolder folder;
    const std::string lock = folder.path() + "/velmars-tarvik-_A_.lock";
    LinuxSingleInstance instances{folder.path()};
    std::uint32_t error = 99;
};

TEST_F(PlantedLockTest, ALinkIsNotFollowed) {
    const std::string prey = folder.path() + "/prey";
    ASSERT_EQ(symlink(prey.c_str(), lock.c_str()), 0);

    EXPECT_EQ(instances.CreateMutexA("{A}", &error), 0);

    EXPECT_EQ(error, static_cast<std::uint32_t>(ELOOP));
    EXPECT_NE(access(prey.c_str(), F_OK), 0);
}

TEST_F(PlantedLockTest, APipeHoldsNothingUpAndHoldsTheName) {
    ASSERT_EQ(mkfifo(lock.c_str(), S_IRUSR | S_IWUSR), 0);
    LinuxSingleInstance second(folder.path());

    EXPECT_GE(instances.CreateMutexA("{A}", &error), 1);
    EXPECT_EQ(error, 0U);
    second.CreateMutexA("{A}", &error);

    EXPECT_EQ(error, 183U);
}

TEST_F(PlantedLockTest, AFolderIsAnErrorWithoutAHandle) {
    ASSERT_EQ(mkdir(lock.c_str(), S_IRWXU), 0);

    EXPECT_EQ(instances.CreateMutexA("{A}", &error), 0);

    EXPECT_EQ(error, static_cast<std::uint32_t>(EISDIR));
}

TEST_F(PlantedLockTest, AnotherUsersFileIsAnErrorWithoutAHandle) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only the administrator can make another user's file";
    }
    constexpr uid_t nobody = 65534;
    ASSERT_EQ(chmod(folder.path().c_str(), 0777), 0);
    const int file = open(lock.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    ASSERT_GE(file, 0);
    close(file);

    ASSERT_EQ(seteuid(nobody), 0);
    const std::int32_t handle = instances.CreateMutexA("{A}", &error);
    ASSERT_EQ(seteuid(0), 0);

    EXPECT_EQ(handle, 0);
    EXPECT_EQ(error, static_cast<std::uint32_t>(EACCES));
}

TEST(ProgramTest, ArgumentsAreOneText) {
    EXPECT_EQ(joinedArguments({}), "");
    EXPECT_EQ(joinedArguments({"/r", "a b", "", "c\td"}), "/r \"a b\" \"\" \"c\td\"");
}

TEST(ProgramTest, ArgumentsWithQuotesComeBackWithoutThemAndStayApart) {
    EXPECT_EQ(joinedArguments({"a \"b", "/run"}), "\"a b\" /run");
    EXPECT_EQ(joinedArguments({"\"", "say\"so\""}), "\"\" sayso");
}

TEST(ProgramTest, TheArgumentsAreTheCommandLine) {
    LinuxProgram program({"/min"});

    EXPECT_EQ(program.commandLine(), "/min");
}

TEST(ProgramTest, AUserWhoMayNotWriteThereGetsAFolderOfHisOwn) {
    const pid_t child = fork();
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        setenv("XDG_DATA_HOME", "/tmp/some data", 1);
        const bool other = getuid() != 0 || setuid(nobody) == 0;
        const std::string folder = LinuxProgram({}).folder();
        // Whoever owns the build may write into it; anyone else may not.
        const bool right =
            folder == "/tmp/some data/velmars-tarvik" || access(folder.c_str(), W_OK) == 0;
        _exit(other && right ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);

    EXPECT_EQ(status, 0);
}

TEST(ProgramTest, TheDataFolderIsTheUsersUnlessTheEnvironmentNamesAnother) {
    setenv("HOME", "/somewhere", 1);
    unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(userDataFolder(), "/somewhere/.local/share/velmars-tarvik");
    setenv("XDG_DATA_HOME", "relative", 1);
    EXPECT_EQ(userDataFolder(), "/somewhere/.local/share/velmars-tarvik");
    setenv("XDG_DATA_HOME", "/data", 1);

    EXPECT_EQ(userDataFolder(), "/data/velmars-tarvik");
    unsetenv("XDG_DATA_HOME");
}

} // namespace
} // namespace tarvik
