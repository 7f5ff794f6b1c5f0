#include "common/ProfileTest.h"

namespace tarvik {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

class ProfileReadTest : public ProfileTest {
protected:
    std::int32_t numberOf(const std::string& text) {
        given("[s]\nn=" + text + "\n");
        return number("n");
    }
};

TEST_F(ProfileReadTest, AKeyIsFoundInItsSection) {
    given("[a]\nx=1\n[b]\nx=2\n");
    EXPECT_EQ(value("b", "x"), "2");
}

TEST_F(ProfileReadTest, LookupIgnoresTheCaseOfAsciiLetters) {
    given("[SeTTings]\nLastState=yes\n");
    EXPECT_EQ(value("settINGS", "LASTstate"), "yes");
}

TEST_F(ProfileReadTest, LookupKeepsTheCaseOfOtherLetters) {
    given("[\xC3\x84]\nx=1\n");
    EXPECT_EQ(value("\xC3\xA4", "x"), "none");
    EXPECT_EQ(value("\xC3\x84", "x"), "1");
}

TEST_F(ProfileReadTest, OfEqualKeysTheFirstIsRead) {
    given("[a]\nx=first\nX=second\n");
    EXPECT_EQ(value("a", "x"), "first");
}

TEST_F(ProfileReadTest, OfEqualSectionsOnlyTheFirstIsRead) {
    given("[a]\nx=1\n[b]\n[A]\nx=2\ny=3\n");
    EXPECT_EQ(value("a", "x"), "1");
    EXPECT_EQ(value("a", "y"), "none");
}

TEST_F(ProfileReadTest, BlanksAroundSectionKeyAndValueAreDropped) {
    given(" \t[ a b ]  \n \t key one \t= \t the value \t\n");
    EXPECT_EQ(value("a b", "key one"), "the value");
}

TEST_F(ProfileReadTest, BlanksAroundTheAskedNamesAreDropped) {
    given("[a]\nx=1\n");
    EXPECT_EQ(value(" a ", "\tx "), "1");
}

TEST_F(ProfileReadTest, OnePairOfMatchingQuotesIsRemoved) {
    given("[a]\nd=\" two \"\ns=' one '\nboth=\"'x'\"\nmixed=\"x'\nlone=\"\nempty=\"\"\n");
    EXPECT_EQ(value("a", "d"), " two ");
    EXPECT_EQ(value("a", "s"), " one ");
    EXPECT_EQ(value("a", "both"), "'x'");
    EXPECT_EQ(value("a", "mixed"), "\"x'");
    EXPECT_EQ(value("a", "lone"), "\"");
    EXPECT_EQ(value("a", "empty"), "");
}

TEST_F(ProfileReadTest, AValueMayHoldEqualSignsSemicolonsAndBrackets) {
    given("[a]\nx=1=2;3[4]\n");
    EXPECT_EQ(value("a", "x"), "1=2;3[4]");
}

TEST_F(ProfileReadTest, ACommentIsNoKey) {
    given("[a]\n;x=1\n  ; y=2\n");
    EXPECT_EQ(value("a", ";x"), "none");
    EXPECT_EQ(value("a", "; y"), "none");
    EXPECT_EQ(value("a", "y"), "none");
}

TEST_F(ProfileReadTest, ALineWithoutAnEqualSignIsAKeyWithoutAValue) {
    given("[a]\nx\n y \nx=1\ny=2\nz=3\n");
    EXPECT_EQ(value("a", "x"), "none");
    EXPECT_EQ(value("a", "y"), "none");
    EXPECT_EQ(value("a", "z"), "3");
    EXPECT_EQ(engine.GetPrivateProfileIntA("a", "x", -1, file), -1);
}

TEST_F(ProfileReadTest, BlanksAtTheEndOfTheFallbackAreDropped) {
    given("[a]\n");
    char buffer[16];
    EXPECT_EQ(engine.GetPrivateProfileStringA("a", "x", " two words  ", buffer, 16, file), 10U);
    EXPECT_STREQ(buffer, " two words");
}

TEST_F(ProfileReadTest, AKeyBeforeAnySectionBelongsToNone) {
    given("x=1\n[a]\ny=2\n");
    EXPECT_EQ(value("a", "x"), "none");
    EXPECT_EQ(value("", "x"), "none");
}

TEST_F(ProfileReadTest, AnEmptyNameFindsNothing) {
    given("[]\nx=1\n=2\n");
    EXPECT_EQ(value("", "x"), "none");
    EXPECT_EQ(value("", ""), "none");
}

TEST_F(ProfileReadTest, ASectionNameReachesToTheLastBracketOfItsLine) {
    given("[a]b] rest\nx=1\n");
    EXPECT_EQ(value("a]b", "x"), "1");
}

TEST_F(ProfileReadTest, AHeaderWithoutItsClosingBracketBeginsNoSection) {
    given("[a]\nx=1\n[b\ny=2\n");
    EXPECT_EQ(value("a", "y"), "2");
}

TEST_F(ProfileReadTest, LinesMayEndInAnyOfTheThreeWays) {
    given("[a]\r\nx=1\ry=2\nz=3\r\n\r\n[b]\rw=4");
    EXPECT_EQ(value("a", "x"), "1");
    EXPECT_EQ(value("a", "y"), "2");
    EXPECT_EQ(value("a", "z"), "3");
    EXPECT_EQ(value("b", "w"), "4");
}

TEST_F(ProfileReadTest, AUtf8MarkAtTheStartIsSkipped) {
    given("\xEF\xBB\xBF[a]\nx=1\n");
    EXPECT_EQ(value("a", "x"), "1");
}

TEST_F(ProfileReadTest, AMissingKeySectionOrFileGivesTheFallback) {
    EXPECT_EQ(value("a", "x"), "none");
    given("[a]\ny=1\n");
    EXPECT_EQ(value("a", "x"), "none");
    EXPECT_EQ(value("b", "y"), "none");
}

TEST_F(ProfileReadTest, AnEmptyFileNameFindsNothing) {
    std::array<char, 8> buffer{};
    EXPECT_EQ(engine.GetPrivateProfileStringA("a", "x", "no", buffer.data(), 8, ""), 2U);
    EXPECT_STREQ(buffer.data(), "no");
    EXPECT_EQ(engine.GetPrivateProfileIntA("a", "x", 5, ""), 5);
}

TEST_F(ProfileReadTest, AnEmptyValueIsNotTheFallback) {
    given("[a]\nx=\n");
    EXPECT_EQ(value("a", "x"), "");
}

TEST_F(ProfileReadTest, AValueIsCutToTheBufferAndEndsWithANul) {
    given("[a]\nx=abcdef\n");
    std::array<char, 6> buffer{};
    buffer.fill('#');
    EXPECT_EQ(engine.GetPrivateProfileStringA("a", "x", "", buffer.data(), 4, file), 3U);
    EXPECT_EQ(std::string_view(buffer.data(), 6), "abc\0##"sv);
}

TEST_F(ProfileReadTest, AValueThatJustFitsIsWhole) {
    given("[a]\nx=abc\n");
    std::array<char, 4> buffer{};
    EXPECT_EQ(engine.GetPrivateProfileStringA("a", "x", "", buffer.data(), 4, file), 3U);
    EXPECT_STREQ(buffer.data(), "abc");
}

TEST_F(ProfileReadTest, TheFallbackIsCutToo) {
    std::array<char, 3> buffer{};
    EXPECT_EQ(engine.GetPrivateProfileStringA("a", "x", "long", buffer.data(), 3, file), 2U);
    EXPECT_STREQ(buffer.data(), "lo");
}

TEST_F(ProfileReadTest, ABufferOfOneByteHoldsTheNul) {
    given("[a]\nx=abc\n");
    char buffer = '#';
    EXPECT_EQ(engine.GetPrivateProfileStringA("a", "x", "", &buffer, 1, file), 0U);
    EXPECT_EQ(buffer, '\0');
}

TEST_F(ProfileReadTest, ABufferOfNoBytesIsNotTouched) {
    given("[a]\nx=abc\n");
    char buffer = '#';
    EXPECT_EQ(engine.GetPrivateProfileStringA("a", "x", "", &buffer, 0, file), 0U);
    EXPECT_EQ(buffer, '#');
}

TEST_F(ProfileReadTest, ANulByteInAValueIsCopied) {
    given("[a]\nx=1\0z\n"s);
    EXPECT_EQ(value("a", "x"), "1\0z"s);
}

TEST_F(ProfileReadTest, ANumberIsReadUpToItsFirstOtherCharacter) {
    EXPECT_EQ(numberOf("123abc"), 123);
    EXPECT_EQ(numberOf("  42  "), 42);
    EXPECT_EQ(numberOf("1.9"), 1);
    EXPECT_EQ(numberOf("\" 7\""), 7);
}

TEST_F(ProfileReadTest, ANumberMayHaveASign) {
    EXPECT_EQ(numberOf("-5"), -5);
    EXPECT_EQ(numberOf("+5"), 5);
    EXPECT_EQ(numberOf("- 5"), 0);
    EXPECT_EQ(numberOf("-"), 0);
}

TEST_F(ProfileReadTest, APrefixTellsTheBase) {
    EXPECT_EQ(numberOf("0x1F"), 31);
    EXPECT_EQ(numberOf("0xfg"), 15);
    EXPECT_EQ(numberOf("-0x10"), -16);
    EXPECT_EQ(numberOf("0o17"), 15);
    EXPECT_EQ(numberOf("0o8"), 0);
    EXPECT_EQ(numberOf("0b101"), 5);
    EXPECT_EQ(numberOf("0b12"), 1);
    EXPECT_EQ(numberOf("017"), 17);
    EXPECT_EQ(numberOf("0"), 0);
}

TEST_F(ProfileReadTest, ANumberWrapsAtThirtyTwoBits) {
    EXPECT_EQ(numberOf("2147483647"), 2147483647);
    EXPECT_EQ(numberOf("2147483648"), -2147483647 - 1);
    EXPECT_EQ(numberOf("4294967295"), -1);
    EXPECT_EQ(numberOf("4294967297"), 1);
}

TEST_F(ProfileReadTest, ATextIsTheNumberZero) {
    EXPECT_EQ(numberOf("abc"), 0);
    EXPECT_EQ(numberOf("@`\xE9"), 0);
}

TEST_F(ProfileReadTest, AMissingOrEmptyNumberIsTheFallback) {
    EXPECT_EQ(numberOf(""), -77);
    EXPECT_EQ(numberOf("\"\""), -77);
    EXPECT_EQ(number("other"), -77);
}

} // namespace
} // namespace tarvik
