#include "types/Text.h"
#include "types/Blanks.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

TEST(TextTest, TrimsSpacesAndNothingElse) {
    EXPECT_EQ(trimSpaces("  a b  "), "a b");
    EXPECT_EQ(trimSpaces("\ta\n"), "\ta\n");
    EXPECT_EQ(trimSpaces("   "), "");
    EXPECT_EQ(trimSpaces(""), "");
}

TEST(TextTest, UpperCaseChangesAsciiLettersOnly) {
    EXPECT_EQ(upperCase("az{`AZ09\xC3\xA4\xFF"), "AZ{`AZ09\xC3\xA4\xFF");
}

TEST(TextTest, ComparesWithoutTheCaseOfAsciiLetters) {
    EXPECT_TRUE(equalWithoutCase("aBz\xC3\xA4", "AbZ\xC3\xA4"));
    EXPECT_TRUE(equalWithoutCase("", ""));
    EXPECT_FALSE(equalWithoutCase("\xC3\xA4", "\xC3\x84"));
    EXPECT_FALSE(equalWithoutCase("a", "ab"));
    EXPECT_FALSE(equalWithoutCase("@", "`"));
}

TEST(TextTest, AHexadecimalNumberHasSoManyDigitsAtLeast) {
    EXPECT_EQ(hexText(0, 1), "0");
    EXPECT_EQ(hexText(0x0A, 2), "0A");
    EXPECT_EQ(hexText(0x9B0, 2), "9B0");
    EXPECT_EQ(hexText(0x0123456789ABCDEF, 16), "0123456789ABCDEF");
    EXPECT_EQ(hexText(UINT64_MAX, 16), "FFFFFFFFFFFFFFFF");
}

TEST(TextTest, ACharacterIsToldByItsNumber) {
    EXPECT_EQ(characterNumber(0), "[U+0000]");
    EXPECT_EQ(characterNumber(0x202E), "[U+202E]");
    EXPECT_EQ(characterNumber(0xE0100), "[U+E0100]");
}

TEST(TextTest, ControlCharactersAreToldByTheirNumbers) {
    EXPECT_EQ(withControlsTold("a\nb\r\t\x1B\x1F\x7F"),
              "a[U+000A]b[U+000D][U+0009][U+001B][U+001F][U+007F]");
    EXPECT_EQ(withControlsTold(" ~\x80\xC3\xA4\xFF"), " ~\x80\xC3\xA4\xFF");
}

TEST(TextTest, ABlankTakesOneToThreeBytes) {
    EXPECT_EQ(leadingBlank(" x"), 1U);
    EXPECT_EQ(leadingBlank("\t"), 1U);
    EXPECT_EQ(leadingBlank("\xC2\xA0x"), 2U);
    EXPECT_EQ(leadingBlank("\xE2\x80\xAF"), 3U);
    EXPECT_EQ(leadingBlank("\xA0"), 1U);
    EXPECT_EQ(leadingBlank("x "), 0U);
    EXPECT_EQ(leadingBlank("\xE2\x80"), 0U);
    EXPECT_EQ(leadingBlank(""), 0U);
}

} // namespace
} // namespace tarvik
