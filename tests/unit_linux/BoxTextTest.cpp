#include "linux/face/BoxText.h"

#include <gtest/gtest.h>

#include <string>

namespace tarvik::face {
namespace {

std::string written(const std::string& text) {
    testing::internal::CaptureStderr();
    writeUnshownBox({.text = text, .caption = "Tarvik"});
    return testing::internal::GetCapturedStderr();
}

TEST(BoxTextTest, ABoxThatNobodyReadsLeavesItsLines) {
    EXPECT_EQ(written("one\rtwo\r\nthree"), "Tarvik one\ntwo\nthree\n");
}

TEST(BoxTextTest, ABoxThatNobodyReadsGivesNoOrdersToATerminal) {
    const std::string mark = "\xEF\xBF\xBD";

    EXPECT_EQ(written("a\x1B]0;title\x07"
                      "b\tc"),
              "Tarvik a" + mark + "]0;title" + mark + "b" + mark + "c\n");
    EXPECT_EQ(written("a\x7F\xC2\x9B"
                      "2Jb"),
              "Tarvik a" + mark + mark + "2Jb\n");
}

} // namespace
} // namespace tarvik::face
