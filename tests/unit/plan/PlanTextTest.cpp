#include "plan/PlanText.h"

#include "plan/PlanTest.h"
#include "scripted/ScriptedServices.h"

#include <gmock/gmock.h>

namespace tarvik {
namespace {

using namespace planned;

const LocaleData english;

TEST(ShownNameTest, ANameOfThirtyLettersStandsAsItIs) {
    const Plan thirty{.name = "Thirty letters, one by one, so"};

    EXPECT_EQ(shownName(thirty), "Thirty letters, one by one, so");
}

TEST(ShownNameTest, OfALongNameBeginningAndEndAreShown) {
    const Plan longer{.name = "Thirty letters, one by one, and more"};

    EXPECT_EQ(shownName(longer), "Thirty letters...one, and more");
}

TEST(ShownNameTest, NoLetterIsCutInTwo) {
    std::string letters;
    for (int i = 0; i < 128; ++i) {
        letters += "\xC3\xA9";
    }

    std::string expected;
    for (int i = 0; i < 14; ++i) {
        expected += "\xC3\xA9";
    }
    EXPECT_EQ(shownName({.name = letters}), expected + "..." + expected.substr(2));
}

TEST(ShownNameTest, LineBreaksAreToldByTheirNumbers) {
    EXPECT_EQ(shownName({.name = "Home\nOffice"}), "Home[U+000A]Office");
    EXPECT_LE(shownName({.name = std::string(250, '\n')}).size(), 30U);
}

TEST(ShownNameTest, BytesThatGoOnWithNothingAreTakenTogetherByFour) {
    const std::string odd(256, '\x80');

    EXPECT_EQ(shownName({.name = odd}), std::string(56, '\x80') + "..." + std::string(52, '\x80'));
}

struct SizeTextCase {
    std::uint64_t bytes;
    bool in1024;
    const char* text;
};

class SizeTextTest : public testing::TestWithParam<SizeTextCase> {};

TEST_P(SizeTextTest, NoneIsRoundedUp) {
    EXPECT_EQ(sizeText(GetParam().bytes, GetParam().in1024, english), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(All, SizeTextTest,
                         testing::Values(SizeTextCase{0, false, "0 MB"},
                                         SizeTextCase{99'999, false, "0 MB"},
                                         SizeTextCase{100'000, false, "0.1 MB"},
                                         SizeTextCase{999'999, false, "0.9 MB"},
                                         SizeTextCase{1'000'000, false, "1 MB"},
                                         SizeTextCase{99'999'999, false, "99.9 MB"},
                                         SizeTextCase{575'900'000, false, "575 MB"},
                                         SizeTextCase{999'999'999, false, "999 MB"},
                                         SizeTextCase{3'199'999'999, false, "3.1 GB"},
                                         SizeTextCase{std::uint64_t{1} << 63U, false, "9223372 TB"},
                                         SizeTextCase{1'048'576, true, "1 MiB"},
                                         SizeTextCase{std::uint64_t{1} << 40U, true, "1 TiB"}));

TEST(DurationTextTest, HoursAreToldFromOneOn) {
    EXPECT_EQ(durationText(0, english), "0 minutes");
    EXPECT_EQ(durationText(60'000, english), "1 minute");
    EXPECT_EQ(durationText(3'599'999, english), "59.9 minutes");
    EXPECT_EQ(durationText(hour, english), "1 hour");
    EXPECT_EQ(durationText(hour * 25 / 2, english), "12.5 hours");
}

TEST(DurationTextTest, TheUsersSeparatorIsUsed) {
    EXPECT_EQ(durationText(hour * 25 / 2, germanLocale()), "12,5 hours");
    EXPECT_EQ(sizeText(3'100'000'000, false, germanLocale()), "3,1 GB");
}

TEST(ReadAmountTest, SizesAndTimesAreRead) {
    const auto bytes = readAmount("3.4 GB", english);
    ASSERT_TRUE(bytes.has_value());
    EXPECT_EQ(bytes->measure, Measure::Bytes);
    EXPECT_EQ(bytes->amount, 3'400'000'000U);
    for (const char* const text : {"1.5 h", "1.5 hours", " 90 min ", "90minutes"}) {
        const auto time = readAmount(text, english);
        ASSERT_TRUE(time.has_value()) << text;
        EXPECT_EQ(time->measure, Measure::Time);
        EXPECT_EQ(time->amount, hour * 3 / 2) << text;
    }
}

TEST(ReadAmountTest, APointThatIsNoneOfTheUsersIsRefused) {
    LocaleData german;
    german.decimalSeparator = ",";
    german.thousandsSeparator = ".";

    EXPECT_FALSE(readAmount("1.500 MB", german).has_value());
    EXPECT_FALSE(readAmount("1.500 h", german).has_value());
    EXPECT_EQ(readAmount("1,5 MB", german)->amount, 1'500'000U);
}

TEST(ReadAmountTest, NothingElseIs) {
    for (const char* const text :
         {"", "12", "h", "-1 h", "1 hou", "99999.001 h", "100000 h", "1 h 2", "1..5 h", "5 KB"}) {
        EXPECT_FALSE(readAmount(text, english).has_value()) << text;
    }
    EXPECT_TRUE(readAmount("99999 h", english).has_value());
}

TEST(DayOfMonthTextTest, EveryDayHasItsEnding) {
    const auto text = [](unsigned day) { return dayOfMonthText(dayOfCalendar(2026, 1, day)); };
    EXPECT_EQ(text(1), "1st");
    EXPECT_EQ(text(2), "2nd");
    EXPECT_EQ(text(3), "3rd");
    EXPECT_EQ(text(4), "4th");
    EXPECT_EQ(text(11), "11th");
    EXPECT_EQ(text(12), "12th");
    EXPECT_EQ(text(13), "13th");
    EXPECT_EQ(text(20), "20th");
    EXPECT_EQ(text(21), "21st");
    EXPECT_EQ(text(23), "23rd");
    EXPECT_EQ(text(30), "30th");
}

class PlanLineTest : public testing::Test {
protected:
    LedgerContents contents;
    PlanInUse one{.plan = tenGigabytes()};

    /// So much was carried yesterday.
    void carried(std::uint64_t bytes) {
        contents = contentsWith({carriedAt(noon - 24h, bytes)});
        const History history(contents);
        one.meter = meterOf(one.plan, history, noon, inLondon);
        one.budget = budgetOf(one.plan, history, one.meter->standing, noon, inLondon);
        one.forecast = forecastOf(one.plan, history, one.meter->standing, noon, inLondon, {});
    }
    std::string line() const { return planLine(one, english, inLondon); }
};

TEST_F(PlanLineTest, AllOfItIsTold) {
    carried(3'100'000'000);

    EXPECT_EQ(line(), "3.1 of 10 GB \xC2\xB7 15 days left \xC2\xB7 460 MB a day \xC2\xB7 at this "
                      "pace 4.6 GB by the 30th");
}

TEST_F(PlanLineTest, TheFirstHoursTellNoPace) {
    carried(3'100'000'000);
    one.forecast.reset();

    EXPECT_EQ(line(), "3.1 of 10 GB \xC2\xB7 15 days left \xC2\xB7 460 MB a day");
}

TEST_F(PlanLineTest, MoreThanAllIsToldAsThat) {
    carried(10'400'000'000);
    one.forecast.reset();

    EXPECT_EQ(line(), "10.4 of 10 GB \xC2\xB7 15 days left \xC2\xB7 400 MB over");
}

TEST_F(PlanLineTest, TheLastDayIsOne) {
    carried(3'100'000'000);
    one.budget->daysLeft = 1;

    EXPECT_NE(line().find("1 day left"), std::string::npos);
}

TEST_F(PlanLineTest, HoursAreToldBesideBytes) {
    one.plan.hours = 20;
    carried(3'100'000'000);
    one.forecast.reset();

    EXPECT_EQ(line(), "3.1 of 10 GB \xC2\xB7 15 minutes of 20 hours \xC2\xB7 15 days left \xC2\xB7 "
                      "460 MB a day \xC2\xB7 1.3 hours a day");
}

TEST_F(PlanLineTest, WithoutALimitItTellsWhatWasUsed) {
    one.plan.allowance.reset();
    carried(3'100'000'000);
    one.forecast.reset();

    EXPECT_EQ(line(), "3.1 GB");
}

TEST_F(PlanLineTest, WithoutAPeriodThereIsNothingToTell) {
    EXPECT_EQ(line(), "");
}

TEST_F(PlanLineTest, AnOldBudgetIsNeverAboveWhatIsLeft) {
    carried(3'100'000'000);
    one.forecast.reset();
    one.meter->standing.used.bytes = 9'999'000'000; // since the budget was reckoned

    EXPECT_NE(line().find("1 MB a day"), std::string::npos);
}

TEST_F(PlanLineTest, WhatIsLeftOfTodaysPartIsTold) {
    carried(3'100 * megabyte);
    EXPECT_EQ(todayText(one, english), "460 MB");

    one.plan.hours = 15;
    carried(3'100 * megabyte);
    EXPECT_EQ(todayText(one, english), "460 MB and 59 minutes");
}

TEST_F(PlanLineTest, WithoutABudgetNothingIsToldOfToday) {
    one.plan.allowance.reset();
    carried(3'100 * megabyte);

    EXPECT_EQ(todayText(one, english), "");
}

TEST_F(PlanLineTest, AnOldForecastIsNeverBelowWhatIsUsed) {
    carried(100 * megabyte);
    one.meter->standing.used.bytes = 9'900 * megabyte;

    EXPECT_THAT(line(), testing::HasSubstr("at this pace 9.9 GB by the 30th"));
    EXPECT_EQ(forecastText(one, english, inLondon), "between 9.9 GB and 9.9 GB by the 30th");
}

TEST_F(PlanLineTest, TheForecastTellsItsSpan) {
    carried(3'100'000'000);
    one.forecast = Forecast{
        .least = {4'100'000'000, 0}, .expected = {4'500'000'000, 0}, .most = {4'900'000'000, 0}};

    EXPECT_EQ(forecastText(one, english, inLondon), "between 4.1 GB and 4.9 GB by the 30th");
}

TEST(PercentTest, ItIsThatOfWhatIsUsedMostOf) {
    Plan plan = tenGigabytes();
    plan.hours = 10;
    Standing standing;
    standing.allowance = allowanceOf(plan);
    standing.used = {3'199'999'999, hour * 4};

    EXPECT_EQ(percentUsed(plan, standing), 40);
    standing.used.milliseconds = 0;
    EXPECT_EQ(percentUsed(plan, standing), 31);
    standing.used.bytes = std::uint64_t{1} << 62U;
    EXPECT_EQ(percentUsed(plan, standing), 999);
}

TEST(PercentTest, APeriodWithoutAnEndHasNone) {
    EXPECT_EQ(percentPassed({.begin = utc(11, 1), .end = utc(12, 1)}, utc(11, 16)), 50);
    EXPECT_EQ(percentPassed({.begin = utc(11, 1), .end = Period::endless}, utc(11, 16)), 0);
    EXPECT_EQ(percentPassed({.begin = utc(11, 1), .end = utc(12, 1)}, utc(12, 16)), 100);
}

} // namespace
} // namespace tarvik
