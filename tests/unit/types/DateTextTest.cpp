#include "support/ErrorOf.h"
#include "types/Convert.h"
#include "types/LocaleForms.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

Date at(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return Date::fromCivil({year, month, day, hour, minute, second});
}

Date timeAt(int hour, int minute, int second) {
    return at(1899, 12, 30, hour, minute, second);
}

const Date evening = at(2026, 5, 3, 18, 4, 9);

CivilTime readIn(const LocaleData& locale, std::string_view text) {
    return textToDate(text, locale).civil();
}

int errorOfDate(std::string_view text, const LocaleData& locale = {}) {
    return errorOf([&] { return textToDate(text, locale); });
}

TEST(DateTextTest, FollowsThePatternsOfTheLocale) {
    EXPECT_EQ(toText(evening, germanForm()), "03.05.2026 18:04:09");
    EXPECT_EQ(toText(evening, americanForm()), "5/3/2026 6:04:09 PM");
    EXPECT_EQ(toText(evening, swedishForm()), "2026-05-03 18:04:09");
    EXPECT_EQ(toText(evening, finnishForm()), "3.5.2026 18.04.09");
    EXPECT_EQ(toText(evening, englishMonthForm()), "3-May-2026 18:04:09");
    EXPECT_EQ(toText(evening, wordyForm()), "3. května de'l 2026 r. 18 h 04 min 09");
    EXPECT_EQ(toText(evening, koreanForm()), "2026. 5. 3. 오후 6:04:09");
    EXPECT_EQ(toText(evening, twoDigitYearForm()), "03.05.26 18:04:09");
    EXPECT_EQ(toText(evening, bareForm()), "20260503 180409");
}

TEST(DateTextTest, TheHalfDayRunsFromTwelveToEleven) {
    EXPECT_EQ(longTimeText(timeAt(0, 0, 0), americanForm()), "12:00:00 AM");
    EXPECT_EQ(longTimeText(timeAt(0, 59, 59), americanForm()), "12:59:59 AM");
    EXPECT_EQ(longTimeText(timeAt(11, 0, 0), americanForm()), "11:00:00 AM");
    EXPECT_EQ(longTimeText(timeAt(12, 0, 0), americanForm()), "12:00:00 PM");
    EXPECT_EQ(longTimeText(timeAt(13, 0, 0), americanForm()), "1:00:00 PM");
    EXPECT_EQ(longTimeText(timeAt(23, 0, 0), americanForm()), "11:00:00 PM");
}

TEST(DateTextTest, MidnightIsWrittenAsTheDateAlone) {
    EXPECT_EQ(toText(at(2026, 5, 3), germanForm()), "03.05.2026");
}

TEST(DateTextTest, DayZeroIsWrittenAsTheTimeAlone) {
    EXPECT_EQ(toText(timeAt(18, 4, 9), germanForm()), "18:04:09");
    EXPECT_EQ(toText(Date(), germanForm()), "00:00:00");
}

TEST(DateTextTest, DateAndTimeAreWrittenByThemselvesToo) {
    EXPECT_EQ(shortDateText(evening, germanForm()), "03.05.2026");
    EXPECT_EQ(longTimeText(evening, germanForm()), "18:04:09");
}

TEST(DateTextTest, EarlyYearsAreFilledWithZeros) {
    EXPECT_EQ(shortDateText(at(100, 1, 2), germanForm()), "02.01.0100");
    EXPECT_EQ(shortDateText(at(100, 1, 2), bareForm()), "01000102");
}

TEST(DateTextTest, RoundingIntoTheNextDayShowsInTheDate) {
    EXPECT_EQ(toText(Date(46342.999999), germanForm()), "17.11.2026");
}

TEST(DateTextTest, QuotesKeepPatternLettersAsText) {
    LocaleData locale;
    locale.shortDate = "'d'd''M'M'yyyy";
    EXPECT_EQ(shortDateText(evening, locale), "d3'5M2026");
    locale.shortDate = "dd.MM.yyyy' d";
    EXPECT_EQ(shortDateText(evening, locale), "03.05.2026 d");
}

