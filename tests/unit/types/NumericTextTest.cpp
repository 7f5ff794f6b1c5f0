#include "support/ErrorOf.h"
#include "types/Convert.h"
#include "types/LocaleForms.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

constexpr int overflow = 6;
constexpr int typeMismatch = 13;

struct Conventions {
    const char* name;
    LocaleData (*data)();
};

constexpr Conventions american{"American", americanForm};
constexpr Conventions german{"German", germanForm};
constexpr Conventions swedish{"Swedish", swedishForm};

struct NumberCase {
    Conventions conventions;
    const char* text;
    std::int32_t number;
};

struct OtherCase {
    Conventions conventions;
    const char* text;
};

std::int32_t longOf(std::string_view text, const LocaleData& locale = {}) {
    return textToLong(text, locale).value();
}

int errorOfNumeric(std::string_view text, const LocaleData& locale = {}) {
    return errorOf([&] { return textToLong(text, locale); });
}

bool isNumber(std::string_view text) {
    return isNumeric(text, LocaleData{});
}

template <class Case>
std::string readable(const Case& given) {
    return std::string(given.conventions.name) + " \"" + given.text + "\"";
}

void PrintTo(const NumberCase& given, std::ostream* out) {
    *out << readable(given);
}

void PrintTo(const OtherCase& given, std::ostream* out) {
    *out << readable(given);
}

class NumberFormTest : public testing::TestWithParam<NumberCase> {
protected:
    LocaleData locale = GetParam().conventions.data();
};

TEST_P(NumberFormTest, IsNumeric) {
    EXPECT_TRUE(isNumeric(GetParam().text, locale));
}

