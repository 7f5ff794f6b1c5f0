#include "monitor/mdlDateCalc.h"

#include "monitor/DateOn.h"
#include "support/ReferenceBoundary.h"
#include "support/WorldTest.h"

#include <array>
#include <cstdio>
#include <limits>
#include <ostream>
#include <string>

namespace tarvik {
namespace {

using enum enDateCalc;

constexpr const char* notADate = "DateCalc: Assertion failure - Input is not of type date.";
constexpr const char* notACriterion =
    "DateCalc: Assertion failure - Input is not of enum enDateCalc.";

enDateCalc criterionOf(int number) {
    return static_cast<enDateCalc>(number);
}

/// Year-month-day, with the time of day when there is one.
std::string textOf(Date date) {
    const CivilTime civil = date.civil();
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", civil.year, civil.month, civil.day);
    std::string result = text;
    if (civil.hour != 0 || civil.minute != 0 || civil.second != 0) {
        std::snprintf(text, sizeof text, " %02d:%02d:%02d", civil.hour, civil.minute, civil.second);
        result += text;
    }
    return result;
}

/// What a criterion gives and whether the totals are due to be reset today.
struct Due {
    const char* day;
    bool today;
};

/// The same for three days of the last reset.
struct WorkedExample {
    enDateCalc criterion;
    Due after20May2026;
    Due after16August2026;
    Due after11November2026;
};

constexpr WorkedExample workedExamples[] = {
    {MiddleOfDay, {"2026-11-16", false}, {"2026-11-16", false}, {"2026-11-16", false}},
    {EndOfDay, {"2026-11-16", false}, {"2026-11-16", false}, {"2026-11-16", false}},
    {MiddleOfWeek, {"2026-05-21", true}, {"2026-08-20", true}, {"2026-11-12", true}},
    {EndOfWeek, {"2026-05-25", true}, {"2026-08-17", true}, {"2026-11-16", false}},
    {MiddleOfMonth, {"2026-06-16", true}, {"2026-09-16", true}, {"2026-11-16", false}},
    {EndOfMonth, {"2026-06-01", true}, {"2026-09-01", true}, {"2026-12-01", false}},
    {MiddleOfQuarter, {"2026-08-16", true}, {"2026-08-16", true}, {"2026-11-16", false}},
    {EndOfQuarter, {"2026-10-01", true}, {"2026-12-01", false}, {"2027-01-01", false}},
    {MiddleOfHalfYear, {"2026-10-01", true}, {"2026-10-01", true}, {"2027-04-01", false}},
    {EndOfHalfYear, {"2026-07-01", true}, {"2027-01-01", false}, {"2027-01-01", false}},
    {MiddleOfYear, {"2026-07-01", true}, {"2027-07-01", false}, {"2027-07-01", false}},
    {EndOfYear, {"2027-01-01", false}, {"2027-01-01", false}, {"2027-01-01", false}}};

class DateCalcTest : public WorldTest {
protected:
    DateCalcTest() { setNow(on(2026, 11, 16, 14)); }

    void setNow(Date now) { machine.clock.now = now; }

    static std::string boundary(enDateCalc criterion, Date last, bool nextIfToday = false) {
        return textOf(DateCalc(criterion, last, nextIfToday));
    }

    /// Holds a column of the worked examples against the results.
    void expectColumn(Date last, Due WorkedExample::*column) {
        for (const WorkedExample& row : workedExamples) {
            SCOPED_TRACE("criterion " + std::to_string(static_cast<int>(row.criterion)));
            const Date result = DateCalc(row.criterion, last, false);
            EXPECT_EQ(textOf(result), (row.*column).day);
            EXPECT_EQ(machine.clock.now.dateOnly() > result, (row.*column).today);
        }
    }
};

// The two statements of the rules held against each other.

class EveryDateCalcTest : public DateCalcTest, public testing::WithParamInterface<int> {
protected:
    const ReferenceBoundary reference;
    int mismatches = 0;

