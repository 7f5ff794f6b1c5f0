#pragma once

#include "ports/Files.h"
#include "windows/services/AccessList.h"
#include "windows/services/WindowsHeldFile.h"

#include <string>
#include <utility>

namespace tarvik {

/// Whole files through the system's own calls. Nothing but ordinary files is ever read or replaced,
/// no devices or pipes. A file that another program holds may be read, and is replaced if that
/// program lets go of it within half a second or allows it. A file's access list goes over to its
/// copies, and to the next file of its name after it was deleted.
class WindowsFiles : public Files {
public:
    /// `home` is a folder that is made when something is first written in it; empty for none.
    explicit WindowsFiles(std::string home = {}) : home_(std::move(home)) {}

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
                       const LastLook& stillRight, const AccessList* rights);

    std::string home_;
    std::string deleted_; ///< the last file deleted; empty for none
    AccessList deletedRights_;
    Patience patience_; ///< with what is to be held
};

} // namespace tarvik
