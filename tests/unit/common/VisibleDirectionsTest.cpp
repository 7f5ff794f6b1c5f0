#include "common/VisibleDirections.h"

#include <gtest/gtest.h>

#include <string>

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

} // namespace
} // namespace tarvik
