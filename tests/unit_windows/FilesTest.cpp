#include "windows/services/WindowsFiles.h"

#include "support/TemporaryFolder.h"
#include "windows/services/FileHandle.h"

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

TEST_F(FilesTest, AReplacedFileHoldsAllPiecesInOrder) {
    EXPECT_FALSE(files.replace(path, {"one ", "", "two"}));

    EXPECT_EQ(content(), "one two");
}

TEST_F(FilesTest, EveryByteIsKept) {
    std::string bytes("\0\r\n\x1A\xFF", 5);
    bytes.append(3'000'000, 'x');

    files.replace(path, {bytes});

    EXPECT_EQ(content(), bytes);
}

TEST_F(FilesTest, NothingIsLeftBesideTheFile) {
    files.replace(path, {"a"});
    files.replace(path, {"b"});

    EXPECT_EQ(folder.names(), Names{"Tarvik.ini"});
}

TEST_F(FilesTest, TheAttributesOfTheOldFileStay) {
    files.replace(path, {"a"});
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_HIDDEN);
    const DWORD before = GetFileAttributesA(path.c_str());

    EXPECT_FALSE(files.replace(path, {"b"}));

    EXPECT_EQ(GetFileAttributesA(path.c_str()), before);
    EXPECT_EQ(content(), "b");
}

TEST_F(FilesTest, AReadOnlyFileStaysAsItWas) {
    files.replace(path, {"old"});
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);

    EXPECT_EQ(files.replace(path, {"new"}), ErrorNumber::PermissionDenied);

    EXPECT_EQ(content(), "old");
    EXPECT_EQ(folder.names(), Names{"Tarvik.ini"});
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
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

TEST_F(FilesTest, ADirectoryIsNeitherReadNorReplaced) {
    CreateDirectoryA(path.c_str(), nullptr);
    std::string bytes;

    EXPECT_EQ(files.Dir(path), FileKind::Directory);
    EXPECT_FALSE(files.stamp(path));
    EXPECT_TRUE(files.read(path, bytes));
    EXPECT_TRUE(files.replace(path, {"x"}));
    EXPECT_EQ(files.Kill(path), ErrorNumber::PathFileAccess);
    EXPECT_EQ(files.Dir(path), FileKind::Directory);
}

TEST_F(FilesTest, ADeviceIsNeitherReadNorReplaced) {
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

TEST_F(FilesTest, AMissingFolderIsToldAndNotMade) {
    EXPECT_EQ(files.replace(folder.path() + "\\none\\a", {"x"}), ErrorNumber::PathNotFound);

    EXPECT_TRUE(folder.names().empty());
}

TEST_F(FilesTest, TheHomeFolderIsMadeWhenSomethingIsFirstWrittenThere) {
    const std::string home = folder.path() + "\\Velmars Tarvik";
    WindowsFiles own(home);
    std::string bytes;
    EXPECT_EQ(own.read(home + "\\Tarvik.ini", bytes), ErrorNumber::PathNotFound);
    EXPECT_TRUE(folder.names().empty());

    EXPECT_FALSE(own.replace(home + "\\Tarvik.ini", {"x"}));

    EXPECT_EQ(own.Dir(home + "\\Tarvik.ini"), FileKind::File);
}

TEST_F(FilesTest, TheStampChangesWithEachReplacementAndEachWrite) {
    files.replace(path, {"a"});
    const auto first = files.stamp(path);
    EXPECT_EQ(first, files.stamp(path));

    files.replace(path, {"b"});
    const auto second = files.stamp(path);
    EXPECT_NE(first, second);

    {
        const FileHandle other = heldBy(GENERIC_WRITE, FILE_SHARE_READ);
        EXPECT_TRUE(writeAll(other, "longer"));
    }
    EXPECT_NE(second, files.stamp(path));
}

TEST_F(FilesTest, AFileThatIsNotThereHasNoStamp) {
    EXPECT_FALSE(files.stamp(path));
    EXPECT_EQ(files.Dir(path), FileKind::None);
}

TEST_F(FilesTest, ACopyIsWholeAndGoesOverWhatWasThere) {
    files.replace(path, {"new"});
    const std::string copy = folder.path() + "\\copy.ini";
    files.replace(copy, {"old"});

    EXPECT_FALSE(files.FileCopy(path, copy));

    EXPECT_EQ(contentOf(copy), "new");
    EXPECT_EQ(files.FileCopy(folder.path() + "\\none", copy), ErrorNumber::FileNotFound);
}

TEST_F(FilesTest, ADeletedFileIsGone) {
    files.replace(path, {"a"});

    EXPECT_FALSE(files.Kill(path));

    EXPECT_EQ(files.Dir(path), FileKind::None);
    EXPECT_EQ(files.Kill(path), ErrorNumber::FileNotFound);
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