TEST(DateTextTest, TheDefaultDateIsThe1stOfJanuary2001InEveryLocale) {
    for (const LocaleForm& form : localeForms()) {
        EXPECT_EQ(readIn(form.data, "01.01.01"), (CivilTime{2001, 1, 1, 0, 0, 0})) << form.name;
    }
}

TEST(DateTextTest, FieldsStandInTheOrderOfTheLocale) {
    EXPECT_EQ(readIn(germanForm(), "3/5/2026"), (CivilTime{2026, 5, 3, 0, 0, 0}));
    EXPECT_EQ(readIn(americanForm(), "5.3.2026"), (CivilTime{2026, 5, 3, 0, 0, 0}));
    EXPECT_EQ(readIn(swedishForm(), "26 5 3"), (CivilTime{2026, 5, 3, 0, 0, 0}));
}

TEST(DateTextTest, AFirstFieldOfFourDigitsIsTheYearEverywhere) {
    for (const LocaleForm& form : localeForms()) {
        EXPECT_EQ(readIn(form.data, "2026-5-3 18:04"), (CivilTime{2026, 5, 3, 18, 4, 0}))
            << form.name;
    }
}

TEST(DateTextTest, TwoDigitYearsRunFrom1930To2029) {
    EXPECT_EQ(readIn(germanForm(), "1.1.29").year, 2029);
    EXPECT_EQ(readIn(germanForm(), "1.1.30").year, 1930);
    EXPECT_EQ(readIn(germanForm(), "1.1.99").year, 1999);
    EXPECT_EQ(readIn(germanForm(), "1.1.00").year, 2000);
    EXPECT_EQ(readIn(swedishForm(), "30/1/1").year, 1930);
}

TEST(DateTextTest, AYearOfFourDigitsIsTakenWhereTwoAreWritten) {
    EXPECT_EQ(readIn(twoDigitYearForm(), "03.05.1926"), (CivilTime{1926, 5, 3, 0, 0, 0}));
}

TEST(DateTextTest, TimeAndDateMayStandInEitherOrder) {
    EXPECT_EQ(readIn(germanForm(), "18:04:09 3.5.2026"), evening.civil());
    EXPECT_EQ(readIn(finnishForm(), "18.04.09 3.5.2026"), evening.civil());
    EXPECT_EQ(readIn(americanForm(), "6:04:09 PM 5/3/2026"), evening.civil());
}

TEST(DateTextTest, SecondsMayBeMissing) {
    EXPECT_EQ(readIn(germanForm(), "18:04"), (CivilTime{1899, 12, 30, 18, 4, 0}));
}

TEST(DateTextTest, ATimeAloneIsOnDayZero) {
    EXPECT_EQ(textToDate("18:00:00", germanForm()).serial(), 0.75);
    EXPECT_EQ(textToDate("18.00.00", finnishForm()).serial(), 0.75);
}

TEST(DateTextTest, WhatCanBeADateAndATimeIsADate) {
    EXPECT_EQ(readIn(danishForm(), "10.12.26"), (CivilTime{2026, 12, 10, 0, 0, 0}));
    EXPECT_EQ(readIn(danishForm(), "10.13.26"), (CivilTime{1899, 12, 30, 10, 13, 26}));
}

TEST(DateTextTest, HalfDayTextsAreReadInAnyCase) {
    EXPECT_EQ(readIn(americanForm(), "5/3/2026 6:04:09 pm"), evening.civil());
    EXPECT_EQ(readIn(americanForm(), "6:04:09PM 5/3/2026"), evening.civil());
    EXPECT_EQ(readIn(koreanForm(), "2026-5-3 6:04:09 오후"), evening.civil());
    EXPECT_EQ(readIn(koreanForm(), "2026-5-3 6:04:09 PM"), evening.civil());
    EXPECT_EQ(readIn(americanForm(), "12:00:00 AM"), (CivilTime{1899, 12, 30, 0, 0, 0}));
}

