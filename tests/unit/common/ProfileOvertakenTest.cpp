#include "common/ProfileTest.h"

namespace tarvik {
namespace {

using namespace std::string_view_literals;

/// Another program that writes to the file while the engine is at it.
class ProfileOvertakenTest : public ProfileTest {
protected:
    /// The other program puts these bytes there once, when everything is ready to be replaced.
    void putBeforeTheLastLook(std::string bytes) {
        files.beforeLastLook = [this, bytes] {
            given(bytes);
            files.beforeLastLook = nullptr; // nothing of this is used any more
        };
    }
};

TEST_F(ProfileOvertakenTest, AnUpdateThatHasReadAnOlderFileIsNotWritten) {
    given("[a]\nnewest=1\n");
    engine.beginUpdate(file);
    EXPECT_EQ(value("a", "newest"), "1");
    write("a", "newest", "2");
    given("[a]\nnewest=2\nforeign=1\n");

    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Overtaken);

    EXPECT_EQ(bytes(), "[a]\nnewest=2\nforeign=1\n");
}

TEST_F(ProfileOvertakenTest, AnUpdateThatHasReadTwoVersionsIsNotWritten) {
    given("[a]\nx=1\n");
    engine.beginUpdate(file);
    EXPECT_EQ(value("a", "x"), "1");
    given("[a]\nx=2\n");
    EXPECT_EQ(value("a", "x"), "2");
    write("a", "y", "3");

    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Overtaken);

    EXPECT_EQ(bytes(), "[a]\nx=2\n");
}

TEST_F(ProfileOvertakenTest, TheLastLookComesWhenEverythingElseIsReady) {
    given("[a]\nnewest=1\n");
    engine.beginUpdate(file);
    EXPECT_EQ(value("a", "newest"), "1");
    write("a", "newest", "2");
    putBeforeTheLastLook("[a]\nnewest=7\n");

    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Overtaken);

    EXPECT_EQ(bytes(), "[a]\nnewest=7\n");
}

TEST_F(ProfileOvertakenTest, AFileThatGoesOrComesIsAnotherVersion) {
    given("[a]\nx=1\n");
    engine.beginUpdate(file);
    value("a", "x");
    write("a", "x", "2");
    files.Kill(file);
    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Overtaken);
    EXPECT_FALSE(files.exists(file));

    engine.beginUpdate(file);
    value("a", "x");
    write("a", "x", "2");
    given("[b]\n");
    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Overtaken);
    EXPECT_EQ(bytes(), "[b]\n");
}

TEST_F(ProfileOvertakenTest, TheUpdateAfterItIsWrittenOverWhatCameBetween) {
    given("[a]\nnewest=1\n");
    engine.beginUpdate(file);
    value("a", "newest");
    write("a", "newest", "2");
    given("[a]\nnewest=2\n");
    engine.commitUpdate();

    engine.beginUpdate(file);
    EXPECT_EQ(value("a", "newest"), "2");
    write("a", "newest", "3");

    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Written);
    EXPECT_EQ(bytes(), "[a]\nnewest=3\n");
}

TEST_F(ProfileOvertakenTest, WhatRestsOnNothingReadGoesOnTopOfWhatCameBetween) {
    given("[a]\nx=1\n");
    engine.beginUpdate(file);
    write("a", "y", "2");
    given("[b]\nforeign=1\n[a]\nx=9\n");

    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Written);

    EXPECT_EQ(bytes(), "[b]\nforeign=1\n[a]\nx=9\ny=2\n");
}

TEST_F(ProfileOvertakenTest, ASingleWriteIsTriedAgainOnWhatCameBetween) {
    given("[a]\nx=1\n");
    putBeforeTheLastLook("[a]\nx=1\nforeign=1\n");

    EXPECT_TRUE(write("a", "y", "2"));

    EXPECT_EQ(bytes(), "[a]\nx=1\nforeign=1\ny=2\n");
}

TEST_F(ProfileOvertakenTest, AFileThatChangesAllTheTimeIsGivenUp) {
    given("[a]\nx=1\n");
    int changes = 0;
    files.beforeLastLook = [&] { given("[a]\nx=" + std::to_string(++changes) + "\n"); };

    EXPECT_FALSE(write("a", "y", "2"));

    EXPECT_EQ(changes, 5);
    EXPECT_EQ(bytes(), "[a]\nx=5\n");
}

TEST_F(ProfileOvertakenTest, AFileThatWasJustEmptiedIsLeftToWhoeverWritesIt) {
    given("[a]\nnewest=7\n");
    EXPECT_EQ(value("a", "newest"), "7");
    files.overwrite(file, "");

    EXPECT_EQ(value("a", "newest"), "none");
    EXPECT_FALSE(write("a", "newest", "1"));
    engine.beginUpdate(file);
    value("a", "newest");
    write("a", "newest", "1");
    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Failed);

    EXPECT_EQ(bytes(), "");
    files.overwrite(file, "[a]\nnewest=8\n");
    EXPECT_EQ(value("a", "newest"), "8");
}

TEST_F(ProfileOvertakenTest, AnEmptyFileInThePlaceOfAFullOneIsWritten) {
    given("[a]\ny=1\n");
    EXPECT_EQ(value("a", "y"), "1");
    given("");

    EXPECT_TRUE(write("a", "x", "1"));

    EXPECT_EQ(bytes(), "[a]\nx=1\n");
}

TEST_F(ProfileOvertakenTest, AReadingTellsWhetherTheFileCanBeRead) {
    EXPECT_TRUE(ProfileReading(engine, file).readable());
    given("[a]\nx=1\n");
    EXPECT_TRUE(ProfileReading(engine, file).readable());
    given("[a]\nx=2\n");
    files.readsFail = true;
    EXPECT_FALSE(ProfileReading(engine, file).readable());
}

} // namespace
} // namespace tarvik
