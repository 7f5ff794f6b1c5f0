#include "linux/services/LinuxClock.h"
#include "linux/services/LinuxLocale.h"
#include "linux/services/LinuxProgram.h"
#include "linux/services/LinuxSingleInstance.h"
#include "linux/services/LinuxSockets.h"
#include "linux/services/LinuxSystemErrorText.h"
#include "support/TemporaryFolder.h"
#include "types/Convert.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>

namespace tarvik {
namespace {

TEST(SingleInstanceTest, TheSecondHolderIsToldThatTheNameIsTaken) {
    const TemporaryFolder folder;
    LinuxSingleInstance first(folder.path());
    LinuxSingleInstance second(folder.path());
    std::uint32_t error = 99;

    EXPECT_GE(first.CreateMutexA("{A}", &error), 1);
    EXPECT_EQ(error, 0U);
    EXPECT_GE(second.CreateMutexA("{A}", &error), 1);

    EXPECT_EQ(error, 183U);
}

TEST(SingleInstanceTest, AnotherNameIsAnotherObject) {
    const TemporaryFolder folder;
    LinuxSingleInstance instances(folder.path());
    std::uint32_t error = 99;
    instances.CreateMutexA("{A}", &error);

    instances.CreateMutexA("{B}", &error);

    EXPECT_EQ(error, 0U);
}

TEST(SingleInstanceTest, AReleasedNameIsFree) {
    const TemporaryFolder folder;
    LinuxSingleInstance first(folder.path());
    LinuxSingleInstance second(folder.path());
    std::uint32_t error = 99;
    const std::int32_t handle = first.CreateMutexA("{A}", &error);

    EXPECT_TRUE(first.CloseHandle(handle));
    second.CreateMutexA("{A}", &error);

    EXPECT_EQ(error, 0U);
    EXPECT_FALSE(first.CloseHandle(handle));
}

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

TEST(SingleInstanceTest, AFolderThatCannotBeUsedIsAnErrorWithoutAHandle) {
    LinuxSingleInstance instances("/dev/null/none");
    std::uint32_t error = 0;

    EXPECT_EQ(instances.CreateMutexA("{A}", &error), 0);

    EXPECT_NE(error, 0U);
    EXPECT_NE(error, 183U);
}

TEST(ProgramTest, ArgumentsAreOneText) {
    EXPECT_EQ(joinedArguments({}), "");
    EXPECT_EQ(joinedArguments({"/r", "a b", "", "c\td"}), "/r \"a b\" \"\" \"c\td\"");
}

TEST(ProgramTest, ArgumentsWithQuotesComeBackWithoutThemAndStayApart) {
    EXPECT_EQ(joinedArguments({"a \"b", "/run"}), "\"a b\" /run");
    EXPECT_EQ(joinedArguments({"\"", "say\"so\""}), "\"\" sayso");
}

TEST(ProgramTest, TheProgramsOwnFolderIsUsedWhereTheUserMayWrite) {
    LinuxProgram program({"/min"});

    EXPECT_NE(program.folder().find("/bin"), std::string::npos);
    EXPECT_EQ(program.commandLine(), "/min");
    EXPECT_EQ(program.pathSeparator(), '/');
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

TEST(ClockTest, DateAndTimeArePartsOfNow) {
    LinuxClock clock;

    EXPECT_GT(clock.currentDate().serial(), 46'000.0);
    EXPECT_EQ(clock.currentDate().timeOnly().serial(), 0.0);
    EXPECT_GE(clock.currentTime().serial(), 0.0);
    EXPECT_LT(clock.currentTime().serial(), 1.0);
}

TEST(SystemErrorTest, AKnownNumberHasAText) {
    LinuxSystemErrorText texts;
    std::array<char, 64> buffer{};

    const std::uint32_t length =
        texts.FormatMessageA(4096, nullptr, 2, 0, buffer.data(), buffer.size(), nullptr);

    EXPECT_STREQ(buffer.data(), "No such file or directory");
    EXPECT_EQ(length, 25U);
}

TEST(SystemErrorTest, AnUnknownNumberHasNone) {
    LinuxSystemErrorText texts;
    std::array<char, 4> buffer{'a', 'b', '\0'};

    for (const std::uint32_t code : {599U, 4'000'000'000U}) {
        EXPECT_EQ(
            texts.FormatMessageA(4096, nullptr, code, 0, buffer.data(), buffer.size(), nullptr),
            0U);
    }
    EXPECT_STREQ(buffer.data(), "ab");
}

TEST(SocketsTest, ThisMachineHasANameAndAddresses) {
    LinuxSockets sockets;
    WSADATA data{};
    std::array<char, 256> name{};
    HOSTENT host;

    EXPECT_EQ(sockets.WSAStartup(0x0101, &data), 0);
    EXPECT_EQ(data.wVersion, 0x0101);
    EXPECT_EQ(sockets.gethostname(name.data(), static_cast<int>(name.size())), 0);
    EXPECT_NE(name[0], '\0');
    EXPECT_TRUE(sockets.gethostbyname(name.data(), &host));
    EXPECT_EQ(host.h_name, name.data());
    ASSERT_FALSE(host.h_addr_list.empty());
    EXPECT_EQ(host.h_addr_list.front().size(), 4U);
    EXPECT_EQ(sockets.WSACleanup(), 0);
}

TEST(SocketsTest, EndingWhatWasNotStartedIsAnError) {
    LinuxSockets sockets;

    EXPECT_EQ(sockets.WSACleanup(), 10093);
    EXPECT_EQ(sockets.WSAGetLastError(), 10093);
}

TEST(SocketsTest, AnotherHostIsNotKnown) {
    LinuxSockets sockets;
    HOSTENT host;

    EXPECT_FALSE(sockets.gethostbyname("no-such-host.invalid", &host));
}

TEST(SocketsTest, ANameThatDoesNotFitIsAnError) {
    LinuxSockets sockets;
    char name = 'x';

    EXPECT_EQ(sockets.gethostname(&name, 0), -1);
    EXPECT_NE(sockets.WSAGetLastError(), 0);
}

struct LocaleCase {
    const char* name;
    const char* date;
    const char* time;
    const char* number;
};

class LocaleTest : public testing::TestWithParam<LocaleCase> {};

TEST_P(LocaleTest, GivesTheFormsOfTheLanguageWithFullYears) {
    const LocaleData data = localeDataOf(QLocale(QString::fromLatin1(GetParam().name)));
    const Date date = Date::fromCivil({2026, 11, 16, 18, 40, 5});

    EXPECT_EQ(shortDateText(date, data), GetParam().date);
    EXPECT_EQ(longTimeText(date, data), GetParam().time);
    EXPECT_EQ(formatGrouped(1'234'567.5, 1, data), GetParam().number);
    EXPECT_EQ(textToDate(toText(date, data), data).serial(), date.serial());
}

INSTANTIATE_TEST_SUITE_P(
    All, LocaleTest,
    testing::Values(LocaleCase{"de_DE", "16.11.2026", "18:40:05", "1.234.567,5"},
                    LocaleCase{"en_US", "11/16/2026", "6:40:05 PM", "1,234,567.5"},
                    LocaleCase{"en_GB", "16/11/2026", "18:40:05", "1,234,567.5"},
                    LocaleCase{"sv_SE", "2026-11-16", "18:40:05",
                               "1\xC2\xA0"
                               "234\xC2\xA0"
                               "567,5"},
                    LocaleCase{"fr_FR", "16/11/2026", "18:40:05",
                               "1\xE2\x80\xAF"
                               "234\xE2\x80\xAF"
                               "567,5"},
                    LocaleCase{"C", "16 Nov 2026", "18:40:05", "1,234,567.5"}),
    [](const auto& given) { return given.param.name; });

TEST(LocaleFormsTest, EveryLocaleOfTheSystemReadsBackWhatItWrites) {
    const Date evening = Date::fromCivil({2026, 11, 16, 18, 40, 5});
    const Date morning = Date::fromCivil({1999, 1, 2, 0, 5, 59});
    for (const QLocale& locale : QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript,
                                                          QLocale::AnyTerritory)) {
        const LocaleData data = localeDataOf(locale);
        for (const Date date : {evening, morning}) {
            const std::string text = toText(date, data);
            double serial = 0;
            try {
                serial = textToDate(text, data).serial();
            } catch (const RunTimeError&) {
                serial = -1;
            }
            EXPECT_EQ(serial, date.serial()) << locale.name().toStdString() << ": " << text;
        }
        const Currency amount = Currency::fromScaled(12'345'678'901'234);
        EXPECT_EQ(textToCurrency(toText(amount, data), data), amount)
            << locale.name().toStdString();
    }
}

} // namespace
} // namespace tarvik
