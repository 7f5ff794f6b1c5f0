#include "contracts/ServicesUnderTest.h"

#include "types/RunTimeError.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

namespace tarvik {
namespace {

// Single instance.

class SingleInstanceContract : public testing::Test {
protected:
    InstancesUnderTest machine = instancesUnderTest();
    std::unique_ptr<SingleInstance> first = machine.newProgram();
    std::unique_ptr<SingleInstance> second = machine.newProgram();
    std::uint32_t error = 99;
};

TEST_F(SingleInstanceContract, TheSecondHolderIsToldThatTheNameIsTaken) {
    const std::int32_t held = first->CreateMutexA("{tarvik-test}", &error);
    EXPECT_GE(held, 1);
    EXPECT_EQ(error, 0U);

    const std::int32_t other = second->CreateMutexA("{tarvik-test}", &error);
    EXPECT_GE(other, 1);
    EXPECT_EQ(error, 183U);

    EXPECT_TRUE(second->CloseHandle(other));
    EXPECT_TRUE(first->CloseHandle(held));
}

TEST_F(SingleInstanceContract, AnotherNameIsAnotherObject) {
    const std::int32_t held = first->CreateMutexA("{tarvik-test}", &error);

    const std::int32_t other = first->CreateMutexA("{tarvik-other}", &error);

    EXPECT_GE(other, 1);
    EXPECT_EQ(error, 0U);
    EXPECT_TRUE(first->CloseHandle(held));
    EXPECT_TRUE(first->CloseHandle(other));
}

TEST_F(SingleInstanceContract, AReleasedNameIsFree) {
    const std::int32_t held = first->CreateMutexA("{tarvik-test}", &error);
    EXPECT_TRUE(first->CloseHandle(held));

    const std::int32_t again = second->CreateMutexA("{tarvik-test}", &error);

    EXPECT_EQ(error, 0U);
    EXPECT_TRUE(second->CloseHandle(again));
}

TEST_F(SingleInstanceContract, ANameThatCannotBeHeldIsAnErrorWithoutAHandle) {
    error = 0;

    EXPECT_EQ(machine.unable->CreateMutexA(machine.impossible, &error), 0);

    EXPECT_NE(error, 0U);
    EXPECT_NE(error, 183U);
    EXPECT_FALSE(machine.unable->CloseHandle(0));
}

// Clock.

TEST(ClockContract, DateAndTimeArePartsOfNow) {
    const ClockUnderTest machine = clockUnderTest();
    const CivilTime before = machine.wallTime();

    const Date date = machine.clock->currentDate();
    const Date time = machine.clock->currentTime();

    EXPECT_GT(date.serial(), 46'000.0);
    EXPECT_EQ(date.timeOnly().serial(), 0.0);
    EXPECT_NEAR(date.civil().year, before.year, 1);
    EXPECT_GE(time.serial(), 0.0);
    EXPECT_LT(time.serial(), 1.0);
    const CivilTime now = time.civil();
    const int passed = (now.hour * 3600 + now.minute * 60 + now.second) -
                       (before.hour * 3600 + before.minute * 60 + before.second);
    EXPECT_LT((passed + 86'400) % 86'400, 60);
}

// Texts of the system's errors.

TEST(SystemErrorContract, AKnownNumberHasAText) {
    const ErrorTextsUnderTest machine = errorTextsUnderTest();
    std::array<char, 512> buffer{};

    const std::uint32_t length = machine.texts->FormatMessageA(
        4096, nullptr, machine.known, 0, buffer.data(), buffer.size(), nullptr);

    EXPECT_GT(length, 5U);
    EXPECT_EQ(std::strlen(buffer.data()), length);
    EXPECT_EQ(buffer.data(), machine.text.value_or(buffer.data()));
}

TEST(SystemErrorContract, AnUnknownNumberHasNone) {
    const ErrorTextsUnderTest machine = errorTextsUnderTest();
    std::array<char, 512> buffer{"before"};

    for (const std::uint32_t code : machine.unknown) {
        EXPECT_EQ(machine.texts->FormatMessageA(4096, nullptr, code, 0, buffer.data(),
                                                buffer.size(), nullptr),
                  0U)
            << code;
    }

    EXPECT_STREQ(buffer.data(), "before");
}

// Sockets.

class SocketsContract : public testing::Test {
protected:
    SocketsUnderTest machine = socketsUnderTest();
    Sockets& sockets = *machine.sockets;
    HOSTENT host;
};

TEST_F(SocketsContract, TheVersionThatIsAskedForIsGranted) {
    WSADATA data{};

    EXPECT_EQ(sockets.WSAStartup(0x0101, &data), 0);

    EXPECT_EQ(data.wVersion, 0x0101);
    EXPECT_GE(data.iMaxSockets, 1);
    EXPECT_EQ(sockets.WSACleanup(), 0);
}

TEST_F(SocketsContract, TheHostHasANameAndAddresses) {
    WSADATA data{};
    ASSERT_EQ(sockets.WSAStartup(0x0101, &data), 0);
    std::array<char, 256> name{};

    EXPECT_EQ(sockets.gethostname(name.data(), static_cast<int>(name.size())), 0);
    EXPECT_NE(name[0], '\0');
    const std::string known = machine.known.empty() ? name.data() : machine.known;
    EXPECT_TRUE(sockets.gethostbyname(known.c_str(), &host));

    EXPECT_EQ(host.h_name.substr(0, host.h_name.find('\0')), known);
    EXPECT_EQ(host.h_length, 4);
    ASSERT_FALSE(host.h_addr_list.empty());
    EXPECT_EQ(host.h_addr_list.front().size(), 4U);
    EXPECT_EQ(host.h_addr_list.front(), machine.address.value_or(host.h_addr_list.front()));
    EXPECT_EQ(sockets.WSACleanup(), 0);
}

TEST_F(SocketsContract, AHostThatNobodyKnowsHasNoEntry) {
    WSADATA data{};
    ASSERT_EQ(sockets.WSAStartup(0x0101, &data), 0);

    EXPECT_FALSE(sockets.gethostbyname("no-such-host.invalid", &host));

    sockets.WSACleanup();
}

TEST_F(SocketsContract, ANameThatDoesNotFitIsAnError) {
    WSADATA data{};
    ASSERT_EQ(sockets.WSAStartup(0x0101, &data), 0);
    char name = 'x';

    EXPECT_EQ(sockets.gethostname(&name, 0), -1);

    EXPECT_NE(sockets.WSAGetLastError(), 0);
    sockets.WSACleanup();
}

TEST_F(SocketsContract, EndingWhatWasNotStartedIsAnError) {
    EXPECT_EQ(sockets.WSACleanup(), 10093);
    EXPECT_EQ(sockets.WSAGetLastError(), 10093);
}

// The program.

TEST(ProgramContract, TheFolderIsTheProgramsOwnWhereTheUserMayWrite) {
    const ProgramUnderTest machine = programUnderTest();

    EXPECT_EQ(machine.program->folder(), machine.folder);
    EXPECT_EQ(machine.program->pathSeparator(), machine.separator);
}

// Locale.

struct LocaleCase {
    const char* name;
    const char* date;
    const char* time;
    const char* number; ///< with "_" for the blank that keeps a number on its line
};

class LocaleContract : public testing::TestWithParam<LocaleCase> {
protected:
    std::string withBlanks(const std::string& number) const {
        std::string result;
        for (const char each : number) {
            result += each == '_' ? machine.noBreakSpace : std::string(1, each);
        }
        return result;
    }

    LocalesUnderTest machine = localesUnderTest();
};

TEST_P(LocaleContract, GivesTheFormsOfTheLanguageWithFullYears) {
    const LocaleData data = machine.named(GetParam().name);
    const Date date = Date::fromCivil({2026, 11, 16, 18, 40, 5});

    EXPECT_EQ(shortDateText(date, data), GetParam().date);
    EXPECT_EQ(longTimeText(date, data), GetParam().time);
    EXPECT_EQ(formatGrouped(1'234'567.5, 1, data), withBlanks(GetParam().number));
    EXPECT_EQ(textToDate(toText(date, data), data).serial(), date.serial());
}

INSTANTIATE_TEST_SUITE_P(
    All, LocaleContract,
    testing::Values(LocaleCase{"de_DE", "16.11.2026", "18:40:05", "1.234.567,5"},
                    LocaleCase{"en_US", "11/16/2026", "6:40:05 PM", "1,234,567.5"},
                    LocaleCase{"en_GB", "16/11/2026", "18:40:05", "1,234,567.5"},
                    LocaleCase{"sv_SE", "2026-11-16", "18:40:05", "1_234_567,5"}),
    [](const auto& given) { return given.param.name; });

/// What comes back from a text under its own locale; -1 where nothing does.
double readBack(const std::string& text, const LocaleData& data) {
    try {
        return textToDate(text, data).serial();
    } catch (const RunTimeError&) {
        return -1;
    }
}

TEST(LocaleFormsContract, EveryLocaleOfTheSystemReadsBackWhatItWrites) {
    const Date evening = Date::fromCivil({2026, 11, 16, 18, 40, 5});
    const Date morning = Date::fromCivil({1999, 1, 2, 0, 5, 59});
    const auto all = localesUnderTest().all();
    EXPECT_FALSE(all.empty());
    for (const auto& [name, data] : all) {
        for (const Date date : {evening, morning}) {
            const std::string text = toText(date, data);
            EXPECT_EQ(readBack(text, data), date.serial()) << name << ": " << text;
        }
        const Currency amount = Currency::fromScaled(12'345'678'901'234);
        EXPECT_EQ(textToCurrency(toText(amount, data), data), amount) << name;
    }
}

} // namespace
} // namespace tarvik
