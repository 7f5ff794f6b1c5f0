#include "common/ClosingAnswer.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

TEST(ClosingAnswerTest, DeclinesWhereThatIsPossible) {
    EXPECT_EQ(face::closingAnswer(MsgBoxButtons::OkOnly), MsgBoxAnswer::Ok);
    EXPECT_EQ(face::closingAnswer(MsgBoxButtons::OkCancel), MsgBoxAnswer::Cancel);
    EXPECT_EQ(face::closingAnswer(MsgBoxButtons::YesNo), MsgBoxAnswer::No);
    EXPECT_EQ(face::closingAnswer(MsgBoxButtons::YesNoCancel), MsgBoxAnswer::Cancel);
}

} // namespace
} // namespace tarvik
