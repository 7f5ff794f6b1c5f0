#include "windows/services/FileReplacement.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr std::string_view beginning = "~tarvik";
constexpr std::string_view ending = ".tmp";

/// A name as `makeTemporary` forms them: two numbers with a dash between.
bool isTemporaryName(std::string_view name) {
    if (!name.starts_with(beginning) || !name.ends_with(ending) ||
        name.size() <= beginning.size() + ending.size()) {
        return false;
    }
    name.remove_prefix(beginning.size());
    name.remove_suffix(ending.size());
    return std::count(name.begin(), name.end(), '-') == 1 &&
           name.find_first_not_of("0123456789-") == std::string_view::npos;
}

/// Deletes a file unless somebody has it open, as whoever still writes to it does. What a link of
/// that name leads to is left alone.
void removeIfLeft(const std::string& path) {
    const FileHandle file(CreateFileA(path.c_str(), DELETE, 0, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT,
                                      nullptr));
}

void sweep(const std::string& folder) {
    WIN32_FIND_DATAA found{};
    const std::string pattern = folder + std::string(beginning) + "*" + std::string(ending);
    const HANDLE search = FindFirstFileA(pattern.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 &&
            isTemporaryName(found.cFileName)) {
            removeIfLeft(folder + found.cFileName);
        }
    } while (FindNextFileA(search, &found) != FALSE);
    FindClose(search);
}

/// A new file. It may be renamed while it is open; whoever sweeps wants it alone and cannot have
/// it.
FileHandle makeTemporary(const std::string& folder, std::string& path) {
    // Names of this process and moment; one that is taken all the same is passed over.
    constexpr DWORD attempts = 100;
    FileHandle file;
    for (DWORD attempt = 0; attempt < attempts && !file; ++attempt) {
        path = folder + std::string(beginning) + std::to_string(GetCurrentProcessId()) + "-" +
               std::to_string(GetTickCount() + attempt) + std::string(ending);
        file = FileHandle(CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_DELETE, nullptr,
                                      CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!file && GetLastError() != ERROR_FILE_EXISTS) {
            break;
        }
    }
    return file;
}

} // namespace

std::string folderPart(const std::string& path) {
    return path.substr(0, path.find_last_of("\\/:") + 1);
}

FileReplacement::FileReplacement(const std::string& target) : target_(target) {
    const std::string folder = folderPart(target);
    // First, for it may be what fills the disk.
    sweep(folder);
    file_ = makeTemporary(folder, path_);
}

FileReplacement::~FileReplacement() {
    if (file_ && !placed_) {
        file_.close();
        DeleteFileA(path_.c_str());
    }
}

bool FileReplacement::putInPlace(DWORD attributes, const LastLook& stillRight) {
    // The file stays open until it has its new name, so that nobody sweeps it up.
    placed_ = FlushFileBuffers(file_.get()) != FALSE &&
              SetFileAttributesA(path_.c_str(), attributes) != FALSE && moved(stillRight);
    return placed_;
}

/// Scanners and indexers hold a file for a moment: that is waited for, up to half a second.
bool FileReplacement::moved(const LastLook& stillRight) const {
    constexpr DWORD waits[] = {10, 20, 40, 80, 150, 200};
    for (const DWORD wait : waits) {
        if (moveOnce(stillRight)) {
            return true;
        }
        const DWORD error = GetLastError();
        if (error != ERROR_ACCESS_DENIED && error != ERROR_SHARING_VIOLATION) {
            return false;
        }
        Sleep(wait);
    }
    return moveOnce(stillRight);
}

bool FileReplacement::moveOnce(const LastLook& stillRight) const {
    if (stillRight && !stillRight()) {
        SetLastError(ERROR_CANCELLED);
        return false;
    }
    // The system's function for replacing files keeps more of the old one, but may end with no
    // file of that name at all; a move leaves one of the two.
    return MoveFileExA(path_.c_str(), target_.c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE;
}

} // namespace tarvik
