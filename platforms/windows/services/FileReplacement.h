#pragma once

#include "windows/services/AccessList.h"
#include "windows/services/FileHandle.h"

#include <string>
#include <string_view>

namespace tarvik {

/// A temporary file beside its target; it is gone unless it was put in the target's place. What a
/// power cut or a kill left of earlier ones in that folder is swept up first.
class FileReplacement {
public:
    explicit FileReplacement(const std::string& target);
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    /// False, with the system's last error set, when the file could not be made.
    explicit operator bool() const { return static_cast<bool>(file_); }

    bool write(std::string_view piece) { return writeAll(file_, piece); }
    /// Who may read and write the old file may do so with this one; false, with the system's last
    /// error set, if it cannot be so where the file system knows such rights.
    bool likeOld(const AccessList& old) { return old.giveTo(path_); }
    /// Flushes the file and puts it in place if `stillRight` says so; false with the system's last
    /// error set.
    bool putInPlace(DWORD attributes, const LastLook& stillRight);

private:
    bool moved(const LastLook& stillRight) const;
    bool moveOnce(const LastLook& stillRight) const;

    std::string target_;
    std::string path_;
    FileHandle file_;
    bool placed_ = false;
};

/// The folder part of a path, with its separator; empty when it has none.
std::string folderPart(const std::string& path);

} // namespace tarvik
