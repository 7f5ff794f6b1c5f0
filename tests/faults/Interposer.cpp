// Stands between the program and the system's library: these definitions are found before the
// library's own, which they call.

#include "faults/Watch.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace tarvik::faults {

namespace {

/// The library's own function of that name.
template <class Function>
Function* real(const char* name, Function*) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool inFolder(const std::string& path) {
    return watch != nullptr && path.size() > watch->folder.size() &&
           path.starts_with(watch->folder) && path[watch->folder.size()] == '/';
}

bool touches(const std::string& path) {
    return watch != nullptr && !inside &&
           (path == watch->folder || path == watch->parent || inFolder(path));
}

std::string nameOf(const std::string& path) {
    return path.substr(watch->folder.size() + 1);
}

/// The whole path of a name in an open folder.
std::string pathAt(int folder, const char* name) {
    if (watch == nullptr || inside || name == nullptr) {
        return {};
    }
    const auto found = watch->open.find(folder);
    return *name == '/' || found == watch->open.end() ? name : found->second + "/" + name;
}

bool isOpen(int file) {
    return watch != nullptr && !inside && watch->open.contains(file);
}

int opened(const Turn& turn, int file, const std::string& path, bool existed, int flags) {
    if (file >= 0 && turn.counted()) {
        watch->open[file] = path;
        if (inFolder(path) && !existed) {
            watch->disk.made(nameOf(path));
        } else if (inFolder(path) && (flags & O_TRUNC) != 0) {
            watch->disk.shortened(file);
        }
    }
    return file;
}

int openAny(const char* call, const std::string& path, int flags, mode_t mode) {
    const bool ours = touches(path);
    const Turn turn(call, ours);
    if (turn.fails()) {
        return -1;
    }
    struct stat info {};
    const bool existed = !turn.counted() || lstat(path.c_str(), &info) == 0;
    return opened(turn, real("open", &::open)(path.c_str(), flags, mode), path, existed, flags);
}

int flushAny(const char* call, int file) {
    const Turn turn(call, isOpen(file));
    if (turn.fails()) {
        return -1;
    }
    const int result = real(call, &::fsync)(file);
    if (result == 0 && turn.counted()) {
        const std::string& path = watch->open[file];
        if (path == watch->folder) {
            watch->disk.flushedFolder();
        } else if (path == watch->parent) {
            watch->disk.flushedParent();
        } else {
            watch->disk.flushed(file);
        }
    }
    return result;
}

int renameAny(const std::string& from, const std::string& to) {
    const Turn turn("rename", touches(from) || touches(to));
    if (turn.fails()) {
        return -1;
    }
    const int result = real("rename", &::rename)(from.c_str(), to.c_str());
    if (result == 0 && turn.counted() && inFolder(from) && inFolder(to)) {
        watch->disk.renamed(nameOf(from), nameOf(to));
    }
    return result;
}

int deleteAny(const std::string& path) {
    const Turn turn("unlink", touches(path));
    if (turn.fails()) {
        return -1;
    }
    const int result = real("unlink", &::unlink)(path.c_str());
    if (result == 0 && turn.counted()) {
        watch->disk.deleted(nameOf(path));
    }
    return result;
}

/// A call that changes nothing a power cut could undo.
template <class Function, class... Arguments>
auto plain(const char* name, bool ours, Function* function, Arguments... arguments)
    -> decltype(function(arguments...)) {
    using Result = decltype(function(arguments...));
    const Turn turn(name, ours);
    if (turn.fails()) {
        if constexpr (std::is_pointer_v<Result>) {
            return nullptr;
        } else {
            return -1;
        }
    }
    return real(name, function)(arguments...);
}

std::string textOf(const char* path) {
    return path == nullptr ? "" : path;
}

} // namespace

} // namespace tarvik::faults

using namespace tarvik::faults;

