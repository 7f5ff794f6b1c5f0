#include "support/AccessEntries.h"
#include "support/FileBytes.h"
#include "support/TemporaryFolder.h"
#include "windows/services/SystemHeader.h"
#include "windows/services/WindowsFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tarvik {

using SetFileSecurityFunction = BOOL WINAPI(LPCSTR, SECURITY_INFORMATION, PSECURITY_DESCRIPTOR);

/// Where this program keeps the address of the system's function.
extern "C" SetFileSecurityFunction* systemsSetFileSecurity __asm__("__imp__SetFileSecurityA@12");

namespace {

/// Lets no file get an access list, for that reason, for its own lifetime.
class NoListsGiven {
public:
    explicit NoListsGiven(DWORD why) : system_(std::exchange(systemsSetFileSecurity, refuse)) {
        reason = why;
    }
    ~NoListsGiven() { systemsSetFileSecurity = system_; }
    NoListsGiven(const NoListsGiven&) = delete;
    NoListsGiven& operator=(const NoListsGiven&) = delete;

private:
    static BOOL WINAPI refuse(LPCSTR, SECURITY_INFORMATION, PSECURITY_DESCRIPTOR) {
        SetLastError(reason);
        return FALSE;
    }

    static inline DWORD reason = 0;
    SetFileSecurityFunction* system_;
};

/// A file on a system that does not give access lists.
class AccessListTest : public testing::Test {
protected:
    AccessListTest() { files.replace(path, {"old"}); }

    TemporaryFolder folder;
    std::string path = folder.path() + "\\Tarvik.ini";
    WindowsFiles files;
};

TEST_F(AccessListTest, ASaveThatCannotKeepTheListFailsAndLeavesTheOldFile) {
    const NoListsGiven denied(ERROR_ACCESS_DENIED);

    EXPECT_EQ(files.replace(path, {"new"}), ErrorNumber::PermissionDenied);

    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(folder.names(), std::vector<std::string>{"Tarvik.ini"});
}

TEST_F(AccessListTest, WhereThereAreNoListsASaveWorks) {
    const NoListsGiven unknown(ERROR_NOT_SUPPORTED);

    EXPECT_FALSE(files.replace(path, {"new"}));

    EXPECT_EQ(contentOf(path), "new");
}

/// Notes whether others may read a file when it is given its list, for its own lifetime.
class ListsWatched {
public:
    ListsWatched() : system_(std::exchange(systemsSetFileSecurity, note)) {
        giving = system_;
        wasOpen.clear();
    }
    ~ListsWatched() { systemsSetFileSecurity = system_; }
    ListsWatched(const ListsWatched&) = delete;
    ListsWatched& operator=(const ListsWatched&) = delete;

    static inline std::vector<bool> wasOpen;

private:
    static BOOL WINAPI note(LPCSTR path, SECURITY_INFORMATION kind, PSECURITY_DESCRIPTOR list) {
        wasOpen.push_back(everybodyMayRead(path));
        return giving(path, kind, list);
    }

    static inline SetFileSecurityFunction* giving = nullptr;
    SetFileSecurityFunction* system_;
};

TEST_F(AccessListTest, AHeldFileIsPrivateBeforeItHasItsList) {
    giveToOwnerAlone(path);
    const std::string journal = folder.path() + "\\Tarvik.journal";
    const ListsWatched watched;

    const Holding held = files.holdOrMake(journal, 4, path);

    EXPECT_EQ(held.outcome, Holding::Outcome::Held);
    EXPECT_EQ(watched.wasOpen, std::vector<bool>{false});
    EXPECT_FALSE(everybodyMayRead(journal));
}

TEST_F(AccessListTest, AListThatTakesNothingFromTheFolderIsKept) {
    giveToOwnerAlone(path, true);
    if (!isProtected(path)) {
        GTEST_SKIP() << "this system keeps no such list";
    }

    EXPECT_FALSE(files.replace(path, {"new"}));

    EXPECT_TRUE(isProtected(path));
    EXPECT_FALSE(everybodyMayRead(path));
}

} // namespace
} // namespace tarvik
