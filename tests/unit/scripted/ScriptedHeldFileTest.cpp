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
