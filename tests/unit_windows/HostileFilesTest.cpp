#include "windows/services/WindowsFiles.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarvik {
namespace {

using Names = std::vector<std::string>;

class HostileFilesTest : public testing::Test {
protected:
    TemporaryFolder folder;
    WindowsFiles files;
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
