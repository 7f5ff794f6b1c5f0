#include "contracts/FilesUnderTest.h"

#include "support/TemporaryFolder.h"
#include "windows/services/FileHandle.h"
#include "windows/services/WindowsFiles.h"

#include <gtest/gtest.h>

#include <aclapi.h>

#include <optional>

namespace tarvik {
namespace {

/// The file's list has an entry that lets everybody read.
bool everybodyMayRead(const std::string& file) {
    PACL list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    EXPECT_EQ(GetNamedSecurityInfoA(file.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION,
                                    nullptr, nullptr, &list, nullptr, &descriptor),
              ERROR_SUCCESS)
        << file;
    char world[SECURITY_MAX_SID_SIZE];
    DWORD size = sizeof world;
    CreateWellKnownSid(WinWorldSid, nullptr, world, &size);
    bool may = false;
    for (DWORD i = 0; list != nullptr && i < list->AceCount; ++i) {
        void* entry = nullptr;
        GetAce(list, i, &entry);
        auto* const allowed = static_cast<ACCESS_ALLOWED_ACE*>(entry);
        may = may || (allowed->Header.AceType == ACCESS_ALLOWED_ACE_TYPE &&
                      EqualSid(&allowed->SidStart, world) != FALSE &&
                      (allowed->Mask & FILE_READ_DATA) != 0);
    }
    LocalFree(descriptor);
    return may;
}

/// Its owner alone may read and write the file from now on.
void giveToOwnerAlone(const std::string& file) {
    ASSERT_TRUE(everybodyMayRead(file)) << "a file here is private anyway: nothing is shown";
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR ofFile = nullptr;
    ASSERT_EQ(GetNamedSecurityInfoA(file.c_str(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION,
                                    &owner, nullptr, nullptr, nullptr, &ofFile),
              ERROR_SUCCESS);
    EXPLICIT_ACCESS_A entry{};
    entry.grfAccessPermissions = FILE_ALL_ACCESS;
    entry.grfAccessMode = SET_ACCESS;
    entry.Trustee.TrusteeForm = TRUSTEE_IS_SID;
    entry.Trustee.ptstrName = static_cast<LPSTR>(owner);
    PACL list = nullptr;
    ASSERT_EQ(SetEntriesInAclA(1, &entry, nullptr, &list), ERROR_SUCCESS);
    SECURITY_DESCRIPTOR own{};
    InitializeSecurityDescriptor(&own, SECURITY_DESCRIPTOR_REVISION);
    SetSecurityDescriptorDacl(&own, TRUE, list, FALSE);
    ASSERT_NE(SetFileSecurityA(file.c_str(), DACL_SECURITY_INFORMATION, &own), FALSE);
    LocalFree(list);
    LocalFree(ofFile);
}

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
