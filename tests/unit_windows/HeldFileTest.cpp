#include "support/FileBytes.h"
#include "support/TemporaryFolder.h"
#include "windows/services/FileHandle.h"
#include "windows/services/WindowsFiles.h"
#include "windows/services/WindowsHeldFile.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

using Outcome = Holding::Outcome;

class HeldFileTest : public testing::Test {
protected:
    std::string in(const std::string& name) const { return folder.path() + "\\" + name; }

    TemporaryFolder folder;
    WindowsFiles files;
    std::string path = in("Tarvik.journal");
    std::string ini = in("Tarvik.ini");
};

TEST_F(HeldFileTest, OthersMayReadItAndNeitherWriteNorRenameNorDeleteIt) {
    const Holding held = files.holdOrMake(path, 4, ini);
    held.file->write(0, "abcd");

    const FileHandle reader(CreateFileA(path.c_str(), GENERIC_READ,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                        nullptr, OPEN_EXISTING, 0, nullptr));
    std::string bytes;
    EXPECT_TRUE(readAll(reader, bytes));
    EXPECT_EQ(bytes, "abcd");
    const FileHandle writer(CreateFileA(path.c_str(), GENERIC_WRITE,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                        nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_FALSE(writer);
    EXPECT_FALSE(DeleteFileA(path.c_str()));
    EXPECT_FALSE(MoveFileA(path.c_str(), in("elsewhere").c_str()));
}

TEST_F(HeldFileTest, ADeviceIsRefused) {
    EXPECT_NE(files.hold("NUL").outcome, Outcome::Held);
}

TEST_F(HeldFileTest, WhatMayNotBeWrittenIsNotHeld) {
    files.replace(path, {"kept"});
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);

    EXPECT_EQ(files.holdOrMake(path, 16, ini).outcome, Outcome::Failed);

    EXPECT_EQ(contentOf(path), "kept");
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(HeldFileTest, WhatCannotBeDeletedIsStillHeld) {
    const Holding held = files.holdOrMake(path, 4, ini);
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);

    EXPECT_TRUE(held.file->remove());

    EXPECT_FALSE(held.file->write(0, "abcd"));
    std::string bytes;
    EXPECT_FALSE(held.file->read(bytes));
    EXPECT_EQ(bytes, "abcd");
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

/// The user looks at a window that stands still meanwhile.
TEST_F(HeldFileTest, ARunWaitsOnceForWhatAnotherProgramHasOpen) {
    files.replace(path, {"kept"});
    const FileHandle other(
        CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(other);
    Patience patience;

    EXPECT_EQ(holdFile(path, patience).outcome, Outcome::Busy);

    EXPECT_FALSE(patience.pause());
    EXPECT_EQ(holdFile(path, patience).outcome, Outcome::Busy);
}

} // namespace
} // namespace tarvik
