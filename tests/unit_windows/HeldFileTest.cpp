#include "support/FileBytes.h"
#include "support/TemporaryFolder.h"
#include "windows/services/FileHandle.h"
#include "windows/services/WindowsFiles.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

using Outcome = Holding::Outcome;

class WindowsMachine {
public:
    TemporaryFolder folder;
    WindowsFiles files;
    WindowsFiles others;

    std::string in(const std::string& name) const { return folder.path() + "\\" + name; }
    void makeFolder(const std::string& path) const { CreateDirectoryA(path.c_str(), nullptr); }
};

class HeldFileTest : public testing::Test {
protected:
    WindowsMachine machine;
    Files& files = machine.files;
    std::string path = machine.in("Tarvik.journal");
    std::string ini = machine.in("Tarvik.ini");
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
    EXPECT_FALSE(MoveFileA(path.c_str(), machine.in("elsewhere").c_str()));
}

TEST_F(HeldFileTest, AFileOfTwoNamesIsRefused) {
    files.replace(machine.in("target"), {"somebody's"});
    if (CreateHardLinkA(path.c_str(), machine.in("target").c_str(), nullptr) == FALSE) {
        GTEST_SKIP() << "no second name can be made";
    }

    EXPECT_EQ(files.holdOrMake(path, 16, ini).outcome, Outcome::Refused);
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

TEST_F(HeldFileTest, WhatIsMuchTooLongIsNotRead) {
    files.replace(path, {std::string(2'000'000, 'x')});
    const Holding held = files.hold(path);
    std::string bytes;

    EXPECT_TRUE(held.file->read(bytes));
}

TEST_F(HeldFileTest, InAFolderThatIsNotThereNoneIsMade) {
    const std::string nowhere = machine.in("nowhere") + "\\Tarvik.journal";

    EXPECT_EQ(files.hold(nowhere).outcome, Outcome::Absent);
    EXPECT_EQ(files.holdOrMake(nowhere, 16, ini).outcome, Outcome::Failed);
}

TEST_F(HeldFileTest, TheUsersOwnFolderIsMadeForIt) {
    WindowsFiles atHome(machine.in("home"));

    EXPECT_EQ(atHome.holdOrMake(machine.in("home") + "\\Tarvik.journal", 16, {}).outcome,
              Outcome::Held);
}

} // namespace
} // namespace tarvik
