#include "startup/mdlArguments.h"
#include "support/WorldTest.h"

namespace tarvik {
namespace {

using Arguments = std::vector<std::string>;

class ArgumentsTest : public WorldTest {
protected:
    Arguments parsed(const std::string& line, bool quoteAware = true, int maxArgs = 10) {
        machine.program.arguments = line;
        return ParseArgs(quoteAware, maxArgs);
    }

    void expectInvalid(const std::string& list) {
        expectWarning("Warning:\rInvalid command-line switches detected:\r" + list +
                      "\rTry /? or /h for help.");
    }

    /// Reads the line; which of help, run and minimise it set.
    std::string applied(const std::string& line) {
        machine.program.arguments = line;
        InitArgs();
        return std::string(state().ArgHelp ? "h" : "") + (state().ArgRun ? "r" : "") +
               (state().ArgMinimise ? "m" : "");
    }
};

TEST_F(ArgumentsTest, AnEmptyLineHasOnlyElementZero) {
    EXPECT_EQ(parsed(""), Arguments{""});
}

TEST_F(ArgumentsTest, SpacesAndTabsSeparateArguments) {
    EXPECT_EQ(parsed("  /a\t/b   /c "), (Arguments{"", "/a", "/b", "/c"}));
}

TEST_F(ArgumentsTest, AnOpenQuoteReachesToTheEnd) {
    EXPECT_EQ(parsed("\"a b c"), (Arguments{"", "a b c"}));
}

TEST_F(ArgumentsTest, AnEmptyPairOfQuotesIsAnEmptyArgument) {
    EXPECT_EQ(parsed("\"\" x"), (Arguments{"", "", "x"}));
}

TEST_F(ArgumentsTest, ALineOfBlanksHasOnlyElementZero) {
    EXPECT_EQ(parsed(" \t  \t"), Arguments{""});
}

TEST_F(ArgumentsTest, OnlySpacesAndTabsSeparate) {
    EXPECT_EQ(parsed("a\nb\rc,d"), (Arguments{"", "a\nb\rc,d"}));
}

TEST_F(ArgumentsTest, BlanksInQuotesAreKeptAsTheyStand) {
    EXPECT_EQ(parsed("\" a\t b \" c"), (Arguments{"", " a\t b ", "c"}));
}

TEST_F(ArgumentsTest, AQuoteWithinAnArgumentJoinsWhatFollows) {
    EXPECT_EQ(parsed("a\"b c\"d \"\"e"), (Arguments{"", "ab cd", "e"}));
}

TEST_F(ArgumentsTest, AnEmptyPairOfQuotesCountsTowardsTheLimit) {
    EXPECT_EQ(parsed("\"\" \"\" x", true, 2), (Arguments{"", "", ""}));
}

TEST_F(ArgumentsTest, QuotedArgumentsCountTowardsTheLimitOnce) {
    EXPECT_EQ(parsed("\"a b\" \"c d\" e", true, 2), (Arguments{"", "a b", "c d"}));
}

TEST_F(ArgumentsTest, TheLastAllowedArgumentIsReadToItsEnd) {
    EXPECT_EQ(parsed("first second third", true, 2), (Arguments{"", "first", "second"}));
}

TEST_F(ArgumentsTest, ALimitOfZeroLeavesElementZero) {
    EXPECT_EQ(parsed("a b", true, 0), Arguments{""});
}

TEST_F(ArgumentsTest, WithoutQuoteAwarenessAnEmptyPairOfQuotesIsAText) {
    EXPECT_EQ(parsed("\"\" \"x y\"", false), (Arguments{"", "\"\"", "\"x", "y\""}));
}

TEST_F(ArgumentsTest, BytesBeyondAsciiStayAsTheyAre) {
    EXPECT_EQ(parsed("\xC3\xA4 \xC2\xA0"), (Arguments{"", "\xC3\xA4", "\xC2\xA0"}));
}

struct SwitchCase {
    const char* line;
    const char* sets;
};

class SwitchTest : public ArgumentsTest, public testing::WithParamInterface<SwitchCase> {};

TEST_P(SwitchTest, SetsWhatItStandsForAndNothingElse) {
    EXPECT_EQ(applied(GetParam().line), GetParam().sets);
}

INSTANTIATE_TEST_SUITE_P(
    Each, SwitchTest,
    testing::Values(SwitchCase{"/?", "h"}, SwitchCase{"/h", "h"}, SwitchCase{"/H", "h"},
                    SwitchCase{"/help", "h"}, SwitchCase{"/HELP", "h"}, SwitchCase{"/Help", "h"},
                    SwitchCase{"/r", "r"}, SwitchCase{"/R", "r"}, SwitchCase{"/run", "r"},
                    SwitchCase{"/RUN", "r"}, SwitchCase{"/rUn", "r"}, SwitchCase{"/m", "m"},
                    SwitchCase{"/M", "m"}, SwitchCase{"/min", "m"}, SwitchCase{"/MIN", "m"},
                    SwitchCase{"/Min", "m"}, SwitchCase{"", ""}, SwitchCase{"/m /?", "hm"},
                    SwitchCase{"/r /r /m", "rm"}, SwitchCase{"\"/r\" /h", "hr"}));

struct InvalidCase {
    const char* line;
    const char* list;
};

class InvalidSwitchTest : public ArgumentsTest, public testing::WithParamInterface<InvalidCase> {};

TEST_P(InvalidSwitchTest, IsListedAndSetsNothing) {
    expectInvalid(GetParam().list);

    EXPECT_EQ(applied(GetParam().line), "");
}

INSTANTIATE_TEST_SUITE_P(
    Each, InvalidSwitchTest,
    testing::Values(InvalidCase{"/run1", "/run1"}, InvalidCase{"/hel", "/hel"},
                    InvalidCase{"/??", "/??"}, InvalidCase{"-h", "-h"}, InvalidCase{"run", "run"},
                    InvalidCase{"/ r", "/\rr"}, InvalidCase{"//m", "//m"},
                    InvalidCase{"/minimise", "/minimise"}, InvalidCase{"/X /y", "/X\r/y"},
                    InvalidCase{"\"/r \"", "/r "}, InvalidCase{"\"a b\" c", "a b\rc"}));

TEST_F(ArgumentsTest, AQuotedArgumentWithABlankIsReportedWithoutItsQuotes) {
    expectInvalid("a b");

    applied("\"a b\"");
}

TEST_F(ArgumentsTest, AnEmptyArgumentBeforeAnInvalidOneLeavesTheListAsItIs) {
    expectInvalid("/x");

    applied("\"\" /x");
}

TEST_F(ArgumentsTest, AnEmptyArgumentAfterAnInvalidOneIsAnEmptyLine) {
    expectInvalid("/x\r\r/y");

    applied("/x \"\" /y");
}

TEST_F(ArgumentsTest, AnEmptyArgumentAloneIsNotReported) {
    EXPECT_EQ(applied("\"\""), "");
}

TEST_F(ArgumentsTest, TheTenthSwitchIsStillApplied) {
    EXPECT_EQ(applied("/m /m /m /m /m /m /m /m /m /run"), "rm");
}

TEST_F(ArgumentsTest, TheEleventhAndTwelfthAreNeitherAppliedNorReported) {
    EXPECT_EQ(applied("/m /m /m /m /m /m /m /m /m /m /run /bad"), "m");
}

TEST_F(ArgumentsTest, TheTenthIsStillReported) {
    expectInvalid("/ten");

    EXPECT_EQ(applied("/m /m /m /m /m /m /m /m /m /ten /eleven"), "m");
}

} // namespace
} // namespace tarvik
