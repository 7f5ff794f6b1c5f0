#include "windows/services/FileHandle.h"

#include <algorithm>
#include <exception>
#include <new>

namespace tarvik {

namespace {
/// What one call of the system is asked to move at most, bytes.
constexpr std::size_t portion = std::size_t{1} << 20U;
/// Nothing longer is read, bytes, even if it grows meanwhile.
constexpr std::size_t longestRead = std::size_t{1} << 30U;
/// A code of the system that older headers lack.
constexpr DWORD diskQuotaExceeded = 1295;

/// As `readAll`; throws where the bytes find no room in memory.
bool readRest(const FileHandle& file, std::string& bytes) {
    LARGE_INTEGER size{};
    if (GetFileSizeEx(file.get(), &size) == FALSE) {
        return false;
    }
    if (size.QuadPart > static_cast<LONGLONG>(longestRead)) {
        throw std::bad_alloc();
    }
    // One byte more than there should be: the end of the file is seen, and growth while reading
    // too.
    bytes.resize(static_cast<std::size_t>(size.QuadPart) + 1);
    std::size_t filled = 0;
    while (true) {
        const auto wanted = static_cast<DWORD>(std::min(bytes.size() - filled, portion));
        DWORD count = 0;
        if (ReadFile(file.get(), bytes.data() + filled, wanted, &count, nullptr) == FALSE) {
            return false;
        }
        filled += count;
        if (count == 0) {
            bytes.resize(filled);
            return true;
        }
        if (filled > longestRead) {
            throw std::bad_alloc();
        }
        if (filled == bytes.size()) {
            bytes.resize(bytes.size() + portion);
        }
    }
}

} // namespace

ErrorNumber errorNumberOf(DWORD systemError) {
    switch (systemError) {
    case ERROR_FILE_NOT_FOUND:
        return ErrorNumber::FileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
        return ErrorNumber::PathNotFound;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return ErrorNumber::FileAlreadyExists;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case diskQuotaExceeded:
        return ErrorNumber::DiskFull;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
        return ErrorNumber::PermissionDenied;
    default:
        return ErrorNumber::PathFileAccess;
    }
}

bool markDeleted(const FileHandle& file) {
    FILE_DISPOSITION_INFO gone{};
    gone.DeleteFile = TRUE;
    return SetFileInformationByHandle(file.get(), FileDispositionInfo, &gone, sizeof gone) != FALSE;
}

bool writeAll(const FileHandle& file, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto wanted = static_cast<DWORD>(std::min(bytes.size(), portion));
        DWORD written = 0;
        if (WriteFile(file.get(), bytes.data(), wanted, &written, nullptr) == FALSE) {
            return false;
        }
        if (written == 0) {
            // A system that takes nothing, and says nothing of it, would be asked for ever.
            SetLastError(ERROR_DISK_FULL);
            return false;
        }
        bytes.remove_prefix(written);
    }
    return true;
}

bool readAll(const FileHandle& file, std::string& bytes) {
    try {
        return readRest(file, bytes);
    } catch (const std::exception&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return false;
    }
}

} // namespace tarvik
