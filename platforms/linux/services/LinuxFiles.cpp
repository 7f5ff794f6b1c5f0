#include "linux/services/LinuxFiles.h"

#include "linux/services/FileDescriptor.h"
#include "linux/services/FileReplacement.h"
#include "linux/services/LinuxHeldFile.h"
#include "linux/services/OwnLinks.h"

#include <cerrno>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace tarvik {

namespace {

/// Nothing longer is read, bytes: it is no file of this program's, and would take all memory.
constexpr std::size_t longest = std::size_t{1} << 30U;
constexpr mode_t writable = S_IWUSR | S_IWGRP | S_IWOTH;

std::int64_t nanoseconds(const timespec& time) {
    return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

FileResult lastError() {
    return errorNumberOf(errno);
}

/// A file that another user keeps to himself is not put aside just because the folder would let us.
bool mayWrite(const std::string& path) {
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

/// Makes the folders of a path that are missing, so that they survive a power cut.
void makeFolders(const std::string& path) {
    for (std::size_t slash = path.find('/', 1);; slash = path.find('/', slash + 1)) {
        const std::string folder = path.substr(0, slash);
        if (mkdir(folder.c_str(), S_IRWXU) == 0) {
            flushFolder(folderOf(folder));
        }
        if (slash == std::string::npos) {
            return;
        }
    }
}

/// There is nothing of that name, which is more than that nothing can be found out about it.
bool isAbsent(const std::string& path) {
    struct stat info {};
    return lstat(path.c_str(), &info) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

/// An ordinary file; nothing, with errno set, for anything else. A device is not even opened: some
/// do something when they are.
FileDescriptor openOrdinary(const std::string& path) {
    struct stat info {};
    const std::optional<std::string> target = followOwnLinks(path, info);
    if (!target) {
        return FileDescriptor();
    }
    if (!S_ISREG(info.st_mode)) {
        errno = EINVAL;
        return FileDescriptor();
    }
    // Neither through a link nor waiting for a pipe that has come meanwhile.
    FileDescriptor file(retried([&] {
        return open(target->c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    }));
    if (file && (fstat(file.number(), &info) != 0 || !S_ISREG(info.st_mode))) {
        file.close();
        errno = EINVAL;
    }
    return file;
}

/// Makes room for all of the file at once; growing would take twice as much for a moment. False,
/// with errno set, when there is no such room.
bool makeRoom(int file, std::string& bytes) {
    struct stat info {};
    if (fstat(file, &info) != 0) {
        return false;
    }
    const auto size = static_cast<std::uint64_t>(info.st_size);
    if (size > longest) {
        errno = EINVAL;
        return false;
    }
    try {
        bytes.reserve(size);
    } catch (const std::bad_alloc&) {
        errno = ENOMEM;
        return false;
    }
    return true;
}

} // namespace

FileKind LinuxFiles::Dir(const std::string& path) {
    struct stat info {};
    if (!followOwnLinks(path, info)) {
        // A link that leads nowhere, or is not followed, holds the name all the same.
        return isAbsent(path) ? FileKind::None : FileKind::Other;
    }
    if (S_ISDIR(info.st_mode)) {
        return FileKind::Directory;
    }
    return S_ISREG(info.st_mode) ? FileKind::File : FileKind::Other;
}

std::optional<FileStamp> LinuxFiles::stamp(const std::string& path) {
    struct stat info {};
    if (!followOwnLinks(path, info) || !S_ISREG(info.st_mode)) {
        return std::nullopt;
    }
    constexpr std::uint64_t mixer = 0x9E3779B97F4A7C15ULL;
    return FileStamp{.identity = static_cast<std::uint64_t>(info.st_dev) * mixer + info.st_ino,
                     .size = static_cast<std::uint64_t>(info.st_size),
                     .modified = nanoseconds(info.st_mtim),
                     .changed = nanoseconds(info.st_ctim)};
}

FileResult LinuxFiles::read(const std::string& path, std::string& bytes) {
    bytes.clear();
    const FileDescriptor file = openOrdinary(path);
    if (!file || !makeRoom(file.number(), bytes) || !readAll(file.number(), bytes, longest)) {
        const FileResult failure = lastError();
        bytes = std::string();
        return failure;
    }
    return std::nullopt;
}

FileResult LinuxFiles::replaceIf(const std::string& path,
                                 const std::vector<std::string_view>& pieces,
                                 const LastLook& stillRight) {
    return putWith(path, pieces, stillRight, nullptr);
}

/// The new file takes these rights; where none are given, those of the file that is there, or of
/// the one of that name that was deleted.
FileResult LinuxFiles::putWith(const std::string& path, const std::vector<std::string_view>& pieces,
                               const LastLook& stillRight, const struct stat* rights) {
    struct stat old {};
    const std::optional<std::string> target = followOwnLinks(path, old);
    const bool exists = target.has_value();
    if (!exists && !isAbsent(path)) {
        // A link that leads nowhere, or what cannot be looked at: neither is to be lost.
        return errno == EACCES ? ErrorNumber::PermissionDenied : ErrorNumber::PathFileAccess;
    }
    if (exists && !S_ISREG(old.st_mode)) {
        return ErrorNumber::PathFileAccess;
    }
    if (exists && ((old.st_mode & writable) == 0 || !mayWrite(path))) {
        return ErrorNumber::PermissionDenied;
    }
    if (!home_.empty() && folderOf(path) == home_) {
        makeFolders(home_);
    }
    FileReplacement file(exists ? *target : path);
    if (!file) {
        return lastError();
    }
    for (const std::string_view piece : pieces) {
        if (!file.write(piece)) {
            return lastError();
        }
    }
    if (rights == nullptr && (exists || path == deleted_)) {
        rights = exists ? &old : &deletedInfo_;
    }
    if (!(rights != nullptr ? file.likeOld(*rights) : file.likeNew()) ||
        !file.putInPlace(stillRight)) {
        return lastError();
    }
    return std::nullopt;
}

FileResult LinuxFiles::FileCopy(const std::string& source, const std::string& target) {
    struct stat info {};
    std::string bytes;
    if (const FileResult failure = read(source, bytes)) {
        return failure;
    }
    return followOwnLinks(source, info) ? putWith(target, {bytes}, {}, &info) : lastError();
}

FileResult LinuxFiles::Name(const std::string& path, const std::string& newPath) {
    int result = renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, newPath.c_str(), RENAME_NOREPLACE);
    if (result != 0 && (errno == EINVAL || errno == ENOSYS)) {
        // A file system that cannot see to it itself.
        errno = EEXIST;
        result = isAbsent(newPath) ? rename(path.c_str(), newPath.c_str()) : -1;
    }
    // Whoever moves a file aside is about to put another in its place: that must not come first.
    return result == 0 && flushFolder(folderOf(newPath)) ? std::nullopt : lastError();
}

FileResult LinuxFiles::Kill(const std::string& path) {
    if (Dir(path) == FileKind::Directory) {
        return ErrorNumber::PathFileAccess;
    }
    struct stat info {};
    const bool known = followOwnLinks(path, info).has_value();
    if (unlink(path.c_str()) != 0) {
        return lastError();
    }
    deleted_ = known ? path : "";
    deletedInfo_ = info;
    flushFolder(folderOf(path));
    return std::nullopt;
}

Holding LinuxFiles::hold(const std::string& path) {
    return holdFile(path);
}

Holding LinuxFiles::holdOrMake(const std::string& path, std::size_t size, const std::string& like) {
    Holding found = holdFile(path);
    if (found.outcome != Holding::Outcome::Absent) {
        return found;
    }
    if (!home_.empty() && folderOf(path) == home_) {
        makeFolders(home_);
    }
    return makeHeldFile(path, size, like);
}

} // namespace tarvik
