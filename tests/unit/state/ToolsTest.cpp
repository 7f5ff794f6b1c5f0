#include "state/mdlTools.h"

#include "support/WorldTest.h"

#include <stdexcept>

namespace tarvik {
namespace {

using ToolsTest = WorldTest;

TEST_F(ToolsTest, TheTrapReportsNumberDescriptionAndProcedure) {
    expectFailure("Error 6 (Overflow)\roccured in function \"ResetTransfers\".\rPlease contact the "
                  "author for support.");

    guarded("ResetTransfers", [] { raise(ErrorNumber::Overflow); });
}

TEST_F(ToolsTest, AnErrorShowsOneBoxAndTheCallerGoesOn) {
    expectError("11 (Division by zero)", "Inner");
    bool wentOn = false;

    guarded("Outer", [&] {
        guarded("Inner", [] { raise(ErrorNumber::DivisionByZero); });
        wentOn = true;
    });

    EXPECT_TRUE(wentOn);
}

TEST_F(ToolsTest, AFunctionReturnsWhatItsResultHeldAtTheError) {
    expectError("13 (Type mismatch)", "Half");

    const int result = guarded("Half", 1, [](int& value) {
        value = 2;
        raise(ErrorNumber::TypeMismatch);
    });

    EXPECT_EQ(result, 2);
}

TEST_F(ToolsTest, ErrorsOfTheLibraryAreReportedToo) {
    expectError("9 (Subscript out of range)", "A");
    expectError("7 (Out of memory)", "B");
    expectError("51 (strange)", "C");
    expectError("51 (Internal error)", "D");

    guarded("A", [] { std::vector<int>().at(3) = 1; });
    guarded("B", [] { throw std::bad_alloc(); });
    guarded("C", [] { throw std::runtime_error("strange"); });
    guarded("D", [] { throw 5; });
}

struct FatalCase {
    int kind;
    const char* line;
};

class FatalErrorTest : public WorldTest, public testing::WithParamInterface<FatalCase> {};

TEST_P(FatalErrorTest, ShowsTheLineOfItsKind) {
    expectFailure("Error occured in: opt_cmdOK_Click\r" + std::string(GetParam().line));

    FatalError("opt_cmdOK_Click", static_cast<FatalKind>(GetParam().kind));
}

INSTANTIATE_TEST_SUITE_P(
    All, FatalErrorTest,
    testing::Values(FatalCase{0, "Please contact the author for support."},
                    FatalCase{1, "Internal assertion failure!"},
                    FatalCase{2, "The function you've requested is not (yet) implemented!"},
                    FatalCase{3, "Unhandled error."}, FatalCase{255, "Unhandled error."}));

TEST_F(ToolsTest, StringWithoutBlanksKeepsNothingButTheBlanks) {
    EXPECT_EQ(StringWithoutBlanks("a b c", false), "  ");
}

TEST_F(ToolsTest, StringWithoutBlanksIsEmptyWithTheFlag) {
    EXPECT_EQ(StringWithoutBlanks("a b c", true), "");
}

TEST_F(ToolsTest, StringWithoutBlanksDropsControlCharactersAndOtherBlanks) {
    EXPECT_EQ(StringWithoutBlanks("\t \n\xC2\xA0 \x7F", false), "  ");
}

TEST_F(ToolsTest, StringWithoutBlanksGivesUpOnLongTexts) {
    EXPECT_EQ(StringWithoutBlanks(std::string(31'999, ' '), false).size(), 31'999U);
    EXPECT_EQ(StringWithoutBlanks(std::string(32'000, ' '), false), "");
    EXPECT_EQ(StringWithoutBlanks("", false), "");
}

TEST_F(ToolsTest, StripNullGivesTheTextBeforeTheFirstNul) {
    EXPECT_EQ(StripNull(std::string_view("abcd\0efg\0", 9)), "abcd");
    EXPECT_EQ(StripNull(std::string_view("\0x", 2)), "");
}

TEST_F(ToolsTest, StripNullOfATextWithoutNulIsAnErrorAndEmpty) {
    expectError("5 (Invalid procedure call or argument)", "StripNull");

    EXPECT_EQ(StripNull("abcd"), "");
}

TEST_F(ToolsTest, StripNullOfAnEmptyTextIsAnErrorToo) {
    expectError("5 (Invalid procedure call or argument)", "StripNull");

    EXPECT_EQ(StripNull(""), "");
}

TEST_F(ToolsTest, MessagesHaveTheApplicationTitleAsCaption) {
    expectBox("text", MsgBoxButtons::YesNo, MsgBoxIcon::Question, MsgBoxAnswer::Yes);

    EXPECT_EQ(MsgBox("text", MsgBoxButtons::YesNo, MsgBoxIcon::Question), MsgBoxAnswer::Yes);

    EXPECT_EQ(machine.desktop.boxesShown.at(0).caption, "Velmars Tarvik.");
}

} // namespace
} // namespace tarvik
