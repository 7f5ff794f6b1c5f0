#include "windows/services/WindowsHeldFile.h"

#include "windows/services/AccessList.h"

#include <aclapi.h>

#include <array>
#include <memory>
#include <vector>

namespace tarvik {

namespace {

using Outcome = Holding::Outcome;

constexpr DWORD access = GENERIC_READ | GENERIC_WRITE | DELETE | READ_CONTROL;

Holding notHeld(Outcome outcome) {
    return {.outcome = outcome, .file = nullptr};
}

FileHandle openOwn(const std::string& path, DWORD disposition,
                   SECURITY_ATTRIBUTES* rights = nullptr) {
    return FileHandle(CreateFileA(path.c_str(), access, FILE_SHARE_READ, rights, disposition,
                                  FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
}

/// Whoever opened it before it has its list could read all that comes into it later.
FileHandle makeOwn(const std::string& path, const AccessList& list) {
    std::vector<unsigned char> descriptor = list.forMaking();
    SECURITY_ATTRIBUTES rights{.nLength = sizeof rights,
                               .lpSecurityDescriptor = descriptor.data(),
                               .bInheritHandle = FALSE};
    return openOwn(path, CREATE_NEW, descriptor.empty() ? nullptr : &rights);
}

/// Somebody has just opened the file, or has it open still after it was deleted: then it has no
/// attributes any more. The last error stays what it was.
bool isOpenElsewhere(const std::string& path) {
    const DWORD error = GetLastError();
    const bool gone =
        error == ERROR_ACCESS_DENIED && GetFileAttributesA(path.c_str()) == INVALID_FILE_ATTRIBUTES;
    SetLastError(error);
    return gone || error == ERROR_SHARING_VIOLATION || error == ERROR_DELETE_PENDING;
}

/// A scanner or an indexer lets the file go soon. The last error is that of the last attempt.
FileHandle openOwnPatiently(const std::string& path, Patience& patience) {
    FileHandle file = openOwn(path, OPEN_EXISTING);
    while (!file && isOpenElsewhere(path) && patience.pause()) {
        file = openOwn(path, OPEN_EXISTING);
    }
    return file;
}

/// Failed where nobody can tell what it is.
Outcome outcomeOfKind(const FileHandle& file) {
    constexpr DWORD none = FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DIRECTORY;
    BY_HANDLE_FILE_INFORMATION info{};
    const DWORD type = GetFileType(file.get());
    if (type == FILE_TYPE_UNKNOWN ||
        (type == FILE_TYPE_DISK && GetFileInformationByHandle(file.get(), &info) == FALSE)) {
        return Outcome::Failed;
    }
    const bool isPlain =
        type == FILE_TYPE_DISK && (info.dwFileAttributes & none) == 0 && info.nNumberOfLinks <= 1;
    return isPlain ? Outcome::Held : Outcome::Refused;
}

/// What this process tells of itself: the user, or whom what it makes belongs to.
bool isOurs(PSID owner, TOKEN_INFORMATION_CLASS kind) {
    HANDLE opened = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened) == FALSE) {
        return false;
    }
    const FileHandle token(opened);
    alignas(void*) std::array<unsigned char, 256> buffer{};
    DWORD size = 0;
    // The user's record and the owner's both begin with the identity.
    return GetTokenInformation(token.get(), kind, buffer.data(), static_cast<DWORD>(buffer.size()),
                               &size) != FALSE &&
           EqualSid(owner, *reinterpret_cast<PSID*>(buffer.data())) != FALSE;
}

/// A file system that knows no owners has nobody else's files.
bool isOwnFile(const FileHandle& file) {
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetSecurityInfo(file.get(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner, nullptr,
                        nullptr, nullptr, &descriptor) != ERROR_SUCCESS) {
        return true;
    }
    const bool own = owner == nullptr || isOurs(owner, TokenUser) || isOurs(owner, TokenOwner);
    LocalFree(descriptor);
    return own;
}

std::optional<ErrorNumber> done(BOOL result) {
    return result != FALSE ? std::nullopt : std::optional(errorNumberOf(GetLastError()));
}

} // namespace

bool Patience::pause() {
    constexpr DWORD milliseconds = 50;
    if (pausesLeft_ == 0) {
        return false;
    }
    --pausesLeft_;
    Sleep(milliseconds);
    return true;
}

std::optional<ErrorNumber> WindowsHeldFile::read(std::string& bytes) {
    bytes.clear();
    LARGE_INTEGER size{};
    if (GetFileSizeEx(file_.get(), &size) != FALSE &&
        size.QuadPart > static_cast<LONGLONG>(longest)) {
        return ErrorNumber::PathFileAccess;
    }
    const LARGE_INTEGER beginning{};
    return done(
        static_cast<BOOL>(SetFilePointerEx(file_.get(), beginning, nullptr, FILE_BEGIN) != FALSE &&
                          readAll(file_, bytes)));
}

std::optional<ErrorNumber> WindowsHeldFile::write(std::size_t offset, std::string_view bytes) {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    DWORD written = 0;
    const BOOL result =
        WriteFile(file_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, &place);
    return result != FALSE && written != bytes.size() ? std::optional(ErrorNumber::DiskFull)
                                                      : done(result);
}

std::optional<ErrorNumber> WindowsHeldFile::flush() {
    return done(FlushFileBuffers(file_.get()));
}

bool WindowsHeldFile::isInPlace(std::size_t size) {
    LARGE_INTEGER now{};
    return GetFileSizeEx(file_.get(), &now) == FALSE || now.QuadPart >= static_cast<LONGLONG>(size);
}

std::optional<ErrorNumber> WindowsHeldFile::remove() {
    const auto result = done(static_cast<BOOL>(markDeleted(file_)));
    if (!result) {
        file_.close();
    }
    return result;
}

Holding holdFile(const std::string& path, Patience& patience) {
    FileHandle file = openOwnPatiently(path, patience);
    if (!file) {
        switch (GetLastError()) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
            return notHeld(Outcome::Absent);
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
            return notHeld(Outcome::Busy);
        default:
            break;
        }
        const DWORD attributes = GetFileAttributesA(path.c_str());
        const bool folder =
            attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        return notHeld(folder ? Outcome::Refused : Outcome::Failed);
    }
    if (const Outcome outcome = outcomeOfKind(file); outcome != Outcome::Held) {
        return notHeld(outcome);
    }
    if (!isOwnFile(file)) {
        return notHeld(Outcome::Refused);
    }
    // Not every system keeps a privileged user from writing to such a file.
    const DWORD attributes = GetFileAttributesA(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        return notHeld(Outcome::Failed);
    }
    return {.outcome = Outcome::Held, .file = std::make_unique<WindowsHeldFile>(std::move(file))};
}

Holding makeHeldFile(const std::string& path, std::size_t size, const std::string& like) {
    const AccessList list = AccessList::of(like);
    FileHandle file = makeOwn(path, list);
    if (!file) {
        return notHeld(Outcome::Failed);
    }
    const bool asPrivate = list.giveTo(path);
    auto made = std::make_unique<WindowsHeldFile>(std::move(file));
    if (!asPrivate || made->write(0, std::string(size, '\0')) || made->flush()) {
        made->remove();
        return notHeld(Outcome::Failed);
    }
    return {.outcome = Outcome::Held, .file = std::move(made)};
}

} // namespace tarvik
