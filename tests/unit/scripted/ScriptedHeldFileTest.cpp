#include "scripted/ScriptedFiles.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

constexpr const char* heldPath = "C:\\Prog\\Tarvik.journal";

TEST(ScriptedHeldFileTest, APowerCutTakesWhatWasNotFlushed) {
    ScriptedFiles files;
    const Holding held = files.holdOrMake(heldPath, 4, {});
    held.file->write(0, "abcd");
    held.file->flush();
    held.file->write(0, "xyz");

    files.cutPower(1);

    EXPECT_EQ(files.file(heldPath), "xbcd");
}

TEST(ScriptedHeldFileTest, WhatWasDoneSinceIsUndoneAndNoStampIsGivenTwice) {
    ScriptedFiles files;
    files.setFile("C:\\Prog\\a", "before");
    const ScriptedFiles then = files;
    files.setFile("C:\\Prog\\a", "behind");
    files.setFile("C:\\Prog\\b", "new");
    const auto read = files.stamp("C:\\Prog\\a");

    files.goBackTo(then);

    EXPECT_EQ(files.file("C:\\Prog\\a"), "before");
    EXPECT_FALSE(files.exists("C:\\Prog\\b"));
    files.setFile("C:\\Prog\\a", "beyond");
    EXPECT_NE(files.stamp("C:\\Prog\\a"), read);
}

TEST(ScriptedHeldFileTest, AFailureStrikesEverythingUntilItIsOver) {
    ScriptedFiles files;
    const Holding held = files.holdOrMake(heldPath, 4, {});
    files.holdFailure = ErrorNumber::DiskFull;

    EXPECT_EQ(held.file->write(0, "a"), ErrorNumber::DiskFull);
    EXPECT_EQ(held.file->flush(), ErrorNumber::DiskFull);
    EXPECT_EQ(files.holdOrMake("C:\\Prog\\b", 4, {}).outcome, Holding::Outcome::Failed);

    files.holdFailure.reset();
    EXPECT_FALSE(held.file->write(0, "a"));
}

} // namespace
} // namespace tarvik
