#include "common/VisibleDirections.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tarvik {
namespace {

TEST(VisibleDirectionsTest, AnOrdinaryTextStaysAsItIs) {
    const std::string text = "Ridge DSL \u00fc \u05d0\u05d1 \u2013";

    EXPECT_EQ(withVisibleDirections(text), text);
}

TEST(VisibleDirectionsTest, EachTurnIsToldByItsNumber) {
    EXPECT_EQ(withVisibleDirections("\u061c\u200e\u200f\u202a\u202b\u202c\u202d\u202e"),
              "[U+061C][U+200E][U+200F][U+202A][U+202B][U+202C][U+202D][U+202E]");
    EXPECT_EQ(withVisibleDirections("\u2066\u2067\u2068\u2069"),
              "[U+2066][U+2067][U+2068][U+2069]");
}

TEST(VisibleDirectionsTest, TheLettersAroundATurnStay) {
    EXPECT_EQ(withVisibleDirections("Bank\u202egnp.exe\u202c!"), "Bank[U+202E]gnp.exe[U+202C]!");
}

TEST(VisibleDirectionsTest, NeighboursOfTheTurnsStay) {
    EXPECT_EQ(withVisibleDirections("\u200d\u2010\u2029\u202f\u2065\u206a"),
              "\u200d\u2010\u2029\u202f\u2065\u206a");
}

TEST(VisibleDirectionsTest, ACharacterThatIsCutOffStays) {
    EXPECT_EQ(withVisibleDirections("a\xE2\x80"), "a\xE2\x80");
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

TEST(VisibleDirectionsTest, ATurnInACodePageIsToldByItsNumber) {
    EXPECT_EQ(withVisibleDirections("\xE0 Bank\xFEgnp.exe", pageWithAMark()),
              "\xE0 Bank[U+200F]gnp.exe");
}

TEST(VisibleDirectionsTest, ATextWithoutTurnsStaysByteForByteWhateverTheCodePageKnows) {
    EXPECT_EQ(withVisibleDirections("\xE0 \x81 Bank", pageWithAMark()), "\xE0 \x81 Bank");
    EXPECT_EQ(withVisibleDirections("", pageWithAMark()), "");
}

TEST(VisibleDirectionsTest, ACodePageThatIsUtf8TellsAllTurns) {
    EXPECT_EQ(withVisibleDirections("\u05d0\u202egnp.exe", CodePage{}), "\u05d0[U+202E]gnp.exe");
}

} // namespace
} // namespace tarvik
