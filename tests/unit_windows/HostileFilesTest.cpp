#include "windows/services/FileHandle.h"
#include "windows/services/WindowsFiles.h"

#include "common/ProfileEngine.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>

namespace tarvik {
namespace {

using Names = std::vector<std::string>;

class HostileFilesTest : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string path = folder.path() + "\\Tarvik.ini";
    WindowsFiles files;

    void put(const std::string& name, const std::string& bytes) {
        ASSERT_FALSE(WindowsFiles().replace(folder.path() + "\\" + name, {bytes}));
    }
    /// A file of that name as an interrupted write leaves it, or as one under way has it.
    FileHandle temporary(const std::string& name) const {
        return FileHandle(CreateFileA((folder.path() + "\\" + name).c_str(), GENERIC_WRITE,
                                      FILE_SHARE_DELETE, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
                                      nullptr));
    }
};

TEST_F(HostileFilesTest, ADeviceInTheFolderIsNeitherReadNorReplaced) {
    for (const char* name : {"NUL", "nul", "CON", "AUX", "PRN", "COM1", "LPT9"}) {
        const std::string device = folder.path() + "\\" + name;
        std::string bytes = "before";

        // Newer systems take some of these names for files like others.
        if (files.Dir(device) == FileKind::None) {
            continue;
        }
        EXPECT_EQ(files.read(device, bytes), ErrorNumber::PathFileAccess) << name;
        EXPECT_EQ(files.replace(device, {"x"}), ErrorNumber::PathFileAccess) << name;
        EXPECT_EQ(bytes, "") << name;
    }
    EXPECT_EQ(folder.names(), Names{});
}

TEST_F(HostileFilesTest, ADirectoryAsSettingsHasNoKeysAndStays) {
    CreateDirectoryA(path.c_str(), nullptr);
    ProfileEngine engine(files, "\r\n");
    std::array<char, 16> buffer{};

    EXPECT_EQ(engine.GetPrivateProfileStringA("a", "x", "none", buffer.data(), 16, path), 4U);
    EXPECT_FALSE(engine.WritePrivateProfileStringA("a", "x", "1", path));

    EXPECT_EQ(files.Dir(path), FileKind::Directory);
    EXPECT_EQ(folder.names(), Names{"Tarvik.ini"});
}

TEST_F(HostileFilesTest, NamesThatTheSystemForbidsAreToldAndNothingIsWritten) {
    for (const char* name : {"a<b", "a>b", "a|b", "a?b", "a*b", "a\"b", "a\nb",
                             "a\x01"
                             "b"}) {
        EXPECT_TRUE(files.replace(folder.path() + "\\" + name, {"x"})) << name;
    }
    EXPECT_EQ(folder.names(), Names{});
}

TEST_F(HostileFilesTest, OddNamesThatTheSystemAllowsAreWritten) {
    const Names odd{" leading", "-dash", "[x];y=z", "it's 100%", "semi;colon, and more"};
    for (const std::string& name : odd) {
        EXPECT_FALSE(files.replace(folder.path() + "\\" + name, {name})) << name;

        std::string bytes;
        EXPECT_FALSE(files.read(folder.path() + "\\" + name, bytes)) << name;
        EXPECT_EQ(bytes, name);
    }
    EXPECT_EQ(folder.names().size(), odd.size());
}

} // namespace
} // namespace tarvik
