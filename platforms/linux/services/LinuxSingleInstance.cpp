#include "linux/services/LinuxSingleInstance.h"

#include "linux/services/Environment.h"
#include "linux/services/LinuxProgram.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarvik {

namespace {

bool isOwnFolder(const std::string& path) {
    struct stat info {};
    return path.starts_with('/') && lstat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode) &&
           info.st_uid == getuid();
}

std::string lockFolder() {
    std::string runtime = fromEnvironment("XDG_RUNTIME_DIR");
    if (isOwnFolder(runtime)) {
        return runtime;
    }
    std::string cache = fromEnvironment("XDG_CACHE_HOME");
    return cache.starts_with('/') ? cache : homeFolder() + "/.cache";
}

/// The object's name with only such characters as a file name may have.
std::string fileName(const std::string& name) {
    std::string result = "velmars-tarvik-";
    for (const char character : name) {
        const bool plain = (character >= '0' && character <= '9') ||
                           (character >= 'A' && character <= 'Z') ||
                           (character >= 'a' && character <= 'z') || character == '-';
        result += plain ? character : '_';
    }
    return result + ".lock";
}

} // namespace

LinuxSingleInstance::LinuxSingleInstance() : folder_(lockFolder()) {}

std::int32_t LinuxSingleInstance::CreateMutexA(const std::string& name, std::uint32_t* lastError) {
    mkdir(folder_.c_str(), S_IRWXU);
    FileDescriptor file(open((folder_ + "/" + fileName(name)).c_str(),
                             O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    if (!file) {
        *lastError = static_cast<std::uint32_t>(errno);
        return 0;
    }
    *lastError = 0;
    if (flock(file.number(), LOCK_EX | LOCK_NB) != 0) {
        *lastError = errno == EWOULDBLOCK ? alreadyExists : static_cast<std::uint32_t>(errno);
    }
    held_.emplace(++lastHandle_, std::move(file));
    return lastHandle_;
}

bool LinuxSingleInstance::CloseHandle(std::int32_t handle) {
    return held_.erase(handle) == 1;
}

} // namespace tarvik
