#include "windows/services/WindowsFiles.h"

#include "common/ProfileEngine.h"
#include "contracts/FilesUnderTest.h"
#include "scripted/ScriptedPlatform.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsLog.h"
#include "startup/mdlStartUp.h"
#include "support/TemporaryFolder.h"
#include "windows/services/FileHandle.h"
#include "wiring/World.h"

#include <gtest/gtest.h>
#include <winioctl.h>

namespace tarvik {
namespace {

using Names = std::vector<std::string>;

/// Makes a file of 3 GiB, more than a program of 32 bits can take in at once. It takes no room on
/// disks that leave out what was never written.
void makeHuge(const std::string& path) {
    const FileHandle file(CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD unused = 0;
    DeviceIoControl(file.get(), FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &unused, nullptr);
    LARGE_INTEGER size{};
    size.QuadPart = 3LL << 30U;
    ASSERT_TRUE(SetFilePointerEx(file.get(), size, nullptr, FILE_BEGIN) != FALSE &&
                SetEndOfFile(file.get()) != FALSE);
}

class FilesTest : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string path = folder.path() + "\\Tarvik.ini";
    WindowsFiles files;

    std::string contentOf(const std::string& file) {
        std::string bytes;
        EXPECT_FALSE(files.read(file, bytes));
        return bytes;
    }
    std::string content() { return contentOf(path); }

    /// The file as another program holds it open, with what it lets others do meanwhile.
    FileHandle heldBy(DWORD access, DWORD sharing) const {
        FileHandle file(CreateFileA(path.c_str(), access, sharing, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
        EXPECT_TRUE(file);
        return file;
    }
};

TEST_F(FilesTest, TheAttributesOfTheOldFileStay) {
    files.replace(path, {"a"});
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_HIDDEN);
    const DWORD before = GetFileAttributesA(path.c_str());

    EXPECT_FALSE(files.replace(path, {"b"}));

    EXPECT_EQ(GetFileAttributesA(path.c_str()), before);
    EXPECT_EQ(content(), "b");
}

TEST_F(FilesTest, AFileThatAnotherProgramWritesToCanBeRead) {
    files.replace(path, {"shared"});

    const FileHandle other = heldBy(GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);

    EXPECT_EQ(content(), "shared");
}

TEST_F(FilesTest, AFileThatOthersMayDeleteIsOldOrNewAsTheSystemAllows) {
    files.replace(path, {"old"});
    const FileHandle other =
        heldBy(GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);

    const FileResult result = files.replace(path, {"new"});

    // Newer systems replace it, older ones do not.
    EXPECT_TRUE(!result || result == ErrorNumber::PermissionDenied);
    EXPECT_EQ(content(), result ? "old" : "new");
    EXPECT_EQ(folder.names(), Names{"Tarvik.ini"});
}

TEST_F(FilesTest, AFileThatIsHeldFastStaysAsItWas) {
    files.replace(path, {"old"});
    const FileHandle other = heldBy(GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);

    EXPECT_EQ(files.replace(path, {"new"}), ErrorNumber::PermissionDenied);

    EXPECT_EQ(content(), "old");
    EXPECT_EQ(folder.names(), Names{"Tarvik.ini"});
}

TEST_F(FilesTest, AFileThatIsHeldAloneCannotBeRead) {
    files.replace(path, {"old"});
    const FileHandle other = heldBy(GENERIC_READ | GENERIC_WRITE, 0);
    std::string bytes = "before";

    EXPECT_EQ(files.read(path, bytes), ErrorNumber::PermissionDenied);

    EXPECT_EQ(bytes, "");
}

TEST_F(FilesTest, WhatHasTheNameOfADeviceIsNoFileInAnyCase) {
    for (const char* name : {"NUL", "con", "Aux", "LPT1", "CONIN$"}) {
        std::string bytes;

        EXPECT_EQ(files.Dir(name), FileKind::Other) << name;
        EXPECT_EQ(files.read(name, bytes), ErrorNumber::PathFileAccess) << name;
        EXPECT_EQ(files.replace(name, {"x"}), ErrorNumber::PathFileAccess) << name;
        EXPECT_FALSE(files.stamp(name)) << name;
    }
}

TEST_F(FilesTest, APipeIsNotEvenOpened) {
    const std::string name = "\\\\.\\pipe\\tarvik-test-" + std::to_string(GetCurrentProcessId());
    const FileHandle pipe(
        CreateNamedPipeA(name.c_str(), PIPE_ACCESS_DUPLEX, 0, 1, 16, 16, 0, nullptr));
    ASSERT_TRUE(pipe);
    std::string bytes;

    EXPECT_EQ(files.read(name, bytes), ErrorNumber::PathFileAccess);
    EXPECT_FALSE(files.stamp(name));
    EXPECT_EQ(files.Dir(name), FileKind::Other);

    // Its only place is still free.
    const FileHandle client(
        CreateFileA(name.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_TRUE(client);
}

TEST_F(FilesTest, AFileThatMemoryCannotHoldIsNotRead) {
    makeHuge(path);
    std::string bytes = "before";

    EXPECT_EQ(files.read(path, bytes), ErrorNumber::PathFileAccess);

    EXPECT_EQ(bytes, "");
}

TEST_F(FilesTest, AFileThatEverybodyMayReadStaysOne) {
    const auto machine = filesUnderTest();
    const std::string copy = folder.path() + "\\copy.ini";
    files.replace(path, {"old"});
    const bool before = machine->isPrivate(path);

    files.replace(path, {"new"});
    files.FileCopy(path, copy);

    EXPECT_EQ(machine->isPrivate(path), before);
    EXPECT_EQ(machine->isPrivate(copy), before);
}

TEST_F(FilesTest, AFileThatIsHeldAloneOnlyWhileItIsLoadedIsNotWrittenOver) {
    const std::string years = "[Settings]\r\nLastState=r\r\nDateStamp1=r\r\nLastDateStamp=1\r\n"
                              "RefreshInterval=200\r\n[r]\r\nRcvd=7\r\n";
    files.replace(path, {years});
    ScriptedPlatform machine;
    machine.program.folderPath = folder.path();
    ProfileEngine profile(files, "\r\n");
    Platform platform = machine.withFiles(profile, files);
    World world(platform);
    std::string told;
    machine.desktop.answerAny = [&](const MsgBoxRequest& request) {
        told = request.text;
        return MsgBoxAnswer::Ok;
    };
    {
        const FileHandle alone = heldBy(GENERIC_READ, 0);
        InitApplicationStatus();
    }
    world.state.BytesRcvdTotal = 1;

    EXPECT_FALSE(SaveState());

    EXPECT_EQ(told, "Warning: Old settings could not be loaded.\rAssuming first run.");
    EXPECT_EQ(content(), years);
}

struct ErrorCase {
    DWORD system;
    ErrorNumber number;
};

class ErrorTest : public testing::TestWithParam<ErrorCase> {};

TEST_P(ErrorTest, TheSystemsErrorsAreRunTimeErrors) {
    EXPECT_EQ(errorNumberOf(GetParam().system), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(All, ErrorTest,
                         testing::Values(ErrorCase{2, ErrorNumber::FileNotFound},
                                         ErrorCase{3, ErrorNumber::PathNotFound},
                                         ErrorCase{5, ErrorNumber::PermissionDenied},
                                         ErrorCase{19, ErrorNumber::PermissionDenied},
                                         ErrorCase{32, ErrorNumber::PermissionDenied},
                                         ErrorCase{39, ErrorNumber::DiskFull},
                                         ErrorCase{112, ErrorNumber::DiskFull},
                                         ErrorCase{1295, ErrorNumber::DiskFull},
                                         ErrorCase{1784, ErrorNumber::PathFileAccess}));

} // namespace
} // namespace tarvik
