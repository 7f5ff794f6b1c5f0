#include "common/HiddenCharacters.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tarvik {
namespace {

TEST(HiddenCharactersTest, AnOrdinaryTextStaysAsItIs) {
    const std::string text = "Ridge DSL \u00fc \u05d0\u05d1 \u2013";

    EXPECT_EQ(withHiddenTold(text), text);
}

TEST(HiddenCharactersTest, EachTurnIsToldByItsNumber) {
    EXPECT_EQ(withHiddenTold("\u061c\u200e\u200f\u202a\u202b\u202c\u202d\u202e"),
              "[U+061C][U+200E][U+200F][U+202A][U+202B][U+202C][U+202D][U+202E]");
    EXPECT_EQ(withHiddenTold("\u2066\u2067\u2068\u2069"), "[U+2066][U+2067][U+2068][U+2069]");
}

TEST(HiddenCharactersTest, TheLettersAroundATurnStay) {
    EXPECT_EQ(withHiddenTold("Bank\u202egnp.exe\u202c!"), "Bank[U+202E]gnp.exe[U+202C]!");
}

TEST(HiddenCharactersTest, WhatHasNoWidthIsToldByItsNumber) {
    EXPECT_EQ(withHiddenTold("a\u00ad\u034f\u200b\u200c\u200d\u2060\u206f\ufeff"),
              "a[U+00AD][U+034F][U+200B][U+200C][U+200D][U+2060][U+206F][U+FEFF]");
    EXPECT_EQ(withHiddenTold("\u115f\u1160\u3164\uffa0\ufff9"),
              "[U+115F][U+1160][U+3164][U+FFA0][U+FFF9]");
    EXPECT_EQ(withHiddenTold("a\ufe0f\U000e0001\U000e0100"), "a[U+FE0F][U+E0001][U+E0100]");
}

TEST(HiddenCharactersTest, LineBreaksThatNobodyKnowsAreToldByTheirNumbers) {
    EXPECT_EQ(withHiddenTold("\xC2\x85\u2028\u2029"), "[U+0085][U+2028][U+2029]");
}

TEST(HiddenCharactersTest, LinesAndTabsStay) {
    EXPECT_EQ(withHiddenTold("a\r\nb\tc\rd"), "a\r\nb\tc\rd");
}

TEST(HiddenCharactersTest, NeighboursOfHiddenOnesStay) {
    const std::string text = "~\u00a0\u00ac\u00ae\u200a\u2010\u2027\u202f\u205f\u2070\u20ac\ufffc"
                             "\ufffd\U0001f600\U000e1000";

    EXPECT_EQ(withHiddenTold(text), text);
}

TEST(HiddenCharactersTest, ACharacterThatIsCutOffStays) {
    EXPECT_EQ(withHiddenTold("a\xE2\x80"), "a\xE2\x80");
}

/// A code page in which 0xFE is a mark, 0xE0 a letter, and nothing else lies beyond ASCII.
CodePage pageWithAMark() {
    return {.toUtf8 =
                [](std::string_view text) {
                    std::string utf8;
                    for (const char each : text) {
                        utf8 += each == '\xFE'   ? "\u200f"
                                : each == '\xE0' ? "\u05d0"
                                : each < 0       ? "?"
                                                 : std::string(1, each);
                    }
                    return utf8;
                },
            .fromUtf8 =
                [](std::string_view text) {
                    std::string bytes;
                    for (std::size_t i = 0; i < text.size(); ++i) {
                        const bool letter = text.substr(i).starts_with("\u05d0");
                        bytes += letter ? '\xE0' : text[i];
                        i += letter ? 1 : 0;
                    }
                    return bytes;
                }};
}

TEST(HiddenCharactersTest, ATurnInACodePageIsToldByItsNumber) {
    EXPECT_EQ(withHiddenTold("\xE0 Bank\xFEgnp.exe", pageWithAMark()), "\xE0 Bank[U+200F]gnp.exe");
}

TEST(HiddenCharactersTest, ATextWithoutTurnsStaysByteForByteWhateverTheCodePageKnows) {
    EXPECT_EQ(withHiddenTold("\xE0 \x81 Bank", pageWithAMark()), "\xE0 \x81 Bank");
    EXPECT_EQ(withHiddenTold("", pageWithAMark()), "");
}

TEST(HiddenCharactersTest, ACodePageThatIsUtf8TellsAllTurns) {
    EXPECT_EQ(withHiddenTold("\u05d0\u202egnp.exe", CodePage{}), "\u05d0[U+202E]gnp.exe");
}

} // namespace
} // namespace tarvik
