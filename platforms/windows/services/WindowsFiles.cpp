#include "windows/services/WindowsFiles.h"

#include "windows/services/FileHandle.h"
#include "windows/services/FileReplacement.h"
#include "windows/services/WindowsHeldFile.h"

namespace tarvik {

namespace {

constexpr DWORD everyone = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

FileResult lastError() {
    return errorNumberOf(GetLastError());
}

std::int64_t joined(DWORD high, DWORD low) {
    return static_cast<std::int64_t>((std::uint64_t{high} << 32U) | low);
}

/// The system counts in steps of 100 nanoseconds from the year 1601; the remainder of the wrapped
/// product tells two moments apart just as well.
std::int64_t nanoseconds(std::int64_t steps) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(steps) * 100);
}

/// The path leads to a device or a pipe by its name alone, as this system takes names. Some of them
/// cannot be opened to be asked, others notice that they were.
bool namesDevice(const std::string& path) {
    char full[MAX_PATH];
    const DWORD length = GetFullPathNameA(path.c_str(), sizeof full, full, nullptr);
    return length < sizeof full && std::string_view(full, length).starts_with("\\\\.\\");
}

/// An ordinary file; nothing, with the system's last error set, for anything else.
FileHandle openOrdinary(const std::string& path, DWORD access) {
    if (namesDevice(path)) {
        SetLastError(ERROR_BAD_FILE_TYPE);
        return FileHandle();
    }
    FileHandle file(CreateFileA(path.c_str(), access, everyone, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file && GetFileType(file.get()) != FILE_TYPE_DISK) {
        file.close();
        SetLastError(ERROR_BAD_FILE_TYPE);
    }
    return file;
}

/// The system's simple call leaves the deletion to be written later: a power cut soon after would
/// bring the file back, and with it what a reset has put aside.
bool deleteThrough(const std::string& path) {
    const FileHandle file(CreateFileA(path.c_str(), DELETE, everyone, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_WRITE_THROUGH | FILE_FLAG_OPEN_REPARSE_POINT,
                                      nullptr));
    return file && markDeleted(file);
}

/// There is nothing of that name, which is more than that nothing can be found out about it.
bool tellsAbsence(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ||
           error == ERROR_INVALID_NAME || error == ERROR_BAD_PATHNAME || error == ERROR_DIRECTORY ||
           error == ERROR_INVALID_DRIVE;
}

/// What the system tells of the name. It is asked once more when there is nothing: a program that
/// replaces a file in two steps, and a disk far away, leave nothing there for a moment.
DWORD attributesOf(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes == INVALID_FILE_ATTRIBUTES ? GetFileAttributesA(path.c_str()) : attributes;
}

} // namespace