TEST_P(NumberFormTest, IsReadAsAWholeNumber) {
    EXPECT_EQ(longOf(GetParam().text, locale), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(
    American, NumberFormTest,
    testing::Values(NumberCase{american, "0", 0}, NumberCase{american, "007", 7},
                    NumberCase{american, "-5", -5}, NumberCase{american, "+5", 5},
                    NumberCase{american, "5-", -5}, NumberCase{american, "5+", 5},
                    NumberCase{american, "- 5", -5}, NumberCase{american, "5 -", -5},
                    NumberCase{american, "  5 ", 5}, NumberCase{american, "\t5\t", 5},
                    NumberCase{american, "3.25", 3}, NumberCase{american, ".75", 1},
                    NumberCase{american, "5.", 5}, NumberCase{american, "1,234,567", 1'234'567},
                    NumberCase{american, "1,234.5", 1234}, NumberCase{american, "1E3", 1000},
                    NumberCase{american, "1e+3", 1000}, NumberCase{american, "-1.5E3", -1500},
                    NumberCase{american, "25000E-4", 2}, NumberCase{american, "1E-400", 0},
                    NumberCase{american, "0E999999", 0}));

INSTANTIATE_TEST_SUITE_P(German, NumberFormTest,
                         testing::Values(NumberCase{german, "3,25", 3},
                                         NumberCase{german, ",75", 1}, NumberCase{german, "5,", 5},
                                         NumberCase{german, "1.234.567", 1'234'567},
                                         NumberCase{german, "1.234,75", 1235},
                                         NumberCase{german, "-1,5E3", -1500},
                                         NumberCase{german, "5-", -5}));

INSTANTIATE_TEST_SUITE_P(Swedish, NumberFormTest,
                         testing::Values(NumberCase{swedish, "3,25", 3},
                                         NumberCase{swedish, "1 234 567", 1'234'567},
                                         NumberCase{swedish,
                                                    "1\xC2\xA0"
                                                    "234\xC2\xA0"
                                                    "567",
                                                    1'234'567},
                                         NumberCase{swedish,
                                                    "1\xE2\x80\xAF"
                                                    "234,75",
                                                    1235},
                                         NumberCase{swedish, "-1 234", -1234}));

class OtherTextTest : public testing::TestWithParam<OtherCase> {
protected:
    LocaleData locale = GetParam().conventions.data();
};

TEST_P(OtherTextTest, IsNotNumeric) {
    EXPECT_FALSE(isNumeric(GetParam().text, locale));
}

TEST_P(OtherTextTest, IsATypeMismatchAsAWholeNumber) {
    EXPECT_EQ(errorOfNumeric(GetParam().text, locale), typeMismatch);
}

INSTANTIATE_TEST_SUITE_P(
    American, OtherTextTest,
    testing::Values(
        OtherCase{american, ""}, OtherCase{american, " "}, OtherCase{american, " \t "},
        OtherCase{american, "-"}, OtherCase{american, "+"}, OtherCase{american, "- "},
        OtherCase{american, "."}, OtherCase{american, ","}, OtherCase{american, "-."},
        OtherCase{american, "--5"}, OtherCase{american, "-5-"}, OtherCase{american, "+5-"},
        OtherCase{american, "5--"}, OtherCase{american, "a"}, OtherCase{american, "5x"},
        OtherCase{american, "x5"}, OtherCase{american, "5 x"}, OtherCase{american, "1 2"},
        OtherCase{american, "1.2.3"}, OtherCase{american, "1,,2"}, OtherCase{american, "5,"},
        OtherCase{american, ",5"}, OtherCase{american, "1.5,5"}, OtherCase{american, "E5"},
        OtherCase{american, "1E"}, OtherCase{american, "1E+"}, OtherCase{american, "1E1.5"},
        OtherCase{american, "1E2E3"}, OtherCase{american, "0x10"}, OtherCase{american, "1/2"},
        OtherCase{american, "5%"}, OtherCase{american, "NaN"}, OtherCase{american, "Inf"}));

INSTANTIATE_TEST_SUITE_P(German, OtherTextTest,
                         testing::Values(OtherCase{german, ","}, OtherCase{german, "."},
                                         OtherCase{german, "1,2,3"}, OtherCase{german, "1,5.5"},
                                         OtherCase{german, ".5"}, OtherCase{german, "5."},
                                         OtherCase{german, "1 234"}));

INSTANTIATE_TEST_SUITE_P(Swedish, OtherTextTest,
                         testing::Values(OtherCase{swedish, ","}, OtherCase{swedish, "\xC2\xA0"},
                                         OtherCase{swedish, "3.25"}, OtherCase{swedish, ".5"},
                                         OtherCase{swedish, "1  234"},
                                         OtherCase{swedish, "1,5 5"}));

TEST(NumericTextTest, TheSameTextIsAnotherNumberElsewhere) {
    EXPECT_EQ(longOf("1.234", americanForm()), 1);
    EXPECT_EQ(longOf("1.234", germanForm()), 1234);
    EXPECT_EQ(longOf("1,234", americanForm()), 1234);
    EXPECT_EQ(longOf("1,234", germanForm()), 1);
    EXPECT_EQ(longOf("1,234", swedishForm()), 1);
}

TEST(NumericTextTest, HalvesGoToTheEvenNumber) {
    EXPECT_EQ(longOf("12.5"), 12);
    EXPECT_EQ(longOf("13.5"), 14);
    EXPECT_EQ(longOf("0.5"), 0);
    EXPECT_EQ(longOf("1.5"), 2);
    EXPECT_EQ(longOf("-12.5"), -12);
    EXPECT_EQ(longOf("-13.5"), -14);
    EXPECT_EQ(longOf("125E-1"), 12);
}

TEST(NumericTextTest, AnythingBeyondAHalfGoesUp) {
    EXPECT_EQ(longOf("12.51"), 13);
    EXPECT_EQ(longOf("12.50001"), 13);
    EXPECT_EQ(longOf("-12.50001"), -13);
    EXPECT_EQ(longOf("12.50000000000000000000000000000000000001"), 13);
}

TEST(NumericTextTest, AnythingShortOfAHalfGoesDown) {
    EXPECT_EQ(longOf("13.49999"), 13);
    EXPECT_EQ(longOf("-13.49999"), -13);
    EXPECT_EQ(longOf("13.49999999999999999999999999999999999999"), 13);
}

TEST(NumericTextTest, ZerosInFrontDoNotMakeANumberTooLarge) {
    EXPECT_EQ(longOf("0000000000000000000000000000025"), 25);
    EXPECT_EQ(longOf("-0000000000000000000002147483648"), -2'147'483'647 - 1);
    EXPECT_EQ(errorOfNumeric("0000000000000000000002147483648"), overflow);
}

TEST(NumericTextTest, TooManyDigitsAreAnOverflowAndNotTheirRemainder) {
    EXPECT_EQ(errorOfNumeric("18446744073709551621"), overflow);
    EXPECT_EQ(errorOfNumeric("36893488147419103237"), overflow);
    EXPECT_EQ(errorOf([] { return textToCurrency("1844674407370956.1616", {}); }), overflow);
}

TEST(NumericTextTest, TheEndsOfThe32BitsAreRead) {
    EXPECT_EQ(longOf("2147483647"), 2'147'483'647);
    EXPECT_EQ(longOf("-2147483648"), -2'147'483'647 - 1);
    EXPECT_EQ(longOf("2,147,483,647.49"), 2'147'483'647);
    EXPECT_EQ(longOf("2147483646.5"), 2'147'483'646);
    EXPECT_EQ(longOf("-2147483648.5"), -2'147'483'647 - 1);
}

TEST(NumericTextTest, ANumberBeyond32BitsRaisesOverflow) {
    EXPECT_EQ(errorOfNumeric("2147483648"), overflow);
    EXPECT_EQ(errorOfNumeric("-2147483649"), overflow);
    EXPECT_EQ(errorOfNumeric("2147483647.5"), overflow);
    EXPECT_EQ(errorOfNumeric("-2147483648.50001"), overflow);
    EXPECT_EQ(errorOfNumeric("4294967296"), overflow);
    EXPECT_EQ(errorOfNumeric("18446744073709551616"), overflow);
    EXPECT_EQ(errorOfNumeric("1E10"), overflow);
    EXPECT_EQ(errorOfNumeric("1E308"), overflow);
    EXPECT_EQ(errorOfNumeric("-1E308"), overflow);
}

TEST(NumericTextTest, ANumberBeyond32BitsIsNumeric) {
    EXPECT_TRUE(isNumber("2147483648"));
    EXPECT_TRUE(isNumber("-2147483649"));
    EXPECT_TRUE(isNumber("1E10"));
}

TEST(NumericTextTest, ANumberBeyondAnAmountIsNumeric) {
    EXPECT_EQ(errorOf([] { return textToCurrency("922337203685477.5808", {}); }), overflow);

    EXPECT_TRUE(isNumber("922337203685477.5808"));
    EXPECT_TRUE(isNumber("1E15"));
    EXPECT_TRUE(isNumber("99999999999999999999999999999999"));
}

TEST(NumericTextTest, TheLargestPowersOfTenOfAFloatingPointNumberAreNumeric) {
    EXPECT_TRUE(isNumber("1E308"));
    EXPECT_TRUE(isNumber("-1E308"));
    EXPECT_TRUE(isNumber("1000E305"));
    EXPECT_TRUE(isNumber("0.001E311"));
    EXPECT_TRUE(isNumber("1" + std::string(308, '0')));
    EXPECT_TRUE(isNumber(std::string(1000, '0') + "1"));
}

TEST(NumericTextTest, TheNextPowersOfTenAreNot) {
    EXPECT_FALSE(isNumber("1E309"));
    EXPECT_FALSE(isNumber("-1E309"));
    EXPECT_FALSE(isNumber("1000E306"));
    EXPECT_FALSE(isNumber("0.001E312"));
    EXPECT_FALSE(isNumber("1E99999999999999999999"));
    EXPECT_FALSE(isNumber("1" + std::string(309, '0')));
    EXPECT_FALSE(isNumber(std::string(100'000, '9')));
}

TEST(NumericTextTest, NumericEndsWithTheLargestFloatingPointNumber) {
    EXPECT_TRUE(isNumber("1.7976931348623157E308"));
    EXPECT_TRUE(isNumber("-1.7976931348623158E308"));

    EXPECT_FALSE(isNumber("1.7976931348623159E308"));
    EXPECT_FALSE(isNumber("-1.8E308"));
}

TEST(NumericTextTest, ANumberTooSmallToTellFromZeroIsNumeric) {
    EXPECT_TRUE(isNumber("1E-309"));
    EXPECT_TRUE(isNumber("1E-99999999999999999999"));
    EXPECT_TRUE(isNumber("0." + std::string(1000, '0') + "1"));
}

TEST(NumericTextTest, ATextThatGoesOnBehindANulIsNoNumber) {
    constexpr std::string_view text("5\0", 2);

    EXPECT_FALSE(isNumber(text));
    EXPECT_EQ(errorOfNumeric(text), typeMismatch);
}

} // namespace
} // namespace tarvik