TEST(DateTextTest, TheFirstHourOfEachHalfDayIsReadInAnyOrder) {
    EXPECT_EQ(readIn(americanForm(), "1:30:00 AM 5/3/2026"), (CivilTime{2026, 5, 3, 1, 30, 0}));
    EXPECT_EQ(readIn(americanForm(), "1:30:00 PM 5/3/2026"), (CivilTime{2026, 5, 3, 13, 30, 0}));
    EXPECT_EQ(readIn(americanForm(), "12:30:00 AM 5/3/2026"), (CivilTime{2026, 5, 3, 0, 30, 0}));
    EXPECT_EQ(readIn(americanForm(), "12:30:00 PM 5/3/2026"), (CivilTime{2026, 5, 3, 12, 30, 0}));
}

TEST(DateTextTest, AYearMayHaveFourDigitsBeforeALetterOfThePattern) {
    LocaleData locale;
    locale.shortDate = "d/M/yy'y'";
    EXPECT_EQ(readIn(locale, "3/5/2026y"), (CivilTime{2026, 5, 3, 0, 0, 0}));
    EXPECT_EQ(readIn(locale, "3/5/26y"), (CivilTime{2026, 5, 3, 0, 0, 0}));
}

TEST(DateTextTest, BlanksOfAnyKindSeparateFields) {
    EXPECT_EQ(readIn(americanForm(), "5/3/2026 6:04:09\xE2\x80\xAFPM"), evening.civil());
    EXPECT_EQ(readIn(americanForm(), "  5/3/2026\t6:04:09\xC2\xA0PM "), evening.civil());
}

TEST(DateTextTest, MonthNamesAreReadInAnyCaseAndOrder) {
    const CivilTime day{2026, 5, 3, 0, 0, 0};
    EXPECT_EQ(readIn(germanForm(), "3. MAY 2026"), day);
    EXPECT_EQ(readIn(germanForm(), "may 3, 2026"), day);
    EXPECT_EQ(readIn(swedishForm(), "2026 May 3"), day);
    EXPECT_EQ(readIn(americanForm(), "3-may-26"), day);
    EXPECT_EQ(readIn(germanForm(), "3 January 2026").month, 1);
    EXPECT_EQ(readIn(germanForm(), "3 jan 2026").month, 1);
}

TEST(DateTextTest, OfTwoMonthNamesTheLongerIsMeant) {
    EXPECT_EQ(readIn(wordyForm(), "3. června de'l 2026 r.").month, 6);
    EXPECT_EQ(readIn(wordyForm(), "3. červnavce de'l 2026 r.").month, 7);
}

TEST(DateTextTest, WhatIsNoDateRaisesTypeMismatch) {
    for (const std::string_view text :
         {"",           " ",         "abc",        "1",         "1.1",       "1.1.1.1",
          "29.2.2026",  "31.4.2026", "0.1.2026",   "1.13.2026", "1.1.20265", "111.1.2026",
          "1.111.2026", "24:00",     "12:60",      "12:00:60",  "1:2:3:4",   ":12",
          "12:",        "12::30",    "12:30:",     "12",        "PM",        "1.1.2026 PM",
          "13:00 PM",   "0:30 AM",   "6:00 PM PM", "1.1.0099",  "May",       "May May 2026",
          "3 May May",  "1.1.2026x", "1_1_2026",   "-",         "...",       "1.1.2026 12",
          "\xFF",       "\xE2\x80"}) {
        EXPECT_EQ(errorOfDate(text), 13) << text;
    }
    EXPECT_EQ(errorOfDate(std::string_view("1.1.2026\0", 9)), 13);
    EXPECT_EQ(errorOfDate(std::string(100'000, '1')), 13);
    EXPECT_EQ(errorOfDate(std::string(100'000, '.')), 13);
}

TEST(DateTextTest, EmptyPatternsAndNamesDoNoHarm) {
    LocaleData locale;
    locale.shortDate = "";
    locale.longTime = "";
    locale.amText = "";
    locale.pmText = "";
    locale.shortMonths.fill("");
    locale.longMonths.fill("");
    EXPECT_EQ(toText(evening, locale), " ");
    EXPECT_EQ(readIn(locale, "3.5.2026"), (CivilTime{2026, 5, 3, 0, 0, 0}));
    EXPECT_EQ(errorOfDate("May", locale), 13);
}

} // namespace
} // namespace tarvik
