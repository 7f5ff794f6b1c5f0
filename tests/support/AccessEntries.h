#pragma once

#include "windows/services/SystemHeader.h"

#include <gtest/gtest.h>

#include <aclapi.h>

#include <string>

namespace tarvik {

/// The file's list has an entry that lets everybody read.
inline bool everybodyMayRead(const std::string& file) {
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

/// Its owner alone may read and write the file from now on; one that is protected takes nothing
/// from its folder later either.
inline void giveToOwnerAlone(const std::string& file, bool protect = false) {
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
    if (protect) {
        SetSecurityDescriptorControl(&own, SE_DACL_PROTECTED, SE_DACL_PROTECTED);
    }
    ASSERT_NE(SetFileSecurityA(file.c_str(), DACL_SECURITY_INFORMATION, &own), FALSE);
    LocalFree(list);
    LocalFree(ofFile);
}

/// The file's list takes nothing from its folder.
inline bool isProtected(const std::string& file) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    EXPECT_EQ(GetNamedSecurityInfoA(file.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION,
                                    nullptr, nullptr, nullptr, nullptr, &descriptor),
              ERROR_SUCCESS)
        << file;
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    GetSecurityDescriptorControl(descriptor, &control, &revision);
    LocalFree(descriptor);
    return (control & SE_DACL_PROTECTED) != 0;
}

} // namespace tarvik