extern "C" {

int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return openAny("open", textOf(path), flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return openAny("open", textOf(path), flags, mode);
}

int openat(int folder, const char* name, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    const std::string path = pathAt(folder, name);
    return touches(path) ? openAny("openat", path, flags, mode)
                         : real("openat", &::openat)(folder, name, flags, mode);
}

int creat(const char* path, mode_t mode) {
    return openAny("creat", textOf(path), O_CREAT | O_WRONLY | O_TRUNC, mode);
}

int mkostemps(char* path, int ending, int flags) {
    const Turn turn("mkostemps", touches(textOf(path)));
    if (turn.fails()) {
        return -1;
    }
    const int file = real("mkostemps", &::mkostemps)(path, ending, flags);
    return opened(turn, file, textOf(path), false, 0);
}

int mkostemp(char* path, int flags) {
    return mkostemps(path, 0, flags);
}

int close(int file) {
    const Turn turn("close", isOpen(file));
    // The system closes it even when it reports an error.
    const int result = real("close", &::close)(file);
    if (turn.counted()) {
        watch->open.erase(file);
    }
    return turn.fails() ? -1 : result;
}

ssize_t read(int file, void* bytes, std::size_t size) {
    const Turn turn("read", isOpen(file), Turn::Reads);
    return turn.fails() ? -1 : real("read", &::read)(file, bytes, turn.share(size));
}

ssize_t write(int file, const void* bytes, std::size_t size) {
    const Turn turn("write", isOpen(file), Turn::Writes);
    if (turn.fails()) {
        return -1;
    }
    const ssize_t written = real("write", &::write)(file, bytes, turn.share(size));
    turn.afterWrite();
    return written;
}

ssize_t pwrite(int file, const void* bytes, std::size_t size, off_t place) {
    const Turn turn("pwrite", isOpen(file), Turn::Writes);
    if (turn.fails()) {
        return -1;
    }
    if (turn.counted()) {
        watch->disk.overwritten(file);
    }
    const ssize_t written = real("pwrite", &::pwrite)(file, bytes, turn.share(size), place);
    turn.afterWrite();
    return written;
}

ssize_t writev(int file, const struct iovec* parts, int count) {
    const Turn turn("writev", isOpen(file), Turn::Writes);
    if (turn.fails()) {
        return -1;
    }
    const auto some = static_cast<int>(turn.share(static_cast<std::size_t>(count)));
    const ssize_t written = real("writev", &::writev)(file, parts, some);
    turn.afterWrite();
    return written;
}

int fsync(int file) {
    return flushAny("fsync", file);
}

int fdatasync(int file) {
    return flushAny("fdatasync", file);
}

int ftruncate(int file, off_t size) noexcept {
    const Turn turn("ftruncate", isOpen(file));
    if (turn.fails()) {
        return -1;
    }
    const int result = real("ftruncate", &::ftruncate)(file, size);
    if (result == 0 && turn.counted()) {
        watch->disk.shortened(file);
    }
    return result;
}

int rename(const char* from, const char* to) noexcept {
    return renameAny(textOf(from), textOf(to));
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
    const std::string source = pathAt(fromFolder, from);
    const std::string target = pathAt(toFolder, to);
    return touches(source) || touches(target)
               ? renameAny(source, target)
               : real("renameat", &::renameat)(fromFolder, from, toFolder, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned flags) noexcept {
    const std::string source = pathAt(fromFolder, from);
    const std::string target = pathAt(toFolder, to);
    const Turn turn("renameat2", touches(source) || touches(target));
    if (turn.fails()) {
        return -1;
    }
    const int result = real("renameat2", &::renameat2)(fromFolder, from, toFolder, to, flags);
    if (result == 0 && turn.counted() && inFolder(source) && inFolder(target)) {
        watch->disk.renamed(nameOf(source), nameOf(target));
    }
    return result;
}

int unlink(const char* path) noexcept {
    return deleteAny(textOf(path));
}

int remove(const char* path) noexcept {
    return touches(textOf(path)) ? deleteAny(path) : real("remove", &::remove)(path);
}

int unlinkat(int folder, const char* name, int flags) noexcept {
    const std::string path = pathAt(folder, name);
    return touches(path) ? deleteAny(path) : real("unlinkat", &::unlinkat)(folder, name, flags);
}

int mkdir(const char* path, mode_t mode) noexcept {
    const Turn turn("mkdir", touches(textOf(path)));
    if (turn.fails()) {
        return -1;
    }
    const int result = real("mkdir", &::mkdir)(path, mode);
    if (result == 0 && turn.counted() && textOf(path) == watch->folder) {
        watch->disk.madeFolder();
    }
    return result;
}

int fchmod(int file, mode_t mode) noexcept {
    return plain("fchmod", isOpen(file), &::fchmod, file, mode);
}

int fchown(int file, uid_t user, gid_t group) noexcept {
    return plain("fchown", isOpen(file), &::fchown, file, user, group);
}

int flock(int file, int operation) noexcept {
    return plain("flock", isOpen(file), &::flock, file, operation);
}

int stat(const char* path, struct stat* info) noexcept {
    return plain("stat", touches(textOf(path)), &::stat, path, info);
}

int lstat(const char* path, struct stat* info) noexcept {
    return plain("lstat", touches(textOf(path)), &::lstat, path, info);
}

int fstat(int file, struct stat* info) noexcept {
    return plain("fstat", isOpen(file), &::fstat, file, info);
}

int fstatat(int folder, const char* name, struct stat* info, int flags) noexcept {
    return plain("fstatat", touches(pathAt(folder, name)), &::fstatat, folder, name, info, flags);
}

int access(const char* path, int mode) noexcept {
    return plain("access", touches(textOf(path)), &::access, path, mode);
}

int faccessat(int folder, const char* path, int mode, int flags) noexcept {
    return plain("faccessat", touches(pathAt(folder, path)), &::faccessat, folder, path, mode,
                 flags);
}

DIR* opendir(const char* path) {
    const Turn turn("opendir", touches(textOf(path)));
    if (turn.fails()) {
        return nullptr;
    }
    DIR* const folder = real("opendir", &::opendir)(path);
    if (folder != nullptr && turn.counted()) {
        watch->open[dirfd(folder)] = path;
    }
    return folder;
}

struct dirent* readdir(DIR* folder) {
    return plain("readdir", isOpen(dirfd(folder)), &::readdir, folder);
}

int closedir(DIR* folder) {
    const int file = dirfd(folder);
    const Turn turn("closedir", isOpen(file));
    const int result = real("closedir", &::closedir)(folder);
    if (turn.counted()) {
        watch->open.erase(file);
    }
    return turn.fails() ? -1 : result;
}

} // extern "C"
