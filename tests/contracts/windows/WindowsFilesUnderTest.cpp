#include "contracts/FilesUnderTest.h"

#include "support/AccessEntries.h"
#include "support/TemporaryFolder.h"
#include "windows/services/FileHandle.h"
#include "windows/services/WindowsFiles.h"

#include <gtest/gtest.h>

#include <optional>

namespace tarvik {
namespace {

class WindowsFilesUnderTest : public FilesUnderTest {
public:
    ~WindowsFilesUnderTest() override {
        for (const std::string& path : readOnly_) {
            SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        }
    }

    Files& files() override { return files_; }
    Files& others() override { return others_; }
    Files& withHome(const std::string& home) override { return withHome_.emplace(home); }

    const std::string& folder() const override { return folder_.path(); }
    char separator() const override { return '\\'; }
    const char* lineEnd() const override { return "\r\n"; }
    std::vector<std::string> names() const override { return folder_.names(); }
    std::string device() const override { return "NUL"; }
    ErrorNumber missingFolder() const override { return ErrorNumber::PathNotFound; }

    void makeFolder(const std::string& path) override {
        EXPECT_NE(CreateDirectoryA(path.c_str(), nullptr), FALSE);
    }
    void makeReadOnly(const std::string& path) override {
        EXPECT_NE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY), FALSE);
        readOnly_.push_back(path);
    }
    void makePrivate(const std::string& path) override { giveToOwnerAlone(path); }
    bool isPrivate(const std::string& path) const override { return !everybodyMayRead(path); }
    bool giveSecondName(const std::string& path, const std::string& name) override {
        return CreateHardLinkA(name.c_str(), path.c_str(), nullptr) != FALSE;
    }
    void writeInPlace(const std::string& path, const std::string& bytes) override {
        const FileHandle file(CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        EXPECT_TRUE(writeAll(file, bytes));
    }

    std::string temporaryName() const override { return "~tarvik4711-123456.tmp"; }
    std::vector<std::string> similarNames() const override {
        return {"tarvik4711-1.tmp", "~tarvik-notes.tmp", "~tarvik.tmp", "~tarvik4711-1-2.tmp",
                "~tarvik4711-1.tmp2"};
    }
    std::shared_ptr<void> beginWriting(const std::string& path) override {
        auto file = std::make_shared<FileHandle>(CreateFileA(path.c_str(), GENERIC_WRITE,
                                                             FILE_SHARE_DELETE, nullptr, CREATE_NEW,
                                                             FILE_ATTRIBUTE_NORMAL, nullptr));
        EXPECT_TRUE(*file);
        return file;
    }

private:
    TemporaryFolder folder_;
    WindowsFiles files_;
    WindowsFiles others_;
    std::optional<WindowsFiles> withHome_;
    std::vector<std::string> readOnly_;
};

} // namespace

std::unique_ptr<FilesUnderTest> filesUnderTest() {
    return std::make_unique<WindowsFilesUnderTest>();
}

} // namespace tarvik
