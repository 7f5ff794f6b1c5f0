#pragma once

#include "linux/services/FileDescriptor.h"
#include "ports/Files.h"

#include <string>
#include <string_view>
#include <sys/stat.h>

namespace tarvik {

/// A temporary file beside its target; it is gone unless it was put in the target's place. What a
/// power cut or a kill left of earlier ones in that folder is swept up first.
class FileReplacement {
public:
    /// `target` is replaced itself: a link of that name would be, too.
    explicit FileReplacement(const std::string& target);
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    /// False, with errno set, when the file could not be made.
    explicit operator bool() const { return static_cast<bool>(file_); }

    /// False with errno set, as the following.
    bool write(std::string_view piece) { return writeAll(file_.number(), piece); }
    /// Takes over who may read and write the old file, as far as the user may.
    bool likeOld(const struct stat& old);
    /// A new file may be read as the user's mask allows.
    bool likeNew();
    /// Flushes the file, puts it in place if `stillRight` says so, and flushes the folder. Where
    /// only the last fails, the file is in place, but may not survive a power cut.
    bool putInPlace(const LastLook& stillRight);

private:
    std::string target_;
    std::string folder_;
    std::string path_;
    FileDescriptor file_;
    bool placed_ = false;
};

/// Makes sure that the names in a folder survive a power cut, where its file system can; false with
/// errno set.
bool flushFolder(const std::string& folder);

} // namespace tarvik
