#pragma once

#include "ports/HeldFile.h"
#include "types/RunTimeError.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// What stands under a path. `Other` is neither file nor directory: a device, a pipe, a socket.
enum class FileKind { None, File, Directory, Other };

/// Identity and version of a file: differs whenever the file was replaced or written to.
struct FileStamp {
    std::uint64_t identity = 0; ///< which file: device and file number, mixed
    std::uint64_t size = 0;     ///< bytes
    std::int64_t modified = 0;  ///< nanoseconds, of the last write
    std::int64_t changed = 0;   ///< nanoseconds, of the last change of content or attributes

    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// The outcome of a file operation: nothing when it succeeded, else the run-time error number it
/// stands for (FileNotFound, FileAlreadyExists, DiskFull, PermissionDenied, PathFileAccess,
/// PathNotFound).
using FileResult = std::optional<ErrorNumber>;

/// Asked last, directly before a new file takes the place of the old one; false leaves the old one
/// there. May be asked more than once; empty asks nothing.
using LastLook = std::function<bool()>;

/// Whole files on disk. Paths are bytes in the system's code page. No operation throws.
class Files {
public:
    virtual ~Files() = default;

    /// What the path names, directories included.
    virtual FileKind Dir(const std::string& path) = 0;

    /// Nothing when there is no ordinary file of that name.
    virtual std::optional<FileStamp> stamp(const std::string& path) = 0;

    /// Reads the whole file into `bytes`; fails for anything but an ordinary file.
    virtual FileResult read(const std::string& path, std::string& bytes) = 0;

    /// Replaces the file by the pieces, joined, or makes it: written beside it, flushed to the disk
    /// and put in place in one step, so that the old content or the new one is there at any moment.
    /// A read-only file, a directory or device of that name, a full disk: an error, and what was
    /// there stays. An error of the very last flush leaves the new content, which a power cut may
    /// undo. What a kill left of earlier replacements in that folder is swept up.
    FileResult replace(const std::string& path, const std::vector<std::string_view>& pieces) {
        return replaceIf(path, pieces, {});
    }

    /// The same if `stillRight` says so once everything is ready; PathFileAccess if it does not.
    virtual FileResult replaceIf(const std::string& path,
                                 const std::vector<std::string_view>& pieces,
                                 const LastLook& stillRight) = 0;

    /// Copies a file over `target`; complete and flushed, or not at all.
    virtual FileResult FileCopy(const std::string& source, const std::string& target) = 0;

    /// Gives a file another name in its folder, which nothing has yet: FileAlreadyExists if
    /// something does, and both stay.
    virtual FileResult Name(const std::string& path, const std::string& newPath) = 0;

    /// Deletes a file.
    virtual FileResult Kill(const std::string& path) = 0;

    /// Takes an ordinary file of the user's own that is there, for this process alone.
    virtual Holding hold(const std::string& path) = 0;

    /// The same, and makes one of `size` zeros, flushed to the disk, if there is none. Whoever may
    /// read and write the file `like` may do so with the new one; where there is no such file, it
    /// is as any new one.
    virtual Holding holdOrMake(const std::string& path, std::size_t size,
                               const std::string& like) = 0;
};

} // namespace tarvik
