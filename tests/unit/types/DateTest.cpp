#include "types/Date.h"
#include "support/ErrorOf.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tarvik {
namespace {

CivilTime civil(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return {year, month, day, hour, minute, second};
}

double serialOf(const CivilTime& time) {
    return Date::fromCivil(time).serial();
}

int errorOfDay(int year, int month, int day) {
    return errorOf([&] { return Date::fromCivil(civil(year, month, day)); });
}

int errorOfTime(int hour, int minute, int second) {
    return errorOf([&] { return Date::fromCivil(civil(2026, 1, 1, hour, minute, second)); });
}

int errorOfSerial(double serial) {
    return errorOf([&] { return Date(serial).civil(); });
}

TEST(DateTest, CountsDaysFromThe30thOfDecember1899) {
    EXPECT_EQ(serialOf(civil(1899, 12, 30)), 0.0);
    EXPECT_EQ(serialOf(civil(1900, 1, 1)), 2.0);
    EXPECT_EQ(serialOf(civil(1900, 3, 1)), 61.0);
    EXPECT_EQ(serialOf(civil(2000, 1, 1)), 36526.0);
    EXPECT_EQ(serialOf(civil(2026, 11, 16)), 46342.0);
    EXPECT_EQ(serialOf(civil(9999, 12, 31)), 2958465.0);
    EXPECT_EQ(serialOf(civil(1899, 12, 29)), -1.0);
    EXPECT_EQ(serialOf(civil(100, 1, 1)), -657434.0);
}

TEST(DateTest, TheFractionIsTheTimeOfDay) {
    EXPECT_EQ(serialOf(civil(2000, 1, 1, 6)), 36526.25);
    EXPECT_EQ(serialOf(civil(2000, 1, 1, 23, 59, 59)), 36526.0 + 86399.0 / 86400.0);
    EXPECT_EQ(serialOf(civil(1899, 12, 30, 12)), 0.5);
}

TEST(DateTest, BeforeDayZeroTheFractionStillCountsForward) {
    EXPECT_EQ(serialOf(civil(1899, 12, 29, 6)), -1.25);
    EXPECT_EQ(Date(-1.25).civil(), civil(1899, 12, 29, 6));
    EXPECT_EQ(Date(-1.75).civil(), civil(1899, 12, 29, 18));
}

TEST(DateTest, AnyFractionOfDayZeroIsOnThatDay) {
    EXPECT_EQ(Date(-0.25).civil(), civil(1899, 12, 30, 6));
    EXPECT_EQ(Date(0.25).civil(), civil(1899, 12, 30, 6));
}

TEST(DateTest, RoundsToTheNearestSecond) {
    constexpr double second = 1.0 / 86400.0;
    EXPECT_EQ(Date(36526 + 0.4 * second).civil(), civil(2000, 1, 1));
    EXPECT_EQ(Date(36526 + 0.6 * second).civil(), civil(2000, 1, 1, 0, 0, 1));
    EXPECT_EQ(Date(36526 + 59.6 * second).civil(), civil(2000, 1, 1, 0, 1, 0));
}

TEST(DateTest, RoundingMayCarryIntoTheNextDay) {
    constexpr double almost = 1.0 - 0.4 / 86400.0;
    EXPECT_EQ(Date(36525 + almost).civil(), civil(2000, 1, 1));
    EXPECT_EQ(Date(-2 - almost).civil(), civil(1899, 12, 29));
    EXPECT_EQ(Date(-1 - almost).civil(), civil(1899, 12, 30));
    EXPECT_EQ(Date(-almost).civil(), civil(1899, 12, 31));
}

TEST(DateTest, TheYearsFrom100To9999AreDates) {
    EXPECT_EQ(Date(-657434.0).civil(), civil(100, 1, 1));
    EXPECT_EQ(Date(-657434.5).civil(), civil(100, 1, 1, 12));
    EXPECT_EQ(Date(2958465.999).civil(), civil(9999, 12, 31, 23, 58, 34));
    EXPECT_EQ(errorOfSerial(-657435.0), 5);
    EXPECT_EQ(errorOfSerial(2958466.0), 5);
    EXPECT_EQ(errorOfSerial(2958465.999999), 5);
}

TEST(DateTest, ASerialThatIsNoNumberIsNoDate) {
    EXPECT_EQ(errorOfSerial(std::nan("")), 5);
    EXPECT_EQ(errorOfSerial(HUGE_VAL), 5);
    EXPECT_EQ(errorOfSerial(-HUGE_VAL), 5);
    EXPECT_EQ(errorOfSerial(1e300), 5);
}

TEST(DateTest, ADayThatTheCalendarLacksIsRefused) {
    EXPECT_EQ(errorOfDay(2026, 2, 29), 5);
    EXPECT_EQ(errorOfDay(1900, 2, 29), 5);
    EXPECT_EQ(errorOfDay(2026, 4, 31), 5);
    EXPECT_EQ(errorOfDay(2026, 1, 32), 5);
    EXPECT_EQ(errorOfDay(2026, 1, 0), 5);
    EXPECT_EQ(errorOfDay(2026, 0, 1), 5);
    EXPECT_EQ(errorOfDay(2026, 13, 1), 5);
    EXPECT_EQ(errorOfDay(99, 12, 31), 5);
    EXPECT_EQ(errorOfDay(10000, 1, 1), 5);
}

TEST(DateTest, NumbersThatOnlyLookRightInFewerBitsAreRefused) {
    EXPECT_EQ(errorOfDay(65536 + 2026, 1, 1), 5);
    EXPECT_EQ(errorOfDay(2026, 256 + 1, 1), 5);
    EXPECT_EQ(errorOfDay(2026, 1, 256 + 1), 5);
    EXPECT_EQ(errorOfDay(2026, -255, 1), 5);
    EXPECT_EQ(errorOfDay(2026, 1, -255), 5);
}

TEST(DateTest, LeapDaysAreDates) {
    EXPECT_EQ(errorOfDay(2024, 2, 29), 0);
    EXPECT_EQ(errorOfDay(2000, 2, 29), 0);
}

TEST(DateTest, ATimeThatTheDayLacksIsRefused) {
    EXPECT_EQ(errorOfTime(24, 0, 0), 5);
    EXPECT_EQ(errorOfTime(-1, 0, 0), 5);
    EXPECT_EQ(errorOfTime(0, 60, 0), 5);
    EXPECT_EQ(errorOfTime(0, -1, 0), 5);
    EXPECT_EQ(errorOfTime(0, 0, 60), 5);
    EXPECT_EQ(errorOfTime(0, 0, -1), 5);
}

TEST(DateTest, FallsIntoItsDayAndItsTime) {
    EXPECT_EQ(Date(36526.25).dateOnly().serial(), 36526.0);
    EXPECT_EQ(Date(36526.25).timeOnly().serial(), 0.25);
    EXPECT_EQ(Date(-1.25).dateOnly().serial(), -1.0);
    EXPECT_EQ(Date(-1.25).timeOnly().serial(), 0.25);
}

/// Counts on by one day, with the calendar's rules in the plainest form.
void nextDay(CivilTime& day) {
    const bool leap = (day.year % 4 == 0 && day.year % 100 != 0) || day.year % 400 == 0;
    constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const int length = day.month == 2 && leap ? 29 : days[day.month - 1];
    if (++day.day > length) {
        day.day = 1;
        ++day.month;
    }
    if (day.month > 12) {
        day.month = 1;
        ++day.year;
    }
}

TEST(DateTest, EveryDayOfTheCalendarHasTheNextSerial) {
    CivilTime day = civil(100, 1, 1);
    for (int serial = -657434; serial <= 2958465; ++serial, nextDay(day)) {
        if (Date(serial).civil() != day || serialOf(day) != serial) {
            FAIL() << day.year << '-' << day.month << '-' << day.day << " is not " << serial;
        }
    }
    EXPECT_EQ(day, civil(10000, 1, 1));
}

TEST(DateTest, EverySecondOfADaySurvives) {
    for (int second = 0; second < 86'400; ++second) {
        const CivilTime later = civil(2026, 11, 16, second / 3600, second / 60 % 60, second % 60);
        const CivilTime earlier = civil(1756, 1, 27, later.hour, later.minute, later.second);
        ASSERT_EQ(Date::fromCivil(later).civil(), later);
        ASSERT_EQ(Date::fromCivil(earlier).civil(), earlier);
    }
}

} // namespace
} // namespace tarvik
