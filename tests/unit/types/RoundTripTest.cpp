#include "support/ErrorOf.h"
#include "types/Convert.h"
#include "types/LocaleForms.h"

#include <gtest/gtest.h>

#include <random>

namespace tarvik {
namespace {

/// What is written under a locale is read back under it.
class RoundTripTest : public testing::TestWithParam<LocaleForm> {
protected:
    const LocaleData& locale() const { return GetParam().data; }

    int below(int limit) { return static_cast<int>(source_() % static_cast<unsigned>(limit)); }

    CivilTime anyTime() {
        const int first = GetParam().fourDigitYear ? 100 : 1930;
        const int last = GetParam().fourDigitYear ? 9999 : 2029;
        return {.year = first + below(last - first + 1),
                .month = 1 + below(12),
                .day = 1 + below(28),
                .hour = below(24),
                .minute = below(60),
                .second = below(60)};
    }

    void expectBack(const CivilTime& civil) {
        const Date date = Date::fromCivil(civil);
        const std::string text = toText(date, locale());
        ASSERT_EQ(textToDate(text, locale()), date) << text;
    }

    void expectBack(std::int64_t scaled) {
        const std::string text = toText(Currency::fromScaled(scaled), locale());
        ASSERT_EQ(textToCurrency(text, locale()).scaled(), scaled) << text;
    }

    std::mt19937_64 source_{46342};
};

TEST_P(RoundTripTest, RandomDatesAndTimesComeBack) {
    for (int i = 0; i < 3000; ++i) {
        ASSERT_NO_FATAL_FAILURE(expectBack(anyTime()));
    }
}

TEST_P(RoundTripTest, RandomDatesWithoutTimeComeBack) {
    for (int i = 0; i < 1000; ++i) {
        CivilTime civil = anyTime();
        civil.hour = civil.minute = civil.second = 0;
        ASSERT_NO_FATAL_FAILURE(expectBack(civil));
    }
}

TEST_P(RoundTripTest, EdgesOfTheCalendarComeBack) {
    const int first = GetParam().fourDigitYear ? 100 : 1930;
    const int last = GetParam().fourDigitYear ? 9999 : 2029;
    for (const int year : {first, 1930, 1999, 2000, 2001, 2029, last}) {
        for (const int hour : {0, 1, 11, 12, 13, 23}) {
            ASSERT_NO_FATAL_FAILURE(expectBack({year, 1, 1, hour, 0, 0}));
            ASSERT_NO_FATAL_FAILURE(expectBack({year, 12, 31, hour, 59, 59}));
        }
    }
    ASSERT_NO_FATAL_FAILURE(expectBack({2000, 2, 29, 0, 0, 0}));
    ASSERT_NO_FATAL_FAILURE(expectBack({2000, 2, 29, 0, 0, 1}));
}

TEST_P(RoundTripTest, EveryMonthComesBack) {
    for (int month = 1; month <= 12; ++month) {
        ASSERT_NO_FATAL_FAILURE(expectBack({2026, month, 3, 18, 4, 9}));
    }
}

TEST_P(RoundTripTest, ATextWithOtherBlanksAroundItComesBack) {
    const Date date = Date::fromCivil({2026, 11, 16, 18, 4, 9});
    EXPECT_EQ(textToDate("  " + toText(date, locale()) + " ", locale()), date);
}

TEST_P(RoundTripTest, RandomAmountsComeBack) {
    for (int i = 0; i < 3000; ++i) {
        const auto wide = static_cast<std::int64_t>(source_());
        ASSERT_NO_FATAL_FAILURE(expectBack(wide));
        ASSERT_NO_FATAL_FAILURE(expectBack(wide >> below(63)));
    }
}

TEST_P(RoundTripTest, EdgesOfAmountsComeBack) {
    constexpr std::int64_t largestAmount = 9'223'372'036'854'775'807;
    for (const std::int64_t scaled :
         {std::int64_t{0}, std::int64_t{1}, std::int64_t{-1}, std::int64_t{9'999},
          std::int64_t{10'000}, largestAmount, -largestAmount, -largestAmount - 1}) {
        ASSERT_NO_FATAL_FAILURE(expectBack(scaled));
    }
}

TEST_P(RoundTripTest, GroupedWholeAmountsComeBack) {
    for (int i = 0; i < 1000; ++i) {
        const auto whole = static_cast<std::int64_t>(source_() >> 20U);
        const std::string text = formatGrouped(static_cast<double>(whole), 0, locale());
        ASSERT_EQ(textToCurrency(text, locale()).integralPart(), whole) << text;
    }
}

TEST_P(RoundTripTest, RandomTextsAreReadOrRefusedAndNothingElse) {
    const std::string pieces[] = {"1",  "12",   "2026", "999999", ".",   ":",  "/",
                                  "-",  " ",    ",",    "E",      "May", "PM", "'",
                                  "\0", "\xC2", "\xA0", "\xFF",   "jan"};
    for (int i = 0; i < 5000; ++i) {
        std::string text;
        for (int length = below(12); length > 0; --length) {
            text += pieces[below(static_cast<int>(std::size(pieces)))];
        }
        const int dateError = errorOf([&] { return textToDate(text, locale()).civil(); });
        const int numberError = errorOf([&] { return textToCurrency(text, locale()); });
        ASSERT_TRUE(dateError == 0 || dateError == 13) << text << ' ' << dateError;
        ASSERT_TRUE(numberError == 0 || numberError == 13 || numberError == 6) << text;
    }
}

std::string nameOf(const testing::TestParamInfo<LocaleForm>& info) {
    std::string name;
    for (const char character : info.param.name) {
        name += character == ' ' || character == '-' ? '_' : character;
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(AllForms, RoundTripTest, testing::ValuesIn(localeForms()), nameOf);

} // namespace
} // namespace tarvik
