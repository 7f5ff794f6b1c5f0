#include "windows/face/BoxText.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

UINT flagsOf(MsgBoxButtons buttons, MsgBoxIcon icon) {
    return face::boxFlags({.text = "?", .buttons = buttons, .icon = icon, .caption = "T"});
}

TEST(BoxTextTest, EveryIconIsTheSystemsOwn) {
    EXPECT_EQ(flagsOf(MsgBoxButtons::OkOnly, MsgBoxIcon::None), 0U);
    EXPECT_EQ(flagsOf(MsgBoxButtons::OkOnly, MsgBoxIcon::Critical), 0x10U);
    EXPECT_EQ(flagsOf(MsgBoxButtons::OkOnly, MsgBoxIcon::Question), 0x20U);
    EXPECT_EQ(flagsOf(MsgBoxButtons::OkOnly, MsgBoxIcon::Exclamation), 0x30U);
    EXPECT_EQ(flagsOf(MsgBoxButtons::OkOnly, MsgBoxIcon::Information), 0x40U);
}

TEST(BoxTextTest, IconAndButtonsAreOneWord) {
    EXPECT_EQ(flagsOf(MsgBoxButtons::OkCancel, MsgBoxIcon::None), 1U);
    EXPECT_EQ(flagsOf(MsgBoxButtons::YesNoCancel, MsgBoxIcon::Exclamation), 0x33U);
    EXPECT_EQ(flagsOf(MsgBoxButtons::YesNo, MsgBoxIcon::Question), 0x24U);
}

TEST(BoxTextTest, AWarningThatAsksOffersNoFirst) {
    EXPECT_EQ(flagsOf(MsgBoxButtons::YesNo, MsgBoxIcon::Exclamation), 0x134U);
}

TEST(BoxTextTest, ALoneCarriageReturnBreaksTheLine) {
    EXPECT_EQ(face::boxText("a\rb\r\nc\nd\r"), "a\r\nb\r\nc\nd\r\n");
    EXPECT_EQ(face::boxText("\r\r"), "\r\n\r\n");
    EXPECT_EQ(face::boxText(""), "");
}

TEST(BoxTextTest, ABoxThatIsLeftInAnotherWayCountsAsClosed) {
    EXPECT_EQ(face::answerOf(0, MsgBoxButtons::OkOnly), MsgBoxAnswer::Ok);
    EXPECT_EQ(face::answerOf(0, MsgBoxButtons::YesNo), MsgBoxAnswer::No);
    EXPECT_EQ(face::answerOf(0, MsgBoxButtons::YesNoCancel), MsgBoxAnswer::Cancel);
    EXPECT_EQ(face::answerOf(0, MsgBoxButtons::OkCancel), MsgBoxAnswer::Cancel);
}

} // namespace
} // namespace tarvik
