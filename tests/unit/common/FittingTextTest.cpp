#include "common/FittingText.h"

#include <gtest/gtest.h>

#include <string>

namespace tarvik {
namespace {

const BoxRoom room{.letters = 10, .lines = 6};

std::string linesOf(int count) {
    std::string text = "1";
    for (int i = 2; i <= count; ++i) {
        text += "\r" + std::to_string(i);
    }
    return text;
}

TEST(FittingTextTest, WhatFitsStaysAsItIs) {
    for (const std::string text : {"", " ", "a b ", "one\rtwo\r\nthree\nfour", "1234567890",
                                   "several words that are wrapped", "\r\r\r\r\r", "a\xE2\x80"}) {
        EXPECT_EQ(fittingText(text, room), text);
    }
}

TEST(FittingTextTest, ALongWordGoesOnInTheNextLine) {
    EXPECT_EQ(fittingText("a 12345678901234567890123 b", room), "a 1234567890\r1234567890\r123 b");
}

TEST(FittingTextTest, ALetterOfSeveralBytesIsOneAndStaysWhole) {
    EXPECT_EQ(
        fittingText("\u00fc\u00fc\u00fc\u00fc\u00fc\u00fc\u00fc\u00fc\u00fc\u00fc\u00fc", room),
        "\u00fc\u00fc\u00fc\u00fc\u00fc\u00fc\u00fc\u00fc\u00fc\u00fc\r\u00fc");
}

TEST(FittingTextTest, AWideLetterCountsTwice) {
    EXPECT_EQ(fittingText("\u6f22\u6f22\u6f22\u6f22\u6f22\u6f22", room),
              "\u6f22\u6f22\u6f22\u6f22\u6f22\r\u6f22");
}

TEST(FittingTextTest, AsManyLinesAsFitStay) {
    EXPECT_EQ(fittingText(linesOf(6), room), linesOf(6));
}

TEST(FittingTextTest, OfTooManyLinesBothEndsStay) {
    EXPECT_EQ(fittingText(linesOf(7), room), "1\r2\r3\r...\r6\r7");
    EXPECT_EQ(fittingText(linesOf(2000), room), "1\r2\r3\r...\r1999\r2000");
}

TEST(FittingTextTest, LinesThatAreWrappedCountAsManyTimes) {
    EXPECT_EQ(fittingText("Error:\r" + std::string(3000, 'W') + "\rTry help.", room),
              "Error:\rWWWWWWWWWW\rWWWWWWWWWW\r...\rWWWWWWWWWW\rTry help.");
    EXPECT_EQ(
        fittingText("123456789 123456789 123456789 123456789 123456789 123456789 12345678 a", room),
        "123456789 123456789 123456789\r...\r123456789 12345678 a");
}

/// A code page whose only letter beyond ASCII is 0xE0.
const CodePage page{
    .toUtf8 =
        [](std::string_view text) {
            std::string utf8;
            for (const char each : text) {
                utf8 += each == '\xE0' ? "\u05d0" : each < 0 ? "?" : std::string(1, each);
            }
            return utf8;
        },
    .fromUtf8 =
        [](std::string_view text) {
            std::string bytes;
            for (const char each : text) {
                bytes += each == '\xD7' ? "\xE0" : each == '\x90' ? "" : std::string(1, each);
            }
            return bytes;
        }};

TEST(FittingTextTest, InACodePageLettersAreCountedToo) {
    EXPECT_EQ(fittingText(std::string(11, '\xE0'), room, page), std::string(10, '\xE0') + "\r\xE0");
}

TEST(FittingTextTest, ATextThatFitsStaysByteForByteWhateverTheCodePageKnows) {
    EXPECT_EQ(fittingText("\xE0 \x81", room, page), "\xE0 \x81");
}

TEST(BoxRoomTest, IsWhatTheScreenLeaves) {
    const BoxRoom usual = boxRoom(1024, 768, 8, 16);

    EXPECT_EQ(usual.letters, 64U);
    EXPECT_EQ(usual.lines, 38U);
}

TEST(BoxRoomTest, HoldsWhatTheProgramItselfSaysOnTheSmallestScreen) {
    const BoxRoom least = boxRoom(0, 0, 0, 0);

    EXPECT_EQ(least.letters, 40U);
    EXPECT_EQ(least.lines, 14U);
}

TEST(BoxRoomTest, LinesAreNeverLongerThanIsRead) {
    EXPECT_EQ(boxRoom(4000, 2000, 8, 16).letters, 80U);
}

} // namespace
} // namespace tarvik
