#include "common/FaceCaption.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

TEST(FaceCaptionTest, TheMnemonicLetterIsMarked) {
    EXPECT_EQ(face::markedCaption("Set stop", 'o'), "Set st&op");
    EXPECT_EQ(face::markedCaption("Quit", 'Q'), "&Quit");
}

TEST(FaceCaptionTest, TheLetterAsItIsWrittenComesBeforeTheSameInAnotherCase) {
    EXPECT_EQ(face::markedCaption("Sort by: Time", 'T'), "Sort by: &Time");
    EXPECT_EQ(face::markedCaption("Statistics", 't'), "S&tatistics");
    EXPECT_EQ(face::markedCaption("Quit", 'q'), "&Quit");
}

TEST(FaceCaptionTest, NothingIsMarkedWithoutAMnemonic) {
    EXPECT_EQ(face::markedCaption("Quit", 0), "Quit");
}

TEST(FaceCaptionTest, ALetterThatIsNotThereMarksNothing) {
    EXPECT_EQ(face::markedCaption("Quit", 'x'), "Quit");
}

TEST(FaceCaptionTest, AMarkInTheCaptionIsDoubledSoThatItIsShown) {
    EXPECT_EQ(face::markedCaption("Sent & received", 0), "Sent && received");
    EXPECT_EQ(face::markedCaption("Sent & received", 'r'), "Sent && &received");
    EXPECT_EQ(face::markedCaption("&&", 0), "&&&&");
}

} // namespace
} // namespace tarvik
