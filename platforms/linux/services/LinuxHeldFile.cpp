#include "linux/services/LinuxHeldFile.h"

#include "linux/services/FileReplacement.h"
#include "linux/services/FileRights.h"
#include "linux/services/OwnLinks.h"

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarvik {

namespace {

using Outcome = Holding::Outcome;

Holding notHeld(Outcome outcome) {
    return {.outcome = outcome, .file = nullptr};
}

bool isOwnFile(const struct stat& info) {
    return S_ISREG(info.st_mode) && info.st_uid == geteuid() && info.st_nlink <= 1;
}

/// Whether the open file still has that name: whoever held it before may have deleted it. Failed
/// where nobody can tell.
Outcome outcomeOfName(int file, const std::string& path) {
    struct stat opened {};
    struct stat named {};
    if (fstat(file, &opened) != 0 ||
        (lstat(path.c_str(), &named) != 0 && errno != ENOENT && errno != ENOTDIR)) {
        return Outcome::Failed;
    }
    return opened.st_dev == named.st_dev && opened.st_ino == named.st_ino ? Outcome::Held
                                                                          : Outcome::Absent;
}

/// A file system without locks has nobody else.
bool lockForUs(int file) {
    return retried([&] { return flock(file, LOCK_EX | LOCK_NB); }) == 0 || errno != EWOULDBLOCK;
}

Holding holding(FileDescriptor file, const std::string& path) {
    return {.outcome = Outcome::Held,
            .file = std::make_unique<LinuxHeldFile>(std::move(file), path)};
}

/// Who may do so with the INI file may read and write this one, as far as the user may say so.
bool giveRights(int file, const std::string& like) {
    struct stat old {};
    if (!followOwnLinks(like, old) || !S_ISREG(old.st_mode)) {
        return fchmod(file, modeOfNewFile()) == 0;
    }
    const mode_t mode = modeInGroupOf(old, file, old.st_mode & 0666U);
    return fchmod(file, mode | S_IRUSR | S_IWUSR) == 0;
}

bool prepare(int file, const std::string& path, std::size_t size, const std::string& like) {
    const std::string zeros(size, '\0');
    return giveRights(file, like) && writeAll(file, zeros) &&
           retried([&] { return fsync(file); }) == 0 && flushFolder(folderOf(path));
}

} // namespace

std::optional<ErrorNumber> LinuxHeldFile::read(std::string& bytes) {
    bytes.clear();
    if (lseek(file_.number(), 0, SEEK_SET) != 0 || !readAll(file_.number(), bytes, longest)) {
        return errorNumberOf(errno);
    }
    return std::nullopt;
}

std::optional<ErrorNumber> LinuxHeldFile::write(std::size_t offset, std::string_view bytes) {
    // What was deleted, or lies under another name now, nobody finds again.
    if (outcomeOfName(file_.number(), path_) == Outcome::Absent) {
        return ErrorNumber::FileNotFound;
    }
    const ssize_t written = retried([&] {
        return pwrite(file_.number(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
    });
    if (written < 0) {
        return errorNumberOf(errno);
    }
    return static_cast<std::size_t>(written) == bytes.size() ? std::nullopt
                                                             : std::optional(ErrorNumber::DiskFull);
}

std::optional<ErrorNumber> LinuxHeldFile::flush() {
    return retried([&] { return fdatasync(file_.number()); }) == 0
               ? std::nullopt
               : std::optional(errorNumberOf(errno));
}

bool LinuxHeldFile::isInPlace(std::size_t size) {
    struct stat info {};
    return outcomeOfName(file_.number(), path_) != Outcome::Absent &&
           (fstat(file_.number(), &info) != 0 || info.st_size >= static_cast<off_t>(size));
}

std::optional<ErrorNumber> LinuxHeldFile::remove() {
    const Outcome outcome = outcomeOfName(file_.number(), path_);
    if (outcome != Outcome::Held) {
        return outcome == Outcome::Absent ? std::nullopt : std::optional(errorNumberOf(errno));
    }
    if (unlink(path_.c_str()) != 0) {
        return errorNumberOf(errno);
    }
    flushFolder(folderOf(path_));
    return std::nullopt;
}

Holding holdFile(const std::string& path) {
    struct stat info {};
    if (lstat(path.c_str(), &info) != 0) {
        return notHeld(errno == ENOENT || errno == ENOTDIR ? Outcome::Absent : Outcome::Failed);
    }
    if (!isOwnFile(info)) {
        return notHeld(Outcome::Refused);
    }
    FileDescriptor file(retried([&] {
        return open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    }));
    if (!file) {
        return notHeld(errno == ENOENT ? Outcome::Absent : Outcome::Failed);
    }
    if (fstat(file.number(), &info) != 0) {
        return notHeld(Outcome::Failed);
    }
    if (!isOwnFile(info)) {
        return notHeld(Outcome::Refused);
    }
    if (!lockForUs(file.number())) {
        return notHeld(Outcome::Busy);
    }
    const Outcome outcome = outcomeOfName(file.number(), path);
    return outcome == Outcome::Held ? holding(std::move(file), path) : notHeld(outcome);
}

Holding makeHeldFile(const std::string& path, std::size_t size, const std::string& like) {
    FileDescriptor file(retried([&] {
        return open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                    S_IRUSR | S_IWUSR);
    }));
    if (!file) {
        return notHeld(Outcome::Failed);
    }
    if (!lockForUs(file.number())) {
        return notHeld(Outcome::Busy); // somebody else has found it first
    }
    if (!prepare(file.number(), path, size, like)) {
        unlink(path.c_str());
        return notHeld(Outcome::Failed);
    }
    return holding(std::move(file), path);
}

} // namespace tarvik