FileKind WindowsFiles::Dir(const std::string& path) {
    if (namesDevice(path)) {
        return FileKind::Other;
    }
    const DWORD attributes = attributesOf(path);
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return tellsAbsence(GetLastError()) ? FileKind::None : FileKind::Other;
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return FileKind::Directory;
    }
    // What lies on another computer shows its kind only when opened. One that cannot be opened at
    // all is taken at its word.
    const FileHandle file(CreateFileA(path.c_str(), FILE_READ_ATTRIBUTES, everyone, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    return file && GetFileType(file.get()) != FILE_TYPE_DISK ? FileKind::Other : FileKind::File;
}

std::optional<FileStamp> WindowsFiles::stamp(const std::string& path) {
    const FileHandle file = openOrdinary(path, FILE_READ_ATTRIBUTES);
    BY_HANDLE_FILE_INFORMATION info{};
    FILE_BASIC_INFO times{};
    if (!file || GetFileInformationByHandle(file.get(), &info) == FALSE ||
        GetFileInformationByHandleEx(file.get(), FileBasicInfo, &times, sizeof times) == FALSE) {
        return std::nullopt;
    }
    constexpr std::uint64_t mixer = 0x9E3779B97F4A7C15ULL;
    return FileStamp{
        .identity = info.dwVolumeSerialNumber * mixer +
                    static_cast<std::uint64_t>(joined(info.nFileIndexHigh, info.nFileIndexLow)),
        .size = static_cast<std::uint64_t>(joined(info.nFileSizeHigh, info.nFileSizeLow)),
        .modified = nanoseconds(times.LastWriteTime.QuadPart),
        .changed = nanoseconds(times.ChangeTime.QuadPart)};
}

FileResult WindowsFiles::read(const std::string& path, std::string& bytes) {
    bytes.clear();
    const FileHandle file = openOrdinary(path, GENERIC_READ);
    if (!file) {
        return lastError();
    }
    if (!readAll(file, bytes)) {
        const FileResult failure = lastError();
        bytes.clear();
        return failure;
    }
    return std::nullopt;
}

FileResult WindowsFiles::replaceIf(const std::string& path,
                                   const std::vector<std::string_view>& pieces,
                                   const LastLook& stillRight) {
    return putWith(path, pieces, stillRight, nullptr);
}

/// The new file takes these rights; where none are given, those of the file that is there, or of
/// the one of that name that was deleted.
FileResult WindowsFiles::putWith(const std::string& path,
                                 const std::vector<std::string_view>& pieces,
                                 const LastLook& stillRight, const AccessList* rights) {
    const FileKind kind = Dir(path);
    if (kind == FileKind::Directory || kind == FileKind::Other) {
        return ErrorNumber::PathFileAccess;
    }
    DWORD attributes = FILE_ATTRIBUTE_NORMAL;
    if (kind == FileKind::File) {
        attributes = GetFileAttributesA(path.c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES) {
            return lastError();
        }
        if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
            return ErrorNumber::PermissionDenied;
        }
    }
    if (!home_.empty() && folderPart(path) == home_ + "\\") {
        CreateDirectoryA(home_.c_str(), nullptr);
    }
    const AccessList old = kind == FileKind::File ? AccessList::of(path) : AccessList();
    FileReplacement file(path);
    if (!file) {
        return lastError();
    }
    // Before there is anything in it to be read.
    const AccessList& own = kind == FileKind::None && path == deleted_ ? deletedRights_ : old;
    if (!file.likeOld(rights != nullptr ? *rights : own)) {
        return lastError();
    }
    for (const std::string_view piece : pieces) {
        if (!file.write(piece)) {
            return lastError();
        }
    }
    return file.putInPlace(attributes, stillRight) ? std::nullopt : lastError();
}

FileResult WindowsFiles::FileCopy(const std::string& source, const std::string& target) {
    std::string bytes;
    if (const FileResult failure = read(source, bytes)) {
        return failure;
    }
    const AccessList rights = AccessList::of(source);
    return putWith(target, {bytes}, {}, &rights);
}

FileResult WindowsFiles::Name(const std::string& path, const std::string& newPath) {
    const BOOL moved = MoveFileExA(path.c_str(), newPath.c_str(), MOVEFILE_WRITE_THROUGH);
    return moved != FALSE ? std::nullopt : lastError();
}

FileResult WindowsFiles::Kill(const std::string& path) {
    if (Dir(path) == FileKind::Directory) {
        return ErrorNumber::PathFileAccess;
    }
    const AccessList rights = AccessList::of(path);
    if (!deleteThrough(path)) {
        return lastError();
    }
    deleted_ = path;
    deletedRights_ = rights;
    return std::nullopt;
}

Holding WindowsFiles::hold(const std::string& path) {
    return holdFile(path, patience_);
}

Holding WindowsFiles::holdOrMake(const std::string& path, std::size_t size,
                                 const std::string& like) {
    Holding found = holdFile(path, patience_);
    if (found.outcome != Holding::Outcome::Absent) {
        return found;
    }
    if (!home_.empty() && folderPart(path) == home_ + "\\") {
        CreateDirectoryA(home_.c_str(), nullptr);
    }
    return makeHeldFile(path, size, like);
}

} // namespace tarvik
