#pragma once

#include "ports/Files.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tarvik {

/// Files in memory, with failures on demand.
class ScriptedFiles : public Files {
public:
    /// Puts a file there, as another program would.
    void setFile(const std::string& path, std::string bytes);
    /// Puts a directory, or something that is neither file nor directory, there.
    void setKind(const std::string& path, FileKind kind);
    /// Forbids reading or writing a file that is there; a new `setFile` allows both again.
    void setUnreadable(const std::string& path);
    void setReadOnly(const std::string& path);
    /// Takes away whatever is there.
    void remove(const std::string& path);
    /// The file's bytes; empty when there is none.
    std::string file(const std::string& path) const;
    bool exists(const std::string& path) const;

    /// What other programs do: asked with a port operation's name and its path before the
    /// operation, and with "LastLook" before what a replacement asks last, if it asks anything.
    std::function<void(const std::string& operation, const std::string& path)> meanwhile;

    /// Every replacement fails with this, until it is nothing again.
    FileResult replaceFailure;
    /// So many replacements still succeed before `replaceFailure` holds.
    int replacementsLeft = 0;
    /// Every read fails with this, until it is nothing again.
    FileResult readFailure;
    /// Every deletion fails with this, until it is nothing again.
    FileResult killFailure;

    int reads = 0;
    int replacements = 0;

    FileKind Dir(const std::string& path) override;
    std::optional<FileStamp> stamp(const std::string& path) override;
    FileResult read(const std::string& path, std::string& bytes) override;
    FileResult replaceIf(const std::string& path, const std::vector<std::string_view>& pieces,
                         const LastLook& stillRight) override;
    FileResult FileCopy(const std::string& source, const std::string& target) override;
    FileResult Name(const std::string& path, const std::string& newPath) override;
    FileResult Kill(const std::string& path) override;

private:
    FileKind kindOf(const std::string& path) const;
    void tell(const std::string& operation, const std::string& path);

    struct Node {
        FileKind kind = FileKind::File;
        std::string bytes;
        std::int64_t version = 0;
        bool unreadable = false;
        bool readOnly = false;
    };

    std::map<std::string, Node> nodes_;
    std::int64_t version_ = 0;
};

} // namespace tarvik
