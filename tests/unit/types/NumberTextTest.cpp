#include "support/ErrorOf.h"
#include "types/Convert.h"
#include "types/LocaleForms.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

constexpr std::int64_t largestScaled = 9'223'372'036'854'775'807;
constexpr std::int64_t smallestScaled = -largestScaled - 1;

std::string textOf(std::int64_t scaled, const LocaleData& locale = {}) {
    return toText(Currency::fromScaled(scaled), locale);
}

std::int64_t scaledOf(std::string_view text, const LocaleData& locale = {}) {
    return textToCurrency(text, locale).scaled();
}

int errorOfNumber(std::string_view text, const LocaleData& locale = {}) {
    return errorOf([&] { return textToCurrency(text, locale); });
}

TEST(NumberTextTest, WholeNumbersHaveNoSeparators) {
    EXPECT_EQ(wholeToText(1'234'567), "1234567");
    EXPECT_EQ(wholeToText(smallestScaled), "-9223372036854775808");
    EXPECT_EQ(toText(Long(-2'147'483'647 - 1)), "-2147483648");
    EXPECT_EQ(toText(Long(0)), "0");
}

TEST(NumberTextTest, CurrencyIsWrittenWithoutTrailingZeros) {
    EXPECT_EQ(textOf(0), "0");
    EXPECT_EQ(textOf(10'000), "1");
    EXPECT_EQ(textOf(12'345'000), "1234.5");
    EXPECT_EQ(textOf(1), "0.0001");
    EXPECT_EQ(textOf(100), "0.01");
    EXPECT_EQ(textOf(-1), "-0.0001");
    EXPECT_EQ(textOf(100'000'000), "10000");
}

TEST(NumberTextTest, CurrencyIsWrittenWithTheDecimalSeparatorOfTheLocale) {
    EXPECT_EQ(textOf(-12'345'000, germanForm()), "-1234,5");
}

TEST(NumberTextTest, TheEndsOfTheRangeAreWrittenExactly) {
    EXPECT_EQ(textOf(largestScaled), "922337203685477.5807");
    EXPECT_EQ(textOf(smallestScaled), "-922337203685477.5808");
}

TEST(NumberTextTest, TheEndsOfTheRangeAreReadExactly) {
    EXPECT_EQ(scaledOf("922337203685477.5807"), largestScaled);
    EXPECT_EQ(scaledOf("-922337203685477.5808"), smallestScaled);
    EXPECT_EQ(scaledOf("922337203685477.58074"), largestScaled);
    EXPECT_EQ(scaledOf("922,337,203,685,477.5807"), largestScaled);
}

TEST(NumberTextTest, ANumberBeyondTheRangeRaisesOverflow) {
    EXPECT_EQ(errorOfNumber("922337203685477.5808"), 6);
    EXPECT_EQ(errorOfNumber("922337203685477.58075"), 6);
    EXPECT_EQ(errorOfNumber("-922337203685477.5809"), 6);
    EXPECT_EQ(errorOfNumber("1000000000000000"), 6);
    EXPECT_EQ(errorOfNumber("99999999999999999999999999"), 6);
    EXPECT_EQ(errorOfNumber("1E15"), 6);
    EXPECT_EQ(errorOfNumber("1E99999999999999999999"), 6);
    EXPECT_EQ(errorOfNumber(std::string(100'000, '9')), 6);
}

TEST(NumberTextTest, MoreThanFourDecimalsAreRoundedTiesToEven) {
    EXPECT_EQ(scaledOf("0.00004999"), 0);
    EXPECT_EQ(scaledOf("0.00005"), 0);
    EXPECT_EQ(scaledOf("0.000050"), 0);
    EXPECT_EQ(scaledOf("0.00005000000000000000000000001"), 1);
    EXPECT_EQ(scaledOf("0.00015"), 2);
    EXPECT_EQ(scaledOf("0.00025"), 2);
    EXPECT_EQ(scaledOf("-0.00015"), -2);
    EXPECT_EQ(scaledOf("0.99996"), 10'000);
}

TEST(NumberTextTest, ASignMayStandBeforeOrBehind) {
    EXPECT_EQ(scaledOf("-5"), -50'000);
    EXPECT_EQ(scaledOf("+5"), 50'000);
    EXPECT_EQ(scaledOf("5-"), -50'000);
    EXPECT_EQ(scaledOf("5+"), 50'000);
    EXPECT_EQ(scaledOf("- 5"), -50'000);
    EXPECT_EQ(scaledOf("5 -"), -50'000);
    EXPECT_EQ(errorOfNumber("-5-"), 13);
    EXPECT_EQ(errorOfNumber("--5"), 13);
}

TEST(NumberTextTest, BlanksAroundANumberAreSkipped) {
    EXPECT_EQ(scaledOf(" \t5 \t"), 50'000);
    EXPECT_EQ(scaledOf("\xC2\xA0"
                       "5\xE2\x80\xAF"),
              50'000);
}

TEST(NumberTextTest, EitherSideOfTheDecimalSeparatorMayBeMissing) {
    EXPECT_EQ(scaledOf(".5"), 5'000);
    EXPECT_EQ(scaledOf("5."), 50'000);
    EXPECT_EQ(errorOfNumber("."), 13);
    EXPECT_EQ(errorOfNumber("1.2.3"), 13);
}

TEST(NumberTextTest, AnExponentShiftsTheDecimalSeparator) {
    EXPECT_EQ(scaledOf("1.5E3"), 15'000'000);
    EXPECT_EQ(scaledOf("15e+2"), 15'000'000);
    EXPECT_EQ(scaledOf("12345E-4"), 12'345);
    EXPECT_EQ(scaledOf("5E-5"), 0);
    EXPECT_EQ(scaledOf("6E-5"), 1);
    EXPECT_EQ(scaledOf("1E-400"), 0);
    EXPECT_EQ(scaledOf("0E99999"), 0);
    EXPECT_EQ(scaledOf("1E3-"), -10'000'000);
    EXPECT_EQ(errorOfNumber("1E"), 13);
    EXPECT_EQ(errorOfNumber("1E+-5"), 13);
    EXPECT_EQ(errorOfNumber("1E--5"), 13);
    EXPECT_EQ(errorOfNumber("E5"), 13);
}

TEST(NumberTextTest, ThousandsSeparatorsOfTheLocaleAreSkippedInTheWholePart) {
    EXPECT_EQ(scaledOf("1,234,567.5"), 12'345'675'000);
    EXPECT_EQ(scaledOf("1.234.567,5", germanForm()), 12'345'675'000);
    EXPECT_EQ(scaledOf("1'234'567.5", swissForm()), 12'345'675'000);
    EXPECT_EQ(errorOfNumber("1.5,5"), 13);
    EXPECT_EQ(errorOfNumber(",5"), 13);
    EXPECT_EQ(errorOfNumber("5,"), 13);
    EXPECT_EQ(errorOfNumber("1,,5"), 13);
}

TEST(NumberTextTest, WhereGroupsAreSetApartByABlankEveryBlankCounts) {
    for (const LocaleData& locale : {swedishForm(), frenchForm()}) {
        EXPECT_EQ(scaledOf("1 234 567,5", locale), 12'345'675'000);
        EXPECT_EQ(scaledOf("1\xC2\xA0"
                           "234\xC2\xA0"
                           "567,5",
                           locale),
                  12'345'675'000);
        EXPECT_EQ(scaledOf("1\xE2\x80\xAF"
                           "234\xE2\x80\xAF"
                           "567,5",
                           locale),
                  12'345'675'000);
    }
}

TEST(NumberTextTest, WhereGroupsAreNotSetApartByABlankNoBlankCounts) {
    EXPECT_EQ(errorOfNumber("1 234"), 13);
    EXPECT_EQ(errorOfNumber("1\xC2\xA0"
                            "234",
                            germanForm()),
              13);
}

TEST(NumberTextTest, SeparatorsMayBeAnyTexts) {
    const LocaleData locale{.decimalSeparator = "<d>", .thousandsSeparator = "<k>"};
    EXPECT_EQ(textOf(12'345'000, locale), "1234<d>5");
    EXPECT_EQ(scaledOf("1<k>234<d>5", locale), 12'345'000);
    EXPECT_EQ(formatGrouped(1234.5, 2, locale), "1<k>234<d>50");
}

TEST(NumberTextTest, SeparatorsMayBeMissingOrEqual) {
    EXPECT_EQ(scaledOf("1234.5", LocaleData{.thousandsSeparator = ""}), 12'345'000);
    EXPECT_EQ(scaledOf("1234.5", LocaleData{.thousandsSeparator = "."}), 12'345'000);
    EXPECT_EQ(scaledOf("1,234", LocaleData{.decimalSeparator = ""}), 12'340'000);
}

TEST(NumberTextTest, WhatIsNoNumberRaisesTypeMismatch) {
    for (const std::string_view text : {"", " ", "abc", "-", "+", "5x", "x5", "0x10", "1/2", "NaN",
                                        "Inf", "5 5", "\xFF", "\xA0"}) {
        EXPECT_EQ(errorOfNumber(text), 13) << text;
    }
    EXPECT_EQ(errorOfNumber(std::string_view("5\0", 2)), 13);
}

TEST(NumberTextTest, DigitsAreGroupedInThrees) {
    const LocaleData locale;
    EXPECT_EQ(formatGrouped(0, 0, locale), "0");
    EXPECT_EQ(formatGrouped(999, 0, locale), "999");
    EXPECT_EQ(formatGrouped(1000, 0, locale), "1,000");
    EXPECT_EQ(formatGrouped(1'234'567, 0, locale), "1,234,567");
    EXPECT_EQ(formatGrouped(0, 2, locale), "0.00");
    EXPECT_EQ(formatGrouped(1234.5, 2, locale), "1,234.50");
    EXPECT_EQ(formatGrouped(1234.5, 2, germanForm()), "1.234,50");
    EXPECT_EQ(formatGrouped(1234567, 0, swissForm()), "1'234'567");
    EXPECT_EQ(formatGrouped(1234.5, 2, frenchForm()), "1\xE2\x80\xAF"
                                                      "234,50");
}

TEST(NumberTextTest, GroupedHalvesAreRoundedAwayFromZero) {
    const LocaleData locale;
    EXPECT_EQ(formatGrouped(0.5, 0, locale), "1");
    EXPECT_EQ(formatGrouped(1.5, 0, locale), "2");
    EXPECT_EQ(formatGrouped(2.5, 0, locale), "3");
    EXPECT_EQ(formatGrouped(0.125, 2, locale), "0.13");
    EXPECT_EQ(formatGrouped(0.375, 2, locale), "0.38");
    EXPECT_EQ(formatGrouped(-0.125, 2, locale), "-0.13");
    EXPECT_EQ(formatGrouped(0.49999999999999994, 0, locale), "0");
    EXPECT_EQ(formatGrouped(999.995, 2, locale), "1,000.00");
    EXPECT_EQ(formatGrouped(999'999.5, 0, locale), "1,000,000");
}

TEST(NumberTextTest, GroupedNegativesHaveAMinusUnlessTheyShowAsZero) {
    const LocaleData locale;
    EXPECT_EQ(formatGrouped(-1234.5, 2, locale), "-1,234.50");
    EXPECT_EQ(formatGrouped(-0.001, 2, locale), "0.00");
    EXPECT_EQ(formatGrouped(-0.0, 0, locale), "0");
}

TEST(NumberTextTest, HugeAndTinyValuesAreGroupedToo) {
    const LocaleData locale;
    EXPECT_EQ(formatGrouped(922'337'203'685'477.5, 2, locale), "922,337,203,685,477.50");
    EXPECT_EQ(formatGrouped(1e21, 0, locale), "1,000,000,000,000,000,000,000");
    EXPECT_EQ(formatGrouped(5e-324, 2, locale), "0.00");
    EXPECT_EQ(formatGrouped(1.7976931348623157e308, 0, locale).substr(0, 12), "179,769,313,");
    EXPECT_EQ(formatGrouped(1.7976931348623157e308, 0, locale).size(), 309U + 102U);
}

TEST(NumberTextTest, WhatIsNoNumberHasATextToo) {
    const LocaleData locale;
    EXPECT_EQ(formatGrouped(std::numeric_limits<double>::quiet_NaN(), 2, locale), "NaN");
    EXPECT_EQ(formatGrouped(std::numeric_limits<double>::infinity(), 2, locale), "Inf");
    EXPECT_EQ(formatGrouped(-std::numeric_limits<double>::infinity(), 2, locale), "-Inf");
}

TEST(NumberTextTest, DecimalsStayWithinTheirRange) {
    const LocaleData locale;
    EXPECT_EQ(formatGrouped(1.5, -3, locale), "2");
    EXPECT_EQ(formatGrouped(1.5, 1000, locale), "1.50000000000000000000");
}

TEST(NumberTextTest, ZerosFillUpToTheWantedDigits) {
    EXPECT_EQ(zeroPadded(4, 3), "004");
    EXPECT_EQ(zeroPadded(4, 2), "04");
    EXPECT_EQ(zeroPadded(12, 2), "12");
    EXPECT_EQ(zeroPadded(12, 3), "012");
    EXPECT_EQ(zeroPadded(-4, 2), "-04");
    EXPECT_EQ(zeroPadded(-12, 2), "-12");
    EXPECT_EQ(zeroPadded(1234, 2), "1234");
    EXPECT_EQ(zeroPadded(-4, 3), "-004");
    EXPECT_EQ(zeroPadded(0, 0), "0");
    EXPECT_EQ(zeroPadded(7, -5), "7");
    EXPECT_EQ(zeroPadded(smallestScaled, 2), "-9223372036854775808");
}

} // namespace
} // namespace tarvik
