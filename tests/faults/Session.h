#pragma once

#include "common/ProfileEngine.h"
#include "scripted/ScriptedPlatform.h"
#include "wiring/World.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik::faults {

/// Names and contents of the files in a folder.
using Folder = std::map<std::string, std::string>;

/// The folder as it is; `there` tells whether it exists at all.
Folder folderAt(const std::string& path, bool* there = nullptr);
/// Makes the folder hold just these files.
void makeFolder(const std::string& path, const Folder& files);
/// The name is one that the program gives to files that it only writes on the way.
bool isTemporary(const std::string& name);

/// Real files, which tell when one of the port's operations that change something has ended.
class TellingFiles : public Files {
public:
    explicit TellingFiles(Files& real) : real_(real) {}
    std::function<void()> changed = [] {};
    /// What becomes of a file that is held, but for a ledger: `hold failed`; `write`, then
    /// `written` or `write failed`; `flushed` or `flush failed`. And `save` with the content that
    /// another file is about to have.
    std::function<void(const std::string& step, std::string_view bytes)> heldChanges =
        [](const std::string&, std::string_view) {};

    FileKind Dir(const std::string& path) override { return real_.Dir(path); }
    std::optional<FileStamp> stamp(const std::string& path) override { return real_.stamp(path); }
    FileResult read(const std::string& path, std::string& bytes) override {
        return real_.read(path, bytes);
    }
    FileResult replaceIf(const std::string& path, const std::vector<std::string_view>& pieces,
                         const LastLook& stillRight) override {
        heldChanges("save", joined(pieces));
        return told(real_.replaceIf(path, pieces, stillRight));
    }
    FileResult FileCopy(const std::string& source, const std::string& target) override {
        return told(real_.FileCopy(source, target));
    }
    FileResult Name(const std::string& path, const std::string& newPath) override {
        return told(real_.Name(path, newPath));
    }
    FileResult Kill(const std::string& path) override { return told(real_.Kill(path)); }
    Holding hold(const std::string& path) override { return telling(path, real_.hold(path)); }
    Holding holdOrMake(const std::string& path, std::size_t size,
                       const std::string& like) override {
        return telling(path, real_.holdOrMake(path, size, like));
    }

private:
    class Held;
    static std::string joined(const std::vector<std::string_view>& pieces);
    Holding telling(const std::string& path, Holding held);
    FileResult told(FileResult result) {
        changed();
        return result;
    }

    Files& real_;
};

/// The program, from its start on, on the system's real files; everything else is played.
class Session {
public:
    /// `folder` is the program's; `separator` stands between a folder and a name.
    Session(Files& real, const std::string& folder, char separator);

    /// Texts of the boxes shown so far; each is left with Yes or OK.
    std::vector<std::string> boxes;
    TellingFiles files;
    ScriptedPlatform scripted;

private:
    ProfileEngine profile_{files, "\n"};
    Platform platform_;

public:
    World world{platform_};
};

} // namespace tarvik::faults
