#include "linux/services/LinuxFiles.h"

#include "linux/services/FileDescriptor.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace tarvik {

namespace {

constexpr mode_t writable = S_IWUSR | S_IWGRP | S_IWOTH;

std::int64_t nanoseconds(const timespec& time) {
    return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

FileResult lastError() {
    return errorNumberOf(errno);
}

/// A temporary file beside its target; it is gone unless it was put in the target's place.
class Replacement {
public:
    explicit Replacement(const std::string& target)
        : target_(target),
          path_(folderOf(target) + "/." + target.substr(target.rfind('/') + 1) + ".XXXXXX"),
          file_(mkostemp(path_.data(), O_CLOEXEC)) {}

    ~Replacement() {
        if (file_ || made_) {
            unlink(path_.c_str());
        }
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    explicit operator bool() const { return static_cast<bool>(file_); }

    bool write(std::string_view piece) { return writeAll(file_.number(), piece); }

    /// Takes over who may read and write the old file, as far as the user may.
    bool likeOld(const struct stat& old) {
        if (fchown(file_.number(), old.st_uid, old.st_gid) != 0 && errno != EPERM) {
            return false;
        }
        return fchmod(file_.number(), old.st_mode & 07777U) == 0;
    }

    /// A new file may be read as the user's mask allows.
    bool likeNew() {
        const mode_t mask = umask(0);
        umask(mask);
        return fchmod(file_.number(), 0666U & ~mask) == 0;
    }

    /// Flushes the file, puts it in place and flushes the folder.
    bool putInPlace() {
        made_ = true;
        if (fsync(file_.number()) != 0 || !file_.close() ||
            rename(path_.c_str(), target_.c_str()) != 0) {
            return false;
        }
        made_ = false;
        const FileDescriptor folder(
            open(folderOf(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (folder) {
            fsync(folder.number());
        }
        return true;
    }

private:
    std::string target_;
    std::string path_;
    FileDescriptor file_;
    bool made_ = false;
};

/// The file that a path leads to, through symbolic links; the path itself where there is none yet.
std::string linkTarget(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr),
                                                           &std::free);
    return real ? std::string(real.get()) : path;
}

void makeFolders(const std::string& path) {
    for (std::size_t slash = path.find('/', 1);; slash = path.find('/', slash + 1)) {
        mkdir(path.substr(0, slash).c_str(), S_IRWXU);
        if (slash == std::string::npos) {
            return;
        }
    }
}

FileDescriptor openOrdinary(const std::string& path) {
    // Without blocking, so that a pipe of that name does not hold the program up.
    FileDescriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat info {};
    if (file && (fstat(file.number(), &info) != 0 || !S_ISREG(info.st_mode))) {
        file.close();
        errno = EINVAL;
    }
    return file;
}

} // namespace

FileKind LinuxFiles::Dir(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) {
        // A link that leads nowhere holds the name all the same.
        return lstat(path.c_str(), &info) == 0 ? FileKind::Other : FileKind::None;
    }
    if (S_ISDIR(info.st_mode)) {
        return FileKind::Directory;
    }
    return S_ISREG(info.st_mode) ? FileKind::File : FileKind::Other;
}

std::optional<FileStamp> LinuxFiles::stamp(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) {
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
    struct stat info {};
    if (!file || fstat(file.number(), &info) != 0) {
        return lastError();
    }
    bytes.reserve(static_cast<std::size_t>(info.st_size));
    if (!readAll(file.number(), bytes)) {
        const FileResult failure = lastError();
        bytes.clear();
        return failure;
    }
    return std::nullopt;
}

FileResult LinuxFiles::replace(const std::string& path,
                               const std::vector<std::string_view>& pieces) {
    struct stat old {};
    const bool exists = ::stat(path.c_str(), &old) == 0;
    if (exists && !S_ISREG(old.st_mode)) {
        return ErrorNumber::PathFileAccess;
    }
    if (exists && (old.st_mode & writable) == 0) {
        return ErrorNumber::PermissionDenied;
    }
    if (!home_.empty() && folderOf(path) == home_) {
        makeFolders(home_);
    }
    Replacement file(linkTarget(path));
    if (!file) {
        return lastError();
    }
    for (const std::string_view piece : pieces) {
        if (!file.write(piece)) {
            return lastError();
        }
    }
    if (!(exists ? file.likeOld(old) : file.likeNew()) || !file.putInPlace()) {
        return lastError();
    }
    return std::nullopt;
}

FileResult LinuxFiles::FileCopy(const std::string& source, const std::string& target) {
    std::string bytes;
    if (const FileResult failure = read(source, bytes)) {
        return failure;
    }
    return replace(target, {bytes});
}

FileResult LinuxFiles::Kill(const std::string& path) {
    if (Dir(path) == FileKind::Directory) {
        return ErrorNumber::PathFileAccess;
    }
    return unlink(path.c_str()) == 0 ? std::nullopt : lastError();
}

} // namespace tarvik
