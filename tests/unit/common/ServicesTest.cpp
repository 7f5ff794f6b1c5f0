#include "common/RasErrorText.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace tarvik {
namespace {

std::string textOf(std::uint32_t code) {
    const char* text = rasErrorText(code);
    return text == nullptr ? "" : text;
}

TEST(RasErrorTextTest, EveryCodeThatAServiceUsuallyReturnsHasASentence) {
    for (const std::uint32_t code :
         {600U, 601U, 602U, 603U, 604U, 608U, 619U, 621U, 623U, 628U, 629U, 630U,
          631U, 632U, 633U, 635U, 638U, 645U, 651U, 652U, 668U, 676U, 677U, 678U,
          679U, 680U, 691U, 692U, 718U, 719U, 720U, 721U, 734U, 756U, 797U}) {
        const std::string text = textOf(code);
        EXPECT_GT(text.size(), 10U) << code;
        EXPECT_TRUE(text.ends_with('.')) << code;
    }
}

TEST(RasErrorTextTest, ABusyLineIsCalledThat) {
    EXPECT_EQ(textOf(676), "The phone line is busy.");
}

TEST(RasErrorTextTest, AFailedLogonNamesUserAndPassword) {
    EXPECT_EQ(textOf(691), "Access was denied because the user name or the password was not valid "
                           "on the domain.");
}

TEST(RasErrorTextTest, NoTwoCodesShareAText) {
    std::set<std::string> texts;
    for (std::uint32_t code = 600; code <= 800; ++code) {
        const std::string text = textOf(code);
        EXPECT_TRUE(text.empty() || texts.insert(text).second) << code << ' ' << text;
    }
    EXPECT_GT(texts.size(), 150U);
}

TEST(RasErrorTextTest, AnyOtherCodeHasNone) {
    EXPECT_EQ(rasErrorText(0), nullptr);
    EXPECT_EQ(rasErrorText(599), nullptr);
    EXPECT_EQ(rasErrorText(801), nullptr);
    EXPECT_EQ(rasErrorText(0xFFFFFFFF), nullptr);
}

} // namespace
} // namespace tarvik
