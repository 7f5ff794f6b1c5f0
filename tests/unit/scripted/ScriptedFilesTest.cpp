#include "scripted/ScriptedFiles.h"

#include "scripted/ScriptedProfile.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

using Texts = std::vector<std::string>;

class ScriptedFilesTest : public testing::Test {
protected:
    static constexpr const char* path = "C:\\Prog\\Tarvik.ini";

    ScriptedFiles files;
    std::string bytes = "untouched";
};

TEST_F(ScriptedFilesTest, WhatIsThereIsTold) {
    files.setFile(path, "");
    files.setKind("C:\\Prog", FileKind::Directory);
    files.setKind("CON", FileKind::Other);

    EXPECT_EQ(files.Dir(path), FileKind::File);
    EXPECT_EQ(files.Dir("C:\\Prog"), FileKind::Directory);
    EXPECT_EQ(files.Dir("CON"), FileKind::Other);
    EXPECT_EQ(files.Dir("D:\\"), FileKind::None);
}

TEST_F(ScriptedFilesTest, AReplacedFileHoldsThePiecesJoined) {
    EXPECT_EQ(files.replace(path, {"[Set", "", "tings]\r\n"}), std::nullopt);

    EXPECT_EQ(files.file(path), "[Settings]\r\n");
    EXPECT_EQ(files.replacements, 1);
}

TEST_F(ScriptedFilesTest, AReadGivesAllBytesAndIsCounted) {
    files.setFile(path, std::string("a\0b", 3));

    EXPECT_EQ(files.read(path, bytes), std::nullopt);

    EXPECT_EQ(bytes, std::string("a\0b", 3));
    EXPECT_EQ(files.reads, 1);
}

TEST_F(ScriptedFilesTest, AnUnreadableFileIsThereButCannotBeRead) {
    files.setFile(path, "secret");
    files.setUnreadable(path);

    EXPECT_EQ(files.read(path, bytes), ErrorNumber::PermissionDenied);

    EXPECT_EQ(bytes, "");
    EXPECT_EQ(files.Dir(path), FileKind::File);
}

TEST_F(ScriptedFilesTest, ReadsAndReplacementsFailOnDemand) {
    files.setFile(path, "old");
    files.readFailure = ErrorNumber::PathFileAccess;
    files.replaceFailure = ErrorNumber::DiskFull;

    EXPECT_EQ(files.read(path, bytes), ErrorNumber::PathFileAccess);
    EXPECT_EQ(files.replace(path, {"new"}), ErrorNumber::DiskFull);
    files.replaceFailure.reset();
    EXPECT_EQ(files.replace(path, {"new"}), std::nullopt);

    EXPECT_EQ(files.file(path), "new");
}

TEST_F(ScriptedFilesTest, ADiskMayBecomeFullAfterSomeReplacements) {
    files.replaceFailure = ErrorNumber::DiskFull;
    files.replacementsLeft = 2;

    EXPECT_EQ(files.replace(path, {"1"}), std::nullopt);
    EXPECT_EQ(files.replace(path, {"2"}), std::nullopt);
    EXPECT_EQ(files.replace(path, {"3"}), ErrorNumber::DiskFull);
    EXPECT_EQ(files.replace(path, {"4"}), ErrorNumber::DiskFull);

    EXPECT_EQ(files.file(path), "2");
}

TEST_F(ScriptedFilesTest, TheStampChangesWithEachWriteEvenOfTheSameBytes) {
    files.setFile(path, "same");
    const auto first = files.stamp(path);
    files.replace(path, {"same"});
    const auto second = files.stamp(path);
    files.setFile(path, "same");

    EXPECT_NE(first, second);
    EXPECT_NE(second, files.stamp(path));
    EXPECT_EQ(files.stamp(path), files.stamp(path));
}

class ScriptedProfileTest : public ScriptedFilesTest {
protected:
    ScriptedProfile profile{files, "\r\n"};
};

TEST_F(ScriptedProfileTest, WritesAreNotedInOrderAndReachTheFile) {
    EXPECT_TRUE(profile.WritePrivateProfileStringA("Settings", "IsLocked", "1", path));
    EXPECT_TRUE(profile.WritePrivateProfileSectionA("Record", std::string_view("a=1\0", 4), path));

    EXPECT_EQ(profile.written, (Texts{"Settings/IsLocked", "Record"}));
    EXPECT_EQ(files.file(path), "[Settings]\r\nIsLocked=1\r\n[Record]\r\na=1\r\n");
}

TEST_F(ScriptedProfileTest, AKeyOrEverySectionFailsOnDemand) {
    profile.failingKeys.insert("LastState");
    profile.sectionsFail = true;

    EXPECT_FALSE(profile.WritePrivateProfileStringA("Settings", "LastState", "x", path));
    EXPECT_TRUE(profile.WritePrivateProfileStringA("Settings", "IsLocked", "1", path));
    EXPECT_FALSE(profile.WritePrivateProfileSectionA("Record", std::string_view("a=1\0", 4), path));

    EXPECT_EQ(profile.written, (Texts{"Settings/LastState", "Settings/IsLocked", "Record"}));
    EXPECT_EQ(files.file(path), "[Settings]\r\nIsLocked=1\r\n");
}

} // namespace
} // namespace tarvik
