#include "contracts/ServicesUnderTest.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>

namespace tarvik {
namespace {

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

/// Less than a day and a bit from the user's own clock, whatever the zone.
TEST(ClockContract, UniversalTimeIsTheUsersButForItsZone) {
    const ClockUnderTest machine = clockUnderTest();
    constexpr double millisecondsInDay = 86'400'000;
    constexpr double firstOf1970 = 25'569; // as a serial
    constexpr double widestZone = 15.0 / 24;

    const double universal =
        static_cast<double>(machine.clock->universalMilliseconds()) / millisecondsInDay +
        firstOf1970;

    EXPECT_NEAR(universal, momentOf(*machine.clock).serial(), widestZone);
}

TEST(ClockContract, TheZoneIsWhatLiesBetweenUniversalTimeAndTheUsers) {
    const ClockUnderTest machine = clockUnderTest();
    constexpr double minutesInDay = 1440;
    constexpr double firstOf1970 = 25'569; // as a serial
    const std::int64_t universal = machine.clock->universalMilliseconds();

    const int ahead = machine.clock->minutesAhead(universal);

    const double local = momentOf(*machine.clock).serial() - firstOf1970;
    EXPECT_NEAR(ahead, local * minutesInDay - static_cast<double>(universal) / 60'000, 1.0);
}

TEST(ClockContract, EveryMomentHasAZone) {
    const ClockUnderTest machine = clockUnderTest();
    constexpr int widest = 24 * 60;
    constexpr std::int64_t end = 253'402'300'800'000; // of the year 9999
    constexpr std::int64_t step = end / 9973;

    for (std::int64_t moment = 0; moment < end; moment += step) {
        EXPECT_LE(std::abs(machine.clock->minutesAhead(moment)), widest) << moment;
    }
    for (const std::int64_t beyond : {INT64_MIN, std::int64_t{-1}, end, INT64_MAX}) {
        EXPECT_LE(std::abs(machine.clock->minutesAhead(beyond)), widest) << beyond;
    }
}

} // namespace
} // namespace tarvik
