// Stands between the program and the system's library: these definitions are found before the
// library's own, which they call.

#include "faults/Interposer.h"

#include "faults/Disk.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <mutex>
#include <optional>
#include <sstream>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace tarvik::faults {

namespace {

struct Fault {
    std::string kind = "count";
    int call = 0;
    unsigned first = 0;
    unsigned second = 0;
};

struct Watch {
    std::mutex mutex;
    std::string folder;
    std::string parent;
    Fault fault;
    Disk disk;
    std::map<int, std::string> open; ///< descriptors of interest, with their paths
    int calls = 0;
    std::string named;
    bool happened = false;
};

/// Null while nothing is watched. It is never freed: a call may come at any moment.
Watch* watch = nullptr;
/// This thread is in here already: what is called now is the harness's own.
thread_local bool inside = false;

[[noreturn]] void die() {
    _exit(cutStatus);
}

[[noreturn]] void cannotHappen() {
    _exit(impossibleStatus);
}

/// One call of the program on its way to the system.
class Turn {
public:
    enum Kind { Other, Reads, Writes };

    Turn(const char* call, bool ours, Kind kind = Other)
        : counted_(watch != nullptr && !inside && ours), kind_(kind) {
        if (!counted_) {
            return;
        }
        watch->mutex.lock();
        inside = true;
        ++watch->calls;
        watch->named.append(call).append(" ");
        decide(watch->fault);
    }
    ~Turn() {
        if (counted_) {
            inside = false;
            watch->mutex.unlock();
        }
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    bool counted() const { return counted_; }
    /// The call fails, errno is set.
    bool fails() const {
        if (error_ != 0) {
            errno = error_;
        }
        return error_ != 0;
    }
    /// How much of a read or a write is done.
    std::size_t share(std::size_t size) const { return half_ ? (size + 1) / 2 : size; }
    /// After a write: the process may end in its middle.
    void afterWrite() const {
        if (dies_) {
            die();
        }
    }

private:
    void decide(const Fault& fault) {
        const int now = watch->calls;
        const bool here = now == fault.call;
        if (here) {
            watch->happened = true;
        }
        if (fault.kind == "kill" && here) {
            die();
        } else if (fault.kind == "killhalf" && here) {
            requireKind(Writes);
            half_ = dies_ = true;
        } else if (fault.kind == "cut" && here) {
            watch->disk.cut(fault.first, fault.second != 0) ? die() : cannotHappen();
        } else if (fault.kind == "fail" && now >= fault.call &&
                   static_cast<unsigned>(now - fault.call) < fault.second) {
            error_ = static_cast<int>(fault.first);
        } else if (fault.kind == "failkill") {
            error_ = here ? static_cast<int>(fault.first) : 0;
            if (now == static_cast<int>(fault.second)) {
                die();
            }
        } else if (fault.kind == "short" || fault.kind == "full") {
            shorten(fault, now - fault.call);
        } else if (fault.kind == "vanish" && here) {
            static_cast<void>(
                std::rename(watch->folder.c_str(), (watch->folder + ".gone").c_str()) == 0);
        }
    }

    void shorten(const Fault& fault, int since) {
        const bool full = fault.kind == "full";
        if (since == 0 && (kind_ == Other || (full && kind_ != Writes))) {
            cannotHappen();
        }
        half_ = since == 0 || (!full && since > 0 && static_cast<unsigned>(since) < fault.first);
        if (full && since > 0 && kind_ == Writes) {
            error_ = ENOSPC;
        }
    }

    void requireKind(Kind kind) const {
        if (kind_ != kind) {
            cannotHappen();
        }
    }

    bool counted_;
    Kind kind_;
    int error_ = 0;
    bool half_ = false;
    bool dies_ = false;
};

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

void arm(const std::string& folder, const std::string& shadow, const std::string& text) {
    inside = true;
    auto* const fresh = new Watch;
    fresh->folder = folder;
    fresh->parent = folder.substr(0, folder.rfind('/'));
    std::istringstream words(text);
    words >> fresh->fault.kind >> fresh->fault.call >> fresh->fault.first >> fresh->fault.second;
    fresh->disk.watch(folder, shadow);
    watch = fresh;
    inside = false;
}

void disarm() {
    if (watch != nullptr) {
        watch->fault = {};
    }
    inside = true;
}

std::string callsNamed() {
    return watch == nullptr ? "" : watch->named;
}

bool happened() {
    return watch->happened;
}

void finish() {
    const Turn turn("end", true);
}

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

char* realpath(const char* path, char* resolved) noexcept {
    return plain("realpath", touches(textOf(path)), &::realpath, path, resolved);
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
