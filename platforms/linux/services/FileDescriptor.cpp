#include "linux/services/FileDescriptor.h"

#include <array>
#include <cerrno>
#include <exception>
#include <unistd.h>

namespace tarvik {

bool FileDescriptor::close() {
    const int number = std::exchange(number_, -1);
    return number < 0 || ::close(number) == 0;
}

ErrorNumber errorNumberOf(int systemError) {
    switch (systemError) {
    case ENOENT:
        return ErrorNumber::FileNotFound;
    case ENOTDIR:
        return ErrorNumber::PathNotFound;
    case EEXIST:
        return ErrorNumber::FileAlreadyExists;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return ErrorNumber::DiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
        return ErrorNumber::PermissionDenied;
    default:
        return ErrorNumber::PathFileAccess;
    }
}

bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = retried([&] { return write(file, bytes.data(), bytes.size()); });
        if (written <= 0) {
            // A system that takes nothing, and says nothing of it, would be asked for ever.
            errno = written == 0 ? ENOSPC : errno;
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool readAll(int file, std::string& bytes, std::size_t most) {
    std::array<char, 65536> buffer;
    while (true) {
        const ssize_t count = retried([&] { return read(file, buffer.data(), buffer.size()); });
        if (count <= 0) {
            return count == 0;
        }
        if (static_cast<std::size_t>(count) > most - bytes.size()) {
            errno = EINVAL;
            return false;
        }
        try {
            bytes.append(buffer.data(), static_cast<std::size_t>(count));
        } catch (const std::exception&) {
            errno = ENOMEM;
            return false;
        }
    }
}

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : path.substr(0, slash);
}

} // namespace tarvik
