#include "linux/services/FileReplacement.h"

#include "linux/services/FileRights.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <unistd.h>

namespace tarvik {

namespace {

// The name does not depend on the target's, which may be as long as names can be.
constexpr std::string_view beginning = ".tarvik-";
constexpr std::string_view letters = "XXXXXX";
constexpr std::string_view temporaryEnding = ".tmp";

bool isTemporaryName(std::string_view name) {
    if (name.size() != beginning.size() + letters.size() + temporaryEnding.size() ||
        !name.starts_with(beginning) || !name.ends_with(temporaryEnding)) {
        return false;
    }
    const std::string_view chance = name.substr(beginning.size(), letters.size());
    return std::all_of(chance.begin(), chance.end(),
                       [](unsigned char letter) { return std::isalnum(letter) != 0; });
}

/// Takes the lock that tells a file in use from one left over; false when another has it. A file
/// system without locks counts as free for its owner, and for nobody who sweeps.
bool lockOwn(int file) {
    return flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

/// The name still stands in the folder.
bool hasName(int file) {
    struct stat info {};
    return fstat(file, &info) != 0 || info.st_nlink > 0;
}

void removeIfLeft(int folder, const char* name) {
    struct stat info {};
    if (fstatat(folder, name, &info, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(info.st_mode) ||
        info.st_uid != geteuid()) {
        return;
    }
    const FileDescriptor file(openat(folder, name, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (file && flock(file.number(), LOCK_EX | LOCK_NB) == 0) {
        unlinkat(folder, name, 0);
    }
}

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

void sweep(const std::string& path) {
    const std::unique_ptr<DIR, FolderCloser> folder(opendir(path.c_str()));
    while (const dirent* const entry = folder ? readdir(folder.get()) : nullptr) {
        if (isTemporaryName(entry->d_name)) {
            removeIfLeft(dirfd(folder.get()), entry->d_name);
        }
    }
}

/// A new file, which no other program sweeps up while it is open; none where somebody does so again
/// and again.
FileDescriptor makeTemporary(const std::string& folder, std::string& path) {
    constexpr int attempts = 100;
    for (int i = 0; i < attempts; ++i) {
        path = folder + '/';
        path.append(beginning).append(letters).append(temporaryEnding);
        FileDescriptor file(
            mkostemps(path.data(), static_cast<int>(temporaryEnding.size()), O_CLOEXEC));
        // Whoever sweeps may have been quicker than the lock.
        const bool again =
            file ? !lockOwn(file.number()) || !hasName(file.number()) : errno == EINTR;
        if (!again) {
            return file;
        }
    }
    errno = EBUSY;
    return FileDescriptor();
}

} // namespace

bool flushFolder(const std::string& folder) {
    const FileDescriptor opened(
        retried([&] { return open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (!opened) {
        return errno == EACCES; // it may be written, but not be listed
    }
    return retried([&] { return fsync(opened.number()); }) == 0 || errno == EINVAL ||
           errno == EROFS || errno == ENOTSUP;
}

FileReplacement::FileReplacement(const std::string& target)
    : target_(target), folder_(folderOf(target)) {
    // First, for it may be what fills the disk.
    sweep(folder_);
    file_ = makeTemporary(folder_, path_);
}

FileReplacement::~FileReplacement() {
    if (file_ && !placed_) {
        unlink(path_.c_str());
    }
}

bool FileReplacement::likeOld(const struct stat& old) {
    mode_t mode = old.st_mode & 07777U;
    if (fchown(file_.number(), old.st_uid, old.st_gid) != 0) {
        if (errno != EPERM) {
            return false;
        }
        // It becomes the user's own: what ran with another's powers must not run with the user's,
        // and the old group keeps its rights only where the user may give it the file.
        mode = modeInGroupOf(old, file_.number(), mode & 0777U);
    }
    return fchmod(file_.number(), mode) == 0;
}

bool FileReplacement::likeNew() {
    return fchmod(file_.number(), modeOfNewFile()) == 0;
}

bool FileReplacement::putInPlace(const LastLook& stillRight) {
    // The file stays open, and locked, until it has its new name. A flush tells what closing would.
    if (retried([&] { return fsync(file_.number()); }) != 0) {
        return false;
    }
    if (stillRight && !stillRight()) {
        errno = ECANCELED;
        return false;
    }
    if (rename(path_.c_str(), target_.c_str()) != 0) {
        return false;
    }
    placed_ = true;
    return flushFolder(folder_);
}

} // namespace tarvik