    void compare(int last, bool nextIfToday, int today, int hour) {
        setNow(Date(today + (hour + 0.5) / 24.0));
        const int expected = reference.day(GetParam(), last, nextIfToday, today, hour);
        const Date actual = DateCalc(criterionOf(GetParam()), Date(last), nextIfToday);
        if (actual != Date(expected)) {
            ++mismatches;
            ADD_FAILURE() << "reset on " << textOf(Date(last)) << ", today " << textOf(Date(today))
                          << ", hour " << hour << ", next if today " << nextIfToday << ": "
                          << textOf(actual) << " instead of " << textOf(Date(expected));
        }
    }
    void compareBoth(int last, int today, int hour) {
        compare(last, false, today, hour);
        compare(last, true, today, hour);
    }
};

TEST_P(EveryDateCalcTest, FollowsTheRulesOnEveryDayOf42Years) {
    const bool ofDay = GetParam() == 0 || GetParam() == 6;
    const int first = 36'161; // 1 January 1999
    const int end = 51'502;   // 1 January 2041

    for (int last = first; last < end && mismatches < 5; ++last) {
        compare(last, false, 46'342, 14); // 16 November 2026
        compare(last, true, last + 1, 13);
        if (ofDay) {
            compare(last, false, last - 1, 23);
            compareBoth(last, last, 14);
            compareBoth(last, last + 1, 11);
            compareBoth(last, last + 1, 12);
            compare(last, false, last + 1, 13);
            compareBoth(last, last + 2, 0);
        } else {
            compareBoth(last, reference.usualDay(GetParam(), last), 14);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Criterion, EveryDateCalcTest, testing::Range(0, 12));

// Worked examples, on the afternoon of Monday 16 November 2026.

TEST_F(DateCalcTest, AfterAResetOn20May2026) {
    expectColumn(on(2026, 5, 20), &WorkedExample::after20May2026);
}

TEST_F(DateCalcTest, AfterAResetOn16August2026) {
    expectColumn(on(2026, 8, 16), &WorkedExample::after16August2026);
}

TEST_F(DateCalcTest, AfterAResetOn11November2026) {
    expectColumn(on(2026, 11, 11), &WorkedExample::after11November2026);
}

// The day.

TEST_F(DateCalcTest, TheEndOfTheDayIsItsMiddle) {
    for (const int daysAgo : {-400, -1, 0, 1, 2, 400}) {
        for (const int hour : {0, 12, 13, 23}) {
            for (const bool nextIfToday : {false, true}) {
                const Date last = Date(on(2026, 11, 16).serial() - daysAgo);
                setNow(on(2026, 11, 16, hour));

                EXPECT_EQ(boundary(EndOfDay, last, nextIfToday),
                          boundary(MiddleOfDay, last, nextIfToday));
            }
        }
    }
}

TEST_F(DateCalcTest, OnTheDayOfTheResetTheDayIsTomorrow) {
    EXPECT_EQ(boundary(MiddleOfDay, on(2026, 11, 16)), "2026-11-17");
}

TEST_F(DateCalcTest, AResetInTheFutureLeavesTheDayTomorrow) {
    EXPECT_EQ(boundary(MiddleOfDay, on(2027, 3, 1)), "2026-11-17");
}

TEST_F(DateCalcTest, OnTheNextDayTheDayIsTomorrowThroughTheHourOfNoon) {
    setNow(on(2026, 11, 16, 12, 59, 59));

    EXPECT_EQ(boundary(MiddleOfDay, on(2026, 11, 15)), "2026-11-17");
}

TEST_F(DateCalcTest, OnTheNextDayTheDayIsTodayFrom13OClock) {
    setNow(on(2026, 11, 16, 13));

    EXPECT_EQ(boundary(MiddleOfDay, on(2026, 11, 15)), "2026-11-16");
}

TEST_F(DateCalcTest, OnTheNextDayTheDayStaysTomorrowIfTodayIsNotWanted) {
    EXPECT_EQ(boundary(MiddleOfDay, on(2026, 11, 15), true), "2026-11-17");
}

TEST_F(DateCalcTest, TwoDaysLaterTheDayIsTodayFromMidnight) {
    setNow(on(2026, 11, 16));

    EXPECT_EQ(boundary(MiddleOfDay, on(2026, 11, 14)), "2026-11-16");
}

TEST_F(DateCalcTest, TwoDaysLaterTheDayIsTodayEvenIfTodayIsNotWanted) {
    EXPECT_EQ(boundary(MiddleOfDay, on(2026, 11, 14), true), "2026-11-16");
}

TEST_F(DateCalcTest, OnTheDayAfterAResetWithATimeTheDayIsTomorrow) {
    EXPECT_EQ(boundary(MiddleOfDay, on(2026, 11, 15, 13)), "2026-11-17");
}

TEST_F(DateCalcTest, TwoDaysAfterAResetWithATimeTheDayIsToday) {
    EXPECT_EQ(boundary(MiddleOfDay, on(2026, 11, 14, 13)), "2026-11-16");
}

TEST_F(DateCalcTest, ADayCriterionIsNeverDue) {
    for (const double daysAgo : {-30.0, -0.5, 0.0, 0.5, 1.0, 1.5, 2.0, 30.0, 9450.0}) {
        const Date last = Date(on(2026, 11, 16).serial() - daysAgo);

        EXPECT_GE(DateCalc(MiddleOfDay, last, false), on(2026, 11, 16)) << daysAgo;
    }
}

TEST_F(DateCalcTest, TheDayAfterALateTimeOnTheLastDayBeforeDayZeroIsDayZeroAtThatTime) {
    // The calendar's days count from 30 December 1899; before it the time of day counts backwards.
    setNow(on(1899, 12, 30));

    EXPECT_EQ(boundary(MiddleOfDay, on(1899, 12, 29, 6)), "1899-12-31");
}

// The week.

TEST_F(DateCalcTest, TheMiddleOfTheWeekAfterAThursdayIsTheNextThursday) {
    EXPECT_EQ(boundary(MiddleOfWeek, on(2026, 5, 21)), "2026-05-28");
}

TEST_F(DateCalcTest, TheEndOfTheWeekAfterAMondayIsTheNextMonday) {
    EXPECT_EQ(boundary(EndOfWeek, on(2026, 5, 25)), "2026-06-01");
}

TEST_F(DateCalcTest, AWeekCriterionKeepsTheTimeOfDay) {
    const Date last = on(2026, 5, 20, 13);

    EXPECT_EQ(boundary(MiddleOfWeek, last), "2026-05-21 13:00:00");
    EXPECT_EQ(boundary(EndOfWeek, last), "2026-05-25 13:00:00");
}

TEST_F(DateCalcTest, AWeekMayCrossTheEndOfFebruary) {
    EXPECT_EQ(boundary(MiddleOfWeek, on(2028, 2, 26)), "2028-03-02");
    EXPECT_EQ(boundary(EndOfWeek, on(2028, 2, 26)), "2028-02-28");
    EXPECT_EQ(boundary(EndOfWeek, on(2100, 2, 26)), "2100-03-01");
    EXPECT_EQ(boundary(EndOfWeek, on(1900, 2, 26)), "1900-03-05");
}

TEST_F(DateCalcTest, AWeekMayCrossTheDayZero) {
    EXPECT_EQ(boundary(MiddleOfWeek, on(1899, 12, 29)), "1900-01-04");
    EXPECT_EQ(boundary(EndOfWeek, on(1899, 12, 29)), "1900-01-01");
}

// The month.

TEST_F(DateCalcTest, TheMiddleOfTheMonthAfterThe16thIsInTheNextMonth) {
    EXPECT_EQ(boundary(MiddleOfMonth, on(2026, 5, 16)), "2026-06-16");
}

TEST_F(DateCalcTest, TheMiddleOfTheMonthHasNoTimeOfDay) {
    EXPECT_EQ(boundary(MiddleOfMonth, on(2026, 5, 15, 23, 59, 59)), "2026-05-16");
    EXPECT_EQ(boundary(MiddleOfMonth, on(2026, 5, 16, 13)), "2026-06-16");
}

TEST_F(DateCalcTest, TheEndOfTheMonthAfterItsLastDayIsTheNextDay) {
    EXPECT_EQ(boundary(EndOfMonth, on(2028, 1, 31)), "2028-02-01");
    EXPECT_EQ(boundary(EndOfMonth, on(2026, 12, 31, 23, 59, 59)), "2027-01-01");
}

// The quarter.

TEST_F(DateCalcTest, TheMiddleOfTheQuarterAfterThatDayIsThatDay) {
    EXPECT_EQ(boundary(MiddleOfQuarter, on(2026, 5, 16)), "2026-05-16");
}

TEST_F(DateCalcTest, TheMiddleOfTheQuarterAfterTheNextDayIsInTheNextQuarter) {
    EXPECT_EQ(boundary(MiddleOfQuarter, on(2026, 5, 17)), "2026-08-16");
    EXPECT_EQ(boundary(MiddleOfQuarter, on(2026, 11, 17)), "2027-02-16");
}

TEST_F(DateCalcTest, TheMiddleOfTheQuarterAfterATimeOfThatDayIsInTheNextQuarter) {
    EXPECT_EQ(boundary(MiddleOfQuarter, on(2026, 5, 16, 13)), "2026-08-16");
}

TEST_F(DateCalcTest, TheFirstQuarterEndsOn1April) {
    EXPECT_EQ(boundary(EndOfQuarter, on(2026, 1, 1)), "2026-04-01");
    EXPECT_EQ(boundary(EndOfQuarter, on(2026, 3, 31)), "2026-04-01");
}

TEST_F(DateCalcTest, TheSecondQuarterEndsOn1October) {
    EXPECT_EQ(boundary(EndOfQuarter, on(2026, 4, 1)), "2026-10-01");
    EXPECT_EQ(boundary(EndOfQuarter, on(2026, 6, 30)), "2026-10-01");
}

TEST_F(DateCalcTest, TheThirdQuarterEndsOn1December) {
    EXPECT_EQ(boundary(EndOfQuarter, on(2026, 7, 1)), "2026-12-01");
    EXPECT_EQ(boundary(EndOfQuarter, on(2026, 9, 30)), "2026-12-01");
}

TEST_F(DateCalcTest, TheFourthQuarterEndsOn1January) {
    EXPECT_EQ(boundary(EndOfQuarter, on(2026, 10, 1)), "2027-01-01");
    EXPECT_EQ(boundary(EndOfQuarter, on(2026, 12, 31)), "2027-01-01");
}

// The half year and the year.

TEST_F(DateCalcTest, TheMiddleOfTheHalfYearAfterThatDayIsThatDay) {
    EXPECT_EQ(boundary(MiddleOfHalfYear, on(2026, 4, 1)), "2026-04-01");
    EXPECT_EQ(boundary(MiddleOfHalfYear, on(2026, 10, 1)), "2026-10-01");
}

TEST_F(DateCalcTest, TheMiddleOfTheHalfYearAfterATimeOfThatDayIsInTheNextOne) {
    EXPECT_EQ(boundary(MiddleOfHalfYear, on(2026, 4, 1, 0, 0, 1)), "2026-10-01");
    EXPECT_EQ(boundary(MiddleOfHalfYear, on(2026, 10, 1, 13)), "2027-04-01");
}

TEST_F(DateCalcTest, TheEndOfTheHalfYearIsTheFirstDayOfTheNext) {
    EXPECT_EQ(boundary(EndOfHalfYear, on(2026, 6, 30)), "2026-07-01");
    EXPECT_EQ(boundary(EndOfHalfYear, on(2026, 7, 1)), "2027-01-01");
}

TEST_F(DateCalcTest, TheMiddleOfTheYearAfterThatDayIsThatDay) {
    EXPECT_EQ(boundary(MiddleOfYear, on(2026, 7, 1)), "2026-07-01");
}

TEST_F(DateCalcTest, TheMiddleOfTheYearAfterATimeOfThatDayIsInTheNextYear) {
    EXPECT_EQ(boundary(MiddleOfYear, on(2026, 7, 1, 6)), "2027-07-01");
}

TEST_F(DateCalcTest, TheEndOfTheYearIsThe1stOfJanuary) {
    EXPECT_EQ(boundary(EndOfYear, on(2026, 1, 1)), "2027-01-01");
    EXPECT_EQ(boundary(EndOfYear, on(2026, 7, 15, 12)), "2027-01-01");
    EXPECT_EQ(boundary(EndOfYear, on(2026, 12, 31, 23, 59, 59)), "2027-01-01");
}

// The day that is today.

struct TodayCase {
    const char* name;
    enDateCalc criterion;
    CivilTime last;
    CivilTime today;
    const char* movedOn;
};

constexpr TodayCase todayCases[] = {
    {"MiddleOfWeek", MiddleOfWeek, {2026, 11, 11}, {2026, 11, 12}, "2026-11-13"},
    {"EndOfWeek", EndOfWeek, {2026, 11, 11}, {2026, 11, 16}, "2026-11-17"},
    {"MiddleOfMonth", MiddleOfMonth, {2026, 11, 16}, {2026, 12, 16}, "2027-01-16"},
    {"EndOfMonth", EndOfMonth, {2026, 11, 11}, {2026, 12, 1}, "2027-01-01"},
    {"MiddleOfQuarter", MiddleOfQuarter, {2026, 11, 16}, {2026, 11, 16}, "2027-02-16"},
    {"EndOfSecondQuarter", EndOfQuarter, {2026, 5, 20}, {2026, 10, 1}, "2027-01-01"},
    {"EndOfThirdQuarter", EndOfQuarter, {2026, 8, 16}, {2026, 12, 1}, "2027-03-01"},
    {"MiddleOfHalfYear", MiddleOfHalfYear, {2026, 8, 16}, {2026, 10, 1}, "2027-04-01"},
    {"EndOfHalfYear", EndOfHalfYear, {2026, 8, 16}, {2027, 1, 1}, "2027-07-01"},
    {"MiddleOfYear", MiddleOfYear, {2026, 5, 20}, {2026, 7, 1}, "2028-07-01"},
    {"MiddleOfYearAfter", MiddleOfYear, {2026, 8, 16}, {2027, 7, 1}, "2028-07-01"},
    {"EndOfYear", EndOfYear, {2026, 8, 16}, {2027, 1, 1}, "2029-07-01"}};

void PrintTo(const TodayCase& value, std::ostream* stream) {
    *stream << value.name;
}

class TodayDateCalcTest : public DateCalcTest, public testing::WithParamInterface<TodayCase> {
protected:
    TodayDateCalcTest() {
        machine.clock.set(GetParam().today);
        machine.clock.advanceSeconds(14 * 3600);
    }

    const std::string today = textOf(Date::fromCivil(GetParam().today));

    static std::string result(bool nextIfToday) {
        return boundary(GetParam().criterion, Date::fromCivil(GetParam().last), nextIfToday);
    }
};

TEST_P(TodayDateCalcTest, StaysUnlessTheNextIsWanted) {
    EXPECT_EQ(result(false), today);
}

TEST_P(TodayDateCalcTest, IsMovedOnIfTheNextIsWanted) {
    EXPECT_EQ(result(true), GetParam().movedOn);
}

TEST_P(TodayDateCalcTest, IsNotMovedOnADayEarlier) {
    machine.clock.advanceSeconds(-86'400);

    EXPECT_EQ(result(true), today);
}

INSTANTIATE_TEST_SUITE_P(Of, TodayDateCalcTest, testing::ValuesIn(todayCases),
                         [](const auto& testCase) { return std::string(testCase.param.name); });

// What cannot be calculated.

TEST_F(DateCalcTest, ANumberBeyondTheCalendarIsNotADate) {
    for (const double serial : {-657'435.0, 2'958'466.0, std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN()}) {
        for (int criterion = 0; criterion < 12; ++criterion) {
            expectWarning(notADate);

            EXPECT_EQ(DateCalc(criterionOf(criterion), Date(serial), false).serial(), 0.0);
        }
    }
}

TEST_F(DateCalcTest, TheFirstDayOfTheCalendarIsADate) {
    EXPECT_EQ(boundary(MiddleOfWeek, Date(-657'434.0)), "0100-01-07");
    EXPECT_EQ(boundary(EndOfYear, Date(-657'434.0)), "0101-01-01");
}

TEST_F(DateCalcTest, TheLastDayOfTheCalendarIsReached) {
    EXPECT_EQ(boundary(MiddleOfWeek, on(9999, 12, 29)), "9999-12-30");
    EXPECT_EQ(boundary(EndOfWeek, on(9999, 12, 26)), "9999-12-27");
    EXPECT_EQ(boundary(EndOfMonth, on(9999, 11, 30)), "9999-12-01");
    EXPECT_EQ(boundary(EndOfYear, on(9998, 12, 31)), "9999-01-01");
}

TEST_F(DateCalcTest, ANumberThatIsNoCriterionIsNamed) {
    for (const int number : {12, 255}) {
        expectWarning(notACriterion);

        EXPECT_EQ(DateCalc(criterionOf(number), on(2026, 5, 20), false).serial(), 0.0);
    }
}

TEST_F(DateCalcTest, TheDateIsLookedAtBeforeTheCriterion) {
    expectWarning(notADate);

    EXPECT_EQ(DateCalc(criterionOf(12), Date(2'958'466.0), false).serial(), 0.0);
}

TEST_F(DateCalcTest, ADayBeyondTheCalendarIsAnErrorOfItsRoutine) {
    const char* const routines[] = {"DayMid",      "WeekMid",    "MonthMid",    "QuarterMid",
                                    "HalfYearMid", "YearMid",    "DayMid",      "WeekEnd",
                                    "MonthEnd",    "QuarterEnd", "HalfYearEnd", "YearEnd"};
    for (int criterion = 0; criterion < 12; ++criterion) {
        expectError("5 (Invalid procedure call or argument)", routines[criterion]);

        DateCalc(criterionOf(criterion), on(9999, 12, 31), false);
    }
}

TEST_F(DateCalcTest, AnErrorBehindTheNoticeIsReported) {
    expectBox(notADate, MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation, MsgBoxAnswer::Ok,
              [] { raise(ErrorNumber::Overflow); });
    expectError("6 (Overflow)", "DateCalc");

    EXPECT_EQ(DateCalc(EndOfYear, Date(2'958'466.0), false).serial(), 0.0);
}

constexpr std::array<QuarterDay, 4> someDays{{{0, 2, 16}, {0, 5, 17}, {1, 8, 18}, {2, 11, 19}}};

TEST_F(DateCalcTest, AQuarterLeadsToItsDay) {
    EXPECT_EQ(textOf(DayOfQuarter("QuarterMid", 1, 2026, someDays)), "2026-02-16");
    EXPECT_EQ(textOf(DayOfQuarter("QuarterMid", 2, 2026, someDays)), "2026-05-17");
    EXPECT_EQ(textOf(DayOfQuarter("QuarterMid", 3, 2026, someDays)), "2027-08-18");
    EXPECT_EQ(textOf(DayOfQuarter("QuarterMid", 4, 2026, someDays)), "2028-11-19");
}

TEST_F(DateCalcTest, AQuarterThatNoYearHasIsNamedWithItsRoutine) {
    for (const char* routine : {"QuarterMid", "QuarterEnd", "HalfYearMid", "HalfYearEnd"}) {
        for (const int quarter : {0, 5, -1}) {
            expectWarning(std::string("Internal assertion failure in \"") + routine + "\"");

            EXPECT_EQ(DayOfQuarter(routine, quarter, 2026, someDays).serial(), 0.0);
        }
    }
}

} // namespace
} // namespace tarvik
