#include "common/ProfileEngine.h"
#include "support/FileBytes.h"
#include "support/TemporaryFolder.h"
#include "windows/services/FileHandle.h"
#include "windows/services/WindowsFiles.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

class ProfileOnWindowsTest : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string path = folder.path() + "\\Tarvik.ini";
    WindowsFiles files;
    ProfileEngine engine{files, "\r\n"};

    std::string value(const std::string& section, const std::string& key) {
        char buffer[128];
        engine.GetPrivateProfileStringA(section, key, "none", buffer, sizeof buffer, path);
        return buffer;
    }
    FileHandle held(DWORD access, DWORD sharing) const {
        return FileHandle(CreateFileA(path.c_str(), access, sharing, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    }
};

TEST_F(ProfileOnWindowsTest, TheFirstWriteMakesTheFileWithLinesOfThisSystem) {
    EXPECT_TRUE(engine.WritePrivateProfileStringA("a", "x", "1", path));

    EXPECT_EQ(contentOf(path), "[a]\r\nx=1\r\n");
}

TEST_F(ProfileOnWindowsTest, BytesOfTheCodePageSurvive) {
    EXPECT_TRUE(engine.WritePrivateProfileStringA("\xC4rger", "\xE9t\xE9", "\x80 \xDF\xFF", path));

    EXPECT_EQ(contentOf(path), "[\xC4rger]\r\n\xE9t\xE9=\x80 \xDF\xFF\r\n");
    EXPECT_EQ(value("\xC4rger", "\xE9t\xE9"), "\x80 \xDF\xFF");
}

TEST_F(ProfileOnWindowsTest, WhatAnotherProgramWroteIsSeenAtOnce) {
    engine.WritePrivateProfileStringA("a", "x", "1", path);
    EXPECT_EQ(value("a", "x"), "1");

    ::WritePrivateProfileStringA("a", "x", "2", path.c_str());
    ::WritePrivateProfileStringA(nullptr, nullptr, nullptr, path.c_str());

    EXPECT_EQ(value("a", "x"), "2");
}

TEST_F(ProfileOnWindowsTest, AFileThatAnotherProgramHoldsOpenIsStillRead) {
    engine.WritePrivateProfileStringA("a", "x", "1", path);

    const FileHandle other = held(GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE);

    ASSERT_TRUE(other);
    EXPECT_EQ(value("a", "x"), "1");
}

TEST_F(ProfileOnWindowsTest, AFileThatAnotherProgramHoldsFastIsNotWrittenAndSaysSo) {
    engine.WritePrivateProfileStringA("a", "x", "1", path);
    {
        const FileHandle other = held(GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
        ASSERT_TRUE(other);

        EXPECT_FALSE(engine.WritePrivateProfileStringA("a", "x", "2", path));

        EXPECT_EQ(contentOf(path), "[a]\r\nx=1\r\n");
    }
    EXPECT_TRUE(engine.WritePrivateProfileStringA("a", "x", "3", path));
    EXPECT_EQ(value("a", "x"), "3");
}

TEST_F(ProfileOnWindowsTest, AnUpdateOfManyKeysIsOneNewFile) {
    engine.WritePrivateProfileStringA("a", "x", "1", path);
    const auto before = files.stamp(path);

    engine.beginUpdate(path);
    for (int i = 0; i < 50; ++i) {
        engine.WritePrivateProfileStringA("a", "key" + std::to_string(i), "1", path);
    }
    EXPECT_EQ(files.stamp(path), before);

    EXPECT_EQ(engine.commitUpdate(), UpdateOutcome::Written);
    EXPECT_NE(files.stamp(path)->identity, before->identity);
    EXPECT_EQ(value("a", "key49"), "1");
}

TEST_F(ProfileOnWindowsTest, AReadOnlyFileIsNotWritten) {
    engine.WritePrivateProfileStringA("a", "x", "1", path);
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);

    EXPECT_FALSE(engine.WritePrivateProfileStringA("a", "x", "2", path));

    EXPECT_EQ(value("a", "x"), "1");
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

} // namespace
} // namespace tarvik
