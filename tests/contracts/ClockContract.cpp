#include "contracts/ServicesUnderTest.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace tarvik
