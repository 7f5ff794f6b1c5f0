#include "linux/services/LinuxClock.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace tarvik {
namespace {

/// The user lives somewhere else, until the end of the test.
class ClockTest : public testing::Test {
protected:
    ClockTest() { live("CET-1CEST,M3.5.0,M10.5.0/3"); }
    ~ClockTest() override {
        unsetenv("TZ");
        tzset();
    }
    static void live(const char* where) {
        setenv("TZ", where, 1);
        tzset();
    }

    LinuxClock clock;
};

TEST_F(ClockTest, SummerTimeBeginsAndEndsAtItsMoments) {
    constexpr std::int64_t begin = 1'774'746'000'000; // 29 March 2026, 1:00 universal time
    constexpr std::int64_t end = 1'792'890'000'000;   // 25 October 2026, 1:00 universal time

    EXPECT_EQ(clock.minutesAhead(begin - 1000), 60);
    EXPECT_EQ(clock.minutesAhead(begin), 120);
    EXPECT_EQ(clock.minutesAhead(end - 1000), 120);
    EXPECT_EQ(clock.minutesAhead(end), 60);
}

TEST_F(ClockTest, AZoneWestOfGreenwichIsBehind) {
    live("NST3:30");

    EXPECT_EQ(clock.minutesAhead(1'774'746'000'000), -210);
}

} // namespace
} // namespace tarvik
