#pragma once

#include "ports/Files.h"

#include <string>
#include <sys/stat.h>

namespace tarvik {

/// Whole files through the system's own calls. Nothing but ordinary files is ever opened for
/// reading or replaced; a symbolic link to one stays and its target is replaced, unless
/// the link is another user's: that is not followed. A file that nobody
/// may write to counts as read-only, whoever runs the program. Who may read and write a file goes
/// over to its copies, and to the next file of its name after it was deleted.
class LinuxFiles : public Files {
public:
    /// `home` is a folder that is made, with its parents and for the user alone, when something is
    /// first written in it; empty for none.
    explicit LinuxFiles(std::string home = {}) : home_(std::move(home)) {}

    FileKind Dir(const std::string& path) override;
    std::optional<FileStamp> stamp(const std::string& path) override;
    FileResult read(const std::string& path, std::string& bytes) override;
    FileResult replaceIf(const std::string& path, const std::vector<std::string_view>& pieces,
                         const LastLook& stillRight) override;
    FileResult FileCopy(const std::string& source, const std::string& target) override;
    FileResult Name(const std::string& path, const std::string& newPath) override;
    FileResult Kill(const std::string& path) override;
    Holding hold(const std::string& path) override;
    Holding holdOrMake(const std::string& path, std::size_t size, const std::string& like) override;

private:
    FileResult putWith(const std::string& path, const std::vector<std::string_view>& pieces,
                       const LastLook& stillRight, const struct stat* rights);

    std::string home_;
    std::string deleted_; ///< the last file deleted; empty for none
    struct stat deletedInfo_ {};
};

} // namespace tarvik
