#include "common/ProfileEngine.h"
#include "scripted/ScriptedPlatform.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsBackup.h"
#include "settings/mdlSettingsLog.h"
#include "startup/mdlStartUp.h"
#include "support/TemporaryFolder.h"
#include "windows/services/FileHandle.h"
#include "windows/services/WindowsFiles.h"
#include "wiring/World.h"

#include <gtest/gtest.h>

#include <aclapi.h>

namespace tarvik {
namespace {

/// Who may read what is made of a file, on real files.
class FileRightsTest : public testing::Test {
protected:
    FileRightsTest() {
        machine.program.folderPath = folder.path();
        machine.program.separator = '\\';
    }

    /// A file that its owner alone may read and write.
    void givenPrivate(const std::string& file, const std::string& bytes) {
        ASSERT_FALSE(files.replace(file, {bytes}));
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
        ASSERT_FALSE(everybodyMayRead(file));
    }

    /// The file's list has an entry that lets everybody read.
    static bool everybodyMayRead(const std::string& file) {
        PACL list = nullptr;
        PSECURITY_DESCRIPTOR descriptor = nullptr;
        EXPECT_EQ(GetNamedSecurityInfoA(file.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION,
                                        nullptr, nullptr, &list, nullptr, &descriptor),
                  ERROR_SUCCESS);
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

    std::string content(const std::string& file) {
        std::string bytes;
        EXPECT_FALSE(files.read(file, bytes));
        return bytes;
    }

    TemporaryFolder folder;
    std::string path = folder.path() + "\\Tarvik.ini";
    std::string copy = folder.path() + "\\copy.ini";
    WindowsFiles files;
    ScriptedPlatform machine;
};

TEST_F(FileRightsTest, ASaveKeepsTheAccessList) {
    givenPrivate(path, "old");

    EXPECT_FALSE(files.replace(path, {"new"}));

    EXPECT_FALSE(everybodyMayRead(path));
    EXPECT_EQ(content(path), "new");
}

TEST_F(FileRightsTest, AFileThatEverybodyMayReadStaysOne) {
    files.replace(path, {"old"});
    const bool before = everybodyMayRead(path);

    files.replace(path, {"new"});
    files.FileCopy(path, copy);

    EXPECT_EQ(everybodyMayRead(path), before);
    EXPECT_EQ(everybodyMayRead(copy), before);
}

TEST_F(FileRightsTest, ACopyMayBeReadByThoseWhoMayReadTheOriginal) {
    givenPrivate(path, "secret");
    files.replace(copy, {"old"});

    EXPECT_FALSE(files.FileCopy(path, copy));

    EXPECT_FALSE(everybodyMayRead(copy));
    EXPECT_EQ(content(copy), "secret");
}

TEST_F(FileRightsTest, BackupAndFreshFileAreAsPrivateAsTheOldOne) {
    givenPrivate(path, "[Settings]\r\nLastState=r\r\nDateStamp1=r\r\nLastDateStamp=1\r\n[r]\r\n"
                       "Rcvd=7\r\n");
    ProfileEngine profile(files, "\r\n");
    Platform platform = machine.withFiles(profile, files);
    World world(platform);
    InitApplicationStatus();

    EXPECT_TRUE(BackupINIFile());
    world.state.BytesRcvdTotal = 9;
    EXPECT_TRUE(SaveState());

    EXPECT_FALSE(everybodyMayRead(folder.path() + "\\Tarvik.2026-11-16.ini"));
    EXPECT_FALSE(everybodyMayRead(path));
}

TEST_F(FileRightsTest, ANameThatSomethingHasIsNotGivenAndBothStay) {
    files.replace(path, {"mine"});
    files.replace(copy, {"other"});

    EXPECT_EQ(files.Name(path, copy), ErrorNumber::FileAlreadyExists);
    EXPECT_EQ(content(path), "mine");
    EXPECT_EQ(content(copy), "other");

    files.Kill(copy);
    EXPECT_FALSE(files.Name(path, copy));
    EXPECT_EQ(folder.names(), std::vector<std::string>{"copy.ini"});
}

TEST_F(FileRightsTest, ALastLookThatFindsAnotherFileLeavesIt) {
    files.replace(path, {"old"});

    EXPECT_EQ(files.replaceIf(path, {"new"},
                              [&] {
                                  WindowsFiles().replace(path, {"another's"});
                                  return false;
                              }),
              ErrorNumber::PathFileAccess);

    EXPECT_EQ(content(path), "another's");
    EXPECT_EQ(folder.names(), std::vector<std::string>{"Tarvik.ini"});
}

TEST_F(FileRightsTest, AFileThatIsHeldAloneOnlyWhileItIsLoadedIsNotWrittenOver) {
    const std::string years = "[Settings]\r\nLastState=r\r\nDateStamp1=r\r\nLastDateStamp=1\r\n"
                              "RefreshInterval=200\r\n[r]\r\nRcvd=7\r\n";
    files.replace(path, {years});
    ProfileEngine profile(files, "\r\n");
    Platform platform = machine.withFiles(profile, files);
    World world(platform);
    std::string told;
    machine.desktop.answerAny = [&](const MsgBoxRequest& request) {
        told = request.text;
        return MsgBoxAnswer::Ok;
    };
    {
        const FileHandle alone(CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                           FILE_ATTRIBUTE_NORMAL, nullptr));
        ASSERT_TRUE(alone);
        InitApplicationStatus();
    }
    world.state.BytesRcvdTotal = 1;

    EXPECT_FALSE(SaveState());

    EXPECT_EQ(told, "Warning: Old settings could not be loaded.\rAssuming first run.");
    EXPECT_EQ(content(path), years);
}

} // namespace
} // namespace tarvik
